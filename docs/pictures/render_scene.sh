#!/usr/bin/env bash
# render_scene.sh SCENE PNG [FROM [NODE]]: a picture of a scene, drawn by three.js in a headless Chromium.
#   FROM  direction from which it is seen, in the plant's axes: "-1,-2,1.2" by default
#   NODE  name of the node that fills the picture; everything by default
# Needs Node.js, npm and Chromium; three.js is fetched into build/pictures.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
home=${TESSARO_PICTURES_DIR:-$here/../../build/pictures}
[ $# -ge 2 ] || { echo "usage: $0 SCENE PNG [FROM [NODE]]" >&2; exit 1; }
mkdir -p "$home"
if ! cmp -s "$here/package-lock.json" "$home/installed.json"; then
    cp "$here/package.json" "$here/package-lock.json" "$here/.npmrc" "$home"
    npm ci --prefix "$home" --ignore-scripts --loglevel=error
    cp "$here/package-lock.json" "$home/installed.json"
fi
exec node "$here/render_scene.mjs" "$home/node_modules/three" "$@"
