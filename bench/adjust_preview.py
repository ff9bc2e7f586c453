#!/usr/bin/env python3
"""Times the adjust window's live preview: each slider move rebuilds the colour tables and redraws
the 480-pixel preview of a 24-megapixel JPEG from its decoded copy. Target: within 30 ms a move.
Usage: bench/adjust_preview.py BUILD_DIR   (BUILD_DIR holds bin/bench_adjust_preview)"""
import json
import os
import shutil
import subprocess
import sys
import tempfile

MOVES = 200
build = sys.argv[1]
here = os.path.dirname(os.path.abspath(__file__))
source = os.path.join(here, "..", "..", "shared", "corpus", "photos", "drewnoakes-Canon_PowerShot_S330.jpg")
work = tempfile.mkdtemp(prefix="orvana-adjust-bench-")
try:
    # 800 x 600 scaled up, then cut to 6000 x 4000: the preview is made from a real camera's size.
    big = os.path.join(work, "big.jpg")
    photo = os.path.join(work, "photo.jpg")
    subprocess.run(["vips", "resize", source, big + "[Q=92]", "7.5"], check=True)
    subprocess.run(["vips", "crop", big, photo + "[Q=92]", "0", "0", "6000", "4000"], check=True)
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    result = json.loads(subprocess.run([os.path.join(build, "bin", "bench_adjust_preview"), photo, str(MOVES)],
                                       check=True, capture_output=True, text=True, env=env).stdout)
    print(f"adjust preview {result['preview']}, {MOVES} slider moves: median {result['median_ms']:.1f} ms, "
          f"95th percentile {result['p95_ms']:.1f} ms, "
          f"worst {result['worst_ms']:.1f} ms, best {result['best_ms']:.1f} ms (target <= 30 ms)")
finally:
    shutil.rmtree(work, ignore_errors=True)
