#!/usr/bin/env python3
"""Seals a small bundle, or a copy of APP, damages it, and checks that this is found: seal_test.py [APP]"""
import plistlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PACKAGING = Path(__file__).resolve().parents[2] / "packaging"
sys.dont_write_bytecode = True
sys.path.insert(0, str(PACKAGING))
import check_seal  # noqa: E402  (found through the path above)

given = None


def segment(name, offset, size):
    return struct.pack("<II16s4QIIII", 0x19, 72, name, offset, size, offset, size, 1, 1, 0, 0)


def small_executable():
    """A header, half a page of code, and the linker's signature, which will be replaced."""
    start, linkedit, signature = 0x1240, 0x1200, 0x20
    commands = [segment(b"__TEXT", 0, linkedit), segment(b"__LINKEDIT", linkedit, start + signature - linkedit),
                struct.pack("<4I", 0x1D, 16, start, signature)]
    head = struct.pack("<8I", 0xFEEDFACF, 0x0100000C, 0, 2, len(commands), sum(map(len, commands)), 0, 0)
    code = bytes(range(256)) * 32
    return (head + b"".join(commands) + code)[:start] + b"\xff" * signature


def small_bundle(app):
    files = {
        "Info.plist": plistlib.dumps({"CFBundleIdentifier": "app.velko.mac", "CFBundleExecutable": "Velko"}),
        "MacOS/Velko": small_executable(),
        "Resources/Velko.icns": b"icns" * 99,
        "Resources/en.lproj/Words.strings": b'"a" = "b";',
    }
    for name, content in files.items():
        path = app / "Contents" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def seal(app):
    done = subprocess.run([sys.executable, PACKAGING / "seal_app.py", app], capture_output=True, text=True)
    return done.returncode, done.stderr


def contents_of(app):
    return {path: path.read_bytes() for path in sorted(app.rglob("*")) if path.is_file()}


def places(name, content):
    """Every byte of the lists in a signature, and some bytes of everything else."""
    found = set(range(0, len(content), max(1, len(content) // 400))) | {len(content) - 1}
    if name == "Velko":
        start, _ = check_seal.place_of_signature(content)
        found |= set(range(start - 64, min(start + 512, len(content)))) | set(range(len(content) - 64, len(content)))
    return found


class Seal(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.app = Path(folder.name) / "Velko.app"
        if given:
            shutil.copytree(given, self.app)
        else:
            small_bundle(self.app)
            self.assertEqual(seal(self.app), (0, ""))

    def assertRefused(self, what):
        with self.subTest(what), self.assertRaises(check_seal.Broken):
            check_seal.check(self.app)

    def test_a_second_seal_changes_nothing(self):
        before = contents_of(self.app)
        self.assertEqual(check_seal.check(self.app)[0], "app.velko.mac")
        self.assertEqual(seal(self.app), (0, ""))
        self.assertEqual(contents_of(self.app), before)

    def test_one_changed_byte_anywhere_is_refused(self):
        for path, content in contents_of(self.app).items():
            with path.open("r+b", buffering=0) as file:
                for place in places(path.name, content):
                    file.seek(place)
                    file.write(bytes([content[place] ^ 0x10]))
                    self.assertRefused(f"{path.name}, byte {place} of {len(content)}")
                    file.seek(place)
                    file.write(content[place:place + 1])
        check_seal.check(self.app)

    def test_more_or_less_of_a_file_is_refused(self):
        for path, content in contents_of(self.app).items():
            for wrong in (content + b"\0", content[:-1], b""):
                path.write_bytes(wrong)
                self.assertRefused(f"{path.name} of {len(wrong)} bytes")
            path.unlink()
            self.assertRefused(f"no {path.name}")
            path.write_bytes(content)
        check_seal.check(self.app)

    def test_a_further_file_is_refused(self):
        for name in ("note", "Contents/PkgInfo", "Contents/note", "Contents/MacOS/Other", "Contents/Resources/more",
                     "Contents/Resources/.DS_Store", "Contents/_CodeSignature/more", "Contents/Frameworks/Other"):
            further = self.app / name
            further.parent.mkdir(exist_ok=True)
            further.write_bytes(b"x")
            self.assertRefused(name)
            further.unlink()
        (self.app / "Contents/Resources/link").symlink_to("Velko.icns")
        self.assertRefused("a link")

    def test_another_seal_does_not_fit(self):
        """A signature of the same program with other resources is correct by itself, but belongs to another bundle."""
        executable, resources = (self.app / "Contents" / name for name in ("MacOS/Velko", check_seal.SIGNED_WITH))
        sealed = executable.read_bytes(), resources.read_bytes()
        (self.app / "Contents/Resources/Velko.icns").write_bytes(b"icns")
        self.assertRefused("another icon")
        self.assertEqual(seal(self.app), (0, ""))
        check_seal.check(self.app)
        resources.write_bytes(sealed[1])
        self.assertRefused("the list of before")
        executable.write_bytes(sealed[0])
        self.assertRefused("list and executable of before, with another icon")

    def test_what_cannot_be_sealed_is_left_alone(self):
        before = contents_of(self.app)
        for name in ("MacOS/helper", "Frameworks/Other.framework/Other", "loose"):
            further = self.app / "Contents" / name
            further.parent.mkdir(parents=True, exist_ok=True)
            further.write_bytes(b"code")
            code, said = seal(self.app)
            self.assertEqual((code, "has to be signed by itself" in said), (1, True), said)
            further.unlink()
            self.assertEqual(contents_of(self.app), before)


if __name__ == "__main__":
    given = sys.argv.pop() if len(sys.argv) > 1 else None
    unittest.main()
