#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# maintainer.bash FOLDER: what the package's scripts in FOLDER ask of the system when the package is
# installed, upgraded, removed and purged, with and without a running service manager, and what is left
# then. The programs that they ask only write down what they were asked.
set -euo pipefail
scripts=$1
scene=$(mktemp -d "${TMPDIR:-/tmp}/orva-maintainer.XXXXXX")
trap 'rm -rf "$scene"' EXIT
mkdir "$scene/bin"
for program in adduser deb-systemd-helper deb-systemd-invoke install systemctl; do
    printf '#!/bin/sh\necho "%s $*" >>"%s/asked"\n' "$program" "$scene" >"$scene/bin/$program"
done
printf '#!/bin/sh\nexit 2\n' >"$scene/bin/getent"
# the till: what it lists is what stands beside the database, and where that is missing it fails; what
# a killed one left it writes into the file once
cat >"$scene/bin/setpriv" <<END
#!/bin/sh
while [ "\$1" != --database ]; do shift; done
[ ! -e "\$2.left" ] || { rm "\$2.left" && touch "\$2"; }
cat "\$2.listed"
END
chmod 755 "$scene"/bin/*

books=$scene/var/lib/orva
settings=$scene/etc/orva
# run SCRIPT ARGUMENTS...: the folders that the scripts look at stand in the scene
run() {
    local script=$1
    shift
    : >"$scene/asked"
    sed -e "s|\([ =]\)/etc/orva|\1$settings|g" -e "s|\([ =]\)/var/lib/orva|\1$books|g" \
        -e "s|/run/systemd/system|$scene/systemd|g" "$scripts/$script" >"$scene/$script"
    LC_ALL=${language:-C} PATH=$scene/bin:$PATH sh "$scene/$script" "$@"
}
asked() {
    run "$@"
    sed "s|$scene||g" "$scene/asked"
}

failed=0
expect() {
    if [ "$2" != "$3" ]; then
        printf '%s\ngives:\n%s\ninstead of:\n%s\n' "$1" "$3" "$2"
        failed=1
    fi
}

account='adduser --quiet --system --group --no-create-home --home /var/lib/orva orva
install -d -o root -g orva -m 2750 /etc/orva
install -d -o orva -g orva -m 2770 /var/lib/orva'
enabled='deb-systemd-helper unmask orva-delivery.service
deb-systemd-helper --quiet was-enabled orva-delivery.service
deb-systemd-helper enable orva-delivery.service'
started='systemctl --system daemon-reload
deb-systemd-invoke start orva-delivery.service'

expect 'Installing without a service manager' "$account"$'\n'"$enabled" "$(asked postinst configure)"
expect 'Upgrading without a service manager' '' "$(asked prerm upgrade 1.1)"
mkdir "$scene/systemd"
expect 'Installing' "$account"$'\n'"$enabled"$'\n'"$started" "$(asked postinst configure)"
expect 'Before an upgrade' 'deb-systemd-invoke stop orva-delivery.service' "$(asked prerm upgrade 1.1)"

# an account and folders that are there stay as they are
printf '#!/bin/sh\nexit 0\n' >"$scene/bin/getent"
mkdir -p "$settings" "$books"
expect 'After an upgrade' "$enabled"$'\n'"$started" "$(asked postinst configure 1.0)"
expect 'After a failed upgrade' "$enabled"$'\n'"$started" "$(asked postinst abort-upgrade 1.1)"
expect 'Before removing' 'deb-systemd-invoke stop orva-delivery.service' "$(asked prerm remove)"
expect 'After removing' 'systemctl --system daemon-reload
deb-systemd-helper mask orva-delivery.service' "$(asked postrm remove)"
expect 'Purging' 'deb-systemd-helper purge orva-delivery.service
deb-systemd-helper unmask orva-delivery.service' "$(asked postrm purge)"

left() { (cd "$scene" && find etc var -type f ! -name '*.listed' | sort); }
# database FILE [MESSAGES]: a file with the beginning of an SQLite file; without a number the till
# cannot list it
database() {
    printf 'SQLite format 3\0rest' >"$1"
    [ -z "${2:-}" ] || { echo '['; for ((i = 0; i < $2; ++i)); do echo '{ "id": 7 }'; done; echo ']'; } >"$1.listed"
}
# a shop with settings, secrets, a recording and what SQLite and the delivery keep beside a database
shop() {
    rm -rf "$settings" "$books"
    mkdir -p "$settings" "$books/records"
    touch "$settings"/{orva.toml,password} "$books"/{till.sqlite.lock,records/1}
    database "$books/till.sqlite" "${1:-}"
    touch -d '1 hour ago' "$books"/*
}
purged() { run postrm purge 2>&1 | sed "s|$scene||g"; }
words() { printf 'orva-tools: %s\n' "$1" 'to deliver them, install the package again and run orva-till init; to throw them away: rm -r /var/lib/orva'; }

shop 0
run prerm remove
run postrm remove
expect 'Removing' 'etc/orva/orva.toml
etc/orva/password
var/lib/orva/records/1
var/lib/orva/till.sqlite
var/lib/orva/till.sqlite.lock
var/lib/orva/undelivered' "$(left)"
expect 'Purging what was delivered' '' "$(purged)"
expect 'Purging what was delivered' '' "$(left)"
[ ! -e "$books" ] && [ ! -e "$settings" ] || expect 'Purging' 'no folders' 'folders'

shop 3
touch "$books/till.sqlite-wal"
run prerm remove
expect 'Purging three messages' "$(words '/var/lib/orva/till.sqlite stays, with undelivered checks: 3')" "$(purged)"
expect 'Purging three messages' 'var/lib/orva/till.sqlite
var/lib/orva/till.sqlite-wal' "$(left)"

shop 3
run prerm remove
expect 'The same in Russian' 'orva-tools: /var/lib/orva/till.sqlite остаётся, в нём недоставленные чеки: 3
orva-tools: доставить их: поставьте пакет снова и выполните orva-till init; выбросить: rm -r /var/lib/orva' \
    "$(language=ru_RU.UTF-8 purged 2>&1 | grep -v warning)"

shop 3
run prerm remove
expect 'Purging, told to take all' '' "$(ORVA_PURGE_QUEUE=yes purged)"
expect 'Purging, told to take all' '' "$(left)"

unknown=$(words '/var/lib/orva/till.sqlite stays: undelivered checks may be in it')
shop
run prerm remove
expect 'Purging what the till cannot read' "$unknown" "$(purged)"
shop 0
expect 'Purging what nobody has counted' "$unknown" "$(purged)"
shop 0
run prerm remove
touch -d '1 hour' "$books/till.sqlite"
expect 'Purging what was written since' "$unknown" "$(purged)"
shop 0
run prerm remove
touch -r "$books/undelivered" "$books/till.sqlite"
expect 'Purging what was written at the very moment of counting' "$unknown" "$(purged)"
shop 0
touch "$books/till.sqlite.left"
run prerm remove
expect 'Purging after a killed till' '' "$(purged)"
shop 0
run prerm remove
: >"$books/till.sqlite"
echo records >"$books/till.sqlite-wal"
expect 'Purging an emptied file with records beside it' "$unknown" "$(purged)"

shop 0
database "$settings/till.sqlite" 2
run prerm remove
expect 'Purging a queue among the settings' \
    "$(words '/etc/orva/till.sqlite stays, with undelivered checks: 2')" "$(purged)"
expect 'Purging a queue among the settings' 'etc/orva/till.sqlite' "$(left)"

# whoever may write in the folder does not make root write elsewhere
shop 1
echo mine >"$scene/elsewhere"
ln -s "$scene/elsewhere" "$books/undelivered"
run prerm remove
expect 'A link in the way' mine "$(cat "$scene/elsewhere")"
run postinst configure
[ ! -e "$books/undelivered" ] || expect 'Installed again' 'nothing counted' 'an old count'
exit "$failed"
