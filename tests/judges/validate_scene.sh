#!/usr/bin/env bash
# validate_scene.sh GLB...: does the glTF validator find neither an error nor a warning in these scenes? Fetches the
# validator into build/judges when it is not there yet; where that cannot be, the scenes count as not valid.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
home=${TESSARO_JUDGES_DIR:-$here/../../build/judges}
[ $# -gt 0 ] || { echo "usage: $0 GLB..." >&2; exit 1; }
command -v node >/dev/null && command -v npm >/dev/null || {
    echo "validate_scene: node and npm are not there, so nothing was judged (scripts/packages.txt names their packages)" >&2
    exit 1
}
scenes=()
for scene in "$@"; do scenes+=("$(realpath "$scene")"); done
mkdir -p "$home"
exec 9>"$home/lock"
flock 9
if ! cmp -s "$here/package-lock.json" "$home/installed.json"; then
    cp "$here/package.json" "$here/package-lock.json" "$here/.npmrc" "$home"
    npm ci --prefix "$home" --ignore-scripts --loglevel=error || {
        echo "validate_scene: the glTF validator could not be fetched, so nothing was judged" >&2
        exit 1
    }
    cp "$here/package-lock.json" "$home/installed.json"
fi
flock -u 9
cd "$home"
exec node "$here/validate_scene.mjs" "${scenes[@]}"
