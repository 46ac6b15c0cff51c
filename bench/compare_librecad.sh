#!/bin/bash
# SPDX-License-Identifier: MIT
# compare_librecad.sh [--sizes "N..."] [--kinds "plain typed"] [--build FOLDER] [--runs R]
#
# Measures opening a generated drawing and exporting it to PDF, here and in LibreCAD (Debian package librecad, its
# program dxf2pdf): processor time and peak memory for each entity, with the run on an empty drawing taken off, so that
# program start does not count. Median of R runs. Not part of CI: it needs LibreCAD and a quiet machine.
#
#   --sizes "N..."   entity counts, by default "10000 100000 500000"
#   --kinds "K..."   plain (continuous), typed (line types) and metres (line types, drawing unit the metre), by default
#                    plain. LibreCAD scales patterns by the unit: metres cost it milliseconds for each entity
#   --build FOLDER   the build folder with bin/generate_drawing and bin/zvworkbench, by default build/release
#   --runs R         runs for each cell, by default 3
#   --limit SECONDS  a run is given up after that time, by default 900
#
# Where the workbench is not built only LibreCAD is measured, and the other way round.
set -euo pipefail

source_dir=$(cd "$(dirname "$0")/.." && pwd)
build="$source_dir/build/release"
sizes="10000 100000 500000"
kinds="plain"
runs=3
limit=900

usage() {
    sed -n '3,/^set/{/^set/!p}' "$0" | sed 's/^# \{0,1\}//'
}

while [ $# -gt 0 ]; do
    case "$1" in
    --sizes) sizes=$2; shift 2 ;;
    --kinds) kinds=$2; shift 2 ;;
    --build) build=$(cd "$2" && pwd); shift 2 ;;
    --runs) runs=$2; shift 2 ;;
    --limit) limit=$2; shift 2 ;;
    --help|-h) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
    esac
done

generator="$build/bin/generate_drawing"
workbench="$build/bin/zvworkbench"
if [ ! -x "$generator" ]; then
    echo "compare_librecad.sh: $generator is missing; build with -DZEVA_BUILD_BENCH=ON or name a --build folder" >&2
    exit 1
fi
programs=()
if command -v librecad >/dev/null; then
    programs+=(librecad)
else
    echo "LibreCAD is not installed (apt-get install librecad); measuring the workbench alone" >&2
fi
if [ -x "$workbench" ]; then
    programs+=(workbench)
else
    echo "$workbench is not built; measuring LibreCAD alone" >&2
fi
if [ ${#programs[@]} -eq 0 ]; then
    exit 1
fi

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$folder" XDG_CONFIG_HOME="$folder/config" HOME="$folder"

# Prints "seconds kilobytes": median processor time and median peak memory of the runs of one program on one drawing.
measure() {
    local program=$1 drawing=$2 command=()
    case "$program" in
    librecad) command=(librecad dxf2pdf -a "$drawing.dxf") ;; # writes into the working folder
    workbench) command=("$workbench" "$drawing.dxf" --export "$drawing.pdf" --quit) ;;
    esac
    (cd "$folder" && /usr/bin/env python3 - "$runs" "$limit" "$drawing.pdf" "${command[@]}" <<'PYTHON'
import os, signal, statistics, sys

runs, limit, result, command = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3], sys.argv[4:]
seconds, kilobytes = [], []
for _ in range(runs):
    if os.path.exists(result):
        os.remove(result)
    child = os.fork()
    if child == 0:
        signal.alarm(limit)  # survives exec and ends the program
        null = os.open(os.devnull, os.O_RDWR)
        for stream in (0, 1, 2):
            os.dup2(null, stream)
        os.execvp(command[0], command)
    _, status, usage = os.wait4(child, 0)
    if status != 0 or not os.path.exists(result):
        sys.exit(f"{' '.join(command)}: " + ("over the time limit" if os.WIFSIGNALED(status) else f"status {status}"))
    seconds.append(usage.ru_utime + usage.ru_stime)
    kilobytes.append(usage.ru_maxrss)
print(statistics.median(seconds), statistics.median(kilobytes))
PYTHON
    )
}

"$generator" "$folder/empty.dxf" --entities 0 >/dev/null
declare -A empty
for program in "${programs[@]}"; do
    empty[$program]=$(measure "$program" empty)
done

printf '%-6s %9s %-10s %10s %10s %12s %12s\n' kind entities program 'CPU s' 'peak MB' 'us/entity' 'KB/entity'
for program in "${programs[@]}"; do
    read -r seconds kilobytes <<<"${empty[$program]}"
    awk -v p="$program" -v s="$seconds" -v k="$kilobytes" \
        'BEGIN { printf "%-6s %9d %-10s %10.2f %10.1f\n", "empty", 0, p, s, k / 1024 }'
done
for kind in $kinds; do
    for size in $sizes; do
        case "$kind" in
        plain) options=(--plain) ;;
        typed) options=(--typed) ;;
        metres) options=(--typed --metres) ;;
        *) usage >&2; exit 2 ;;
        esac
        "$generator" "$folder/drawing.dxf" --entities "$size" "${options[@]}" >/dev/null
        declare -A cell=()
        for program in "${programs[@]}"; do
            if ! cell[$program]=$(measure "$program" drawing); then
                unset "cell[$program]"
                continue
            fi
            awk -v kind="$kind" -v n="$size" -v p="$program" -v cell="${cell[$program]}" -v base="${empty[$program]}" '
                BEGIN {
                    split(cell, c); split(base, b)
                    printf "%-6s %9d %-10s %10.2f %10.1f %12.2f %12.3f\n", kind, n, p, c[1], c[2] / 1024,
                           (c[1] - b[1]) / n * 1e6, (c[2] - b[2]) / n
                }'
        done
        if [ -n "${cell[librecad]:-}" ] && [ -n "${cell[workbench]:-}" ]; then
            awk -v kind="$kind" -v n="$size" -v l="${cell[librecad]}" -v lb="${empty[librecad]}" \
                -v w="${cell[workbench]}" -v wb="${empty[workbench]}" '
                BEGIN {
                    split(l, a); split(lb, ab); split(w, c); split(wb, cb)
                    cpu = a[1] - ab[1]; memory = a[2] - ab[2]
                    if (cpu > 0 && memory > 0)
                        printf "%-6s %9d %-10s %43.3fx CPU %7.3fx memory, workbench to LibreCAD\n", kind, n, "ratio",
                               (c[1] - cb[1]) / cpu, (c[2] - cb[2]) / memory
                }'
        fi
    done
done
