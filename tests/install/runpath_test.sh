#!/usr/bin/env bash
# Programs and libraries look for libraries beside themselves only: runpath_test.sh FILE_OR_FOLDER...
# An empty entry would be the folder in which the program happens to run, and anybody may have put a library there.
set -euo pipefail
checked=0
while IFS= read -r file; do
    dynamic=$(readelf -d "$file" 2>/dev/null) || continue
    paths=$(sed -nE 's/.*\((RUNPATH|RPATH)\).*\[(.*)\]$/\2/p' <<<"$dynamic")
    [ -n "$paths" ] || continue
    checked=$((checked + 1))
    if grep -qE '(^|:)(:|$)' <<<"$paths" || tr ':' '\n' <<<"$paths" | grep -qvE '^\$ORIGIN(/|$)'; then
        echo "FAILED: $file looks for libraries in [$paths]" >&2
        exit 1
    fi
done < <(find "$@" -maxdepth 1 -type f \( -name 'lib*.so' -o -name tessaro \))
[ "$checked" -ge 5 ] || { echo "FAILED: only $checked files with a path found in $*" >&2; exit 1; }
echo "$checked files look beside themselves"
