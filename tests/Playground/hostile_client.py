"""Attacks the playground's server as a hostile program on the same machine would, and checks that the page still loads.

Nothing here depends on how busy the machine is: the tests wait for what takes time, and compare what must be quick
with the same thing without an attack."""

import json
import os
import plistlib
import re
import resource
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

from playground import HOST, PATIENCE, Playground, expect, expect_soon


class Tricklers:
    """Clients that send a byte from time to time and never end their requests."""

    def __init__(self, play, count):
        self.links = []
        for number in range(count):
            link = play.connect()
            link.sendall(b"POST /desk HTTP/1.1\r\nX: " if number % 2 else b"")
            self.links.append(link)
        self.isOver = threading.Event()
        self.thread = threading.Thread(target=self.trickle)
        self.thread.start()

    def trickle(self):
        while not self.isOver.wait(0.2):
            self.links = [link for link in self.links if self.is_let(link)]

    @staticmethod
    def is_let(link):
        try:
            link.send(b"x")
            return True
        except OSError:
            link.close()
            return False

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.isOver.set()
        self.thread.join()
        for link in self.links:
            link.close()


def status(answer):
    match = re.match(r"HTTP/1\.1 (\d+)", answer)
    return int(match.group(1)) if match else 0


def first_line(link):
    return link.recv(12).decode()


def is_served(play):
    with play.stream() as link:
        return first_line(link) == "HTTP/1.1 200"


def refusals(play):
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
        answer = play.get(path)
        expect(status(answer) in (400, 404) and "root:" not in answer, path)
    for path in ("/", "/?token=", "/?token=guess", "/open", "/open?token=guess", f"/open?token={play.token}"):
        answer = play.get(path)
        expect(status(answer) == 403 and "./run" in answer and play.token not in answer, path)
    expect(status(play.get("/events?token=guess")) == 403, "guessed token")
    expect(status(play.get("/desk")) == 405, "change by GET")
    parts = ", ".join(f"{start}-" for start in range(900))
    ranged = f"GET /page.css HTTP/1.1\r\nHost: {play.address}\r\nRange: bytes={parts}\r\n\r\n"
    expect(status(play.raw(ranged.encode())) in (400, 416), "a file in a thousand parts")


def sizes(play):
    huge = str(10 ** 12)
    expect(status(play.post("/desk", b"x" * 1000, Content_Length=huge)) in (413, 0), "huge announced body")
    expect(status(play.post("/desk", b"x" * 600_000)) in (413, 0), "huge body")
    chunk = b"10000\r\n" + b"x" * 0x10000 + b"\r\n"
    expect(status(play.post("/desk", chunk * 40, drop=["Content-Length"], Transfer_Encoding="chunked")) in (411, 0),
           "endless body")
    expect(status(play.get("/" + "a" * 100_000)) in (0, 400, 414), "long address")
    expect(status(play.post("/desk", b"[" * 400_000)) == 400, "deep JSON")
    sent = 0
    with play.connect() as link:
        try:
            link.sendall(b"GET / HTTP/1.1\r\n")
            while sent < 64 << 20:
                sent += link.send(b"X: " + b"x" * 8000 + b"\r\n")
        except ConnectionError:
            pass
    expect(sent < 32 << 20, f"{sent} bytes of a request's head were taken")


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
    with Tricklers(play, 200) as tricklers:
        for _ in range(20):
            expect("Control desk" in play.page(), "the page loads in a crowd")
            expect(status(play.post("/pointer")) == 204, "the page is heard in a crowd")
        expect_soon(lambda: not tricklers.links, "those who say little are hung up on")
    for link in streams + crowd:
        link.close()
    expect_soon(lambda: is_served(play), "streams are given back")


def in_peace(play):
    """A change is sent at once, before the next one can be asked for."""
    asking, hearing = [], []
    with play.stream() as link:
        for number in range(31):
            started = time.monotonic()
            play.post("/desk", f'{{"line":"icon badge Slack \\"<{number}>\\""}}'.encode())
            asked = time.monotonic()
            heard = b""
            while f"&lt;{number}&gt;".encode() not in heard:
                heard += link.recv(1 << 20)
            asking.append(asked - started)
            hearing.append(time.monotonic() - asked)
    expect(sorted(hearing)[15] < sorted(asking)[15], f"asked in {sorted(asking)}, heard after {sorted(hearing)}")


def endings(program):
    """A client that keeps a connection open cannot keep the program from ending."""
    play = Playground(program)
    play.page()
    _, in_peace = play.close()
    play = Playground(program)
    streams = [play.stream() for _ in range(8)]
    with Tricklers(play, 50):
        play.page()
        ended, took = play.close()
    expect(ended == 0, f"it ended with status {ended}")
    expect(took < 2 + 5 * in_peace, f"it ended after {took} s, in peace after {in_peace} s")
    del streams
    # Two signals at once: the program does not wait for the orderly end that the first one asks for.
    play = Playground(program)
    play.process.send_signal(signal.SIGSTOP)
    play.process.send_signal(signal.SIGINT)
    play.process.send_signal(signal.SIGTERM)
    play.process.send_signal(signal.SIGCONT)
    expect(play.process.wait(PATIENCE) == -signal.SIGTERM, "the second signal ends it")
    shutil.rmtree(play.home)


