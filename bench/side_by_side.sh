#!/bin/bash
# Usage: bench/side_by_side.sh OLD_BUILD NEW_BUILD  (build folders holding suite/brenmoor/brenmoor-calc; run it on a quiet machine)
#
# The eight grids of bench/grids through brenmoor-calc of two builds, one after
# the other on the same machine: each grid best of three, less the best of
# three of its start-up file (the same model on two points), per grid point,
# in microseconds of wall-clock time. The old build runs as it runs (a build
# without --threads is one thread), the new one on one thread and on all
# cores. The output file goes through standard output into /dev/null (the
# calculator refuses a device as --output).
set -euo pipefail

if [ $# -ne 2 ]; then
    echo "usage: $0 OLD_BUILD NEW_BUILD" >&2
    exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
grids=$here/grids
old=$1/suite/brenmoor/brenmoor-calc
new=$2/suite/brenmoor/brenmoor-calc
for program in "$old" "$new"; do
    if [ ! -x "$program" ]; then
        echo "$program: no such program" >&2
        exit 2
    fi
done

# name, points of the grid, points of its start-up file
grid_list=(
    "strip.two 61812 2"
    "finite_strip.two 61812 2"
    "gaussian.two 61812 2"
    "point.two 61812 2"
    "patch.tri 29106 2"
    "finite_patch.tri 29106 2"
    "point.tri 29106 2"
    "column.one 10201 2"
)

# Best of three wall-clock runs of a command, in nanoseconds.
best_of_three() {
    local best=
    for _ in 1 2 3; do
        local start end
        start=$(date +%s%N)
        if ! "$@" > /dev/null; then
            echo "failed: $*" >&2
            exit 1
        fi
        end=$(date +%s%N)
        local took=$((end - start))
        if [ -z "$best" ] || [ "$took" -lt "$best" ]; then best=$took; fi
    done
    echo "$best"
}

# Microseconds per point of one build on one grid (extra arguments go to the program).
per_point() {
    local program=$1 name=$2 points=$3 start_points=$4
    shift 4
    local whole start_up
    whole=$(best_of_three "$program" "$@" "$grids/$name")
    start_up=$(best_of_three "$program" "$@" "$grids/start_up_$name")
    awk -v w="$whole" -v s="$start_up" -v p="$points" -v q="$start_points" \
        'BEGIN { printf "%.2f", (w - s) / (p - q) / 1000 }'
}

cores=$(nproc)
printf '%-18s %8s %12s %12s %14s\n' grid points "old µs/pt" "new 1 thread" "new $cores threads"
for entry in "${grid_list[@]}"; do
    read -r name points start_points <<< "$entry"
    before=$(per_point "$old" "$name" "$points" "$start_points")
    one=$(per_point "$new" "$name" "$points" "$start_points" --threads 1)
    all=$(per_point "$new" "$name" "$points" "$start_points" --threads "$cores")
    printf '%-18s %8s %12s %12s %14s\n' "$name" "$points" "$before" "$one" "$all"
done
