#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# older.bash VERSION FOLDER PACKAGE...: the same packages, as if they were of that version, in FOLDER.
set -euo pipefail
version=$1
folder=$2
shift 2
rm -rf "$folder"
mkdir -p "$folder"
for package in "$@"; do
    newer=$(dpkg-deb --field "$package" Version)
    unpacked=$folder/$(basename "$package" .deb)
    dpkg-deb --raw-extract "$package" "$unpacked"
    sed -i "s/^Version: .*/Version: $version/; s/(\(=\|<<\) $newer)/(\1 $version)/g" "$unpacked/DEBIAN/control"
    dpkg-deb --build "$unpacked" "$folder/$(dpkg-deb --field "$package" Package)_$version.deb" >/dev/null
    rm -r "$unpacked"
done
