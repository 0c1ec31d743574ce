#!/bin/bash
# Builds the optimised program, makes the full clinic once and prints the table of measures.
# Arguments go to kelvara_bench: --runs N, --only pass|store|start|registry.
# With --mail [mails] it measures a long run of the outbox instead.
set -e
cd "$(dirname "$0")/.."
day=2026-03-11
clinic=build/bench/clinic

[ -f build/release/build.ninja ] || cmake --preset release >/dev/null
if [ "${1:-}" = --mail ]; then
    cmake --build --preset release --target bench_mail | tail -1
    exec build/release/bench/bench_mail "${@:2}"
fi
cmake --build --preset release --target kelvara_bench bench_start bench_registry \
    kelvara_full_clinic | tail -1
bin=build/release/bench

# Made anew when the generator has changed; moved into place when it is whole.
if [ ! -d $clinic ] || [ $bin/kelvara_full_clinic -nt $clinic ]; then
    rm -rf $clinic $clinic.part
    mkdir -p build/bench
    $bin/kelvara_full_clinic $clinic.part --day $day
    mv $clinic.part $clinic
    touch $clinic
fi
exec $bin/kelvara_bench $clinic --day $day "$@"
