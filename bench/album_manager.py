#!/usr/bin/env python3
"""Makes a folder of ALBUMS albums (200 by default) of PHOTOS thumbnails and records each, then
shows it in the album manager (offscreen): the time until every cell shows its first thumbnail
(target within 1 s) and how late a 10 ms timer fires while the cells animate (responsiveness).
Usage: bench/album_manager.py BUILD_DIR [ALBUMS [PHOTOS]]   (BUILD_DIR holds bin/bench_album_manager)"""
import json
import os
import shutil
import subprocess
import sys
import tempfile

build = sys.argv[1]
albums = int(sys.argv[2]) if len(sys.argv) > 2 else 200
photos = int(sys.argv[3]) if len(sys.argv) > 3 else 500
here = os.path.dirname(os.path.abspath(__file__))
home = tempfile.mkdtemp(prefix="orvana-manager-bench-")
library = os.path.join(home, "Library")
plist = os.path.join(home, "studio.plist")
subprocess.run([sys.executable, os.path.join(here, "make_studio_plist.py"), plist, str(photos)], check=True)
thumbnail = os.path.join(home, "thumbnail.jpg")
photo = os.path.join(here, "..", "..", "shared", "corpus", "photos", "drewnoakes-Canon_PowerShot_S330.jpg")
subprocess.run(["vipsthumbnail", "-s", "128x128", "-o", thumbnail, photo], check=True)
linked = 0
source = thumbnail
for i in range(albums):
    thumbs = os.path.join(library, f"Album {i:03d}.album", "studio.data", "size_thumbnail")
    os.makedirs(thumbs)
    shutil.copyfile(plist, os.path.join(os.path.dirname(thumbs), "studio.plist"))
    for p in range(photos):
        # A file takes at most 65,000 names on ext4: a fresh copy for every 50,000.
        if linked % 50000 == 0:
            source = f"{thumbnail}.{linked}"
            shutil.copyfile(thumbnail, source)
        os.link(source, os.path.join(thumbs, f"IMG_{p:06d}.JPG"))
        linked += 1

env = dict(os.environ, HOME=home, QT_QPA_PLATFORM="offscreen", LANG="C.UTF-8", LC_ALL="C.UTF-8")
env.pop("XDG_DOCUMENTS_DIR", None)
r = json.loads(subprocess.run([os.path.join(build, "bin", "bench_album_manager"), library], env=env, check=True,
                              stdout=subprocess.PIPE, text=True).stdout)
print(f"{r['cells']} album cells in {r['cells_ms']} ms, every first thumbnail in {r['pictures_ms']} ms (target <= 1000); "
      f"while animating, a 10 ms timer fired at most {r['worst_late_ms']} ms late over {r['ticks']} ticks")
shutil.rmtree(home)
