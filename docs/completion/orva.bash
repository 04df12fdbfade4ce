# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Completes the command lines of orva-till, orva-simulator and orva-store in bash. What there is to
# choose from is asked of the program itself, so that this file cannot fall behind it.

# What --help says behind the words given, in the language that is read here.
_orva_help() {
    LC_ALL=C LANGUAGE=en "$@" --help 2>/dev/null
}

# The options in a text of --help, one a line.
_orva_options() {
    sed -nE 's/^  (-[a-zA-Z,-]+).*/\1/p' | tr , '\n'
}

# The commands in a text of --help, one a line.
_orva_commands() {
    sed -nE '/^Subcommands:/,$ s/^  ([a-z][a-z-]*).*/\1/p'
}

# What may stand for the arguments in a text of --help: the words that it has in quotation marks, and
# files where it speaks of one.
_orva_arguments() {
    local arguments
    arguments=$(sed -n '/^Arguments:/,/^$/p')
    compgen -W "$(grep -oE '"[a-z]+"' <<<"$arguments" | tr -d '"')" -- "$1"
    if grep -qi file <<<"$arguments"; then
        compgen -f -- "$1"
    fi
}

_orva() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local -a command=("${COMP_WORDS[0]}")
    local help general
    COMPREPLY=()
    help=$(_orva_help "${command[@]}") || return
    general=$help

    # the commands that stand on the line so far
    local word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if _orva_commands <<<"$help" | grep -qxF -e "$word"; then
            command+=("$word")
            help=$(_orva_help "${command[@]}")
        fi
    done

    # Options of the whole program may stand behind a command too. Some say which values they take.
    local choice
    choice=$(sed -nE "s/^  (-[a-zA-Z],)?$previous \{([^}]*)\}.*/\2/p" <<<"$help"$'\n'"$general" | head -n 1)
    if [ "$previous" = --deviate ]; then
        mapfile -t COMPREPLY < <(compgen -W "list $(LC_ALL=C "${command[0]}" --deviate list 2>/dev/null |
            sed -nE 's/^([a-z0-9-]+) .*/\1/p')" -- "$current")
    elif [ -n "$choice" ]; then
        mapfile -t COMPREPLY < <(compgen -W "${choice//,/ }" -- "$current")
    elif grep -qE -e "^  (-[a-zA-Z],)?$previous [A-Z]" <<<"$help"$'\n'"$general"; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current") # an option's value
    elif [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$({
            _orva_options <<<"$help"
            _orva_options <<<"$general"
        } | sort -u)" -- "$current")
    elif grep -q '^Subcommands:' <<<"$help"; then
        mapfile -t COMPREPLY < <(compgen -W "$(_orva_commands <<<"$help")" -- "$current")
    else
        mapfile -t COMPREPLY < <(_orva_arguments "$current" <<<"$help")
    fi
}

complete -o filenames -F _orva orva-till orva-simulator orva-store
