#!/bin/bash
# Usage: bench/side_by_side.sh OLD_BUILD NEW_BUILD [RUNS]  (build folders holding suite/brenmoor/brenmoor-calc; RUNS rounds, 5 unless given)
#
# The eight grids of bench/grids through brenmoor-calc of two builds, one after
# the other on the same machine, taking turns: each grid's best run less the
# best run of its start-up file (the same model on two points), per grid
# point, in microseconds of wall-clock time. The old build runs as it runs (a
# build without --threads is one thread), the new one on one thread and on
# all cores. The output file goes through standard output into /dev/null (the
# calculator refuses a device as --output). The per-point figures count every
# point of the grid, t = 0 included.
set -euo pipefail

if [ $# -lt 2 ] || [ $# -gt 3 ]; then
    echo "usage: $0 OLD_BUILD NEW_BUILD [RUNS]" >&2
    exit 2
fi
runs=${3:-5}
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

# Wall-clock nanoseconds of one run of a command.
took() {
    local start end
    start=$(date +%s%N)
    if ! "$@" > /dev/null; then
        echo "failed: $*" >&2
        exit 1
    fi
    end=$(date +%s%N)
    echo $((end - start))
}

smaller() { if [ -z "$1" ] || [ "$2" -lt "$1" ]; then echo "$2"; else echo "$1"; fi; }

# Microseconds per point from the best whole run and the best start-up run.
per_point() {
    awk -v w="$1" -v s="$2" -v p="$3" -v q="$4" 'BEGIN { printf "%.2f", (w - s) / (p - q) / 1000 }'
}

cores=$(nproc)
printf '%-18s %8s %12s %12s %14s\n' grid points "old µs/pt" "new 1 thread" "new $cores threads"
for entry in "${grid_list[@]}"; do
    read -r name points start_points <<< "$entry"
    # The three programs take turns, RUNS rounds, each keeping its best whole
    # run and its best start-up run: a machine whose speed drifts slows them
    # alike.
    old_w= old_s= one_w= one_s= all_w= all_s=
    for _ in $(seq "$runs"); do
        # (each time taken on its own line, so that a failed run stops the script)
        t=$(took "$old" "$grids/$name"); old_w=$(smaller "$old_w" "$t")
        t=$(took "$old" "$grids/start_up_$name"); old_s=$(smaller "$old_s" "$t")
        t=$(took "$new" --threads 1 "$grids/$name"); one_w=$(smaller "$one_w" "$t")
        t=$(took "$new" --threads 1 "$grids/start_up_$name"); one_s=$(smaller "$one_s" "$t")
        t=$(took "$new" --threads "$cores" "$grids/$name"); all_w=$(smaller "$all_w" "$t")
        t=$(took "$new" --threads "$cores" "$grids/start_up_$name"); all_s=$(smaller "$all_s" "$t")
    done
    printf '%-18s %8s %12s %12s %14s\n' "$name" "$points" "$(per_point "$old_w" "$old_s" "$points" "$start_points")" \
        "$(per_point "$one_w" "$one_s" "$points" "$start_points")" "$(per_point "$all_w" "$all_s" "$points" "$start_points")"
done
