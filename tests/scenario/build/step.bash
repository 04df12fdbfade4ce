#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# step.bash SCRIPT: a step has one line that says what is done and how long it took; one that fails shows
# what its command has printed, and ends a script.
set -euo pipefail
# shellcheck source=scripts/step
. "$1"
log=$(mktemp "${TMPDIR:-/tmp}/orva-step.XXXXXX")
trap 'rm -f "$log"' EXIT

said=$(step "$log" 'Doing well' echo quietly)
grep -qxE 'Doing well \.\.\. [0-9]+ s' <<<"$said" || { echo "$said"; exit 1; }
grep -qxF quietly "$log"

code=0
said=$(bash -euc '. "$0"
    step "$1" "Going wrong" sh -c "echo because; exit 3"
    echo "went on"' "$1" "$log") || code=$?
[ "$code" -ne 0 ] && grep -qxE 'Going wrong \.\.\. failed after [0-9]+ s' <<<"$said" &&
    grep -qxF because <<<"$said" && ! grep -qF 'went on' <<<"$said" || {
    echo "code $code: $said"
    exit 1
}
