#!/usr/bin/env python3
"""Checks the seal of an app bundle as a Mac does, and says what does not fit: check_seal.py APP

It shares nothing with the program that seals, so that a mistake of one isn't repeated by the other. It is stricter
than a Mac: no file and no byte of the signature goes unexplained.
"""
import hashlib
import plistlib
import re
import struct
import sys
from pathlib import Path

SIGNED_WITH = "_CodeSignature/CodeResources"
# Slot and magic of each blob: code directory, requirements, and the place of a certificate's signature.
BLOBS = [(0, 0xFADE0C02), (2, 0xFADE0C01), (0x10000, 0xFADE0B01)]
DIRECTORY_HEAD = 88
PAGE = 4096
HASH = 32


class Broken(Exception):
    """Says what does not fit, for people to read."""


def need(condition, problem):
    if not condition:
        raise Broken(problem)


def numbers(layout, data, at):
    need(at + struct.calcsize(layout) <= len(data), "the executable ends too early")
    return struct.unpack_from(layout, data, at)


def place_of_signature(data):
    """Where the signature starts, and the size of the segment with the program's code."""
    magic, _, _, _, count, commands_size = numbers("<6I", data, 0)
    need(magic == 0xFEEDFACF, "the executable is no Mach-O file")
    segments, signatures, at = {}, [], 32
    for _ in range(count):
        command, size = numbers("<II", data, at)
        need(size >= 8 and at + size <= 32 + commands_size, "a load command has no sensible size")
        if command == 0x19:
            segments[data[at + 8:at + 24].split(b"\0")[0]] = numbers("<4Q", data, at + 24)
        elif command == 0x1D:
            signatures.append(numbers("<II", data, at + 8))
        at += size
    need(len(signatures) == 1 and b"__TEXT" in segments and b"__LINKEDIT" in segments, "the executable isn't signed")
    (start, size), (_, room, begin, length) = signatures[0], segments[b"__LINKEDIT"]
    need(start % 16 == 0 and start + size == len(data) == begin + length, "the signature doesn't end the executable")
    need(length <= room and room % 0x4000 == 0, "the last segment's memory doesn't hold the signature")
    return start, segments[b"__TEXT"][3]


def blobs_of(signature):
    """The code directory, the requirements and the certificate's signature. After them the signature has only zeros."""
    magic, length, count = numbers(">III", signature, 0)
    need(magic == 0xFADE0CC0 and count == len(BLOBS), "the signature isn't made of three blobs")
    found, at = [], 12 + 8 * count
    for position, (slot, magic) in enumerate(BLOBS):
        need(numbers(">II", signature, 12 + 8 * position) == (slot, at), f"slot {slot:#x} isn't where it should be")
        seen, size = numbers(">II", signature, at)
        need(seen == magic and size >= 8 and at + size <= length, f"slot {slot:#x} holds no blob of its kind")
        found.append(signature[at:at + size])
        at += size
    need(at == length and length <= len(signature), "the signature isn't as long as it says")
    need(not any(signature[length:]), "something follows the signature")
    return found


