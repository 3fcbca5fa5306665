"""Runs the playground beside other processes: two on one folder, signals, home folders of other users."""

import contextlib
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PROGRAM = sys.argv[1]
STRANGER = 12345  # a user ID without a user


def expect(condition, what):
    if not condition:
        raise AssertionError(what)


def wait_until(holds, what):
    deadline = time.monotonic() + 30
    while not holds():
        expect(time.monotonic() < deadline, what)
        time.sleep(0.01)


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, timeout=60, check=False,
                          **options)


@contextlib.contextmanager
def started(*arguments, **options):
    """Starts a process. At the end it is killed if it has not ended."""
    process = subprocess.Popen([PROGRAM, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                               text=True, **options)
    with process:
        try:
            yield process
        finally:
            process.kill()


def refused(holder, home, *arguments):
    """The program refuses to start, says who has the folder, and changes nothing."""
    layout = home / "layout.json"
    before = layout.read_bytes()
    ended = run("--home", home, *arguments, input="r")
    expect(ended.returncode == 1 and f"process {holder}" in ended.stderr, f"{arguments}: {ended}")
    expect(layout.read_bytes() == before, f"{arguments} changed the layout")
    return ended.stderr


def two_on_one_folder(folder):
    home, exported = folder / "home", folder / "my.velko"
    with started("--home", home, "--no-open") as page:
        address = page.stdout.readline().strip()
        told = [refused(page.pid, home, *each) for each in (["--no-open"], ["--import", exported], ["--sort"])]
        expect(all(address in text for text in told), told)
        expect(run("--home", home, "--export", exported).returncode == 0, "reading goes on")
        page.kill()
        page.wait()
    with started("--home", home, "--no-open") as page:
        expect(page.stdout.readline().startswith("http"), "a killed program keeps nobody out")
        page.terminate()
        expect(page.wait(10) == 0, "the page ends in order")
    with started("--home", home, "--sort", stdin=subprocess.PIPE) as sort:
        sort.stdout.readline()
        refused(sort.pid, home, "--no-open")
        refused(sort.pid, home, "--import", exported)
        sort.communicate("r")
        expect(sort.returncode == 0, "what came first goes on")
    expect(run("--home", home, "--import", exported).returncode == 0, "nobody has it any more")
    expect(not list(home.glob("*save*")), "a save leaves nothing behind")


def stories_that_end_early(folder):
    scratch = folder / "scratch"
    scratch.mkdir()
    story = folder / "my.scenario"
    story.write_text("launch Slack\nvelko start\n" + 20 * "wait 1 s\nsay Hello\n" + "wait 3650 days\n")
    at_once, live = [], ["--speed", "1"]
    by_signal = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
    for speed, ending in (*((each, by) for each in (at_once, live) for by in by_signal), (live, signal.SIGPIPE)):
        with started("--script", story, *speed, env={**os.environ, "TMPDIR": str(scratch)}) as process:
            wait_until(lambda: list(scratch.iterdir()), "it has its folder")
            if ending == signal.SIGPIPE:
                process.stdout.close()  # nobody reads what it prints next
            else:
                process.send_signal(ending)
            expect(process.wait(30) == -ending, f"{ending.name} ends it: {process.returncode}")
        expect(not list(scratch.iterdir()), f"{ending.name} leaves {list(scratch.iterdir())}")


def homes_of_others(folder):
    nobody = {name: value for name, value in os.environ.items() if name not in ("HOME", "XDG_DATA_HOME")}
    nobody["TMPDIR"] = str(folder)
    for arguments in (["--no-open"], ["--sort"], ["--terminal"]):
        ended = run(*arguments, env=nobody, input="r")
        expect(ended.returncode == 1 and "HOME is not set" in ended.stderr, ended)
    expect(not list(folder.iterdir()), "nothing is made in the temporary folder")
    expect(run("--help", env=nobody).returncode == 0, "help needs no home")
    if os.geteuid() != 0:
        print("Only an administrator can make files that belong to others: not tried.")
        return
    theirs, victim = folder / "theirs", folder / "victim"
    theirs.mkdir()
    os.chown(theirs, STRANGER, STRANGER)
    victim.write_text("mine\n")
    victim.chmod(0o644)
    planted = folder / "planted"
    planted.symlink_to(theirs)
    home = folder / "home"
    home.mkdir()
    for link, target in ((planted, theirs), (home / "Velko.log", victim), (home / "layout.json", victim)):
        if not link.is_symlink():
            link.symlink_to(target)
        os.chown(link, STRANGER, STRANGER, follow_symlinks=False)
    for each in (theirs, planted):
        ended = run("--home", each, "--no-open")
        expect(ended.returncode == 1 and "another user" in ended.stderr, ended)
        expect(not list(theirs.iterdir()), "nothing is left there")
    expect("another user" in run("--home", home, "--export", folder / "out").stderr, "the layout's link is not followed")
    with started("--home", home, "--no-open") as page:
        page.stdout.readline()
        page.terminate()
        page.wait(10)
    expect(victim.read_text() == "mine\n" and victim.stat().st_mode & 0o777 == 0o644, "the log's link is not followed")


def main():
    for each in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(each, signal.SIG_DFL)  # the playground would inherit an ignored signal
    for scene in (two_on_one_folder, stories_that_end_early, homes_of_others):
        folder = Path(tempfile.mkdtemp(prefix="velko-processes-"))
        try:
            scene(folder)
        finally:
            shutil.rmtree(folder)
        print(f"{re.sub('_', ' ', scene.__name__)}: as it should be")


main()
