#!/usr/bin/env bash
# Compares what builds of two compilers and two code pages write, byte for byte:
#   GCC and clang in UTF-8, all outputs of all commands (reports included, logs not);
#   GCC in GBK and in UTF-8, the same but for the reports, which tell sizes in bytes, for plants whose texts are ASCII.
#   Files that hold Chinese words of the program itself are compared as texts.
#   tests/compilers_test.sh       needs the builds of ./test.sh, ./test.sh sanitize and fuzz/run.sh
set -euo pipefail
cd "$(dirname "$0")/.."
gbk=$PWD/build/test utf8=$PWD/build/sanitize clang=$PWD/build/fuzz
for build in "$gbk/bin/tessaro" "$utf8/bin/tessaro" "$clang/build.ninja"; do
    [ -e "$build" ] || { echo "$build is missing; ./test.sh, ./test.sh sanitize and fuzz/run.sh build it" >&2; exit 1; }
done
cmake --build "$clang" --target tessaro_program tessaro_module

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
commands=(HEXTOUT RVMOUT NVOUT OBMOUT ORNAOUT MAXOUT ShowHextBranch XDBOUT)

# run_all BUILD MODEL RESULT: every command in the same folder, which then moves to RESULT. Exit statuses are outputs, too.
run_all() {
    local command status
    mkdir -p "$work/run"
    for command in "${commands[@]}"; do
        mkdir -p "$work/run/$command/out"
        cp -r examples/install "$work/run/$command/root"
        status=0
        "$1/bin/tessaro" run "$command" --model "$2" --root "$work/run/$command/root" --out "$work/run/$command/out" \
            --input P --input S --report "$work/run/$command/report.json" -q >"$work/run/$command/stdout" 2>/dev/null || status=$?
        echo "$status" >"$work/run/$command/status"
    done
    find "$work/run" -name '*.log' -o -name Trace.txt -o -name '*.tar' | xargs rm -f
    mv "$work/run" "$3"
}

# compare NAME A B [as_text]: all files of two results.
failed=0
compare() {
    local file count=0 texts=0
    [ "$(cd "$2" && find . -type f | sort)" = "$(cd "$3" && find . -type f | sort)" ] || { echo "$1: not the same files"; failed=1; }
    while read -r file; do
        [ "${4:-}" = as_text ] && [ "${file##*/}" = report.json ] && continue
        count=$((count + 1))
        cmp -s "$2/$file" "$3/$file" && continue
        if [ "${4:-}" = as_text ] && iconv -f GB18030 -t UTF-8 "$2/$file" 2>/dev/null | cmp -s - "$3/$file"; then
            texts=$((texts + 1))
            continue
        fi
        echo "$1: $file differs"
        failed=1
    done < <(cd "$2" && find . -type f | sort)
    echo "$1: $count files compared, $texts of them as texts"
}

for build in gbk utf8 clang; do
    "${!build}/bin/tessaro" model generate --objects 500 --seed 11 -o "$work/plant-$build.json"
    "${!build}/bin/tessaro" model generate --objects 200 --seed 12 --odd -o "$work/odd-$build.json"
done
for other in utf8 clang; do
    cmp "$work/plant-gbk.json" "$work/plant-$other.json"
    cmp "$work/odd-gbk.json" "$work/odd-$other.json"
done
cp examples/pump-station.json "$work/example.json"
mv "$work/plant-gbk.json" "$work/plant.json"
mv "$work/odd-gbk.json" "$work/odd.json"
for model in example plant odd; do
    run_all "$utf8" "$work/$model.json" "$work/$model-utf8"
    run_all "$clang" "$work/$model.json" "$work/$model-clang"
    compare "$model, GCC and clang" "$work/$model-utf8" "$work/$model-clang"
    LC_ALL=C sed 's/[\x80-\xff]/x/g' "$work/$model.json" >"$work/ascii.json"
    run_all "$gbk" "$work/ascii.json" "$work/$model-ascii-gbk"
    run_all "$utf8" "$work/ascii.json" "$work/$model-ascii-utf8"
    compare "$model, GBK and UTF-8" "$work/$model-ascii-gbk" "$work/$model-ascii-utf8" as_text
done
exit $failed
