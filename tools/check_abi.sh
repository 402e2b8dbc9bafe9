#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# Compares the binary interface of a shared library with a baseline: fails on what breaks programs
# that were compiled before, tells what was added.
# usage: check_abi.sh LIBRARY HEADERS BASELINE [--renew]
set -euo pipefail
library=$1 headers=$2 baseline=$3 renew=${4:-}

# Only what the headers declare and the library exports, and nothing of where it was built.
describe() {
  abidw --exported-interfaces-only --headers-dir "$headers" --drop-private-types \
    --drop-undefined-syms --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed \
    "$library"
}

if [ "$renew" = --renew ]; then
  describe >"$baseline.new"
  mv "$baseline.new" "$baseline"
  exit
fi

directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
describe >"$directory/now" || exit 2

# compare [option ...]: 0 without changes, 1 with some; the report is in the file "report".
compare() {
  local status=0
  abidiff "$@" "$baseline" "$directory/now" >"$directory/report" 2>&1 || status=$?
  if [ $((status & 3)) -ne 0 ]; then
    cat "$directory/report" >&2
    echo "check_abi: the comparison failed" >&2
    exit 2
  fi
  return "$((status != 0))"
}

if ! compare --no-added-syms; then
  cat "$directory/report"
  echo "check_abi: this breaks programs that were compiled before" >&2
  exit 1
fi
if ! compare; then
  cat "$directory/report"
  echo "check_abi: only additions, which ./dev abi --renew takes into the baseline"
fi
