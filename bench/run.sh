#!/usr/bin/env bash
# Builds the benchmarks and runs them: loading, names, the catalogue, scripts, the mesher and the exports, each beside its
# yardsticks; then every command on plants of four sizes. Generated plants and outputs go to out/bench. A run at the full
# size writes what it measured into docs/performance.md, between its two marks.
#   bench/run.sh [OBJECTS]      size of the largest generated plant, default 1000000
# Exit status 1 when a goal is missed or a benchmark fails.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh

setup_packages
objects=${1:-1000000}
build=build/bench
out=out/bench
mkdir -p build "$out"
configure_and_build "$build" -DTESSARO_TESTS=OFF

plants=()
for size in $((objects / 1000)) $((objects / 100)) $((objects / 10)) "$objects"; do
    plants+=("$out/plant-$size.json")
    "$build/bin/tessaro" model generate --objects "$size" --seed 1 -o "${plants[-1]}"
done

missed=0
# measure NAME PROGRAM [ARGUMENT...]: prints and keeps what a benchmark says.
measure() {
    local name=$1
    shift
    echo "== $name"
    "$build/bin/$1" "${@:2}" | tee "$out/$name.txt" || missed=1
}
measure load bench_load "${plants[0]}" "${plants[-1]}"
measure names bench_names "$objects"
measure catalogue bench_catalogue "$objects"
measure scripts bench_scripts
measure mesher bench_mesher
measure rvm bench_rvm "$objects"
measure nvout bench_nvout
measure eem bench_eem "$objects"
measure obm bench_obm
measure hext bench_hext $((objects / 100)) $((objects / 10)) "$objects"
measure max bench_max $((objects / 50))
rm -rf "$out/install"
cp -r examples/install "$out/install"
measure commands bench_commands "$build/bin/libtessaro.so" "$out/install" "$out/exports" "${plants[@]}"

# The measured part of docs/performance.md.
tables() {
    local name
    for name in commands load names catalogue scripts mesher hext rvm nvout eem obm max; do
        printf '\n### `bench_%s`\n\n```\n' "$name"
        cat "$out/$name.txt"
        printf '```\n'
    done
    printf '\n'
}
if [ "$objects" -eq 1000000 ]; then
    tables >"$out/tables.md"
    sed -i -e "/^<!-- measured -->$/r $out/tables.md" -e '/^<!-- measured -->$/,/^<!-- end -->$/{/^<!--/!d}' docs/performance.md
fi
[ "$missed" -eq 0 ] || echo "a goal was missed, or a benchmark failed"
exit "$missed"
