#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# memory.bash SCRIPT: temporary files are in memory where there is enough of it and nobody has named
# another place; other accounts can use the folder, and it goes with the script.
set -euo pipefail

# in_script COMMAND: what it prints where temporary files are in memory
in_script() {
    bash -euc '. "$0"; temporary_files_in_memory; eval "$1"' "$script" "$1"
}
script=$1

named=$(mktemp -d)
trap 'rmdir "$named"' EXIT
found=$(TMPDIR=$named in_script 'echo "$TMPDIR"')
[ "$found" = "$named" ] || { echo "TMPDIR was $named and became $found"; exit 1; }

unset TMPDIR
found=$(in_script 'echo "${TMPDIR:-} $(stat -c "%F %a" "${TMPDIR:-/tmp}")"')
folder=${found%% *}
case $found in
"/dev/shm/orva-tests."*" directory 1777" | " directory 1777") ;;
*) echo "not a folder for all: $found"; exit 1 ;;
esac
[ -z "$folder" ] || [ ! -e "$folder" ] || { echo "$folder is left"; exit 1; }

found=$(bash -euc '. "$0"; temporary_files_in_memory "$1"; echo "${TMPDIR:-none}"' "$script" "$named/none")
[ "$found" = none ] || { echo "without memory TMPDIR became $found"; exit 1; }

# what fails takes its folder along, too
folder=$(in_script 'echo "${TMPDIR:-}"; false') && { echo 'the failure is not told'; exit 1; }
[ -z "$folder" ] || [ ! -e "$folder" ] || { echo "$folder is left by a failure"; exit 1; }
