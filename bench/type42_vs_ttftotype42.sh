#!/usr/bin/env bash
# Compares zorva-type42 (the stand-alone converter scripts use) and, for
# reference, `zorva type42` with ttftotype42 (Debian lcdf-typetools) on the
# same fonts in one run. Each tool converts each font RUNS times, writing
# through standard output to a file. Reported for each tool:
#   MB/S      input font bytes per second of wall time, start-up included
#   CPU-MB/S  the same per second of CPU time (user + system) of the tool's
#             process, which a busy machine disturbs less (the loop's own cost,
#             measured with /bin/true, is taken off)
#   NET-MB/S  CPU throughput after taking off the tool's own start-up (the
#             CPU time of `--version`), i.e. the conversion itself
#   PEAK/OUT  peak resident memory over the size of the program written;
#             NET/OUT takes off the tool's idle peak (`--version`) first
# The ratio line of each font gives each zorva program's figures over
# ttftotype42's. Targets (for zorva-type42): at least 3x the other's
# throughput and peak memory under 3x its output; the verdict says which
# measures meet them. Exit status 1 when a whole-tool (wall-time or
# total-memory) target of zorva-type42 is missed.
#
# Usage: bench/type42_vs_ttftotype42.sh [-n RUNS] [ZORVA [ZORVA_TYPE42]]
#   RUNS          conversions per tool and font (default 20)
#   ZORVA         the full tool (default build/zorva; use an optimised build)
#   ZORVA_TYPE42  the stand-alone converter (default: zorva-type42 beside ZORVA)
set -euo pipefail

usage() {
  echo "usage: $0 [-n RUNS] [ZORVA]" >&2
  exit 2
}

runs=20
while getopts "n:h" opt; do
  case "$opt" in
    n) runs=$OPTARG ;;
    *) usage ;;
  esac
