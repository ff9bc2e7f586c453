#!/usr/bin/env python3
"""Publishes an album of 1,000 photos to a pyftpdlib server on loopback with orvana-cli, then times
a second sync of the unchanged album, which must upload the list alone; prints the time against
the 2-second target.
Usage: bench/websync.py BUILD_DIR [PHOTOS]   (BUILD_DIR holds bin/orvana-cli)"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

build = sys.argv[1]
count = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
here = os.path.dirname(os.path.abspath(__file__))
corpus = os.path.join(here, "..", "..", "shared", "corpus", "photos")
work = tempfile.mkdtemp(prefix="orvana-websync-bench-")
album = os.path.join(work, "album")
root = os.path.join(work, "server")
os.makedirs(album)
os.makedirs(os.path.join(root, "orv", "data"))
# Small real photos: the bench is about the sync's bookkeeping, not about rendering.
sources = ["exif-samples-DSCN0010.jpg", "exif-samples-DSCN0021.jpg", "exif-samples-DSCN0027.jpg"]
for i in range(count):
    shutil.copy(os.path.join(corpus, sources[i % len(sources)]), os.path.join(album, f"IMG_{i:04d}.jpg"))

python = "/usr/bin/python3" if os.path.exists("/usr/bin/python3") else sys.executable  # Debian's holds pyftpdlib
server = subprocess.Popen([python, "-u", os.path.join(here, "..", "tests", "net", "ftp_server.py"), root, "bench", "bench"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
port = int(server.stdout.readline().split()[1])
env = dict(os.environ, HOME=work, ORVANA_FTP_PASSWORD="bench")
cli = os.path.join(build, "bin", "orvana-cli")
quiet = dict(check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=env)
try:
    subprocess.run([cli, "convert", album], **quiet)
    album += ".album"
    subprocess.run([cli, "publish", "options", album, "--set", "NeedExportThumbnail", "1", "--set", "NeedExportPreview", "1",
                    "--set", "NeedExportStandard", "1", "--set", "StandardWidth", "640", "--set", "StandardHeight", "640",
                    "--set", "FTPServerAddress", f"127.0.0.1:{port}", "--set", "FTPLoginName", "bench",
                    "--set", "FTPDirectory", "orv"], **quiet)
    start = time.perf_counter()
    subprocess.run([cli, "publish", "sync", album], **quiet)
    first = time.perf_counter() - start
    start = time.perf_counter()
    again = subprocess.run([cli, "publish", "sync", album], check=True, capture_output=True, text=True, env=env)
    second = time.perf_counter() - start
finally:
    server.terminate()
    server.wait()
uploads = again.stdout.split()
print(f"{count} photos, {os.cpu_count()} cores; first publication {first:.1f} s")
print(f"second sync of the unchanged album: {second:.2f} s, {len(uploads)} upload(s): {', '.join(os.path.basename(u) for u in uploads)}")
print(f"ratio to the 2-second target {second / 2:.2f} (target <= 1)")
shutil.rmtree(work)
