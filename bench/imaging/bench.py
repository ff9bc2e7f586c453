#!/usr/bin/env python3
"""Times Orvana's image library against its peers on the same files, in one run, and prints the
ratio of their throughputs.

  bench.py photos DIR [--count 200]     make the 12 and 24 megapixel JPEGs the thumbnail run uses
  bench.py thumbnails DIR               thumbnails of every JPEG in DIR: orvana-cli vs vipsthumbnail
  bench.py tags [--rounds 5]            tags of the corpus photos: orvana-cli vs one exiftool process
  bench.py write [--count 200]          caption, keywords and position into JPEGs: one orvana-cli
                                        batch vs one exiftool run per file, then the tags compared

orvana-cli is taken from build/release/bin unless --cli names another; the corpus is the shared
one beside the checkout unless --corpus names another.
"""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

# The values written in the write run, with the program's own argument order for ExifTool.
DESCRIPTION = 'Lake "Blue" at dawn'
KEYWORDS = ["lake", "summer", "dawn"]
LONGITUDE, LATITUDE, ELEVATION = -122.5, 37.75, 12.0


def run(command, **kwargs):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, **kwargs)


def timed(command, **kwargs):
    start = time.perf_counter()
    run(command, **kwargs)
    return time.perf_counter() - start


def read_all(files):
    """Brings the files into the page cache, so both sides of a run read from memory."""
    for file in files:
        Path(file).read_bytes()


def report(what, ours, peer, peer_name, unit_count, unit):
    print(f"{what}: {unit_count} {unit}")
    print(f"  orvana-cli   {ours:8.2f} s  {unit_count / ours:9.1f} {unit}/s")
    print(f"  {peer_name:<12} {peer:8.2f} s  {unit_count / peer:9.1f} {unit}/s")
    print(f"  ratio        {peer / ours:8.2f} x")


def make_photos(args):
    """Real photos enlarged to 12 and 24 megapixels with sensor-like noise, so their entropy
    coding costs what a camera's does; a set of distinct pictures is copied up to the count."""
    out = Path(args.dir)
    out.mkdir(parents=True, exist_ok=True)
    sources = ["exif-samples-HMD_Nokia_8.3_5G.jpg", "drewnoakes-Reconyx_HF2_Pro_Covert.jpg",
               "exif-samples-DSCN0010.jpg", "drewnoakes-Apple_iPhone_4.jpg", "drewnoakes-Kodak_ProBack.jpg"]
    sizes = [(4000, 3000), (6000, 4000)]
    distinct = []
    with tempfile.TemporaryDirectory() as work:
        for index, source in enumerate(sources * 2):
            width, height = sizes[index % 2]
            target = out / f"distinct-{index:02d}-{width}x{height}.jpg"
            if not target.exists():
                src = Path(args.corpus) / "photos" / source
                big = Path(work) / "big.v"
                noisy = Path(work) / "noisy.v"
                run(["vips", "thumbnail", str(src), str(big), str(width), "--height", str(height),
                     "--size", "force"])
                run(["vips", "gaussnoise", str(Path(work) / "noise.v"), str(width), str(height),
                     "--sigma", "5", "--mean", "0"])
                run(["vips", "add", str(big), str(Path(work) / "noise.v"), str(noisy)])
                run(["vips", "cast", str(noisy), str(Path(work) / "cast.v"), "uchar"])
                run(["vips", "jpegsave", str(Path(work) / "cast.v"), str(target), "--Q", "92"])
            distinct.append(target)
    for index in range(args.count):
        copy = out / f"photo-{index:03d}.jpg"
        if not copy.exists():
            shutil.copyfile(distinct[index % len(distinct)], copy)
    print(f"{args.count} photos in {out}")


def thumbnails(args):
    photos = sorted(str(p) for p in Path(args.dir).glob("photo-*.jpg"))
    if not photos:
        sys.exit("no photo-*.jpg in the folder: make them with 'bench.py photos DIR'")
    read_all(photos)
    with tempfile.TemporaryDirectory() as ours_dir, tempfile.TemporaryDirectory() as peer_dir:
        ours = timed([args.cli, "image", "thumbnails", ours_dir] + photos)
        peer = timed(["vipsthumbnail", "--size", "128x128", "-o", f"{peer_dir}/%s.jpg[Q=75,strip]"] + photos)
        made = len(list(Path(ours_dir).iterdir()))
    if made != len(photos):
        sys.exit(f"orvana-cli made {made} thumbnails of {len(photos)}")
    report("thumbnails, 128 x 128 box, JPEG quality 75", ours, peer, "vipsthumbnail", len(photos), "photos")


def tags(args):
    photos = sorted(str(p) for p in (Path(args.corpus) / "photos").iterdir()) * args.rounds
    read_all(photos)
    fields = ["-Make", "-Model", "-DateTimeOriginal", "-ApertureValue", "-FNumber", "-FocalLength",
              "-SubjectDistance", "-ShutterSpeedValue", "-Flash", "-ISO", "-Caption-Abstract", "-Keywords",
              "-GPSLatitudeRef", "-GPSLatitude", "-GPSLongitudeRef", "-GPSLongitude"]
    ours = timed([args.cli, "image", "tags", "--json"] + photos)
    peer = timed(["exiftool", "-j", "-q", "-q"] + fields + photos)
    report("tag reading", ours, peer, "exiftool", len(photos), "files")


