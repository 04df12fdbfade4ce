#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# readme.bash PREFIX README FOLDER: the commands of both programs that the README prints as blocks work as
# they stand, one after the other, from an empty folder that has got settings for the server for trying
# and one sale. Commands of the system are left out, and so is what only a service's machine has.
set -euo pipefail
prefix=$1
readme=$2
mkdir "$3" "$3.server" # what is the server's own stands elsewhere
cd "$3"
export PATH=$prefix/bin:$PATH

# the lines of blocks that name no language
mapfile -t lines < <(awk '/^```/ { open = !open; plain = open && $0 == "```"; next } plain' "$readme" |
    grep -E '^([A-Z_]+="[^"]*" )?orva-' | sed "s|/usr/share/doc|$prefix/share/doc|g")
[ "${#lines[@]}" -ge 8 ] || {
    echo "readme: only ${#lines[@]} commands are found in $readme" >&2
    exit 1
}

# The README names a port, so all that try its commands on this machine take turns.
exec {turn}</tmp
flock --wait 600 "$turn" || {
    echo "readme: others have tried its commands for ten minutes" >&2
    exit 1
}

server=
finish() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    wait
}
trap finish EXIT
server_log=$3.server/server.log
: >"$server_log"
orva-simulator --port 8710 --database "$3.server/server.sqlite" >"$server_log" 2>&1 &
server=$!
waited=0
until grep -q '^Listening on ' "$server_log"; do
    waited=$((waited + 1))
    if [ "$waited" -gt 200 ] || ! kill -0 "$server" 2>/dev/null; then
        cat "$server_log" >&2
        exit 1
    fi
    sleep 0.05
done
orva-till init --defaults simulator --plugin "$(find "$prefix" -name liborva.so)"
orva-till sell "$prefix/share/doc/orva-tools/examples/sale.toml" --wait 30

done=0
for line in "${lines[@]}"; do
    [[ $line != orva-simulator* ]] || continue # runs already
    bash -c "$line" >said 2>&1 </dev/null || {
        echo "readme: \"$line\" ends with $?:" >&2
        cat said >&2
        exit 1
    }
    done=$((done + 1))
done
echo "$done commands work."