def opening(program):
    """The address in the browser's arguments, which others may see, works only once."""
    with tempfile.TemporaryDirectory() as folder:
        seen = Path(folder, "seen")
        for name in ("xdg-open", "open"):
            Path(folder, name).write_text(f'#!/bin/sh\necho "$1" >"{seen}.new" && mv "{seen}.new" "{seen}"\n')
            Path(folder, name).chmod(0o755)
        environment = os.environ | {"PATH": f"{folder}:{os.environ['PATH']}", "DISPLAY": ":none"}
        play = Playground(program, opens=True, env=environment)
        expect_soon(seen.exists, "the page is opened")
        opened = seen.read_text().strip()
        expect(opened.startswith(f"http://{play.address}/open?token=") and play.token not in opened, opened)
        path = opened.removeprefix(f"http://{play.address}")
        answer = play.get(path)
        expect(status(answer) == 303 and f"Location: /?token={play.token}" in answer, answer)
        expect(status(play.get(path)) == 403, "the second time")
        play.close()


def full_disk(program):
    """A file that may not grow gives a message, and does not end the program."""
    limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100))
    play = Playground(program, preexec_fn=limit)
    with play.stream() as link:
        play.post("/desk", b'{"line":"trust grant"}')
        play.post("/desk", b'{"line":"place Slack buried"}')
        heard = b""
        while b"File too large" not in heard:
            piece = link.recv(65536)
            expect(piece, "it went on")
            heard += piece
    expect(play.close()[0] == 0, "it ended well")


def refused_starts(program):
    def start(*arguments):
        ended = subprocess.run([program, *arguments, "--no-open"], capture_output=True, text=True,
                               timeout=PATIENCE, check=False)
        expect(ended.returncode == 1, ended)
        return ended.stderr
    expect("can't be used" in start("--home", f"{program}/home"), "a home that can't be")
    with socket.socket() as holder, tempfile.TemporaryDirectory() as folder:
        holder.bind((HOST, 0))
        holder.listen()
        port = holder.getsockname()[1]
        expect(start("--home", f"{folder}/home", "--port", str(port)) == f"Port {port} is taken.\n", "a taken port")
        expect(not Path(folder, "home").exists(), "no home for nothing")


def strange_files(program):
    """Text from others cannot control the terminal, and a file without an end is not copied for ever."""
    def run(*arguments):
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (64 << 20, 64 << 20))
        ended = subprocess.run([program, *arguments], capture_output=True, text=True, timeout=PATIENCE, check=False,
                               preexec_fn=limit)
        expect(ended.returncode == 0, ended)
        expect(re.search(r"[\x00-\x09\x0b-\x1f\x7f-\x9f]", ended.stdout) is None, ended.stdout)
        return ended.stdout
    with tempfile.TemporaryDirectory() as folder:
        odd = "com.odd.\x1b[2J\x9b1m\x07"
        preferences = Path(folder, "Library/Preferences")
        preferences.mkdir(parents=True)
        lists = {"ProfileSettings": {"activeProfile": {"Hide": [odd + "-Item-0"]}}}
        Path(preferences, "com.surteesstudios.Bartender.plist").write_bytes(plistlib.dumps(lists, fmt=plistlib.FMT_BINARY))
        expect("com.odd." in run("--home", folder, "--import-from", folder), "what others have is told")
        layout = Path(folder, "layout.json")
        layout.write_text(json.dumps({"version": 1, "hasCompletedSetup": True, "seenApps": [], "sections": {odd: "bar"}}))
        Path(folder, "odd.scenario").write_text("launch neighbours\nvelko start\nwait 20 s\n")
        expect("com.odd." in run("--layout", str(layout), "--script", f"{folder}/odd.scenario"), "the plan is shown")
        os.truncate(layout, 1 << 30)
        expect("larger than 16 MiB" in run("--layout", str(layout), "--terminal"), "a layout of 1 GiB")


def main():
    most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(4096, most), most))
    program = sys.argv[1]
    play = Playground(program)
    try:
        for attack in (in_peace, refusals, sizes, garbage, crowds):
            attack(play)
            expect(play.process.poll() is None, f"the server died of {attack.__name__}")
            expect("Control desk" in play.page(), f"no page after {attack.__name__}")
    finally:
        ended, _ = play.close()
    expect(ended == 0, f"it ended with status {ended}")
    for trial in (endings, opening, full_disk, refused_starts, strange_files):
        trial(program)


main()
