#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# upgrade.bash FOLDER PACKAGE...: the package manager exchanges the installed packages for these while a
# till is in the middle of a sale and messages wait that could not be delivered. The sale is closed by the
# till that was there, everything is delivered, and the books agree. Run as root.
set -euo pipefail
folder=$1
shift
as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups env HOME=/tmp)
waiting=3

fail() {
    echo "upgrade: $*" >&2
    cat "$folder"/*.log >&2
    exit 1
}

rm -rf "$folder"
install -d -o 65534 -g 65534 "$folder"
cd "$folder"
"${as_user[@]}" cp /usr/share/doc/orva-tools/examples/*.toml .
"${as_user[@]}" chmod 600 orva.toml

server=
start_server() {
    : >server.log
    "${as_user[@]}" orva-simulator --quiet --port "${port:-0}" --database server.sqlite >server.log 2>&1 &
    server=$!
    local waited=0
    until grep -q '^Listening on ' server.log; do
        waited=$((waited + 1))
        [ "$waited" -le 200 ] || fail 'the server does not start'
        sleep 0.05
    done
}
stop_server() {
    kill "$server"
    wait "$server" || true
}
trap 'kill $(jobs -p) 2>/dev/null || true; wait' EXIT
start_server
address=$(sed -n 's/^Listening on //p' server.log)
port=${address##*:}
port=${port%/}
sed -i "s|^serverUrl = .*|serverUrl = \"$address\"|" orva.toml

# what a till says to each command ends with "ok" or an error
coproc till { exec "${as_user[@]}" orva-till work 2>till.log; }
# shellcheck disable=SC2154 # coproc assigns it
process=$till_PID
ask() {
    local line
    echo "$1" >&"${till[1]}"
    while read -r -t 90 line <&"${till[0]}"; do
        echo "$line" >>said.log
        case $line in
        ok) return ;;
        error*) break ;;
        esac
    done
    fail "\"$1\" was not done"
}
plugin_of() { sed -n 's|.* \(/.*/liborva\.so.*\)|\1|p' "/proc/$1/maps" | sort -u; }

for ((i = 0; i < waiting; i++)); do
    ask 'open sale.toml'
    ask request
    stop_server
    ask close
    start_server
done
ask 'open sale.toml'
ask 'points 10'
stop_server
before=$(dpkg-query -W -f '${Version}' orva-tools)
apt-get -qq install -y --no-install-recommends "$@" >apt.log 2>&1 || fail 'apt has not installed them'
after=$(dpkg-query -W -f '${Version}' orva-tools)
dpkg --compare-versions "$before" lt "$after" || fail "$after is no later version than $before"
[[ $(plugin_of "$process") == *' (deleted)' ]] || fail 'the till at work has another plug-in'
ask close
left=$("${as_user[@]}" orva-till queue list --json | grep -c '"id":') || fail 'nothing waits'

# the new programs, beside the till that is at work still
start_server
ask 'wait 60'
"${as_user[@]}" orva-till sell sale.toml --wait 60 >new.log 2>&1 || fail 'the new till does not sell'
ask 'open sale.toml'
ask close
ask 'wait 60'
echo quit >&"${till[1]}"
wait "$process" || fail 'the till has not ended well'
"${as_user[@]}" orva-till ledger --csv >till.csv
"${as_user[@]}" orva-simulator ledger --csv --database server.sqlite >server.csv
[ "$(wc -l <till.csv)" -eq $((waiting + 4)) ] || fail "the till's books: $(cat till.csv)"
[ "$(cat till.csv)" = "$(cat server.csv)" ] || fail "the server's books: $(cat server.csv)"
echo "From $before to $after in the middle of a sale, $left waiting: the books agree."
