#!/usr/bin/env bash
# Runs the job-ticket benchmark once and prints the two figures it is judged
# by: the writer's time at 100,000 pages against 10,000 (linear growth: at most
# 12 times), and the writer against xmllint reading the same document (at most
# 1). Exits 1 when either figure is out of bounds.
#
# Usage: bench/jotf_bench.sh BUILD_DIR   (configured with -DZORVA_BENCH=ON)
set -euo pipefail

build="${1:?usage: bench/jotf_bench.sh BUILD_DIR}"
json="$(mktemp)"
trap 'rm -f "$json"' EXIT
"$build/bench/jotf_bench" --benchmark_format=json --benchmark_repetitions=3 \
  --benchmark_report_aggregates_only=true >"$json"

python3 - "$json" <<'PY'
import json, sys
runs = json.load(open(sys.argv[1]))["benchmarks"]
time = {r["run_name"]: r["real_time"] for r in runs if r.get("aggregate_name") == "median"}
w10, w100 = time["BM_WriteJotf/10000"], time["BM_WriteJotf/100000"]
x10, x100 = time["BM_XmllintReadsJotf/10000"], time["BM_XmllintReadsJotf/100000"]
growth = w100 / w10
print(f"writer:  10,000 pages {w10:9.1f} ms   100,000 pages {w100:9.1f} ms   growth {growth:.2f}x (limit 12x)")
print(f"xmllint: 10,000 pages {x10:9.1f} ms   100,000 pages {x100:9.1f} ms")
print(f"writer / xmllint: {w10 / x10:.2f} at 10,000, {w100 / x100:.2f} at 100,000 (limit 1)")
ok = growth <= 12 and w10 <= x10 and w100 <= x100
print("within bounds" if ok else "OUT OF BOUNDS")
sys.exit(0 if ok else 1)
PY
