"""Attacks the socket for commands as a broken or hostile program of the same user would, and as other users would.
Checks that commands are still answered."""

import json
import os
import resource
import select
import socket
import stat
import sys
import tempfile
import threading
import time
from pathlib import Path

from playground import PATIENCE, Playground, expect, expect_soon

MOST = 16  # clients
LONGEST = 64 << 10  # bytes of a line
STRANGER = 54321  # a user that nobody is


def socket_of(play):
    return Path(play.home, "commands", "velko.sock")


def connect(path):
    link = socket.socket(socket.AF_UNIX)
    link.settimeout(PATIENCE)
    link.connect(str(path))
    return link


def request(*words):
    return json.dumps({"version": 1, "words": words}).encode() + b"\n"


def rest_of(link):
    """Everything until the server hangs up."""
    heard = b""
    try:
        while piece := link.recv(65536):
            heard += piece
    except ConnectionError:
        pass
    return heard


def ask(path, *words, data=None):
    """The last line of the answer: the status, or -1 if there is none."""
    with connect(path) as link:
        try:
            link.sendall(data if data is not None else request(*words))
        except ConnectionError:
            pass
        lines = rest_of(link).splitlines()
        return json.loads(lines[-1])["exit"] if lines else -1


def expect_well(path, when):
    started = time.monotonic()
    expect(ask(path, "status", "--json") == 0, f"no status {when}")
    return time.monotonic() - started


def garbage(path):
    for data in (b"\n", b"{\n", b"\x00\xff\x16\x03\x01\n", b"null\n", b"[[[[\n", b'{"version":1,"words":[' + b"[" * 60000 + b"\n",
                 b'{"version":1e400,"words":["show"]}\n', b"GET / HTTP/1.1\r\nHost: a\r\n\r\n",
                 request(*["show"] * 17), request("open", "a" * 9000), request("log", "-f", "-f", "x")):
        expect(ask(path, data=data) in (2, -1), data[:60])
    expect(ask(path, data=b"x" * (LONGEST + 1)) == 2, "a line that is too long")
    expect(ask(path, data=b"x" * (8 << 20)) in (2, -1), "an endless line")
    expect(ask(path, data=request("layout", "import", "relative")) == 2, "a path that is not whole")
    with connect(path) as link:
        link.sendall(request("wait-until", "revealed") + request("show"))
        expect(rest_of(link) == b"", "who says two things hears nothing")
    for half in (b"", b'{"version":1', request("wait-until", "revealed"), request("log", "-f")):
        with connect(path) as link:
            link.sendall(half)


def crowds(path):
    silent = [connect(path) for _ in range(MOST)]
    with connect(path) as late:
        expect(b"Too many" in rest_of(late), "one too many is told so")
    isOver = threading.Event()

    def trickle():
        while not isOver.wait(0.3):
            for link in silent:
                try:
                    link.send(b" ")
                except OSError:
                    pass
    thread = threading.Thread(target=trickle)
    thread.start()
    for link in silent:
        expect(rest_of(link) == b"", "who says little is hung up on")
    isOver.set()
    thread.join()
    expect_well(path, "after a crowd")
    waiting = [connect(path) for _ in range(MOST - 1)]
    for link in waiting:
        link.sendall(request("wait-until", "revealed", "--timeout", "3600"))
    expect_well(path, "while others wait")
    for link in waiting:
        link.close()
    expect_soon(lambda: ask(path, "status") == 0, "who has left makes room")


