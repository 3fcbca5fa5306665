#!/usr/bin/env python3
"""Seals an app bundle ad hoc, as codesign does on a Mac: seal_app.py APP

Writes Contents/_CodeSignature/CodeResources, which lists the hash of every resource, and replaces the linker's
signature of the executable by one that also binds that list and Info.plist. Equal bundles get equal seals, and a
second run changes nothing. One executable for one processor; bundles with code inside them are refused.
"""
import hashlib
import os
import plistlib
import re
import struct
import sys
from pathlib import Path

PAGE_BITS = 12  # the signature has one hash for each 4 KiB of the executable
MEMORY_PAGE = 0x4000
HASH_SIZE = 32
SHA256 = 2
ADHOC = 0x2
MAIN_BINARY = 0x1

EMBEDDED_SIGNATURE, CODE_DIRECTORY, REQUIREMENTS, WRAPPER = 0xFADE0CC0, 0xFADE0C02, 0xFADE0C01, 0xFADE0B01
DIRECTORY_SLOT, INFO_SLOT, REQUIREMENTS_SLOT, RESOURCES_SLOT, CMS_SLOT = 0, 1, 2, 3, 0x10000
WITH_EXECUTABLE_SEGMENT = 0x20400  # the version of the code directory that says where the program's code is

MACH_O_64, SEGMENT_64, CODE_SIGNATURE = 0xFEEDFACF, 0x19, 0x1D

# The rules that the system's own tool writes by default. The first list is for systems before 10.9.
LOCALIZED = {
    r"^Resources/.*\.lproj/": {"optional": True, "weight": 1000.0},
    r"^Resources/.*\.lproj/locversion.plist$": {"omit": True, "weight": 1100.0},
    r"^Resources/Base\.lproj/": {"weight": 1010.0},
}
OLD_RULES = {r"^Resources/": True, r"^version.plist$": True, **LOCALIZED}
RULES = {
    r"^.*": True,
    r".*\.dSYM($|/)": {"weight": 11.0},
    r"^(.*/)?\.DS_Store$": {"omit": True, "weight": 2000.0},
    r"^(Frameworks|SharedFrameworks|PlugIns|Plug-ins|XPCServices|Helpers|MacOS|"
    r"Library/(Automator|Spotlight|LoginItems))/": {"nested": True, "weight": 10.0},
    r"^Info\.plist$": {"omit": True, "weight": 20.0},
    r"^PkgInfo$": {"omit": True, "weight": 20.0},
    r"^Resources/": {"weight": 20.0},
    r"^[^/]+$": {"nested": True, "weight": 10.0},
    r"^embedded\.provisionprofile$": {"weight": 20.0},
    r"^version\.plist$": {"weight": 20.0},
    **LOCALIZED,
}


def rule_for(name, rules):
    """The matching rule with the highest weight; None if no rule matches."""
    found = [{} if value is True else value for pattern, value in rules.items() if re.search(pattern, name)]
    return max(found, key=lambda rule: rule.get("weight", 1.0), default=None)


def listed(contents, names, rules, entry):
    """The entries of one list of CodeResources."""
    files = {}
    for name in names:
        rule = rule_for(name, rules)
        if rule is None or "omit" in rule:
            continue
        if "nested" in rule:
            sys.exit(f"{name}: code inside the bundle has to be signed by itself, which this program can't do")
        files[name] = entry((contents / name).read_bytes(), "optional" in rule)
    return files


def old_entry(content, optional):
    digest = hashlib.sha1(content).digest()
    return {"hash": digest, "optional": True} if optional else digest


def new_entry(content, optional):
    return {"hash2": hashlib.sha256(content).digest()} | ({"optional": True} if optional else {})


def resource_list(contents, executable):
    paths = [path for path in contents.rglob("*") if not path.is_dir() or path.is_symlink()]
    names = sorted(path.relative_to(contents).as_posix() for path in paths)
    links = [path for path in paths if path.is_symlink()]
    if links:
        sys.exit(f"{links[0]}: links can't be sealed by this program")
    names = [name for name in names if name != executable and not name.startswith("_CodeSignature/")]
    return plistlib.dumps({
        "files": listed(contents, names, OLD_RULES, old_entry),
        "files2": listed(contents, names, RULES, new_entry),
        "rules": OLD_RULES,
        "rules2": RULES,
    })


