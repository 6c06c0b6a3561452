#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Times the open of a 1,000,000-row, 16-field file side by side with reading
# its bytes, pandas' C reader and DuckDB's parallel reader (2 threads), all
# as text, then prints the ratios and how the program's time grows with rows
# and columns (bench/scaling.sh measures that at more sizes, with memory and
# sorting). Run by hand from the source tree after a build:
#
#     bench/compare_open.sh [BUILD_DIR]
#
# Needs python3-pandas (tools/install-deps.sh) and npm; DuckDB's package
# is installed into a temporary folder that is removed afterwards.
set -eu

build=$(cd "${1:-build}" && pwd)
generate="$build/tools/zephlane-sampledata"
timing="$build/bench/zephlane-open-timing"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The header block of a sample file: dotted lines and the empty line after.
header_lines=12

export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"

# A sample file of $2 rows and $3 fields (at least 14; fewer keep only the
# reaction time and the fields before it) at $1.
make_file() {
    if [ "$3" -ge 14 ]; then
        "$generate" --out "$1" --rows "$2" --columns "$3" >/dev/null
    else
        "$generate" --out "$work/full.txt" --rows "$2" >/dev/null
        awk -F'\t' -v OFS='\t' -v keep="$3" -v header="$header_lines" '
            NR <= header { print; next }
            { line = $12; for (i = 1; i < keep; ++i) line = line OFS $i; print line }' \
            "$work/full.txt" >"$1"
    fi
}

value() { awk -v key="$1" '$1 == key { print $2 }'; }

pandas_seconds() {
    # Debian's own interpreter, which python3-pandas installs for.
    /usr/bin/python3 - "$1" "$header_lines" <<'EOF'
import csv, sys, time
import pandas
best = None
for _ in range(3):
    start = time.perf_counter()
    pandas.read_csv(sys.argv[1], sep='\t', dtype=str, header=None, skiprows=int(sys.argv[2]),
                    quoting=csv.QUOTE_NONE, keep_default_na=False)
    took = time.perf_counter() - start
    best = took if best is None else min(best, took)
print(best)
EOF
}

duckdb_seconds() {
    (cd "$work/duckdb" && node -e '
const { DuckDBInstance } = require("@duckdb/node-api");
(async () => {
    const instance = await DuckDBInstance.create(":memory:", { threads: "2" });
    const connection = await instance.connect();
    let best = Infinity;
    for (let run = 0; run < 3; ++run) {
        await connection.run("DROP TABLE IF EXISTS t");
        const start = process.hrtime.bigint();
        await connection.run(`CREATE TABLE t AS SELECT * FROM read_csv(${JSON.stringify(process.argv[1]).replace(/"/g, "\x27")},
            delim = \x27\t\x27, all_varchar = true, quote = \x27\x27, escape = \x27\x27,
            header = false, skip = ${process.argv[2]})`);
        best = Math.min(best, Number(process.hrtime.bigint() - start) / 1e9);
    }
    console.log(best);
})();' "$1" "$header_lines")
}

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
ms_per_mb() { awk -v s="$1" -v mb="$2" 'BEGIN { printf "%.2f", s * 1000 / mb }'; }

echo "Installing @duckdb/node-api into a temporary folder..." >&2
mkdir "$work/duckdb"
(cd "$work/duckdb" && npm install --silent --no-audit --no-fund @duckdb/node-api >/dev/null)

file="$work/million.txt"
make_file "$file" 1000000 16
size=$(stat -c %s "$file")
bytes=$("$timing" "$file" bytes | value bytes_seconds)
model_out=$("$timing" "$file" model)
window_out=$("$timing" "$file" window)
model=$(echo "$model_out" | value model_seconds)
window=$(echo "$window_out" | value window_seconds)
pandas=$(pandas_seconds "$file")
duckdb=$(duckdb_seconds "$file")

echo "1,000,000 rows x 16 fields, $(ratio "$size" 1000000) MB"
echo "  bytes only            $bytes s"
echo "  pandas (all text)     $pandas s"
echo "  DuckDB (2 threads)    $duckdb s"
echo "  model only            $model s"
echo "  in the window         $window s"
echo "  model peak            $(echo "$model_out" | value model_peak_mb) MB = $(echo "$model_out" | value model_peak_x_file) x file"
echo "  window peak           $(echo "$window_out" | value window_peak_mb) MB = $(echo "$window_out" | value window_peak_x_file) x file"
echo "  window / DuckDB       $(ratio "$window" "$duckdb")   (at most 0.25)"
echo "  window / pandas       $(ratio "$window" "$pandas")   (at most 0.1)"
echo "  model / DuckDB        $(ratio "$model" "$duckdb")"

# Growth: time per MB should stay about the same down each table.
echo
echo "rows       fields  MB      model s  window s  model ms/MB"
for shape in "10000 16" "100000 16" "1000000 16" "10000 1" "10000 50" "10000 500" "100000 500"; do
    set -- $shape
    make_file "$work/shape.txt" "$1" "$2"
    mb=$(ratio "$(stat -c %s "$work/shape.txt")" 1000000)
    model=$("$timing" "$work/shape.txt" model | value model_seconds)
    window=$("$timing" "$work/shape.txt" window | value window_seconds)
    printf '%-10s %-7s %-7s %-8.4f %-9.4f %s\n' "$1" "$2" "$mb" "$model" "$window" "$(ms_per_mb "$model" "$mb")"
done
