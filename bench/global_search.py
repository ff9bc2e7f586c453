#!/usr/bin/env python3
"""Makes a library of ALBUMS albums of PHOTOS records each (200 x 500 = 100,000 by default), then
times the global search over all of them against loading those lists alone, in one run.
Usage: bench/global_search.py BUILD_DIR [ALBUMS [PHOTOS]]   (BUILD_DIR holds bin/bench_global_search)"""
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
home = tempfile.mkdtemp(prefix="orvana-search-bench-")
library = os.path.join(home, "Library")
plist = os.path.join(home, "studio.plist")
subprocess.run([sys.executable, os.path.join(here, "make_studio_plist.py"), plist, str(photos)], check=True)
for i in range(albums):
    # Albums sorted into folders of twenty, as a library grows.
    data = os.path.join(library, f"Year {i // 20}", f"Album {i:03d}.album", "studio.data")
    os.makedirs(data)
    shutil.copyfile(plist, os.path.join(data, "studio.plist"))

r = json.loads(subprocess.run([os.path.join(build, "bin", "bench_global_search"), library], check=True,
                              stdout=subprocess.PIPE, text=True).stdout)
print(f"{r['albums']} albums, {r['records']} records, {r['matched']} matches on {r['cores']} cores: search {r['search_ms']} ms "
      f"against loading the lists alone {r['load_ms']} ms: {r['search_ms'] / r['load_ms']:.2f} (target <= 1.3)")
shutil.rmtree(home)
