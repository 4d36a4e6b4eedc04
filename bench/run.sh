#!/usr/bin/env bash
# Builds the benchmarks and runs them: loading, names, the catalogue, scripts, the mesher and the exports, each beside its yardsticks.
# Generated plants and tables go to out/bench; docs/performance.md keeps the last table.
#   bench/run.sh [OBJECTS]      size of the largest generated plant, default 1000000
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

setup_packages
objects=${1:-1000000}
build=build/bench
mkdir -p build out/bench
configure_and_build "$build" -DTESSARO_TESTS=OFF
plant=out/bench/plant.json
small=out/bench/small.json
"$build/bin/tessaro" model generate --objects "$objects" --seed 1 -o "$plant"
"$build/bin/tessaro" model generate --objects 1000 --seed 1 -o "$small"
for name in load names catalogue scripts mesher rvm nvout eem obm hext max; do
    echo "== $name"
    case $name in
    load) arguments=("$small" "$plant") ;;
    hext) arguments=(10000 100000 "$objects") ;;
    names | catalogue | rvm | eem) arguments=("$objects") ;;
    max) arguments=("$((objects / 10))") ;;
    *) arguments=() ;;
    esac
    "$build/bin/bench_$name" "${arguments[@]}" | tee "out/bench/$name.txt" || echo "   (a goal was missed)"
done
