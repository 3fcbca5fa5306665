"""A playground as a process, for the tests that attack it."""

import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time

HOST = "127.0.0.1"
PATIENCE = 120  # seconds after which something counts as hanging


class Playground:
    """The server as a process with its own home folder."""

    def __init__(self, program, opens=False, home=None, **options):
        self.home = home or tempfile.mkdtemp(prefix="velko-hostile-")
        self.process = subprocess.Popen([program, "--home", self.home, *([] if opens else ["--no-open"])],
                                        stdout=subprocess.PIPE, text=True, **options)
        address = re.fullmatch(r"http://127\.0\.0\.1:(\d+)/\?token=(\w{32})\n", self.process.stdout.readline())
        self.port, self.token = int(address.group(1)), address.group(2)
        self.address = f"{HOST}:{self.port}"

    def close(self):
        """Ends it as Ctrl-C does. Returns its exit status and how many seconds that took."""
        started = time.monotonic()
        self.process.send_signal(signal.SIGINT)
        status = self.process.wait(PATIENCE)
        shutil.rmtree(self.home, ignore_errors=True)
        return status, time.monotonic() - started

    def connect(self):
        return socket.create_connection((HOST, self.port), PATIENCE)

    def raw(self, data):
        """The answer of the server; empty if it closes the connection without one."""
        with self.connect() as link:
            answer = b""
            try:
                link.sendall(data)
                while piece := link.recv(65536):
                    answer += piece
            except (ConnectionError, socket.timeout):
                pass
            return answer.decode("utf-8", "replace")

    def get(self, path):
        return self.raw(f"GET {path} HTTP/1.1\r\nHost: {self.address}\r\n\r\n".encode())

    def page(self):
        return self.get(f"/?token={self.token}")

    def post(self, path, body=b"{}", drop=(), **changed):
        headers = {"Host": self.address, "Origin": f"http://{self.address}",
                   "Content-Type": "application/json", "Content-Length": str(len(body)),
                   "X-Velko-Token": self.token}
        headers.update({name.replace("_", "-"): value for name, value in changed.items()})
        lines = [f"{name}: {value}" for name, value in headers.items() if name not in drop]
        return self.raw(f"POST {path} HTTP/1.1\r\n".encode() + "\r\n".join(lines).encode() + b"\r\n\r\n" + body)

    def stream(self):
        link = self.connect()
        link.sendall(f"GET /events?token={self.token} HTTP/1.1\r\nHost: {self.address}\r\n\r\n".encode())
        return link


def expect(condition, what):
    if not condition:
        raise AssertionError(what)


def expect_soon(holds, what):
    deadline = time.monotonic() + PATIENCE
    while not holds():
        expect(time.monotonic() < deadline, what)
        time.sleep(0.05)