def slow_readers(path):
    """A reader that stops is dropped, and holds up nobody meanwhile."""
    links = [connect(path) for _ in range(8)]
    for link in links:
        link.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 1)
        link.sendall(request("log", "-f"))
    took = []
    deadline = time.monotonic() + PATIENCE
    isDropped = False
    while not isDropped:
        expect(time.monotonic() < deadline, "slow readers are dropped")
        for word in ("off", "on"):
            started = time.monotonic()
            expect(ask(path, "ask", word) == 0, "a change")
            took.append(time.monotonic() - started)
        try:
            # Its own end cannot be written to any more once the server has closed the other.
            isDropped = all(link.send(b"") == 0 and is_closed(link) for link in links)
        except ConnectionError:
            isDropped = True
    expect(sorted(took)[len(took) // 2] < 1, f"others wait: {sorted(took)[-5:]}")


def is_closed(link):
    """Whether the other end has been closed, without reading what lies there."""
    poll = select.poll()
    poll.register(link, select.POLLHUP)
    return bool(poll.poll(0))


def modes(path):
    folder = path.parent
    expect(stat.S_IMODE(folder.stat().st_mode) == 0o700, f"folder {oct(folder.stat().st_mode)}")
    expect(stat.S_IMODE(path.stat().st_mode) == 0o600, f"socket {oct(path.stat().st_mode)}")


def comings_and_goings(play, path):
    """The socket stays while Velko comes and goes on its Mac."""
    with connect(path) as link:
        link.sendall(request("wait-until", "revealed", "--timeout", "3600"))
        expect(ask(path, "status") == 0, "Velko runs")
        play.post("/desk", b'{"line":"velko quit"}')
        expect(rest_of(link) == b"", "who waits is hung up on")
    expect(ask(path, "status") == 1, "Velko does not run")
    play.post("/desk", b'{"line":"velko start"}')
    expect_well(path, "when it runs again")


def strange_places(program):
    def start(prepare):
        home = Path(tempfile.mkdtemp(prefix="velko-caller-"))
        (home / "commands").mkdir(mode=0o777)
        (home / "commands").chmod(0o777)
        prepare(home / "commands" / "velko.sock")
        play = Playground(program, home=home, umask=0)
        return play, socket_of(play)

    play, path = start(lambda path: None)
    expect_soon(lambda: path.exists(), "a socket")
    expect_well(path, "in an open folder")
    modes(path)
    play.close()
    play, path = start(lambda path: path.write_text("mine"))
    expect("Control desk" in play.page() and path.read_text() == "mine", "a file is left alone")
    play.close()
    holder = socket.socket(socket.AF_UNIX)

    def hold(path):
        holder.bind(str(path))
        holder.listen()
    play, path = start(hold)
    expect("Control desk" in play.page(), "the page is served")
    with connect(path), holder.accept()[0]:
        pass  # its holder still has it
    play.close()
    long = Path(tempfile.mkdtemp(prefix="velko-caller-"), "a" * 90)
    play = Playground(program, home=long)
    expect("Control desk" in play.page() and not socket_of(play).exists(), "a path that is too long")
    play.close()


def strangers(program):
    """Nobody else gets in, not even an administrator, who passes every folder."""
    if os.geteuid() != 0:
        print("Only an administrator can be two users: not tried.")
        return
    home = Path(tempfile.mkdtemp(prefix="velko-caller-"))
    os.chown(home, STRANGER, STRANGER)
    play = Playground(program, home=home, user=STRANGER)
    path = socket_of(play)
    expect_soon(path.exists, "a socket")
    expect(ask(path, "status") == -1, "an administrator is another user")
    play.close()


def main():
    most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(4096, most), most))
    program = sys.argv[1]
    play = Playground(program)
    path = socket_of(play)
    try:
        expect_soon(path.exists, "a socket")
        modes(path)
        times = sorted(expect_well(path, "in peace") for _ in range(200))
        print(f"a status takes {times[100] * 1000:.1f} ms, at most {times[-1] * 1000:.1f} ms")
        for attack in (garbage, crowds, slow_readers):
            attack(path)
            expect(play.process.poll() is None, f"it died of {attack.__name__}")
            expect_well(path, f"after {attack.__name__}")
        comings_and_goings(play, path)
    finally:
        ended, _ = play.close()
    expect(ended == 0, f"it ended with status {ended}")
    expect(not path.exists(), "the socket is left behind")
    strange_places(program)
    strangers(program)


main()