done
shift $((OPTIND - 1))
[ $# -le 2 ] || usage
[[ "$runs" =~ ^[1-9][0-9]*$ ]] || usage
zorva=${1:-build/zorva}
lean=${2:-$(dirname "$zorva")/zorva-type42}

for tool in "$lean" "$zorva" ttftotype42 /usr/bin/time; do
  if ! command -v "$tool" >/dev/null; then
    echo "type42 bench: $tool not found (ttftotype42: apt-get install lcdf-typetools;" \
      "/usr/bin/time: apt-get install time)" >&2
    exit 2
  fi
done

# Font|zorva options|label|judged. Droid's large tables need splitting to
# convert whole. DejaVu and Droid carry the targets; Liberation, a small font
# where start-up weighs most, is shown for reference only.
cases=(
  "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf||DejaVuSans|yes"
  "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf|--split-large-tables|DroidSansFallbackFull (split)|yes"
  "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf|--split-large-tables|LiberationSans (split, reference)|no"
)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# "wall cpu" seconds for RUNS runs of the command, output to a file.
time_runs() {
  "$@" >"$work/out" 2>/dev/null || true # warm the page cache
  /usr/bin/time -f "%e %U %S" -o "$work/time" \
    bash -c 'n=$1; shift; for ((i = 0; i < n; i++)); do "$@" >"$0/out" 2>/dev/null || true; done' \
    "$work" "$runs" "$@"
  awk '{ printf "%s %.4f\n", $1, $2 + $3 }' "$work/time"
}

# Peak resident set of one run, in bytes.
peak_bytes() {
  /usr/bin/time -f "%M" -o "$work/time" "$@" >"$work/out" 2>/dev/null || true
  echo $(($(tail -n 1 "$work/time") * 1024))
}

read -r _ harness_cpu < <(time_runs /bin/true)
read -r _ lean_idle_cpu < <(time_runs "$lean" --version)
read -r _ ours_idle_cpu < <(time_runs "$zorva" --version)
read -r _ theirs_idle_cpu < <(time_runs ttftotype42 --version)
lean_idle_peak=$(peak_bytes "$lean" --version)
ours_idle_peak=$(peak_bytes "$zorva" --version)
theirs_idle_peak=$(peak_bytes ttftotype42 --version)

failed=0
row() { printf '%-30s %-12s %9s %9s %9s %8s %8s %8s\n' "$@"; }
row FONT TOOL MB/S CPU-MB/S NET-MB/S OUT-MB PEAK/OUT NET/OUT
for entry in "${cases[@]}"; do
  IFS='|' read -r font options label judged <<<"$entry"
  if [ ! -f "$font" ]; then
    echo "$label: $font missing, skipped"
    continue
  fi
  size=$(stat -c %s "$font")
  # shellcheck disable=SC2206 # options is empty or one flag
  lean_cmd=("$lean" $options "$font")
  # shellcheck disable=SC2206
  ours=("$zorva" type42 $options "$font")
  theirs=(ttftotype42 "$font")

  declare -A fig=()
  for who in lean ours theirs; do
    if [ "$who" = lean ]; then declare -n cmd=lean_cmd; else declare -n cmd=$who; fi
    "${cmd[@]}" >"$work/$who.t42" 2>/dev/null || true
    out=$(stat -c %s "$work/$who.t42")
    read -r wall cpu < <(time_runs "${cmd[@]}")
    cpu=$(awk -v c="$cpu" -v h="$harness_cpu" 'BEGIN { printf "%.4f", c - h }')
    peak=$(peak_bytes "${cmd[@]}")
    idle_cpu=${who}_idle_cpu idle_peak=${who}_idle_peak
    read -r fig[$who.rate] fig[$who.cpu] fig[$who.net] fig[$who.out] fig[$who.mem] \
      fig[$who.netmem] < <(awk -v s="$size" -v n="$runs" -v w="$wall" -v c="$cpu" \
      -v ic="${!idle_cpu}" -v h="$harness_cpu" -v o="$out" -v p="$peak" -v ip="${!idle_peak}" 'BEGIN {
        net = c - (ic - h); if (net <= 0) net = 1e-9
        printf "%.1f %.1f %.1f %.2f %.2f %.2f\n", s * n / w / 1e6, s * n / c / 1e6,
          s * n / net / 1e6, o / 1e6, p / o, (p - ip) / o }')
    unset -n cmd
  done
  row "$label" zorva-type42 "${fig[lean.rate]}" "${fig[lean.cpu]}" "${fig[lean.net]}" \
    "${fig[lean.out]}" "${fig[lean.mem]}" "${fig[lean.netmem]}"
  row "" "zorva type42" "${fig[ours.rate]}" "${fig[ours.cpu]}" "${fig[ours.net]}" \
    "${fig[ours.out]}" "${fig[ours.mem]}" "${fig[ours.netmem]}"
  row "" ttftotype42 "${fig[theirs.rate]}" "${fig[theirs.cpu]}" "${fig[theirs.net]}" \
    "${fig[theirs.out]}" "${fig[theirs.mem]}" "${fig[theirs.netmem]}"
  echo "  $(awk -v a="${fig[ours.rate]}" -v b="${fig[theirs.rate]}" -v ca="${fig[ours.cpu]}" \
    -v cb="${fig[theirs.cpu]}" -v m="${fig[ours.mem]}" 'BEGIN {
      printf "zorva type42 (reference): ratio wall %.2fx, cpu %.2fx; memory %.2fx output\n",
        a / b, ca / cb, m }')"
  verdict=$(awk -v a="${fig[lean.rate]}" -v b="${fig[theirs.rate]}" \
    -v ca="${fig[lean.cpu]}" -v cb="${fig[theirs.cpu]}" \
    -v na="${fig[lean.net]}" -v nb="${fig[theirs.net]}" \
    -v m="${fig[lean.mem]}" -v nm="${fig[lean.netmem]}" 'BEGIN {
      printf "zorva-type42: ratio wall %.2fx, cpu %.2fx, net %.2fx; memory %s, net %s; ", a / b,
        ca / cb, na / nb, m < 3 ? "met" : "MISSED", nm < 3 ? "met" : "MISSED"
      printf "%s\n", (a / b >= 3 && m < 3) ? "whole-tool targets met" : "whole-tool targets MISSED" }')
  echo "  $verdict"
  if [[ "$judged" == yes && "$verdict" != *"whole-tool targets met"* ]]; then failed=1; fi
done
echo "($runs runs per tool and font; MB = 10^6 bytes)"
exit "$failed"
