#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# completions.bash PROGRAM COMPLETION-FILE: asks bash what it completes behind the program and behind
# each of its commands, and compares that with what --help lists there.
set -euo pipefail
program=$1
name=$(basename "$program")
PATH=$(cd "$(dirname "$program")" && pwd):$PATH
# shellcheck source=/dev/null
. "$2"
complete -p "$name" >/dev/null

# What bash offers for a line whose last word is being typed.
offered() {
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    COMPREPLY=()
    _orva
    printf '%s\n' "${COMPREPLY[@]}" | sed '/^$/d' | sort
}

# The first column of a section of what --help prints, read without the completion's own expressions.
listed() {
    awk -v section="$1:" '
        /^[^ ]/ { inside = $0 == section }
        inside && /^  [^ ]/ { count = split($1, names, ","); for (i = 1; i <= count; ++i) print names[i] }' <<<"$2"
}

help_of() {
    LC_ALL=C LANGUAGE=en "$@" --help
}

failed=0
compare() {
    if [ "$2" != "$3" ]; then
        echo "behind \"$1\" bash offers:"
        echo "$2"
        echo "but --help lists:"
        echo "$3"
        failed=1
    fi
}

check() {
    local help own commands command
    help=$(help_of "$@")
    own=$(listed Options "$help")
    compare "$*" "$(offered "$@" -)" "$(printf '%s\n' "$general" "$own" | sort -u)"
    commands=$(listed Subcommands "$help" | sort)
    if [ -n "$commands" ]; then
        compare "$*" "$(offered "$@" '')" "$commands"
        for command in $commands; do
            checked=$((checked + 1))
            check "$@" "$command"
        done
    fi
}

checked=0
general=$(listed Options "$(help_of "$name")")
check "$name"
[ "$checked" -ge 2 ] || { echo "only $checked commands were found"; failed=1; }

# a file where the command takes one, and behind an option that has a value
scene=$(mktemp -d "${TMPDIR:-/tmp}/orva-completions.XXXXXX")
trap 'rm -rf "$scene"' EXIT
cd "$scene"
touch sale.toml
compare "--config" "$(offered "$name" --config s)" sale.toml
if [ "$name" = orva-till ]; then
    compare "sell" "$(offered "$name" --verbose sell s)" sale.toml
    compare "init --defaults" "$(offered "$name" init --defaults '')" simulator
    compare "init --answers" "$(offered "$name" init --answers s)" sale.toml
    compare "queue deliver" "$(offered "$name" queue deliver --w)" --watch
    compare "queue show" "$(offered "$name" queue show '')" ''
    compare "queue list" "$(offered "$name" queue list '')" ''
    compare "explain" "$(offered "$name" explain '')" last
    compare "log replay" "$(offered "$name" log replay '')" $'all\nsale.toml'
    compare "qu" "$(offered "$name" --config x.toml qu)" queue
    compare "queue --config FILE show" "$(offered "$name" queue --config x.toml sh)" show
fi
exit "$failed"
