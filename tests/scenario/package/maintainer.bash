#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# maintainer.bash FOLDER: what the package's scripts in FOLDER ask of the system when the package is
# installed, upgraded, removed and purged, with and without a running service manager. The programs
# that they ask only write down what they were asked.
set -euo pipefail
scripts=$1
scene=$(mktemp -d "${TMPDIR:-/tmp}/orva-maintainer.XXXXXX")
trap 'rm -rf "$scene"' EXIT
mkdir "$scene/bin"
for program in adduser deb-systemd-helper deb-systemd-invoke install rm rmdir systemctl; do
    printf '#!/bin/sh\necho "%s $*" >>"%s/asked"\n' "$program" "$scene" >"$scene/bin/$program"
done
printf '#!/bin/sh\nexit 2\n' >"$scene/bin/getent"
chmod 755 "$scene"/bin/*

# asked SCRIPT ARGUMENTS...: the folders that the scripts look at stand in the scene
asked() {
    local script=$1
    shift
    : >"$scene/asked"
    sed -e "s| /etc/orva| $scene/etc/orva|g" -e "s| /var/lib/orva| $scene/var/lib/orva|g" \
        -e "s|/run/systemd/system|$scene/systemd|g" "$scripts/$script" >"$scene/$script"
    PATH=$scene/bin:$PATH sh "$scene/$script" "$@"
    sed "s|$scene||g" "$scene/asked"
}

failed=0
expect() {
    if [ "$2" != "$3" ]; then
        printf '%s\nasks for:\n%s\ninstead of:\n%s\n' "$1" "$3" "$2"
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
mkdir -p "$scene/etc/orva" "$scene/var/lib/orva"
expect 'After an upgrade' "$enabled"$'\n'"$started" "$(asked postinst configure 1.0)"
expect 'After a failed upgrade' "$enabled"$'\n'"$started" "$(asked postinst abort-upgrade 1.1)"
expect 'Before removing' 'deb-systemd-invoke stop orva-delivery.service' "$(asked prerm remove)"
expect 'After removing' 'systemctl --system daemon-reload
deb-systemd-helper mask orva-delivery.service' "$(asked postrm remove)"
expect 'Purging' 'deb-systemd-helper purge orva-delivery.service
deb-systemd-helper unmask orva-delivery.service
rm -rf /etc/orva
rmdir /var/lib/orva' "$(asked postrm purge)"
exit "$failed"
