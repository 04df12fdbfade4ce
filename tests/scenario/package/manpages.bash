#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# manpages.bash PAGE TRANSLATION: the translation has the sections, the items and the date of the page, in
# its order. Who changes what a page says changes its date; the translation then shows that it is behind.
set -euo pipefail

# What is in no language: macros with options, commands, values, files and variables. Arguments have a
# name in each.
skeleton() {
    sed -nE -e 's/^\.(Dd|Dt|Os|Nm|Xr|Ev|Pa|Fl|Ic|Cm|Li|Bl|El|Bd|Ed)( .*)?$/.\1\2/p' \
        -e 's/^\.(Sh) .*/.\1/p' -e '/^\.It /p' "$1" |
        sed -E -e '/^\.(Ic|Fl|Cm|Li|Pa|Xr|Nm)( |$)/d' -e 's/ Ar [^ ]+( FILE| ФАЙЛ)?/ Ar X/g'
}
lines=$(skeleton "$1" | wc -l)
[ "$lines" -ge 20 ] || { echo "only $lines lines of $1 were understood"; exit 1; }
diff <(skeleton "$1") <(skeleton "$2") || {
    echo "< is in $1, > in $2"
    exit 1
}
