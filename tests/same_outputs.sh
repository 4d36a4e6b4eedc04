#!/usr/bin/env bash
# Do two builds write the same bytes?   tests/same_outputs.sh OLD_BUILD NEW_BUILD
#
# Runs all commands and XDBOUT with both builds on the example, on generated plants and on odd ones, and compares every
# file, the run report, standard output and error, and the exit status. Times in logs are left out of account; paths are
# the same, since both builds work in one folder by turns. Names what differs and ends with 1 then, with 2 when a
# command did not run in the old build.
set -euo pipefail
[ $# -eq 2 ] || { echo "usage: same_outputs.sh OLD_BUILD NEW_BUILD" >&2; exit 2; }
programOf() { for at in "$1/bin/tessaro" "$1/tessaro" "$1"; do [ -f "$at" ] && { realpath "$at"; return; }; done; echo "no tessaro in $1" >&2; exit 2; }
declare -A program
program[old]=$(programOf "$1")
program[new]=$(programOf "$2")
examples=$(cd "$(dirname "$0")/../examples" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset TESSARO_MODULE TESSARO_ROOT LD_LIBRARY_PATH
mkdir "$work/plants"
cp "$examples"/*.json "$work/plants"
# Both builds read the plants of the old one.
for seed in 3 4; do
    "${program[old]}" model generate --objects 2500 --seed "$seed" -o "$work/plants/plant-$seed.json" >"$work/said" 2>&1
    "${program[old]}" model generate --objects 1500 --seed "$seed" --odd -o "$work/plants/odd-$seed.json" >"$work/said" 2>&1
done

# The name of the plant's first object of a class.
firstOf() { "${program[old]}" model tree "$1" | awk -v class="$2" '$1 == class && !found { sub(/^ *[^ ]+ [^ ]+ /, ""); print; found = 1 }'; }

# A run in a fresh folder: COMMAND MODEL OPTIONS... What came of it goes to "$work/$build".
runOne() {
    local build=$1 command=$2 model=$3 status=0
    shift 3
    rm -rf "$work/run" "$work/${build:?}"
    mkdir "$work/run"
    cp -r "$examples/install" "$work/run/install"
    (cd "$work/run" && "${program[$build]}" run "$command" --model "$model" --root install --out out --progress none \
        --report report.json "$@" >stdout 2>stderr) || status=$?
    echo "$status" >"$work/run/status"
    find "$work/run" \( -name '*.log' -o -name stderr \) \
        -exec sed -i -E 's/\[[0-9]{4}(\.[0-9]{2}){2} [^]]*\]/[time]/; s/^[0-9]+\.[0-9]{6}s/[seconds]/' {} +
    mv "$work/run" "$work/$build"
}

runs=0
differing=0
compare() {
    local label="$1 on $(basename "$2") ${*:3}"
    runOne old "$@"
    if [ "$(cat "$work/old/status")" -eq 1 ] || ! [ -s "$work/old/report.json" ]; then
        echo "$label did not run:" >&2
        cat "$work/old/stderr" >&2
        exit 2
    fi
    runOne new "$@"
    runs=$((runs + 1))
    if ! diff -rq "$work/old" "$work/new" >"$work/said"; then
        echo "$label differs:"
        sed "s|$work/||g; s/^/    /" "$work/said"
        differing=$((differing + 1))
    fi
}

for model in "$work"/plants/*.json; do
    for command in HEXTOUT RVMOUT NVOUT MAXOUT OBMOUT ORNAOUT; do
        compare "$command" "$model" --input Project --input Station
    done
    for command in HEXTOUT RVMOUT NVOUT; do
        compare "$command" "$model" --set outWeld=1
    done
    for command in RVMOUT NVOUT; do
        compare "$command" "$model" --set nvExpandBranch=1
    done
    compare NVOUT "$model" --set orAxiss=1
    pipeline=$(firstOf "$model" HextPipeline)
    [ -z "$pipeline" ] || compare ShowHextBranch "$model" --select "**/*$pipeline"
    for class in HextPipeline HextEquipe HextStruct; do
        name=$(firstOf "$model" "$class")
        [ -z "$name" ] || compare XDBOUT "$model" --select "**/*$name"
    done
done
echo "$runs runs, $differing differ"
[ "$differing" -eq 0 ]
