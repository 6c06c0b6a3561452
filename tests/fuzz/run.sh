#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the libFuzzer targets with Clang (and AddressSanitizer and
# UndefinedBehaviorSanitizer) in build-fuzz/ and runs each in turn, one job
# each, for the given number of seconds:
#
#     tests/fuzz/run.sh [seconds] [target...]      (600 s, every target)
#
# Each run starts from the committed corpus and faults. Afterwards the
# corpus is minimised together with what the run found and written back to
# tests/fuzz/corpus/<target>; an input that found a fault is copied to
# tests/fuzz/faults/<target> and the script stops with the fuzzer's report.
# The last line for each target gives its executions and coverage.
set -eu
cd "$(dirname "$0")/../.."
seconds=${1:-600}
[ $# -gt 0 ] && shift
targets=${*:-fuzz_datafile fuzz_archive fuzz_cloudreply}
build=build-fuzz

cmake -S . -B "$build" -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
    -DZEPHLANE_FUZZ=ON -DZEPHLANE_BENCHMARKS=OFF >/dev/null
# shellcheck disable=SC2086
cmake --build "$build" -j2 --target $targets

export QT_QPA_PLATFORM=offscreen
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# Inputs, merged output and cache pass through memory, not the disk.
TMPDIR=${TMPDIR:-/dev/shm}
export TMPDIR

for target in $targets; do
    program=$build/tests/fuzz/$target
    corpus=tests/fuzz/corpus/$target
    faults=tests/fuzz/faults/$target
    work=$build/fuzz-work/$target
    rm -rf "$work"
    mkdir -p "$work/found" "$work/artifacts" "$work/merged" "$faults"
    dictionary=tests/fuzz/$target.dict
    log=$work/fuzz.log
    # Replies reach Qt's JSON parser, whose leak only a full stack lets the
    # suppressions recognise; full stacks make every allocation slow.
    unwind=1
    [ "$target" = fuzz_cloudreply ] && unwind=0
    export ASAN_OPTIONS=detect_leaks=1:fast_unwind_on_malloc=$unwind

    if ! "$program" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=4096 -max_len=8192 \
        -print_final_stats=1 -dict="$dictionary" -artifact_prefix="$work/artifacts/" \
        "$work/found" "$corpus" "$faults" >"$log" 2>&1; then
        tail -n 60 "$log"
        cp "$work"/artifacts/* "$faults"/ 2>/dev/null || true
        echo "$target: fault found; its input is now in $faults (log: $log)" >&2
        exit 1
    fi

    "$program" -merge=1 "$work/merged" "$corpus" "$work/found" >"$work/merge.log" 2>&1
    rm -f "$corpus"/*
    cp "$work"/merged/* "$corpus"/

    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    coverage=$(grep -E '^#[0-9]+' "$log" | tail -n 1 | sed -n 's/.*\(cov: [0-9]* ft: [0-9]*\).*/\1/p')
    echo "$target: $seconds s, $executions executions, $coverage, corpus $(ls "$corpus" | wc -l) inputs"
done
