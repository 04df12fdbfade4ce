#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# accounts.bash BUILD-FOLDER SOURCES: on a machine prepared as the package does it, two cashiers and the
# service work on one database at once; a third account is kept out of settings, secrets and checks.
# Needs root. The machine's accounts and folders are those of a mount namespace of its own.
set -euo pipefail
if [ "${ORVA_ACCOUNTS_INSIDE:-}" != yes ]; then
    ORVA_ACCOUNTS_INSIDE=yes exec unshare --mount --propagation private "$0" "$@"
fi

build=$1
sources=$2
scene=$(mktemp -d "${TMPDIR:-/tmp}/orva-accounts.XXXXXX")
server= service=
finish() {
    [ -z "$service" ] || kill "$service" 2>/dev/null || true
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$scene"
}
trap finish EXIT
chmod 755 "$scene"
cmake --install "$build" --prefix "$scene/prefix" >"$scene/installed"
till=$scene/prefix/bin/orva-till

# The machine: accounts as the package and an administrator make them, folders as the package does.
cp -a /etc "$scene/etc"
rm -rf "$scene/etc/orva"
sed -i '/^orva:/d' "$scene/etc/passwd" "$scene/etc/group"
cat >>"$scene/etc/passwd" <<'END'
orva:x:64700:64700::/var/lib/orva:/usr/sbin/nologin
anna:x:64701:64701::/nowhere:/bin/sh
boris:x:64702:64702::/nowhere:/bin/sh
clara:x:64703:64703::/nowhere:/bin/sh
END
echo 'orva:x:64700:anna,boris' >>"$scene/etc/group"
mkdir "$scene/lib"
mount --bind "$scene/etc" /etc
mount --bind "$scene/lib" /var/lib
[ "$(grep -cE '^ *\[ -d .* install -d ' "$sources/packaging/postinst")" -eq 2 ]
sh -c "$(grep -E '^ *\[ -d .* install -d ' "$sources/packaging/postinst")"

# become ACCOUNT COMMAND...: in a folder without settings, with a mask that leaves the group nothing
become() {
    local account=$1
    shift
    cd /
    umask 077
    exec setpriv --reuid="$account" --regid="$(id -g "$account")" --init-groups --reset-env \
        env LC_ALL=C.UTF-8 "$@"
}
as() { (become "$@"); }
fail() {
    echo "$1" >&2
    exit 1
}

: >"$scene/server.log"
"$scene/prefix/bin/orva-simulator" --quiet --port 0 --database "$scene/server.sqlite" \
    >"$scene/server.log" 2>&1 &
server=$!
for _ in {1..200}; do
    ! grep -q '^Listening on ' "$scene/server.log" || break
    sleep 0.05
done
address=$(sed -n 's/^Listening on //p' "$scene/server.log")
(cd / && printf '%s\n' "$address" 1042 3 till secret demo | "$till" init)
rights=$(stat -c '%a %U:%G %n' /etc/orva/*)
[ "$rights" = '640 root:orva /etc/orva/apikey
640 root:orva /etc/orva/orva.toml
640 root:orva /etc/orva/password' ] || fail "$rights"

# At once: the service, and each cashier three sales.
become orva "$till" queue deliver --watch >"$scene/service.log" 2>&1 &
service=$!
examples=$scene/prefix/share/doc/orva-tools/examples
sellers=()
for account in anna boris; do
    for sale in 1 2 3; do
        become "$account" "$till" sell "$examples/sale.toml" >"$scene/$account.$sale" 2>&1 &
        sellers+=($!)
    done
done
for seller in "${sellers[@]}"; do
    wait "$seller" || { cat "$scene"/anna.* "$scene"/boris.*; exit 1; }
done
grep -qxF 'Settings: /etc/orva/orva.toml' "$scene/anna.1" || fail 'which settings are used is not said'
as boris "$till" --quiet checks --json | grep -c '"id"' | grep -qx 6 || fail 'not all checks are there'

for _ in {1..300}; do
    left=$(as anna "$till" queue list --json | tr -d ' \n')
    [ "$left" != '[]' ] || break
    sleep 0.1
done
[ "$left" = '[]' ] || fail "not delivered: $left"
as anna "$till" ledger --csv >"$scene/till.csv"
"$scene/prefix/bin/orva-simulator" ledger --csv --database "$scene/server.sqlite" >"$scene/server.csv"
grep -v '^Settings' "$scene/till.csv" | diff - "$scene/server.csv" || fail 'The books differ.'
# Old checks go into files that the other cashier, too, can add to and read.
sed -i 's/^\[till\]$/&\nkeepChecksDays = 0/' /etc/orva/orva.toml
as anna "$till" archive >"$scene/archived"
as boris "$till" sell "$examples/sale.toml" --wait 30 >"$scene/boris.4" 2>&1
as boris "$till" archive >"$scene/archived"
grep -qE '(^|[^0-9])7([^0-9]|$)' "$scene/archived" || fail "not archived: $(cat "$scene/archived")"
[ "$(find /var/lib/orva -name '*.checks' -user anna | wc -l)" -eq 1 ] || fail 'anna has made no file'
as anna "$till" ledger --csv >"$scene/till.csv"
"$scene/prefix/bin/orva-simulator" ledger --csv --database "$scene/server.sqlite" >"$scene/server.csv"
grep -v '^Settings' "$scene/till.csv" | diff - "$scene/server.csv" || fail 'The archived books differ.'
others=$(find /var/lib/orva -mindepth 1 \( ! -group orva -o -type d ! -perm 2770 -o ! -type d ! -perm 660 \) \
    -printf '%m %u:%g %p\n')
[ -z "$others" ] || fail "not the group's: $others"
# whatever else it says here
examined=$(as anna "$till" doctor --json 2>/dev/null) || true
rights=$(grep -A 9 -F '"id": "database.rights"' <<<"$examined") || fail "$examined"
grep -qF '"mark": "ok"' <<<"$rights" && grep -qF "the folder's group" <<<"$rights" || fail "$rights"

# Somebody else reads nothing and sells nothing.
for file in /etc/orva/orva.toml /etc/orva/password /etc/orva/apikey /var/lib/orva/till.sqlite; do
    ! as clara cat "$file" 2>/dev/null || fail "clara reads $file"
done
code=0
as clara "$till" sell "$examples/sale.toml" >"$scene/clara" 2>&1 || code=$?
[ "$code" -eq 2 ] || fail "clara's sale ends with $code: $(cat "$scene/clara")"
grep -qF /etc/orva/orva.toml "$scene/clara" || fail "clara is not told why: $(cat "$scene/clara")"
code=0
as clara "$till" --database /var/lib/orva/till.sqlite checks >"$scene/clara" 2>&1 || code=$?
[ "$code" -ne 0 ] || fail "clara sees checks: $(cat "$scene/clara")"

kill "$service"
wait "$service" || fail "the service ends with $?: $(cat "$scene/service.log")"
service=
echo "Two cashiers and the service share a database; somebody else is kept out."
