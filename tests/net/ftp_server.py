"""A real FTP server for the tests: pyftpdlib on a free loopback port.

usage: ftp_server.py ROOT USER PASSWORD
Prints "PORT <number>" once it listens, then serves until it is terminated.
"""
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer


def main():
    root, user, password = sys.argv[1:4]
    authorizer = DummyAuthorizer()
    authorizer.add_user(user, password, root, perm="elradfmwMT")
    handler = FTPHandler
    handler.authorizer = authorizer
    # A wrong password is answered at once rather than after pyftpdlib's usual pause.
    handler.auth_failed_timeout = 0
    handler.passive_ports = None
    server = FTPServer(("127.0.0.1", 0), handler)
    server.max_cons = 16
    print("PORT %d" % server.socket.getsockname()[1], flush=True)
    server.serve_forever(handle_exit=True)


if __name__ == "__main__":
    main()
