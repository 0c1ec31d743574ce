# What run.sh and test.sh share. Sourced with the working directory at the project's root.

# Installs what packages.txt names and the machine lacks.
install_packages() {
    local missing=() p
    while read -r p; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed' || missing+=("$p")
    done < <(sed 's/#.*//' packages.txt | grep -v '^[[:space:]]*$')
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || { echo "Run as root, or install sudo." >&2; return 1; }
        sudo=sudo
    fi
    $sudo apt-get update -qq
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# Configures and builds a preset; further arguments are targets.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >"build-$preset.log" 2>&1 || { cat "build-$preset.log"; rm -f "build-$preset.log"; return 1; }
    rm -f "build-$preset.log"
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
