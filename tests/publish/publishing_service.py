"""A small publishing service for the tests: answers the four /websync/ requests with property
lists and hands out an account on an FTP server.
usage: publishing_service.py LOG USER PASSWORD FTPHOST FTPPORT FTPLOGIN FTPPASSWORD FTPDIRECTORY
Writes each request's path and query, one a line, to LOG; prints "PORT <number>" once it listens.
"""
import sys
from http.server import BaseHTTPRequestHandler, HTTPServer
from urllib.parse import urlsplit, parse_qs
from xml.sax.saxutils import escape

LOG, USER, PASSWORD, FTPHOST, FTPPORT, FTPLOGIN, FTPPASSWORD, FTPDIRECTORY = sys.argv[1:9]


def plist(values):
    body = "".join("<key>%s</key><string>%s</string>" % (escape(k), escape(v)) for k, v in values.items())
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict>%s</dict></plist>\n' % body).encode()


class Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.0"

    def do_GET(self):
        parts = urlsplit(self.path)
        query = {k: v[0] for k, v in parse_qs(parts.query, keep_blank_values=True).items()}
        with open(LOG, "a") as log:
            log.write(self.path + "\n")
        allowed = query.get("username") == USER and query.get("password") == PASSWORD
        if parts.path == "/websync/getftp/":
            reply = {"Message": "OK", "FTPHost": FTPHOST, "FTPPort": FTPPORT, "FTPLogin": FTPLOGIN,
                     "FTPPassword": FTPPASSWORD, "FTPDirectory": FTPDIRECTORY} if allowed else {"Message": "Denied"}
        elif parts.path == "/websync/showalbum/":
            reply = {"URL": "http://127.0.0.1/albums/%s/album.html" % query.get("album", "")}
        else:
            reply = {"Message": "OK" if allowed else "Denied"}
        data = plist(reply)
        self.send_response(200)
        self.send_header("Content-Type", "text/xml")
        self.send_header("Content-Length", str(len(data)))
        self.end_headers()
        self.wfile.write(data)

    def log_message(self, *args):
        pass


server = HTTPServer(("127.0.0.1", 0), Handler)
print("PORT %d" % server.server_address[1], flush=True)
server.serve_forever()
