#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# A shop's first day, and its last, by what README.ru.md says:
#   firstday.bash README FOLDER   on a Debian made for it, as root: an engineer installs the packages in
#                                 FOLDER and sets a till up, a cashier sells, the server goes and comes
#   firstday.bash --typed README  which commands are typed; fails where the README does not show one
# The Debian has sudo, /usr/bin/systemctl is servicemanager.bash, and there is no network.
set -euo pipefail

readme=${2:-}
[ "$1" = --typed ] || readme=$1
fail() {
    echo "first day: $1" >&2
    exit 1
}

# What the README shows to be typed: the lines of its blocks, and what stands in backquotes, which may
# go on in the next line.
shown() {
    awk '
        function spans(   parts, count, i) {
            count = split(text, parts, "`")
            for (i = 2; i <= count; i += 2) print parts[i]
            text = ""
        }
        /^```/ { spans(); block = !block; next }
        block { print; next }
        { text = text (text == "" ? "" : " ") $0 }
        END { spans() }' "$readme"
}
is_shown() { grep -qxF -e "$1" <<<"$shown_lines" || fail "the README does not show: $1"; }
shown_lines=$(shown)

if [ "$1" = --typed ]; then
    mapfile -t commands < <(sed -nE -e "s/^ *(typed|begin) [a-z]+ '([^']*)'.*/\2/p" \
        -e "s/^ *(say|is_shown) '?([a-z][^']*)'?$/\2/p" "$0" | sort -u)
    [ "${#commands[@]}" -ge 30 ] || fail "only ${#commands[@]} commands were found in this script"
    for command in "${commands[@]}"; do
        is_shown "$command"
        echo "$command"
    done
    exit
fi

# typed ACCOUNT COMMAND [CODE]: somebody types it, in the folder they find themselves in. What it
# prints goes to $printed too; it has to end with CODE, 0 where none is given.
typed() {
    local account=$1 command=$2 code=0
    is_shown "$command"
    echo "$account\$ $command"
    printed=$(su --login "$account" -c "$command" 2>&1) || code=$?
    printed=${printed//$'\r'/} # dpkg has a terminal of its own
    [ -z "$printed" ] || echo "$printed"
    [ "$code" -eq "${3:-0}" ] || fail "\"$command\" ends with $code instead of ${3:-0}"
}
# begin ACCOUNT COMMAND: the same in a window of its own, where it goes on; ends with Ctrl+C
begin() {
    is_shown "$2"
    echo "$1\$ $2 &"
    : >/var/tmp/window
    su --login "$1" -c "exec $2" >/var/tmp/window 2>&1 </dev/null &
    wait_until 10 grep -q '^Listening on ' /var/tmp/window
}
interrupt() {
    local process
    process=$(pidof "$1")
    echo "^C"
    kill -INT "$process"
    wait_until 10 [ ! -e "/proc/$process" ]
}
says() { grep -qE -e "$1" <<<"$printed" || fail "\"$1\" is not said"; }
# waits SECONDS: for the service to have delivered everything; nobody else is there who could
delivered_within() {
    local began=$SECONDS
    until su --login anna -c 'orva-till queue list --json' 2>/dev/null | tr -d ' \n' | grep -qxF '[]'; do
        [ $((SECONDS - began)) -lt "$1" ] || fail "not delivered after $1 s"
        sleep 0.5
    done
    echo "(delivered by the service after $((SECONDS - began)) s)"
}
same_books() {
    typed anna 'orva-till ledger --csv'
    local till=$printed
    typed engineer 'orva-simulator ledger --csv'
    [ "$(grep -v '^Settings' <<<"$till")" = "$printed" ] || fail 'the books of till and server differ'
    [ "$(wc -l <<<"$printed")" -eq $((1 + $1)) ] || fail "there are not $1 checks in the books"
}

install_and_set_up() {
    typed engineer 'sudo apt install ./libposhost1_*.deb ./liborva_*.deb ./orva-tools_*.deb' <<<y
    typed engineer 'orva-till --version'
    says '[0-9]+\.[0-9]+\.[0-9]+'
    zcat /usr/share/doc/orva-tools/README.ru.md.gz | cmp - "$readme"
    begin engineer 'orva-simulator --port 8710'
    # an editor
    printf '%s\n' http://127.0.0.1:8710/ 1042 3 till secret demo >/home/engineer/answers.txt
    typed engineer 'sudo orva-till init --answers answers.txt'
    typed engineer 'rm answers.txt'
    # the editor again
    recording=$(awk '/^```/ { shown = 0 } /^\[recording\]/ { shown = 1 } shown' "$readme")
    [ -n "$recording" ] || fail 'the README does not show how recording is switched on'
    printf '\n%s\n' "$recording" >>/etc/orva/orva.toml
    typed engineer 'sudo systemctl restart orva-delivery'
    typed engineer 'systemctl status orva-delivery'
    says active
    typed engineer 'sudo adduser anna orva'
    typed anna 'orva-till doctor'
    ! grep -E '^(fails|warn)' <<<"$printed" || fail 'the doctor is not clear'
}

