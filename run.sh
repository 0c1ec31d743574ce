#!/usr/bin/env bash
# Installs what is missing, builds and opens Kelvara on a demo clinic. Without a display it runs the
# day's start unattended and prints the board. Arguments go to the program instead of the demo.
set -euo pipefail
cd "$(dirname "$0")"
. tools/common.sh
install_packages
build release kelvara

program=build/release/bin/kelvara
if [ $# -gt 0 ]; then
    exec "$program" "$@"
fi

demo=build/demo
if [ ! -d "$demo" ]; then
    "$program" --crear "$demo" --demo
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$program" --datos "$demo"
fi
echo "No display: starting the day unattended; the board follows."
exec "$program" --datos "$demo" --desatendido
