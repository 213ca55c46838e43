# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# Functions shared by ./run and ./test. Sourced from the project's folder.

# install_packages PURPOSE...: installs the Debian packages that are missing for these purposes.
install_packages() {
    local purpose missing=()
    local package wanted
    for purpose in "$@"; do
        while read -r wanted package; do
            [ "$wanted" = "$purpose" ] || continue
            dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
                missing+=("$package")
        done < tools/packages.txt
    done
    [ "${#missing[@]}" -gt 0 ] || return 0
    if ! command -v apt-get > /dev/null; then
        echo "Please install: ${missing[*]}" >&2
        return 1
    fi
    echo "Installing ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
}

# build_preset PRESET [TARGET...]: configures when needed and builds.
build_preset() {
    local preset=$1
    shift
    if [ ! -f "build/$preset/build.ninja" ]; then
        cmake --preset "$preset" > "build-$preset.log" 2>&1 || { cat "build-$preset.log"; return 1; }
        rm -f "build-$preset.log"
    fi
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

# The sources a program is made of, as one line that changes when any of them does.
source_stamp() {
    find CMakeLists.txt CMakePresets.json cmake VelloryCore vellory -type f -printf '%p %T@ %s\n' |
        sort | cksum
}

up_to_date() {
    [ -x "$1" ] && [ -f "$1.stamp" ] && [ "$(cat "$1.stamp")" = "$(source_stamp)" ]
}

mark_up_to_date() {
    source_stamp > "$1.stamp"
}
