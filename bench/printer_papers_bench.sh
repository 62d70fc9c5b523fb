#!/usr/bin/env bash
# Starts ippeveprinter (with its private D-Bus) holding a catalogue of 2,000
# papers, runs the printer paper benchmark against it once and prints the two
# figures it is judged by: fetch and translate against ipptool asking for the
# same attribute (at least 5 times faster), and against the transport and
# decoding alone (at most 3 times slower). Exits 1 when either is out of bounds.
#
# Usage: bench/printer_papers_bench.sh BUILD_DIR   (configured with -DZORVA_BENCH=ON)
set -euo pipefail

build="${1:?usage: bench/printer_papers_bench.sh BUILD_DIR}"
work="$(mktemp -d)"
bus_pid=""
printer_pid=""
cleanup() {
  [ -n "$printer_pid" ] && kill "$printer_pid" 2>/dev/null && wait "$printer_pid" 2>/dev/null || true
  [ -n "$bus_pid" ] && kill "$bus_pid" 2>/dev/null && wait "$bus_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

python3 - "$work/attrs.conf" <<'PY'
import sys
colors = ["white", "blue", "yellow", "pink", "ivory"]
types = ["stationery", "bond", "labels", "envelope"]
papers = []
for i in range(2000):
    papers.append(
        f'{{ MEMBER keyword media-key "paper-{i}" MEMBER name media-description "Paper number {i}" '
        f'MEMBER collection media-size {{ MEMBER integer x-dimension 21000 MEMBER integer y-dimension 29700 }} '
        f'MEMBER keyword media-color "{colors[i % 5]}" MEMBER keyword media-type "{types[i % 4]}" '
        f'MEMBER integer media-weight-metric {60 + i % 240} '
        f'MEMBER keyword media-front-coating "glossy" MEMBER keyword media-back-coating "none" }}')
with open(sys.argv[1], "w") as f:
    f.write('ATTR keyword printer-make-and-model "Zorva Bench"\n')
    f.write("ATTR collection media-col-database " + ",".join(papers) + "\n")
PY

cat >"$work/media.test" <<'EOF2'
{
  NAME "media-col-database"
  OPERATION Get-Printer-Attributes
  GROUP operation-attributes-tag
  ATTR charset attributes-charset utf-8
  ATTR naturalLanguage attributes-natural-language en
  ATTR uri printer-uri $uri
  ATTR keyword requested-attributes media-col-database
  STATUS successful-ok
}
EOF2

mkdir -p "$work/spool"
dbus-daemon --session --nofork --nopidfile --address="unix:path=$work/bus.sock" >/dev/null 2>&1 &
bus_pid=$!
for _ in $(seq 100); do [ -S "$work/bus.sock" ] && break; sleep 0.02; done
port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1",0)); print(s.getsockname()[1])')
DBUS_SYSTEM_BUS_ADDRESS="unix:path=$work/bus.sock" ippeveprinter -a "$work/attrs.conf" -p "$port" \
  -n localhost -d "$work/spool" -r off ZorvaBench >"$work/printer.log" 2>&1 &
printer_pid=$!
for _ in $(seq 200); do
  (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null && break
  sleep 0.02
done

json="$work/bench.json"
ZORVA_BENCH_PRINTER="127.0.0.1:$port" ZORVA_BENCH_IPPTOOL_TEST="$work/media.test" \
  "$build/bench/printer_papers_bench" --benchmark_format=json --benchmark_repetitions=5 \
  --benchmark_report_aggregates_only=true >"$json"

python3 - "$json" <<'PY'
import json, sys
runs = json.load(open(sys.argv[1]))["benchmarks"]
if any(r.get("error_occurred") for r in runs):
    sys.exit("benchmark failed: " + "; ".join(r.get("error_message", "") for r in runs if r.get("error_occurred")))
t = {r["run_name"].removesuffix("/real_time"): r["real_time"] for r in runs if r.get("aggregate_name") == "median"}
fetch, raw = t["BM_FetchAndTranslate"], t["BM_TransportAndDecode"]
call, tool = t["BM_LibraryRequestCall"], t["BM_Ipptool"]
print(f"fetch + translate (2,000 papers): {fetch:8.2f} ms")
print(f"transport + decode alone:         {raw:8.2f} ms")
print(f"library's plain request call:     {call:8.2f} ms")
print(f"ipptool, same attribute:          {tool:8.2f} ms")
print(f"ipptool / fetch: {tool / fetch:.1f}x (at least 5x)")
print(f"fetch / transport+decode: {fetch / raw:.2f}x (at most 3x)")
ok = tool / fetch >= 5 and fetch / raw <= 3
print("within bounds" if ok else "OUT OF BOUNDS")
sys.exit(0 if ok else 1)
PY
