#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# sale.bash PREFIX FOLDER: the installed programs sell a check with points and deliver it; what the
# till has in its books is what the server has in its own. Needs nothing but bash and coreutils.
set -euo pipefail
prefix=$1
mkdir -p "$2"
cd "$2"

cp "$prefix"/share/doc/orva-tools/examples/*.toml .
chmod 600 orva.toml
: >server.log
"$prefix/bin/orva-simulator" --quiet --port 0 --database server.sqlite >server.log 2>&1 &
server=$!
trap 'kill "$server" 2>/dev/null || true; wait' EXIT
waited=0
until grep -q '^Listening on ' server.log; do
    waited=$((waited + 1))
    if [ "$waited" -gt 200 ] || ! kill -0 "$server" 2>/dev/null; then
        cat server.log >&2
        exit 1
    fi
    sleep 0.05
done
address=$(sed -n 's/^Listening on //p' server.log)
sed -i "s|^serverUrl = .*|serverUrl = \"$address\"|" orva.toml

"$prefix/bin/orva-till" sell sale.toml --points 20 --wait 30
"$prefix/bin/orva-till" ledger --csv >till.csv
"$prefix/bin/orva-simulator" ledger --csv --database server.sqlite >server.csv
[ "$(wc -l <till.csv)" -eq 2 ]
[ "$(cat till.csv)" = "$(cat server.csv)" ]
echo "The books agree."
