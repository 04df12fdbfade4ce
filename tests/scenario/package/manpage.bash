#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# manpage.bash PROGRAM MAN-PAGE: every command and option that --help lists stands in the page, and
# the other way round.
set -euo pipefail
program=$1
page=$2

# The first column of a section of what --help prints.
listed() {
    awk -v section="$1:" '
        /^[^ ]/ { inside = $0 == section }
        inside && /^  [^ ]/ { count = split($1, names, ","); for (i = 1; i <= count; ++i) print names[i] }' <<<"$2"
}

# One line for each: "--option", "command" and "command --option".
from_help() {
    local prefix="$*" command help
    help=$(LC_ALL=C LANGUAGE=en "$program" "$@" --help)
    if [ $# -gt 0 ]; then
        echo "$prefix"
        # every command has --help; the page says so once
        listed Options "$help" | sed -e '/^-h$/d' -e '/^--help$/d' -e "s/^/$prefix /"
    else
        listed Options "$help"
    fi
    for command in $(listed Subcommands "$help"); do
        from_help "$@" "$command"
    done
}

# The page's items: "Fl" is an option, "Ic" a command with its words, before anything in brackets.
from_page() {
    sed -nE 's/^\.It (Fl|Ic) (.*)/\1 \2/p' "$page" | while read -r kind rest; do
        rest=${rest//Fl -/--}
        rest=${rest//Fl /-}
        case $kind in
        Fl) grep -oE -- '(^| )--?[a-z-]+' <<<" -$rest" | sed -e 's/^ *//' ;;
        Ic)
            command=$(sed -E 's/ (Ar|Op|Oo|Cm) .*//' <<<"$rest")
            echo "$command"
            { grep -oE -- '--[a-z-]+' <<<"$rest" || true; } | sed "s/^/$command /"
            ;;
        esac
    done
}

help=$(from_help | sort)
[ "$(wc -l <<<"$help")" -ge 8 ] || { echo "--help could not be read"; exit 1; }
if ! diff <(echo "$help") <(from_page | sort); then
    echo "< is in --help alone, > in $page alone"
    exit 1
fi
