#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# unit.bash UNIT-FILE PROGRAM: the service manager understands all of the unit file, and rates what the
# service could do, were it taken over, at no more than 3.0 of 10.
set -euo pipefail
scene=$(mktemp -d "${TMPDIR:-/tmp}/orva-unit.XXXXXX")
trap 'rm -rf "$scene"' EXIT
unit=$scene/$(basename "$1")
# what it starts has to be there
sed "s|^ExecStart=[^ ]*|ExecStart=$2|" "$1" >"$unit"

said=$(systemd-analyze verify --man=no --recursive-errors=no "$unit" 2>&1) || {
    echo "$said"
    exit 1
}
if grep -F "$(basename "$unit")" <<<"$said"; then
    exit 1
fi
systemd-analyze security --offline=true --no-pager --threshold=30 "$unit" >"$scene/rated" || {
    cat "$scene/rated"
    exit 1
}
tail -n 1 "$scene/rated"
