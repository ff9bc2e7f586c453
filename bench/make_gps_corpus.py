#!/usr/bin/env python3
"""Writes a GPS benchmark corpus into FOLDER: one GPX track of POINTS points ("track.gpx") and a
folder album of PHOTOS tiny JPEG files ("album/") whose EXIF capture times fall on the track, with
the album's "studio.plist" listing the same photos and times.

Usage: bench/make_gps_corpus.py FOLDER [POINTS [PHOTOS]]

Track points are one to three seconds apart (UTC); the camera clock runs two hours ahead of UTC.
A tenth of the photos lie outside the track: before it, after it, or in the one long gap in the
middle. Everything is drawn from a fixed seed, so every run writes the same files."""
import datetime
import os
import random
import struct
import subprocess
import sys
import tempfile

ZONE_HOURS = 2
START = datetime.datetime(2020, 6, 1, 6, 0, 0)
GAP_SECONDS = 7200  # one long pause in the middle of the track

folder = sys.argv[1]
points = int(sys.argv[2]) if len(sys.argv) > 2 else 1000000
photos = int(sys.argv[3]) if len(sys.argv) > 3 else 10000
rng = random.Random(20200601)
os.makedirs(folder, exist_ok=True)


def write_track(path):
    seconds = []
    t = 0
    with open(path, "w", encoding="utf-8", newline="\n") as out:
        out.write('<?xml version="1.0" encoding="UTF-8"?>\n'
                  '<gpx version="1.1" creator="make_gps_corpus" xmlns="http://www.topografix.com/GPX/1/1">\n'
                  "<trk>\n  <name>Benchmark ride</name>\n  <trkseg>\n")
        lat, lon, ele = 46.0, 13.5, 400.0
        for i in range(points):
            if i == points // 2:
                t += GAP_SECONDS
            t += rng.randint(1, 3)
            lat += rng.uniform(-0.0001, 0.0001)
            lon += rng.uniform(-0.0001, 0.0001)
            ele += rng.uniform(-0.5, 0.5)
            stamp = (START + datetime.timedelta(seconds=t)).strftime("%Y-%m-%dT%H:%M:%SZ")
            out.write(f'   <trkpt lat="{lat:.9f}" lon="{lon:.9f}">\n'
                      f"    <ele>{ele:.3f}</ele>\n    <time>{stamp}</time>\n   </trkpt>\n")
            seconds.append(t)
        out.write("  </trkseg>\n</trk>\n</gpx>\n")
    return seconds


def exif_segment(capture):
    """An APP1 segment holding IFD0 with a pointer to an EXIF IFD whose one entry is
    DateTimeOriginal (ASCII, 20 bytes), little-endian."""
    date = capture.encode("ascii") + b"\0"
    ifd0 = struct.pack("<H", 1) + struct.pack("<HHII", 0x8769, 4, 1, 26) + struct.pack("<I", 0)
    exif_ifd = struct.pack("<H", 1) + struct.pack("<HHII", 0x9003, 2, len(date), 44) + struct.pack("<I", 0)
    tiff = b"II" + struct.pack("<HI", 42, 8) + ifd0 + exif_ifd + date
    body = b"Exif\0\0" + tiff
    return b"\xff\xe1" + struct.pack(">H", len(body) + 2) + body


def blank_jpeg():
    with tempfile.TemporaryDirectory() as work:
        path = os.path.join(work, "blank.jpg")
        subprocess.run(["vips", "black", path, "8", "8"], check=True)
        with open(path, "rb") as f:
            return f.read()


def write_album(album, seconds):
    os.makedirs(os.path.join(album, "studio.data"), exist_ok=True)
    jpeg = blank_jpeg()
    first, last = seconds[0], seconds[-1]
    middle = seconds[points // 2 - 1]
    records = []
    for n in range(photos):
        kind = rng.random()
        if kind < 0.04:
            utc = first - rng.randint(1, 900)
        elif kind < 0.08:
            utc = last + rng.randint(1, 900)
        elif kind < 0.10:
            utc = middle + rng.randint(1, GAP_SECONDS)
        else:
            utc = rng.randint(first, last)
        local = START + datetime.timedelta(seconds=utc, hours=ZONE_HOURS)
        name = f"IMG_{n:05d}.jpg"
        data = jpeg[:2] + exif_segment(local.strftime("%Y:%m:%d %H:%M:%S")) + jpeg[2:]
        with open(os.path.join(album, name), "wb") as f:
            f.write(data)
        records.append((name, local.strftime("%Y-%m-%d %H:%M:%S"), len(data)))
    with open(os.path.join(album, "studio.data", "studio.plist"), "w", encoding="utf-8") as out:
        out.write('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict>\n'
                  "\t<key>Title</key>\n\t<string>Benchmark</string>\n\t<key>Items</key>\n\t<array>\n")
        # "Size" as an import writes it: with the totals equal, opening finds no outside change.
        for name, capture, size in records:
            out.write(f"\t\t<dict>\n\t\t\t<key>File</key>\n\t\t\t<string>{name}</string>\n"
                      f"\t\t\t<key>Size</key>\n\t\t\t<string>{size}</string>\n"
                      f"\t\t\t<key>CaptureDate</key>\n\t\t\t<string>{capture}</string>\n"
                      "\t\t\t<key>Width</key>\n\t\t\t<string>8</string>\n"
                      "\t\t\t<key>Height</key>\n\t\t\t<string>8</string>\n\t\t</dict>\n")
        out.write("\t</array>\n</dict>\n</plist>\n")


track_seconds = write_track(os.path.join(folder, "track.gpx"))
if photos > 0:
    write_album(os.path.join(folder, "album"), track_seconds)
