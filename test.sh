#!/usr/bin/env bash
# Installs what is missing, builds with warnings as errors, runs all tests and the format gate.
#   ./test.sh             the default build
#   ./test.sh sanitize    with address and undefined-behaviour sanitizers, and UTF-8 as the system code page
#   ./test.sh utf8        with UTF-8 alone
#   ./test.sh clang       with clang (UTF-8 code page)
set -euo pipefail
cd "$(dirname "$0")"
source scripts/setup.sh

setup_packages
mkdir -p build
# The further builds are there to find faults, not to run fast.
quick=(-DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O1 -DTESSARO_BENCH=OFF)
case "${1:-default}" in
default) name=test options=() ;;
sanitize) name=sanitize options=(-DTESSARO_SANITIZE=ON -DTESSARO_CODE_PAGE=UTF-8 "${quick[@]}") ;;
utf8) name=utf8 options=(-DTESSARO_CODE_PAGE=UTF-8 "${quick[@]}") ;;
clang) name=clang options=(-DCMAKE_CXX_COMPILER=clang++ "${quick[@]}") ;;
*) echo "usage: $0 [default|sanitize|utf8|clang]" >&2; exit 1 ;;
esac
scripts/format.sh --check
configure_and_build "build/$name" -DTESSARO_WERROR=ON "${options[@]}"
ctest --test-dir "build/$name" --output-on-failure -j2
