#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# Builds the Debian packages from the tracked files and has lintian look at them. Sources and result
# lie in build/package, so that nothing of the working tree is touched.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
version=$(dpkg-parsechangelog --show-field Version)
upstream=${version%-*}
directory=build/package
sources=$directory/velkor-$upstream

rm -rf "$directory"
mkdir -p "$sources"
git ls-files -z | tar --null --files-from=- --create | tar --directory "$sources" --extract
tar --directory "$directory" --exclude=debian --sort=name --owner=0 --group=0 --numeric-owner \
  --mtime="@$(dpkg-parsechangelog --show-field Timestamp)" --create --xz \
  --file "$directory/velkor_$upstream.orig.tar.xz" "velkor-$upstream"

cd "$sources"
# The cache stays the user's own, though debhelper gives the build another home.
if command -v ccache >/dev/null; then
  CCACHE_DIR=$(ccache --get-config cache_dir)
  export CCACHE_DIR
fi
export PATH=/usr/lib/ccache:$PATH CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
dpkg-buildpackage --unsigned-source --unsigned-changes --jobs="$(nproc)"
cd ..
lintian --fail-on error,warning "velkor_${version}_$(dpkg --print-architecture).changes"
