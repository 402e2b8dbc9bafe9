#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# Checks the tracked files: layout, licence line, trailing blanks, size.
# usage: check_style.sh [directory of a git checkout]
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}"
faults=0

fault() {
  printf 'check_style: %s\n' "$*" >&2
  faults=$((faults + 1))
}

mapfile -t sources < <(git ls-files -- '*.c' '*.cc' '*.h')

if [ "${#sources[@]}" -gt 0 ]; then
  printf '%s\0' "${sources[@]}" |
    xargs -0 clang-format --dry-run -Werror || fault "clang-format -i lays these files out"
fi

for file in "${sources[@]}"; do
  head -n 1 -- "$file" | grep -q '^/\* SPDX-License-Identifier: [A-Za-z0-9.-]* \*/$' ||
    fault "$file: the first line is not its SPDX line"
  lines=$(wc -l <"$file")
  case $file in
  src/*) [ "$lines" -le 400 ] || echo "check_style: warning: $file has $lines lines" >&2 ;;
  esac
done

# Inputs and expected outputs of the tests may end their lines as they like.
if git grep -n -I '[[:blank:]]$' -- . ':!tests/**/data/*' ':!tests/**/golden/*' \
  ':!tests/**/fixtures/*' ':!tests/fuzz/corpus/*'; then
  fault "trailing blanks"
fi

[ "$faults" -eq 0 ]
