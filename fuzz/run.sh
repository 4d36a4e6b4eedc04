#!/usr/bin/env bash
# Builds the fuzzers with clang, address and undefined-behaviour sanitizers, and runs each for a while from its seeds.
# What a run finds beyond the seeds stays in out/fuzz; an input that breaks something stops the script and is kept there.
#   fuzz/run.sh [SECONDS] [NAME...]     seconds for each fuzzer, default 60; default all
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

setup_packages
seconds=${1:-60}
shift || true
names=("$@")
[ ${#names[@]} -gt 0 ] || names=(model config profile selection entity outline rvm attribute_text pcf)
build=build/fuzz
mkdir -p build
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DTESSARO_FUZZ=ON -DTESSARO_SANITIZE=ON -DTESSARO_BENCH=OFF \
    -DTESSARO_TESTS=OFF -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O1 >"$build.configure.log" 2>&1 ||
    { cat "$build.configure.log"; exit 1; }
cmake --build "$build" --target "${names[@]/#/fuzz_}"
for name in "${names[@]}"; do
    mkdir -p "out/fuzz/$name"
    echo "== $name, $seconds s"
    # The largest outlines that the mesher takes on need 7 s with sanitizers.
    options=(-max_total_time="$seconds" -timeout=60 -rss_limit_mb=4096 -print_final_stats=1 -seed=1
        -artifact_prefix="out/fuzz/$name-")
    [ -f "fuzz/$name.dict" ] && options+=(-dict="fuzz/$name.dict")
    "$build/bin/fuzz_$name" "${options[@]}" "out/fuzz/$name" "fuzz/seeds/$name" >"out/fuzz/$name.log" 2>&1 || {
        tail -40 "out/fuzz/$name.log"
        exit 1
    }
    grep -E 'number_of_executed_units|peak_rss_mb' "out/fuzz/$name.log"
done
