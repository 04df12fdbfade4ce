#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# lintmessages.bash LINT FOLDER: whether the linter of commit messages finds what it is for, in clones
# of whatever depth.
set -euo pipefail

lint=$1 folder=$2
export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null
export GIT_AUTHOR_NAME=x GIT_AUTHOR_EMAIL=x@x GIT_COMMITTER_NAME=x GIT_COMMITTER_EMAIL=x@x
rm -rf "$folder"
mkdir -p "$folder/tree/scripts"
cd "$folder/tree"
git init -q
cp "$lint" scripts/lint
touch some.cpp

commit() {
    git add -A
    git commit -q --allow-empty -m "$1"
}

fail() {
    echo "lintmessages: $1" >&2
    exit 1
}

# expect accepted|refused MESSAGE: of a commit with that message on top of those that are there
expect() {
    commit "$2"
    if scripts/lint messages >"$folder/said" 2>&1; then
        [ "$1" = accepted ] || fail "accepted: $2"
    else
        [ "$1" = refused ] || fail "refused: $2: $(cat "$folder/said")"
        grep -q "$(git rev-parse HEAD)" "$folder/said" || fail "the commit is not named: $2"
    fi
    [ "$1" = accepted ] || git reset -q --soft HEAD~1
}

echo 'project(Orva VERSION 0.1.0)' >CMakeLists.txt
commit 'Merge /home/somebody/tree'
echo 'project(Orva VERSION 0.9.0)' >CMakeLists.txt
expect accepted 'Set the version to 0.9.0'
expect accepted 'Answer GET /ledger and POST /api/1.x/precheck, and write to /dev/full and/or /proc/self/fd'
expect accepted 'Merge the doctor and the queue'
expect accepted 'Keep what lies in docs/protocol.md, see https://example.com/a/b'
expect refused 'Merge /home/somebody/tree'
expect refused 'Read it anew

It lay in /home/somebody/tree before.'
expect refused 'Copy "/srv/build/x"'
expect refused 'Copy file:///srv/build/x'
expect refused 'Copy ~/build/x'
expect refused 'Copy C:\build\x'
expect refused "Merge branch 'main' of somewhere"
expect refused "Merge remote-tracking branch 'origin/main' into work"
expect refused 'Merge origin/main'
expect refused 'Merge 0123abcd'

commit 'It lay in /home/somebody/tree'
commit 'Nothing wrong here'
echo 'project(Orva VERSION 1.0.0)' >CMakeLists.txt
commit 'Set the version to 1.0.0'
for depth in 1 2 3 4 100; do
    git clone -q --depth $depth "file://$folder/tree" "$folder/depth-$depth"
    status=0
    (cd "$folder/depth-$depth" && scripts/lint messages >/dev/null 2>&1) || status=$?
    # the wrong one is the third from the top
    [ $status -eq $((depth < 3 ? 0 : 1)) ] || fail "a clone of depth $depth gives $status"
done
