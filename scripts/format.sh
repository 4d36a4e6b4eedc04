#!/usr/bin/env bash
# Formats all sources; with --check only says which are not formatted, and fails then.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(find src standins readers apps tests bench fuzz -name '*.h' -o -name '*.cpp' | sort)
if [ "${1:-}" = --check ]; then
    clang-format --dry-run --Werror "${files[@]}"
else
    clang-format -i "${files[@]}"
fi