# sell_without_server COUNT: a shift whose checks the server has answered for, and which are closed when it
# is gone
sell_without_server() {
    local session said=/var/tmp/shift
    is_shown 'orva-till work'
    echo 'anna$ orva-till work'
    exec {session}> >(exec su --login anna -c 'orva-till work' >"$said" 2>&1)
    for ((sale = 0; sale < $1; ++sale)); do
        say 'open /usr/share/doc/orva-tools/examples/sale.toml'
        say request
        say suspend
    done
    wait_until 20 there_are "$1" '^Suspended: '
    interrupt orva-simulator
    for ((sale = 0; sale < $1; ++sale)); do
        say 'restore last'
        say close
    done
    wait_until 20 there_are "$1" '^Paid: '
    exec {session}>&-
    wait_until 20 nobody_sells
}
say() {
    is_shown "$1"
    echo "> $1"
    echo "$1" >&"$session"
}
there_are() { [ "$(grep -cE "$2" "$said")" -ge "$1" ]; }
nobody_sells() { ! grep -zqsx work /proc/[0-9]*/cmdline; }
wait_until() {
    local left=$(($1 * 10))
    shift
    until "$@"; do
        left=$((left - 1))
        [ "$left" -gt 0 ] || fail "not so in time: $*; $(cat /var/tmp/window /var/tmp/shift 2>&1)"
        sleep 0.1
    done
}

sell() {
    typed anna 'orva-till check /usr/share/doc/orva-tools/examples/sale.toml'
    typed anna 'orva-till sell /usr/share/doc/orva-tools/examples/sale.toml'
    delivered_within 10
    typed anna 'orva-till queue list'
    same_books 1
    sell_without_server 3
    typed anna 'orva-till sell /usr/share/doc/orva-tools/examples/sale.toml' 3
    typed anna 'orva-till queue list'
    [ "$(grep -cE '^ *[0-9]+ ' <<<"$printed")" -eq 3 ] || fail 'there are not three messages'
    begin engineer 'orva-simulator --port 8710'
    delivered_within 60
    same_books 4
}

look_around() {
    typed anna 'orva-till checks'
    typed anna 'orva-till explain last'
    typed anna 'orva-till ledger'
    typed anna 'orva-till queue deliver'
    typed anna 'orva-till log list'
    typed anna 'orva-till log show 3'
    typed anna 'orva-till log replay 3'
    typed anna 'orva-till support case.tar --records all'
    typed anna 'orva-till log replay case.tar'
    typed anna 'orva-till explain last --from case.tar'
    typed anna 'orva-till doctor --from case.tar'
    ! grep -e demo -e 2200000000017 -e Соколова /home/anna/case.tar || fail 'the file for the support tells too much'
    typed anna 'QT_LOGGING_RULES="orva.debug=true;orva.info=true" orva-till check /usr/share/doc/orva-tools/examples/sale.toml'
    typed anna 'orva-till erase 2200000000017'
    ! grep -r 2200000000017 /var/lib/orva || fail 'the erased card is still there'
    same_books 4
}

# The queue outlives removing and purging; only who says so loses it.
take_away() {
    sell_without_server 1
    typed engineer 'sudo apt remove orva-tools' <<<y
    [ -s /etc/orva/orva.toml ] || fail 'removing takes the settings'
    typed engineer 'sudo apt install ./libposhost1_*.deb ./liborva_*.deb ./orva-tools_*.deb' <<<y
    systemctl is-active orva-delivery || fail 'installed again, the service does not run'
    typed anna 'orva-till checks'
    typed engineer 'sudo apt purge orva-tools' <<<y
    says 'till.sqlite stays, with undelivered checks: 1$'
    [ ! -e /etc/orva ] || fail "purging leaves $(ls /etc/orva)"
    [ "$(ls -A /var/lib/orva)" = till.sqlite ] || fail "purging leaves $(ls -A /var/lib/orva)"

    # what stayed is delivered by an installation that was set up anew
    typed engineer 'sudo apt install ./libposhost1_*.deb ./liborva_*.deb ./orva-tools_*.deb' <<<y
    begin engineer 'orva-simulator --port 8710'
    printf '%s\n' http://127.0.0.1:8710/ 1042 3 till secret demo >/home/engineer/answers.txt
    typed engineer 'sudo orva-till init --answers answers.txt'
    typed engineer 'sudo systemctl restart orva-delivery'
    delivered_within 60
    same_books 5
    sell_without_server 1
    typed engineer 'sudo ORVA_PURGE_QUEUE=yes apt purge orva-tools' <<<y
    [ ! -e /var/lib/orva ] || fail "purging leaves $(ls -A /var/lib/orva)"
}

exec </dev/null # nobody is there who would answer a question
# No network but the machine's own: SIOCSIFFLAGS on "lo", IFF_UP and IFF_RUNNING.
# shellcheck disable=SC2016 # perl's variables
perl -MSocket -e 'my $up = pack("a16 s x22", "lo", 0x41);
    socket(S, AF_INET, SOCK_DGRAM, 0) && ioctl(S, 0x8914, $up) or die $!'
for account in engineer anna; do
    useradd --create-home --shell /bin/bash "$account"
done
echo 'engineer ALL=(ALL:ALL) NOPASSWD: ALL' >/etc/sudoers.d/engineer
cp "$2"/*.deb /home/engineer/
install_and_set_up
sell
look_around
take_away
echo "first day: $("$0" --typed "$readme" | wc -l) commands of the README do what it says."
