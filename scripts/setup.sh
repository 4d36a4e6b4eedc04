#!/usr/bin/env bash
# Installs the packages of scripts/packages.txt that are missing (as root or with sudo). Sourced by run.sh and test.sh.
setup_packages() {
    local here missing=() package command
    here=$(dirname "${BASH_SOURCE[0]}")
    while read -r package command; do
        case "$package" in '' | '#'*) continue ;; esac
        [ -n "$command" ] && command -v "$command" >/dev/null && continue
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done <"$here/packages.txt"
    [ ${#missing[@]} -eq 0 ] && return 0
    local sudo=
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    echo "Installing: ${missing[*]}"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# configure_and_build BUILD_DIR [cmake options...]: configures once and builds everything.
configure_and_build() {
    local build=$1
    shift
    cmake -S . -B "$build" -G Ninja "$@" >"$build.configure.log" 2>&1 || { cat "$build.configure.log"; return 1; }
    cmake --build "$build"
}
