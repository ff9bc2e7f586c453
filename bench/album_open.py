#!/usr/bin/env python3
"""Makes an album of 20,000 photos whose list matches its files, then times opening it with the
outside-change check on against loading its list alone plus one stat per photo file.
Usage: bench/album_open.py BUILD_DIR [PHOTOS]"""
import json
import os
import plistlib
import shutil
import subprocess
import sys
import tempfile
import time

build = sys.argv[1]
count = int(sys.argv[2]) if len(sys.argv) > 2 else 20000
here = os.path.dirname(os.path.abspath(__file__))
photo = os.path.join(here, "..", "..", "shared", "corpus", "photos", "drewnoakes-Canon_PowerShot_S330.jpg")
album = tempfile.mkdtemp(prefix="orvana-open-bench-")
os.makedirs(os.path.join(album, "studio.data", "size_thumbnail"))

def text(moment):
    return time.strftime("%Y-%m-%d %H:%M:%S", time.localtime(moment))

items = []
for i in range(count):
    name = f"IMG_{i:05d}.jpg"
    path = os.path.join(album, name)
    shutil.copyfile(photo, path)
    stat = os.stat(path)
    items.append({"File": name, "Size": str(stat.st_size), "Modified": text(stat.st_mtime), "Created": text(stat.st_mtime),
                  "Archived": text(stat.st_mtime), "Width": "800", "Height": "600", "CameraMaker": "Canon",
                  "CameraModel": "Canon PowerShot S330", "CaptureDate": "2002-11-16 15:27:01"})
with open(os.path.join(album, "studio.data", "studio.plist"), "wb") as f:
    plistlib.dump({"Format": "com.veltrix.orvana.studio.datalist", "Version": "1.0", "Title": "Open", "Items": items}, f,
                  sort_keys=False)

result = json.loads(subprocess.run([os.path.join(build, "bin", "bench_album_open"), album, "3"], check=True,
                                   capture_output=True, text=True).stdout)
base = result["load_ms"] + result["stat_ms"]
print(f"{result['photos']} photos; load {result['load_ms']:.0f} ms, one stat per photo {result['stat_ms']:.0f} ms, "
      f"open with the check {result['open_ms']:.0f} ms (changes found: {result['changed']})")
print(f"ratio {result['open_ms'] / base:.2f} (target <= 1.5)")
shutil.rmtree(album)
