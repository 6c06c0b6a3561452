#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Prints the scaling table of bench/README.md: files of growing rows and of
# growing columns, each opened in the window (time until the table is
# painted, and the memory the open adds at its peak to the idle program as a
# multiple of the file's size), then sorted by the reaction time through
# its header; and, for the 1,000,000-row file, hiding every tenth row as a
# selection and showing all rows again. Run by hand from the source tree
# after a build:
#
#     bench/scaling.sh [--ten-million] [BUILD_DIR]
#
# --ten-million adds the file of 10,000,000 rows (about 950 MB; writing it
# takes up to a minute, opening it about 1.2 GB of memory). Each figure
# is the best of RUNS runs (default 3; 1 for the largest files), each a
# program of its own. The machine should be quiet: the first and last
# lines say how loaded it was.
set -eu

ten_million=0
if [ "${1:-}" = "--ten-million" ]; then
    ten_million=1
    shift
fi
build=$(cd "${1:-build}" && pwd)
generate="$build/tools/zephlane-sampledata"
timing="$build/bench/zephlane-open-timing"
runs=${RUNS:-3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"

value() { awk -v key="$1" '$1 == key { print $2 }'; }
load() { cut -d' ' -f1-3 /proc/loadavg; }

# Runs for a file of $1 bytes: the largest files once.
runs_for() {
    if [ "$1" -gt 500000000 ]; then echo 1; else echo "$runs"; fi
}

# Each run is a program of its own, as a user's open is: none finds memory
# that an earlier one left to it. Prints the timing program's output of
# the first run with each time the least of all runs.
best_of() {
    n=$1
    shift
    for run in $(seq "$n"); do
        "$timing" "$@" 1
    done | awk '$1 ~ /_seconds$/ { if (!($1 in best) || $2 < best[$1]) best[$1] = $2; next }
                !($1 in first) { first[$1] = $2 }
                END { for (key in best) print key, best[key]; for (key in first) print key, first[key] }'
}

# One line of the table for a file of $1 rows and $2 fields.
measure() {
    file="$work/shape.txt"
    "$generate" --out "$file" --rows "$1" --columns "$2" >/dev/null
    size=$(stat -c %s "$file")
    n=$(runs_for "$size")
    window=$(best_of "$n" "$file" window)
    sort=$(best_of "$n" "$file" sort | value sort_seconds)
    awk -v rows="$1" -v fields="$2" -v size="$size" -v open="$(echo "$window" | value window_seconds)" \
        -v memory="$(echo "$window" | value window_peak_x_file)" -v sort="$sort" 'BEGIN {
        printf "| %10s | %7s | %8.1f | %8.3f | %7.1f | %6.2f | %7.3f |\n",
               rows, fields, size / 1e6, open, size / 1e6 / open, memory, sort }'
    if [ "$1" = 1000000 ] && [ "$2" = 16 ]; then
        best_of "$n" "$file" hide >"$work/hide.txt"
    fi
    rm -f "$file"
}

echo "Date: $(date -u '+%Y-%m-%d %H:%M UTC'); cores: $(nproc); load average before: $(load)"
echo
echo "|       rows |  fields |       MB |   open s |    MB/s | memory | sort s |"
echo "|-----------:|--------:|---------:|---------:|--------:|-------:|-------:|"
for shape in "10000 16" "100000 16" "1000000 16"; do
    measure $shape
done
if [ "$ten_million" = 1 ]; then
    measure 10000000 16
fi
for shape in "100 16" "100 500" "100 5000" "100 100000" "100000 1000"; do
    measure $shape
done
echo
echo "1,000,000 rows: hiding every tenth row (100,000 selected) $(value hide_seconds <"$work/hide.txt") s," \
     "showing all rows again $(value show_seconds <"$work/hide.txt") s"
echo "Load average after: $(load)"
