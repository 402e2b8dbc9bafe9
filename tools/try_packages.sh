#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# Tries the packages of build/package in a Debian 12 system of their own: installation of a lower
# version, upgrade, debian/tests by autopkgtest, removal and purge. Of this machine's system nothing
# is changed; the other one and all that runs in it end with this program. It needs root.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# Mounts and processes that nobody else sees, and that cannot outlast this program.
if [ "${1:-}" != --apart ]; then
  exec unshare --mount --pid --fork --kill-child "tools/$(basename "$0")" --apart
fi
version=$(dpkg-parsechangelog --show-field Version)
lower=$version~before
built=build/package
shopt -s nullglob
debs=("$built"/*_"${version}"_*.deb)
[ "${#debs[@]}" -gt 0 ] || { echo "try_packages: no packages in $built: see ./dev package" >&2; exit 1; }
work=$(mktemp -d)
root=$work/root
trap 'umount --quiet "$root/proc" || true; rm -rf --one-file-system "$work"' EXIT

step() { printf '\n== %s (after %d s)\n' "$*" "$SECONDS"; }

fail() {
  echo "try_packages: $*" >&2
  exit 1
}

inside() { # inside <command> [argument ...]: in the other system
  env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root \
    DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"
}

names() {
  local deb
  for deb in "${debs[@]}"; do
    dpkg-deb --field "$deb" Package
  done | grep --invert-match -- '-dbgsym$'
}

make_system() {
  mmdebstrap --quiet --variant=apt bookworm "$root"
  # mmdebstrap forgets what it knew of the archive.
  inside apt-get update --quiet=2
  mount -t proc proc "$root/proc"
  mkdir "$root/debs" "$root/debs/lower"
}

# The same packages under a lower version, in place of those of an earlier release.
copy_packages() {
  local deb name contents=$work/contents
  for name in "${packages[@]}"; do
    for deb in "$built/${name}_${version}"_*.deb; do
      cp "$deb" "$root/debs/"
      rm -rf "$contents"
      dpkg-deb --raw-extract "$deb" "$contents"
      sed -i -E "s/^(Version: ).*/\1$lower/; s/\(= ${version//./\\.}\)/(= $lower)/g" \
        "$contents/DEBIAN/control"
      dpkg-deb --root-owner-group --build "$contents" "$root/debs/lower" >/dev/null
    done
  done
}

install() { # install <packages>: by their names, or by a pattern of files in the other system
  inside sh -c "apt-get install --option Dpkg::Use-Pty=0 --quiet=2 --yes --no-install-recommends $1 >/dev/null"
}

# Everything that the packages depend on, so that what they leave themselves can be told from it.
install_dependencies() {
  local planned dependencies
  planned=$(inside sh -c 'apt-get install --no-install-recommends --simulate /debs/*.deb')
  mapfile -t dependencies < <(awk '$1 == "Inst" { print $2 }' <<<"$planned" |
    grep --invert-match --line-regexp --fixed-strings --file=<(printf '%s\n' "${packages[@]}"))
  install "${dependencies[*]}"
}

files() { # the names of what belongs to no cache, log or list of packages
  (cd "$root" && find . -xdev \( -path ./debs -o -path ./proc -o -path ./var/cache -o -path ./var/log \
    -o -path ./var/lib/apt -o -path ./var/lib/dpkg -o -path ./tmp \) -prune -o -print | sort)
}

require_version() { # require_version <version>
  local name state
  for name in "${packages[@]}"; do
    state=$(inside dpkg-query --show --showformat='${db:Status-Status} ${Version}' "$name")
    [ "$state" = "installed $1" ] || fail "$name is not installed in version $1"
  done
  [ -z "$(inside dpkg --audit)" ] || fail "dpkg finds something half-installed"
}

require_use() {
  local program
  for program in velkor velkorctl zox-server; do
    inside "$program" --version >/dev/null
  done
  inside ldconfig --print-cache | grep --quiet 'libvelkor\.so\.0 ' || fail "ldconfig does not know the library"
}

mapfile -t packages < <(names)
step "a system of its own"
make_system
copy_packages
install_dependencies
files >"$work/before"

step "installing version $lower"
install '/debs/lower/*.deb'
require_version "$lower"
require_use
files >"$work/lower"

step "upgrading to $version"
install '/debs/*.deb'
require_version "$version"
require_use
files | diff "$work/lower" - || fail "an upgrade leaves other files than an installation"

step "removing and purging them"
inside apt-get remove --option Dpkg::Use-Pty=0 --quiet=2 --yes "${packages[@]}" >/dev/null
inside dpkg --purge "${packages[@]}" >/dev/null 2>&1
for name in "${packages[@]}"; do
  ! inside dpkg-query --status "$name" >/dev/null 2>&1 || fail "$name is still known to dpkg"
done
files | diff "$work/before" - || fail "the purge leaves files, or takes those of others"

step "debian/tests"
autopkgtest --no-built-binaries "${debs[@]}" "$built/velkor-${version%-*}/" -- chroot "$root"
step "done: ${#packages[@]} packages of version $version"
