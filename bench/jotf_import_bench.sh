#!/usr/bin/env bash
# Runs the job-ticket import benchmark once and prints the two figures it is
# judged by: import at 100,000 exception pages against 10,000 (at most 12
# times) and import against xmllint reading the same file (at most 1.5).
# Exits 1 when either figure is out of bounds.
#
# Usage: bench/jotf_import_bench.sh BUILD_DIR   (configured with -DZORVA_BENCH=ON)
set -euo pipefail

build="${1:?usage: bench/jotf_import_bench.sh BUILD_DIR}"
json="$(mktemp)"
trap 'rm -f "$json"' EXIT
ZORVA_BUNDLE_PATH="${ZORVA_BUNDLE_PATH:-$build/bundles}" \
  "$build/bench/jotf_import_bench" --benchmark_format=json --benchmark_repetitions=3 \
  --benchmark_report_aggregates_only=true >"$json"

python3 - "$json" <<'PY'
import json, sys
runs = json.load(open(sys.argv[1]))["benchmarks"]
time = {r["run_name"]: r["real_time"] for r in runs if r.get("aggregate_name") == "median"}
i10, i100 = time["BM_ImportJotf/10000"], time["BM_ImportJotf/100000"]
x10, x100 = time["BM_XmllintReadsImportedJotf/10000"], time["BM_XmllintReadsImportedJotf/100000"]
growth = i100 / i10
print(f"import:  10,000 pages {i10:9.1f} ms   100,000 pages {i100:9.1f} ms   growth {growth:.2f}x (limit 12x)")
print(f"xmllint: 10,000 pages {x10:9.1f} ms   100,000 pages {x100:9.1f} ms")
print(f"import / xmllint: {i10 / x10:.2f} at 10,000, {i100 / x100:.2f} at 100,000 (limit 1.5)")
ok = growth <= 12 and i100 <= 1.5 * x100
print("within bounds" if ok else "OUT OF BOUNDS")
sys.exit(0 if ok else 1)
PY