def check_executable(data):
    """The identifier, the hashes of slots 1 to 3, and the hash by which the system knows this code."""
    start, code_size = place_of_signature(data)
    directory, requirements, certificate = blobs_of(data[start:])
    pages = -(-start // PAGE)
    head = numbers(">9I4B4I4Q", directory, 0)
    identifier = directory[DIRECTORY_HEAD:].split(b"\0")[0]
    hashes_at = DIRECTORY_HEAD + len(identifier) + 1 + 3 * HASH
    need(head == (0xFADE0C02, hashes_at + pages * HASH, 0x20400, 2, hashes_at, DIRECTORY_HEAD, 3, pages, start,
                  HASH, 2, 0, 12, 0, 0, 0, 0, 0, 0, code_size, 1), "the code directory says what isn't so")
    need(len(directory) == hashes_at + pages * HASH, "the code directory has another length than its hashes need")
    for page in range(pages):
        content = data[page * PAGE:min((page + 1) * PAGE, start)]
        at = hashes_at + page * HASH
        need(hashlib.sha256(content).digest() == directory[at:at + HASH], f"page {page} of the executable was changed")
    slots = {slot: directory[hashes_at - slot * HASH:][:HASH] for slot in (1, 2, 3)}
    need(len(requirements) == 12 and not any(requirements[8:]), "there are requirements")
    need(hashlib.sha256(requirements).digest() == slots[2], "the requirements were changed")
    need(len(certificate) == 8, "an ad hoc signature has no certificate")
    return identifier.decode(errors="replace"), slots, hashlib.sha256(directory).hexdigest()[:40]


def is_sealed(name, rules):
    """Whether the matching rule with the highest weight wants the hash of the file in the seal."""
    rules = {pattern: {} if rule is True else rule for pattern, rule in rules.items()}
    heaviest = max((rule for pattern, rule in rules.items() if re.search(pattern, name)),
                   key=lambda rule: rule.get("weight", 1), default={"omit": True})
    need(not heaviest.get("nested"), f"{name} is taken for code")
    return not heaviest.get("omit")


def check_resources(contents, names, sealed):
    """Checks that both lists name exactly the existing files, with their hashes."""
    need(set(sealed) == {"files", "files2", "rules", "rules2"}, "CodeResources has other lists than it should")
    for name in names:
        need(is_sealed(name, sealed["rules2"]) == (name in sealed["files2"]), f"{name} isn't sealed as the rules say")
        need(is_sealed(name, sealed["rules"]) == (name in sealed["files"]), f"{name} isn't sealed as the old rules say")
        need(name in sealed["files2"] or name == "Info.plist", f"{name} isn't sealed")
    for name, entry in sealed["files2"].items():
        need(name in names, f"{name} is missing")
        need(hashlib.sha256((contents / name).read_bytes()).digest() == entry["hash2"], f"{name} was changed")
    for name, entry in sealed["files"].items():
        digest = entry["hash"] if isinstance(entry, dict) else entry
        need(name in names, f"{name} is missing")
        need(hashlib.sha1((contents / name).read_bytes()).digest() == digest, f"{name} was changed, by its old hash")


def check(app):
    """The identifier, the hash of the code directory, and how many files are sealed. Raises Broken at the first fault."""
    contents = Path(app) / "Contents"
    need([path.name for path in Path(app).iterdir()] == ["Contents"], "something lies beside Contents")
    paths = list(contents.rglob("*"))
    need(not any(path.is_symlink() for path in paths), "there is a link")
    names = {path.relative_to(contents).as_posix() for path in paths if not path.is_dir()}
    programs = [name for name in names if name.startswith("MacOS/")]
    need(len(programs) == 1 and {SIGNED_WITH, "Info.plist"} <= names, "no bundle with one program, sealed")
    identifier, slots, code_hash = check_executable((contents / programs[0]).read_bytes())
    info, resources = ((contents / name).read_bytes() for name in ("Info.plist", SIGNED_WITH))
    need(hashlib.sha256(info).digest() == slots[1], "Info.plist was changed")
    need(hashlib.sha256(resources).digest() == slots[3], "CodeResources was changed")
    keys = plistlib.loads(info)
    need((keys["CFBundleIdentifier"], "MacOS/" + keys["CFBundleExecutable"]) == (identifier, programs[0]),
         "the signature is another program's than Info.plist's")
    sealed = plistlib.loads(resources)
    check_resources(contents, names - {programs[0], SIGNED_WITH}, sealed)
    return identifier, code_hash, len(sealed["files2"])


if __name__ == "__main__":
    try:
        print(*check(sys.argv[1]))
    except Broken as fault:
        sys.exit(f"{sys.argv[1]}: {fault}")
