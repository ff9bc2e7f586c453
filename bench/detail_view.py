#!/usr/bin/env python3
"""Times the detail view of a 24-megapixel JPEG against `vipsthumbnail -s 1920` on the same file,
in one run, best of five each, and the next photo once the view has decoded it ahead.
Usage: bench/detail_view.py BUILD_DIR   (BUILD_DIR holds bin/bench_detail_view)"""
import json
import os
import subprocess
import sys
import tempfile
import time

RUNS = 5
build = sys.argv[1]
here = os.path.dirname(os.path.abspath(__file__))
source = os.path.join(here, "..", "..", "shared", "corpus", "photos", "drewnoakes-Canon_PowerShot_S330.jpg")
work = tempfile.mkdtemp(prefix="orvana-detail-bench-")
photos = []
for name, scale in (("a.jpg", 7.5), ("b.jpg", 7.6)):
    # 800 x 600 scaled up, then cut to 6000 x 4000: 24 megapixels of real picture content.
    big = os.path.join(work, "big-" + name)
    subprocess.run(["vips", "resize", source, big + "[Q=92]", str(scale)], check=True)
    photos.append(os.path.join(work, name))
    subprocess.run(["vips", "crop", big, photos[-1] + "[Q=92]", "0", "0", "6000", "4000"], check=True)
    os.remove(big)

env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
ours = json.loads(subprocess.run([os.path.join(build, "bin", "bench_detail_view"), photos[0], photos[1], str(RUNS)],
                                 check=True, capture_output=True, text=True, env=env).stdout)
peer = []
for _ in range(RUNS):
    start = time.perf_counter()
    subprocess.run(["vipsthumbnail", "-s", "1920", "-o", os.path.join(work, "tn_%s.jpg"), photos[0]], check=True)
    peer.append((time.perf_counter() - start) * 1000)
print(f"24 MP JPEG fitted to 1920 x 1080: detail view {ours['first_ms']:.0f} ms, vipsthumbnail -s 1920 {min(peer):.0f} ms")
print(f"ratio {ours['first_ms'] / min(peer):.2f} (target <= 1.2); next photo decoded ahead {ours['next_ms']:.1f} ms (target <= 50)")
