#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Stands for systemctl, and for the service manager behind it, on a Debian that nobody has booted:
#   systemctl [OPTIONS] start | stop | restart | status | preset | is-enabled | is-active | daemon-reload [UNIT]
# A unit's ExecStart is run as its file says: under its account, with its mask and environment, and
# with a socket on which it says that it is ready. What it said is kept in /run/units/UNIT.said.
# Needs what is on every Debian: bash, util-linux, perl-base.
set -euo pipefail

words=()
for word in "$@"; do
    [[ $word == -* ]] || words+=("$word")
done
verb=${words[0]:-}
unit=${words[1]:-}
unit=${unit%.service}.service
file=/lib/systemd/system/$unit
state=/run/units/$unit
wants=/etc/systemd/system/multi-user.target.wants
if [ "$(id -u)" = 0 ]; then
    echo "$*" >>/var/tmp/asked
    mkdir -p /run/units
fi

# of UNIT-FILE: the value of a key, empty where it is not there
of() { sed -n "s/^$1=//p" "$file"; }
# nobody may have waited for it yet
ended() { ! grep -qsv '^State:.*[ZX] (' <(grep -s '^State:' "/proc/$1/status"); }
is_active() { [ -e "$state.pid" ] && ! ended "$(cat "$state.pid")"; }
said() { grep -qs "$1" "$state.said"; }

# wait_until SECONDS CONDITION...
wait_until() {
    local left=$(($1 * 20))
    shift
    until "$@"; do
        left=$((left - 1))
        [ "$left" -gt 0 ] || return 1
        sleep 0.05
    done
}

listen() {
    : >"$state.said"
    # shellcheck disable=SC2016 # perl's variables
    setsid perl -MSocket -e '$| = 1; my $message;
        socket(S, AF_UNIX, SOCK_DGRAM, 0) && bind(S, sockaddr_un($ARGV[0])) or die $!;
        chmod 0666, $ARGV[0];
        print "$message\n" while defined recv(S, $message, 4096, 0)' \
        "$state.socket" >"$state.said" 2>&1 <&- &
    echo $! >"$state.listener"
    wait_until 5 test -S "$state.socket"
}

start() {
    local needed command mask
    local -a variables=()
    is_active && return
    needed=$(of ConditionPathExists)
    if [ -n "$needed" ] && [ ! -e "$needed" ]; then
        echo "$unit: not started, there is no $needed" >>"$state.log"
        return
    fi
    listen
    read -ra command <<<"$(of ExecStart)"
    mapfile -t variables < <(of Environment)
    mask=$(of UMask)
    # shellcheck disable=SC2016 # they are the inner shell's
    setsid env -i PATH=/usr/sbin:/usr/bin "${variables[@]}" "NOTIFY_SOCKET=$state.socket" \
        setpriv --reuid="$(of User)" --regid="$(of Group)" --init-groups --no-new-privs \
        sh -c 'umask "$1"; shift; cd /; exec "$@"' sh "${mask:-0022}" "${command[@]}" \
        >>"$state.log" 2>&1 <&- &
    echo $! >"$state.pid"
    wait_until 20 said '^READY=1$' || {
        echo "systemctl: $unit does not say that it is ready:" >&2
        cat "$state.log" >&2
        exit 1
    }
}

stop() {
    is_active || return 0
    local process
    process=$(cat "$state.pid")
    kill "$process"
    wait_until 10 ended "$process" || {
        echo "systemctl: $unit does not end" >&2
        exit 1
    }
    kill "$(cat "$state.listener")" 2>/dev/null || true
    rm -f "$state.pid" "$state.socket" "$state.listener"
}

case $verb in
start) start ;;
stop) stop ;;
restart)
    stop
    start
    ;;
preset)
    mkdir -p "$wants"
    ln -sf "$file" "$wants/$unit"
    ;;
is-enabled) [ -e "$wants/$unit" ] && echo enabled ;;
is-active) is_active && echo active ;;
status)
    is_active && echo "$unit: active, process $(cat "$state.pid")"
    tail -n 3 "$state.said"
    ;;
daemon-reload) ;;
*)
    echo "systemctl: $verb is not asked of a service here" >&2
    exit 1
    ;;
esac
