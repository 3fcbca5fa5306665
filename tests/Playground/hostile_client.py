"""Attacks the playground's server the way a bad neighbour would, and checks that the page still loads."""

import re
import resource
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

HOST = "127.0.0.1"


class Playground:
    """The server as a process, with a home of its own."""

    def __init__(self, program):
        self.home = tempfile.mkdtemp(prefix="velko-hostile-")
        self.process = subprocess.Popen([program, "--home", self.home, "--no-open"],
                                        stdout=subprocess.PIPE, text=True)
        self.port = int(re.search(r":(\d+)/", self.process.stdout.readline()).group(1))
        self.address = f"{HOST}:{self.port}"
        self.token = re.search(r'velko-token" content="(\w+)"', self.page()).group(1)

    def close(self):
        self.process.terminate()
        status = self.process.wait(10)
        shutil.rmtree(self.home)
        return status

    def connect(self):
        return socket.create_connection((HOST, self.port), 30)

    def raw(self, data, patience=15):
        """What the server answers; empty when it only hangs up."""
        with self.connect() as link:
            link.settimeout(patience)
            answer = b""
            try:
                link.sendall(data)
                while piece := link.recv(65536):
                    answer += piece
            except (ConnectionError, socket.timeout):
                pass
            return answer.decode("utf-8", "replace")

    def page(self):
        return self.raw(f"GET / HTTP/1.1\r\nHost: {self.address}\r\n\r\n".encode())

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


def status(answer):
    match = re.match(r"HTTP/1\.1 (\d+)", answer)
    return int(match.group(1)) if match else 0


def expect(condition, what):
    if not condition:
        raise AssertionError(what)


def first_line(link):
    link.settimeout(10)
    return link.recv(12).decode()


def refusals(play):
    get = f"GET %s HTTP/1.1\r\nHost: {play.address}\r\n\r\n"
    expect(status(play.post("/desk", b'{"line":"say \\"x\\""}')) == 204, "the page's own request")
    expect(status(play.post("/desk", Origin="http://evil.example")) == 403, "cross-site POST")
    expect(status(play.post("/desk", Origin="null")) == 403, "sandboxed POST")
    expect(status(play.post("/desk", Sec_Fetch_Site="cross-site")) == 403, "cross-site fetch")
    expect(status(play.post("/desk", drop=["X-Velko-Token"])) == 403, "no token")
    expect(status(play.post("/desk", Content_Type="text/plain")) == 415, "a form's type")
    expect(status(play.post("/desk", Host="evil.example")) == 421, "rebound name")
    expect(status(play.raw(b"GET / HTTP/1.1\r\nHost: evil.example\r\n\r\n")) == 421, "wrong host")
    expect(status(play.raw(b"GET / HTTP/1.1\r\n\r\n")) in (400, 421), "no host")
    for path in ("/../../../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/layout.json", "//etc/passwd", "/Velko.log"):
        answer = play.raw((get % path).encode())
        expect(status(answer) in (400, 404) and "root:" not in answer, path)
    expect(status(play.raw((get % "/events?token=guess").encode())) == 403, "guessed token")
    expect(status(play.raw((get % "/desk").encode())) == 405, "change by GET")
    parts = ", ".join(f"{start}-" for start in range(900))
    answer = play.raw((get % "/").replace("\r\n\r\n", f"\r\nRange: bytes={parts}\r\n\r\n").encode())
    expect(status(answer) in (400, 416), "the page in a thousand parts")


def sizes(play):
    huge = str(10 ** 12)
    expect(status(play.post("/desk", b"x" * 1000, Content_Length=huge)) in (413, 0), "huge announced body")
    expect(status(play.post("/desk", b"x" * 600_000)) in (413, 0), "huge body")
    chunk = b"10000\r\n" + b"x" * 0x10000 + b"\r\n"
    expect(status(play.post("/desk", chunk * 40, drop=["Content-Length"], Transfer_Encoding="chunked")) in (411, 0),
           "endless body")
    expect(status(play.raw(f"GET /{'a' * 100_000} HTTP/1.1\r\nHost: {play.address}\r\n\r\n".encode())) in (0, 400, 414),
           "long address")
    expect(status(play.post("/desk", b"[" * 400_000)) == 400, "deep JSON")


def garbage(play):
    for data in (b"\x00\xff\x16\x03\x01" * 50, b"\r\n\r\n\r\n", b"GET", b"POST /desk HTTP/9.9\r\n\r\n",
                 b"GET / HTTP/1.1\r\nHost: " + b"\xff" * 200 + b"\r\n\r\n"):
        with play.connect() as link:
            link.sendall(data)
    for body in (b"", b"{", b"\xff\xfe", b'{"line": 7}', b'"text"', b"null"):
        expect(status(play.post("/desk", body)) in (200, 204, 400), body)
    for action in ("act", "menu", "choose", "icon", "panel", "pace", "pointer", "dismiss"):
        expect(status(play.post("/" + action, b'{"surface":"note","id":"x","place":[9],"pid":1e30}')) in (200, 204),
               action)


def crowds(play):
    streams = [play.stream() for _ in range(8)]
    expect(all(first_line(link) == "HTTP/1.1 200" for link in streams), "eight streams")
    with play.stream() as ninth:
        expect(first_line(ninth) == "HTTP/1.1 503", "a ninth stream")
    crowd = [play.stream() for _ in range(1000)]
    half_open = []
    for number in range(100):
        link = play.connect()
        link.sendall(b"" if number % 2 else b"POST /desk HTTP/1.1\r\nHost: ")
        half_open.append(link)
    started = time.monotonic()
    expect("Control desk" in play.page(), "the page loads in a crowd")
    print(f"The page loaded in {time.monotonic() - started:.1f} s amid the crowd.")
    for link in streams + crowd + half_open:
        link.close()
    deadline = time.monotonic() + 20
    while True:
        with play.stream() as link:
            if first_line(link) == "HTTP/1.1 200":
                break
        expect(time.monotonic() < deadline, "streams are given back")


def trickle(program):
    """A client that never ends its request can't keep the program from ending when it is told so twice."""
    play = Playground(program)
    with play.connect() as link:
        link.sendall(b"GET / HTTP/1.1\r\nX: ")
        play.page()  # who came first is let in first
        play.process.send_signal(signal.SIGINT)
        for _ in range(8):
            try:
                link.sendall(b"x")
                play.process.wait(0.25)
            except subprocess.TimeoutExpired:
                continue
            except OSError:
                break
        expect(play.process.poll() is None, "it waits for the client")
        play.process.send_signal(signal.SIGINT)
        expect(play.process.wait(5) == -signal.SIGINT, "the second signal ends it")
    shutil.rmtree(play.home)


def unusable_home(program):
    ended = subprocess.run([program, "--home", f"{program}/home", "--no-open"], capture_output=True, text=True,
                           timeout=20, check=False)
    expect(ended.returncode == 1 and "can't be used" in ended.stderr, ended.stderr)


def main():
    most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(4096, most), most))
    play = Playground(sys.argv[1])
    try:
        for attack in (refusals, sizes, garbage, crowds):
            attack(play)
            expect(play.process.poll() is None, f"the server died of {attack.__name__}")
            expect("Control desk" in play.page(), f"no page after {attack.__name__}")
    finally:
        ended = play.close()
    expect(ended == 0, f"it ended with status {ended}")
    trickle(sys.argv[1])
    unusable_home(sys.argv[1])


main()
