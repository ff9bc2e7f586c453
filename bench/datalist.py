#!/usr/bin/env python3
"""Loads and saves one big album property list with Orvana's data list, Python's plistlib and
libplist's plistutil, in one run, and prints the times and the ratios.
Usage: bench/datalist.py BUILD_DIR [RECORDS]   (BUILD_DIR holds bin/bench_datalist)"""
import json
import os
import plistlib
import subprocess
import sys
import tempfile
import time

RUNS = 3
build = sys.argv[1]
records = int(sys.argv[2]) if len(sys.argv) > 2 else 50000
here = os.path.dirname(os.path.abspath(__file__))
work = tempfile.mkdtemp(prefix="orvana-bench-")
studio = os.path.join(work, "studio.plist")
subprocess.run([sys.executable, os.path.join(here, "make_studio_plist.py"), studio, str(records)], check=True)

ours = json.loads(subprocess.run([os.path.join(build, "bin", "bench_datalist"), studio, str(RUNS)],
                                 check=True, capture_output=True, text=True).stdout)

def best(action):
    times = []
    for _ in range(RUNS):
        start = time.perf_counter()
        action()
        times.append((time.perf_counter() - start) * 1000)
    return min(times)

with open(studio, "rb") as f:
    raw = f.read()
loaded = plistlib.loads(raw)
plistlib_load = best(lambda: plistlib.loads(raw))
plistlib_save = best(lambda: plistlib.dumps(loaded, sort_keys=False))
# plistutil reads the XML and writes it out again in binary form, the cheapest output it has.
plistutil_load = best(lambda: subprocess.run(["plistutil", "-i", studio, "-o", os.path.join(work, "out.bin"), "-f", "bin"], check=True))

size_kb = ours["file_kb"]
print(f"file: {records} records, {size_kb / 1024:.1f} MB")
print(f"load: orvana {ours['load_ms']:.0f} ms, plistlib {plistlib_load:.0f} ms, plistutil {plistutil_load:.0f} ms")
print(f"save: orvana {ours['save_ms']:.0f} ms, plistlib {plistlib_save:.0f} ms")
print(f"memory: {ours['load_peak_kb'] / 1024:.0f} MB to load ({ours['load_peak_kb'] / size_kb:.2f} x the file), "
      f"{ours['peak_kb'] / 1024:.0f} MB with a save")
print(f"ratios: load/plistlib {ours['load_ms'] / plistlib_load:.2f} (target <= 0.50), "
      f"load/plistutil {ours['load_ms'] / plistutil_load:.2f} (target <= 1.00), "
      f"save/plistlib {ours['save_ms'] / plistlib_save:.2f} (target <= 1.00), "
      f"load memory/file {ours['load_peak_kb'] / size_kb:.2f} (target < 4)")
