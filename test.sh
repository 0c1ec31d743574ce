#!/usr/bin/env bash
# Installs what is missing, builds with warnings as errors and runs every test without a display.
# --sanitize builds with the address and undefined-behaviour sanitizers instead.
set -euo pipefail
cd "$(dirname "$0")"
. tools/common.sh
preset=release
[ "${1:-}" = "--sanitize" ] && preset=sanitize
install_packages
build "$preset"
export QT_QPA_PLATFORM=offscreen
# Leaks of the desktop libraries at exit are not ours to mend.
export ASAN_OPTIONS=detect_leaks=0:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1
ctest --preset "$preset" -j 2
