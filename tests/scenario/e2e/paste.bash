#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# paste.bash SOURCES BUILD-FOLDER: the story has nothing to say on the standard error, explains the points
# that differ, and ends with a line that works as it stands, from any folder: a till sells with a
# loyalty server that the line has started, and nothing is written among the sources.
set -euo pipefail
export LC_ALL=C
sources=$1
scene=$(mktemp -d "${TMPDIR:-/tmp}/orva-paste.XXXXXX")
trap 'rm -rf "$scene"' EXIT
fail() {
    echo "$1" >&2
    exit 1
}

"$sources/scripts/visit" "$2" >"$scene/story" 2>"$scene/noise"
[ ! -s "$scene/noise" ] || fail "noise: $(cat "$scene/noise")"
! grep -F 'poshost.' "$scene/story" || fail 'the story shows a log'
grep -qxF "The server's message promised 16.73 points, and 14.28 are booked: it was" "$scene/story" || fail 'the story does not explain its figures'

line=$(tail -n 1 "$scene/story")
: >"$scene/before"
cd /
printf '%s\n' 'open sale.toml' 'points 20' close 'wait 60' quit |
    bash -c "$line" >"$scene/said" 2>"$scene/noise" || fail "$line: $(cat "$scene/said" "$scene/noise")"
[ "$(grep -cx ok "$scene/said")" -eq 5 ] || fail "$(cat "$scene/said")"
written=$(find "$sources/till" "$sources/scripts" -newer "$scene/before" -type f)
[ -z "$written" ] || fail "written among the sources: $written"
