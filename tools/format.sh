#!/usr/bin/env bash
# Formats the sources with clang-format 14; --check only tells which are not.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.cpp' '*.h')
if [ "${1:-}" = "--check" ]; then
    exec clang-format --dry-run --Werror "${files[@]}"
fi
clang-format -i "${files[@]}"
