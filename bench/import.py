#!/usr/bin/env python3
"""Imports 200 JPEGs of 12 and 24 megapixels into a new album with orvana-cli and makes the same
thumbnails with one vipsthumbnail process, in one run, and prints throughputs, the ratio and the
import's peak memory.
Usage: bench/import.py BUILD_DIR [PHOTOS]   (BUILD_DIR holds bin/orvana-cli)"""
import os
import resource
import shutil
import subprocess
import sys
import tempfile
import time

build = sys.argv[1]
count = int(sys.argv[2]) if len(sys.argv) > 2 else 200
here = os.path.dirname(os.path.abspath(__file__))
corpus = os.path.join(here, "..", "..", "shared", "corpus", "photos")
work = tempfile.mkdtemp(prefix="orvana-import-bench-")
photos = os.path.join(work, "photos")
os.makedirs(photos)

# Real camera photos scaled up to 12 MP (4000 x 3000) and 24 MP (6000 x 4000), tags kept.
sources = sorted(f for f in os.listdir(corpus) if f.endswith(".jpg"))[:20]
for i in range(count):
    width, height = (4000, 3000) if i % 2 == 0 else (6000, 4000)
    source = os.path.join(corpus, sources[i % len(sources)])
    target = os.path.join(photos, f"IMG_{i:04d}.jpg")
    if i < 2 * len(sources):
        subprocess.run(["vips", "thumbnail", source, target + "[Q=90]", str(width), "--height", str(height),
                        "--size", "force"], check=True, stderr=subprocess.DEVNULL)
    else:
        shutil.copy(os.path.join(photos, f"IMG_{i % (2 * len(sources)):04d}.jpg"), target)
megabytes = sum(os.path.getsize(os.path.join(photos, f)) for f in os.listdir(photos)) / 1e6

cpu = {}

def timed(command, env=None):
    """Wall-clock seconds; the CPU seconds the command used go into cpu[its name]."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=env)
    elapsed = time.perf_counter() - start
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    cpu[os.path.basename(command[0])] = after.ru_utime + after.ru_stime - used.ru_utime - used.ru_stime
    return elapsed

env = dict(os.environ, HOME=work)
cli = os.path.join(build, "bin", "orvana-cli")
subprocess.run([cli, "album", "create", os.path.join(work, "album")], check=True, stdout=subprocess.DEVNULL, env=env)
before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
orvana = timed([cli, "album", "import", os.path.join(work, "album"), photos], env)
peak_mb = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss / 1024

thumbs = os.path.join(work, "thumbs")
os.makedirs(thumbs)
files = [os.path.join(photos, f) for f in sorted(os.listdir(photos))]
vips = timed(["vipsthumbnail", "-s", "128x128", "-o", os.path.join(thumbs, "%s.jpg[Q=75]")] + files)

print(f"{count} photos, {megabytes:.0f} MB, half 12 MP and half 24 MP, {os.cpu_count()} cores")
print(f"orvana-cli album import (copy, thumbnail, tags, record, save): {orvana:.1f} s, {count / orvana:.1f} photos/s, "
      f"{cpu['orvana-cli']:.1f} CPU s")
print(f"vipsthumbnail, one process, thumbnails only: {vips:.1f} s, {count / vips:.1f} photos/s, {cpu['vipsthumbnail']:.1f} CPU s")
print(f"throughput ratio {vips / orvana:.2f} (target >= 1.5); peak memory of the import {peak_mb:.0f} MB (target < 400)")
shutil.rmtree(work)