def exiftool_arguments(path):
    arguments = ["-overwrite_original", f"-Caption-Abstract={DESCRIPTION}", f"-ImageDescription={DESCRIPTION}"]
    arguments += [f"-XMP-dc:Description={DESCRIPTION}"]
    arguments += [f"-keywords={keyword}" for keyword in KEYWORDS]
    arguments += [f"-XMP-dc:Subject={keyword}" for keyword in KEYWORDS]
    arguments += ["-GPSMapDatum=WGS-84", "-gps:GPSMeasureMode=2", "-gps:GPSLongitudeRef=W",
                  f"-gps:GPSLongitude={abs(LONGITUDE)}", "-gps:GPSLatitudeRef=N", f"-gps:GPSLatitude={LATITUDE}",
                  "-gps:GPSAltitudeRef=Above Sea Level", f"-gps:GPSAltitude={ELEVATION:.1f}", path]
    return arguments


def written_tags(folder):
    output = subprocess.run(["exiftool", "-j", "-G1", "-IPTC:all", "-GPS:all", "-IFD0:all", "-ExifIFD:all",
                             "-XMP:all", str(folder)], check=True, capture_output=True).stdout
    return {Path(entry.pop("SourceFile")).name: entry for entry in json.loads(output)}


def orvana_write_command(cli, files):
    return [cli, "image", "write-metadata", "--description", DESCRIPTION, "--keywords", ";".join(KEYWORDS) + ";",
            "--position", f"{LONGITUDE},{LATITUDE},{ELEVATION}"] + [str(file) for file in files]


def writable_sources(args):
    """Camera JPEGs of the corpus that both tools write cleanly. ExifTool refuses files whose EXIF
    it finds damaged, and Orvana reports photos whose tags read back differently."""
    candidates = [p for p in sorted((Path(args.corpus) / "photos").glob("*.jpg")) if p.stat().st_size > 20000]
    writable = []
    with tempfile.TemporaryDirectory() as work:
        for source in candidates:
            ours, peer = Path(work, "ours.jpg"), Path(work, "peer.jpg")
            shutil.copyfile(source, ours)
            shutil.copyfile(source, peer)
            both = [orvana_write_command(args.cli, [ours]), ["exiftool"] + exiftool_arguments(str(peer))]
            if all(subprocess.run(c, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0 for c in both):
                writable.append(source)
    print(f"{len(writable)} of {len(candidates)} corpus JPEGs are written cleanly by both tools")
    return writable


def write(args):
    sources = writable_sources(args)
    with tempfile.TemporaryDirectory() as work:
        ours_dir, peer_dir, floor_dir = Path(work, "ours"), Path(work, "peer"), Path(work, "floor")
        for folder in (ours_dir, peer_dir, floor_dir):
            folder.mkdir()
        names = [f"photo-{index:03d}-{sources[index % len(sources)].name}" for index in range(args.count)]
        start = time.perf_counter()
        for index, name in enumerate(names):
            shutil.copyfile(sources[index % len(sources)], floor_dir / name)
        floor = time.perf_counter() - start
        for name in names:
            shutil.copyfile(floor_dir / name, ours_dir / name)
            shutil.copyfile(floor_dir / name, peer_dir / name)
        ours = timed(orvana_write_command(args.cli, [ours_dir / name for name in names]), stderr=subprocess.DEVNULL)
        start = time.perf_counter()
        for name in names:
            run(["exiftool"] + exiftool_arguments(str(peer_dir / name)), stderr=subprocess.DEVNULL)
        peer = time.perf_counter() - start
        ours_tags, peer_tags = written_tags(ours_dir), written_tags(peer_dir)
    differing = [name for name in names if ours_tags.get(name) != peer_tags.get(name)]
    report("writing caption, keywords and position", ours, peer, "exiftool x N", len(names), "files")
    print(f"  copying the files alone (the floor) {floor:.2f} s")
    print(f"  tags identical in {len(names) - len(differing)} of {len(names)} files")
    if differing:
        sys.exit(f"tags differ, first in {differing[0]}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--cli", default=str(ROOT / "build/release/bin/orvana-cli"))
    parser.add_argument("--corpus", default=str(ROOT.parent / "shared/corpus"))
    commands = parser.add_subparsers(dest="command", required=True)
    photos = commands.add_parser("photos")
    photos.add_argument("dir")
    photos.add_argument("--count", type=int, default=200)
    commands.add_parser("thumbnails").add_argument("dir")
    commands.add_parser("tags").add_argument("--rounds", type=int, default=5)
    commands.add_parser("write").add_argument("--count", type=int, default=200)
    args = parser.parse_args()
    {"photos": make_photos, "thumbnails": thumbnails, "tags": tags, "write": write}[args.command](args)


if __name__ == "__main__":
    main()