def load_commands(data):
    """Offsets of the executable's segments by name, and of its signature's load command."""
    magic, _, _, _, count = struct.unpack_from("<IIIII", data)
    if magic != MACH_O_64:
        sys.exit("the executable isn't one Mach-O file of 64 bits")
    segments, signature, at = {}, None, 32
    for _ in range(count):
        command, size = struct.unpack_from("<II", data, at)
        if command == SEGMENT_64:
            segments[data[at + 8:at + 24].rstrip(b"\0").decode()] = at
        elif command == CODE_SIGNATURE:
            signature = at
        at += size
    if signature is None:
        sys.exit("the linker has left no place for a signature")
    return segments, signature


def aligned(size, unit):
    return (size + unit - 1) // unit * unit


def blob(magic, content):
    return struct.pack(">II", magic, 8 + len(content)) + content


def code_directory(code, identifier, special, code_segment):
    name = identifier.encode() + b"\0"
    pages = [code[at:at + (1 << PAGE_BITS)] for at in range(0, len(code), 1 << PAGE_BITS)]
    # The hashes of the special slots come before those of the pages, the highest slot first.
    hashes = b"".join(hashlib.sha256(part).digest() for part in [*reversed(special), *pages])
    name_at = 88
    hashes_at = name_at + len(name) + len(special) * HASH_SIZE
    return blob(CODE_DIRECTORY, struct.pack(
        ">7I4B4I4Q", WITH_EXECUTABLE_SEGMENT, ADHOC, hashes_at, name_at, len(special), len(pages), len(code),
        HASH_SIZE, SHA256, 0, PAGE_BITS,
        0, 0, 0, 0,  # spare, no scattered pages, no team, spare
        0, *code_segment, MAIN_BINARY) + name + hashes)


def embedded(blobs):
    """Joins several blobs into one, in the order of their slots."""
    at = 12 + 8 * len(blobs)
    index = b""
    for slot, content in blobs:
        index += struct.pack(">II", slot, at)
        at += len(content)
    contents = b"".join(content for _, content in blobs)
    return blob(EMBEDDED_SIGNATURE, struct.pack(">I", len(blobs)) + index + contents)


def signed(data, identifier, info, resources):
    """The executable with a signature over the hashes that are passed in."""
    segments, command = load_commands(data)
    start, old_size = struct.unpack_from("<II", data, command + 8)
    if start + old_size != len(data):
        sys.exit("the executable doesn't end with its signature")
    code = bytearray(data[:start])
    requirements = blob(REQUIREMENTS, struct.pack(">I", 0))
    special = [info, requirements, resources]

    def signature():
        code_segment = struct.unpack_from("<QQ", code, segments["__TEXT"] + 40)
        return embedded([(DIRECTORY_SLOT, code_directory(code, identifier, special, code_segment)),
                         (REQUIREMENTS_SLOT, requirements), (CMS_SLOT, blob(WRAPPER, b""))])

    # The hashed pages contain the length of the signature, so it is written first. It does not depend on the pages.
    size = aligned(len(signature()), 16)
    linkedit = segments["__LINKEDIT"]
    file_offset, = struct.unpack_from("<Q", code, linkedit + 40)
    file_size = start + size - file_offset
    struct.pack_into("<I", code, command + 12, size)
    struct.pack_into("<Q", code, linkedit + 32, aligned(file_size, MEMORY_PAGE))
    struct.pack_into("<Q", code, linkedit + 48, file_size)
    return bytes(code) + signature().ljust(size, b"\0")


def replace(path, content, mode):
    """Writes a new file in the place of the old one: the system remembers the signature of a file that it has run."""
    path.parent.mkdir(exist_ok=True)
    new = path.with_name(path.name + ".new")
    new.write_bytes(content)
    new.chmod(mode)
    os.replace(new, path)


def main(app):
    contents = Path(app) / "Contents"
    info = (contents / "Info.plist").read_bytes()
    keys = plistlib.loads(info)
    executable = "MacOS/" + keys["CFBundleExecutable"]
    resources = resource_list(contents, executable)
    binary = signed((contents / executable).read_bytes(), keys["CFBundleIdentifier"], info, resources)
    replace(contents / "_CodeSignature" / "CodeResources", resources, 0o644)
    replace(contents / executable, binary, 0o755)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
