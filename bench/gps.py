#!/usr/bin/env python3
"""Times Orvana's GPS import and matching against GPSBabel and gpscorrelate on the same files, in
one run, and prints the times, the peak memory and the ratios.

Usage: bench/gps.py BUILD_DIR [POINTS [PHOTOS]]   (BUILD_DIR holds bin/orvana-cli)

1. Import: `orvana-cli gps import track.gpx` into an empty store against
   `gpsbabel -i gpx -f track.gpx -o gpx -F /dev/null`; best of three each.
2. Matching: `orvana-cli gps match album --offset 2` (the track already in the store, a fresh
   copy of the album's list each run) against `gpscorrelate -n -i -m 300 -z +02:00 -g track.gpx`
   on the album's JPEG files (-n: gpscorrelate only reports, so it is not charged for writing
   10,000 files); best of three for Orvana, one run of gpscorrelate.
3. The positions of both are compared photo by photo wherever the two rules agree: Orvana gives
   a photo taken at the very second of a point to the next point when that one is within 300 s,
   and takes the earlier of two equally near points; photos where either applies are left out.
Peak memory is each process's own maximum resident set."""
import bisect
import calendar
import os
import plistlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

RUNS = 3
build = os.path.abspath(sys.argv[1])
points = int(sys.argv[2]) if len(sys.argv) > 2 else 1000000
photos = int(sys.argv[3]) if len(sys.argv) > 3 else 10000
here = os.path.dirname(os.path.abspath(__file__))
cli = os.path.join(build, "bin", "orvana-cli")
work = tempfile.mkdtemp(prefix="orvana-bench-gps-")
subprocess.run([sys.executable, os.path.join(here, "make_gps_corpus.py"), work, str(points), str(photos)], check=True)
track = os.path.join(work, "track.gpx")
album = os.path.join(work, "album")
studio = os.path.join(album, "studio.data", "studio.plist")
pristine = os.path.join(work, "studio.plist.orig")
shutil.copy(studio, pristine)


def timed(command, cwd=None, env=None, check=True):
    """Runs a command; returns (seconds, peak resident kB, stdout)."""
    start = time.perf_counter()
    process = subprocess.Popen(command, cwd=cwd, env=env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    output = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    elapsed = time.perf_counter() - start
    if check and os.waitstatus_to_exitcode(status) != 0:
        sys.exit(f"failed: {' '.join(command[:4])} ...")
    return elapsed, usage.ru_maxrss, output.decode("utf-8", "replace")


def orvana_env(home):
    env = dict(os.environ, HOME=home, LANG="C.UTF-8", LC_ALL="C.UTF-8")
    env.pop("XDG_DOCUMENTS_DIR", None)
    return env


def best(runs):
    return min(runs, key=lambda run: run[0])


# 1. Import
imports = []
for run in range(RUNS):
    home = os.path.join(work, f"home-import-{run}")
    os.makedirs(home)
    imports.append(timed([cli, "gps", "import", track], env=orvana_env(home)))
babel = best([timed(["gpsbabel", "-i", "gpx", "-f", track, "-o", "gpx", "-F", "/dev/null"]) for _ in range(RUNS)])
ours_import = best(imports)

# 2. Matching, against the store of the first import
home = os.path.join(work, "home-import-0")
matches = []
for _ in range(RUNS):
    shutil.copy(pristine, studio)
    matches.append(timed([cli, "gps", "match", album, "--offset", "2"], env=orvana_env(home)))
ours_match = best(matches)
names = sorted(name for name in os.listdir(album) if name.endswith(".jpg"))
# gpscorrelate's exit status counts the photos it could not match.
peer_match = timed(["gpscorrelate", "-n", "-v", "-i", "-m", "300", "-z", "+02:00", "-g", track] + names, cwd=album, check=False)

# 3. Positions
with open(studio, "rb") as f:
    records = plistlib.load(f)["Items"]
ours = {r["File"]: (float(r["Latitude"]), float(r["Longitude"])) for r in records if r.get("Latitude")}
theirs = {}
for line in peer_match[2].splitlines():
    found = re.match(r"^(\S+\.jpg): .*?Lat (-?[\d.]+), Long (-?[\d.]+)", line)
    if found:
        theirs[found.group(1)] = (float(found.group(2)), float(found.group(3)))

point_times = []
stamp = re.compile(rb"<time>(\d\d\d\d)-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)Z</time>")
with open(track, "rb") as f:
    for m in stamp.finditer(f.read()):
        y, mo, d, h, mi, s = (int(x) for x in m.groups())
        point_times.append(calendar.timegm((y, mo, d, h, mi, s, 0, 0, 0)))


def disputed(capture):
    """True where the two rules part: an exact hit with another point in reach, or a tie."""
    y, mo, d, h, mi, s = (int(x) for x in re.split(r"[- :]", capture))
    t = calendar.timegm((y, mo, d, h, mi, s, 0, 0, 0)) - 2 * 3600
    i = bisect.bisect_left(point_times, t)
    before = point_times[i - 1] if i > 0 else None
    at = point_times[i] if i < len(point_times) else None
    after = point_times[i + 1] if i + 1 < len(point_times) else None
    if at == t:
        return after is not None and after - t <= 300
    return before is not None and at is not None and t - before == at - t


captures = {r["File"]: r["CaptureDate"] for r in records}
compared = [name for name in ours.keys() & theirs.keys() if not disputed(captures[name])]
differing = [name for name in compared if any(abs(a - b) > 0.0000006 for a, b in zip(ours[name], theirs[name]))]

ratio_import = ours_import[0] / babel[0]
ratio_match = peer_match[0] / ours_match[0]
print(f"corpus: {points} points ({os.path.getsize(track) / 1e6:.0f} MB GPX), {photos} photos")
print(f"import: orvana {ours_import[0]:.2f} s, {ours_import[1] / 1024:.0f} MB; gpsbabel {babel[0]:.2f} s, {babel[1] / 1024:.0f} MB")
print(f"match:  orvana {ours_match[0]:.2f} s, {ours_match[1] / 1024:.0f} MB; gpscorrelate {peer_match[0]:.2f} s, {peer_match[1] / 1024:.0f} MB")
both = len(ours.keys() & theirs.keys())
print(f"positions: orvana located {len(ours)}, gpscorrelate {len(theirs)}, both {both}; compared {len(compared)} "
      f"where the rules agree ({both - len(compared)} exact hits or ties left out), {len(differing)} differ")
print(f"ratios: import orvana/gpsbabel {ratio_import:.2f} (target <= 0.50), "
      f"match gpscorrelate/orvana {ratio_match:.1f} (target >= 10), "
      f"match memory {ours_match[1] / 1024:.0f} MB (target < 300)")
shutil.rmtree(work)
sys.exit(1 if differing else 0)
