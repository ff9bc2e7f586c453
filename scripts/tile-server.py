#!/usr/bin/env python3
"""A map tile server for pictures of the map windows, on loopback only: scripts/tile-server.py PORTFILE

Answers any /Z/X/Y.png with a drawn tile (land, a grid and a few roads, coloured by its place), so
that a screenshot shows a map without asking the internet. Writes the port it listens on to
PORTFILE and serves until killed."""
import http.server
import struct
import sys
import zlib

SIZE = 256


def png(width, height, pixel):
    rows = bytearray()
    for y in range(height):
        rows.append(0)
        for x in range(width):
            rows.extend(pixel(x, y))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(rows), 6)) + chunk(b"IEND", b""))


def tile(z, x, y):
    seed = (x * 7 + y * 13 + z) % 5

    def pixel(px, py):
        if (px + seed * 37) % 128 in (0, 1, 2) or (py + seed * 23) % 96 in (0, 1, 2):
            return (255, 255, 255)  # roads
        if px % 64 == 0 or py % 64 == 0:
            return (214, 208, 196)  # lanes
        if (px // 40 + py // 56 + seed) % 7 == 0:
            return (200, 226, 176)  # parks
        if (px + 2 * py) // 90 % 9 == seed:
            return (170, 211, 223)  # water
        return (242, 239, 233)

    return png(SIZE, SIZE, pixel)


class Tiles(http.server.BaseHTTPRequestHandler):
    cache = {}

    def do_GET(self):
        parts = self.path.split("?")[0].strip("/").split("/")
        try:
            z, x, y = int(parts[0]), int(parts[1]), int(parts[2].split(".")[0])
        except (ValueError, IndexError):
            self.send_error(404)
            return
        key = (z, x % 5, y % 5)
        if key not in self.cache:
            self.cache[key] = tile(*key)
        body = self.cache[key]
        self.send_response(200)
        self.send_header("Content-Type", "image/png")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *args):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Tiles)
with open(sys.argv[1], "w") as out:
    out.write(str(server.server_address[1]))
server.serve_forever()
