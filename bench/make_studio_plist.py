#!/usr/bin/env python3
"""Writes an album property list of N photo records with the 23 record keys, like a big album."""
import plistlib
import random
import sys

out, count = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 50000
rng = random.Random(7)
makers = [("Canon", "Canon EOS 5D Mark IV"), ("NIKON CORPORATION", "NIKON D850"), ("SONY", "ILCE-7M3"), ("Apple", "iPhone 13")]
items = []
for i in range(count):
    maker, model = rng.choice(makers)
    day = f"20{rng.randint(10, 25):02d}-{rng.randint(1, 12):02d}-{rng.randint(1, 28):02d} {rng.randint(0, 23):02d}:{rng.randint(0, 59):02d}:{rng.randint(0, 59):02d}"
    located = rng.random() < 0.4
    items.append({
        "File": f"IMG_{i:06d}.JPG", "Size": str(rng.randint(2_000_000, 12_000_000)), "Modified": day, "Created": day,
        "Archived": "2026-11-22 08:00:00", "Width": "6000", "Height": "4000", "CameraMaker": maker, "CameraModel": model,
        "CaptureDate": day, "Aperture": f"F{rng.choice(['1.8', '2.8', '4.0', '8.0'])}", "FocalLength": f"{rng.randint(16, 200)}.0 mm",
        "FocusDistance": "", "ShutterSpeed": f"1/{rng.choice([60, 125, 250, 1000])} s", "Flash": rng.choice(["ON", "OFF"]),
        "ISOSpeed": str(rng.choice([100, 200, 400, 1600])), "CPU": "", "Longitude": f"{rng.uniform(-180, 180):.6f}" if located else "",
        "Latitude": f"{rng.uniform(-90, 90):.6f}" if located else "", "Elevation": "", "Description": "A note about this photo & its <place>" if rng.random() < 0.2 else "",
        "Keywords": "holiday;family;" if rng.random() < 0.3 else "", "Star": rng.choice(["0", "1"]),
    })
doc = {"Format": "com.veltrix.orvana.studio.datalist", "Version": "1.0", "Language": "English", "Title": "Big album",
       "Identification": "bench", "Category": "", "Description": "", "Items": items}
with open(out, "wb") as f:
    plistlib.dump(doc, f, sort_keys=False)
