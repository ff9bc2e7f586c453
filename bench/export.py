#!/usr/bin/env python3
"""Exports an album of 200 JPEGs of 12 and 24 megapixels as a web album with the preview and the
standard size (640 x 640) through orvana-cli, and makes the same two sizes with one vips process
(vipsthumbnail to 640, then to 256 from that output), in one run; prints both times, the ratio and
the export's peak memory.
Usage: bench/export.py BUILD_DIR [PHOTOS]   (BUILD_DIR holds bin/orvana-cli)"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

build = sys.argv[1]
count = int(sys.argv[2]) if len(sys.argv) > 2 else 200
here = os.path.dirname(os.path.abspath(__file__))
corpus = os.path.join(here, "..", "..", "shared", "corpus", "photos")
work = tempfile.mkdtemp(prefix="orvana-export-bench-")
album = os.path.join(work, "album")
os.makedirs(album)

# Real camera photos scaled up to 12 MP (4000 x 3000) and 24 MP (6000 x 4000), tags kept.
sources = sorted(f for f in os.listdir(corpus) if f.endswith(".jpg"))[:20]
for i in range(count):
    width, height = (4000, 3000) if i % 2 == 0 else (6000, 4000)
    target = os.path.join(album, f"IMG_{i:04d}.jpg")
    if i < 2 * len(sources):
        subprocess.run(["vips", "thumbnail", os.path.join(corpus, sources[i % len(sources)]), target + "[Q=90]", str(width),
                        "--height", str(height), "--size", "force"], check=True, stderr=subprocess.DEVNULL)
    else:
        shutil.copy(os.path.join(album, f"IMG_{i % (2 * len(sources)):04d}.jpg"), target)
files = sorted(os.path.join(album, f) for f in os.listdir(album))
megabytes = sum(os.path.getsize(f) for f in files) / 1e6

env = dict(os.environ, HOME=work)
cli = os.path.join(build, "bin", "orvana-cli")
quiet = dict(check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=env)
subprocess.run([cli, "convert", album], **quiet)
album += ".album"
subprocess.run([cli, "publish", "options", album, "--set", "NeedExportThumbnail", "0", "--set", "NeedExportPreview", "1",
                "--set", "NeedExportStandard", "1", "--set", "NeedExportFull", "0", "--set", "StandardWidth", "640",
                "--set", "StandardHeight", "640", "--set", "NeedAddWatermark", "0"], **quiet)
for f in os.listdir(album):  # the photos into the page cache, for both tools alike
    if f.endswith(".jpg"):
        with open(os.path.join(album, f), "rb") as photo:
            photo.read()


def timed(command):
    """Wall-clock seconds and the peak memory of the command alone, in MB."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=env)
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{command[0]} failed")
    return time.perf_counter() - start, usage.ru_maxrss / 1024


orvana, peak = timed([cli, "publish", "export", album])
standard = os.path.join(work, "standard")
preview = os.path.join(work, "preview")
os.makedirs(standard)
os.makedirs(preview)
photos = sorted(os.path.join(album, f) for f in os.listdir(album) if f.endswith(".jpg"))
vips640, _ = timed(["vipsthumbnail", "-s", "640x640", "-o", os.path.join(standard, "%s.jpg[Q=75]")] + photos)
made = sorted(os.path.join(standard, f) for f in os.listdir(standard))
vips256, _ = timed(["vipsthumbnail", "-s", "256x256", "-o", os.path.join(preview, "%s.jpg[Q=75]")] + made)
vips = vips640 + vips256

print(f"{count} photos, {megabytes:.0f} MB, half 12 MP and half 24 MP, {os.cpu_count()} cores")
print(f"orvana-cli publish export (256 and 640 x 640, list, page): {orvana:.2f} s, {count / orvana:.1f} photos/s")
print(f"vipsthumbnail to 640, then 256 from that: {vips640:.2f} + {vips256:.2f} = {vips:.2f} s")
print(f"throughput ratio {vips / orvana:.2f} (target >= 2.5); peak memory of the export {peak:.0f} MB (target < 400)")
shutil.rmtree(work)
