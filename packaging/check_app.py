#!/usr/bin/env python3
"""Checks a built Velko.app as a Mac does before it runs it: check_app.py BUILD_FOLDER

Prints one line per check. Exits 1 when one fails. Needs LLVM's llvm-otool and llvm-nm.
"""
import plistlib
import re
import shutil
import struct
import subprocess
import sys
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "cross" / "macos"))
import check_declarations  # noqa: E402  (found through the path above)
import check_seal  # noqa: E402  (it lies beside this file)
import make_stubs  # noqa: E402
from version import version  # noqa: E402

MAX_SIZE = 1_400_000
LISTED = ROOT / "cross" / "macos" / "symbols.txt"
HEADERS = ROOT / "cross" / "macos" / "include"
SYSTEM_LIBRARY = re.compile(r"/(usr/lib|System/Library/Frameworks)/\S+$")

failures = 0


def expect(name, passed, seen):
    global failures
    failures += not passed
    print(f"{'OK  ' if passed else 'FAIL'} {name}: {seen}")


def tool(name, *arguments):
    path = shutil.which(f"{name}-19") or shutil.which(name)
    if path is None:
        sys.exit(f"{name} is not installed")
    return subprocess.run([path, *map(str, arguments)], capture_output=True, text=True, check=True).stdout


def field(commands, command, name):
    """The values of a field in all load commands of that kind."""
    found = []
    for part in commands.split("Load command")[1:]:
        if re.search(rf"^\s*cmd {command}$", part, re.M):
            found += re.findall(rf"^\s*{name} (\S+)", part, re.M)
    return found


def check_binary(binary):
    header = tool("llvm-otool", "-h", binary)
    magic, cpu = struct.unpack_from("<II", binary.read_bytes())
    expect("arm64 and nothing else", (magic, cpu) == (0xFEEDFACF, 0x0100000C), f"{magic:#x}, cpu {cpu:#x}")
    expect("one architecture", header.count("Mach header") == 1, header.count("Mach header"))
    commands = tool("llvm-otool", "-l", binary)
    expect("platform macOS", field(commands, "LC_BUILD_VERSION", "platform") == ["1"],
           field(commands, "LC_BUILD_VERSION", "platform"))
    expect("minimum system 27.0", field(commands, "LC_BUILD_VERSION", "minos") == ["27.0"],
           field(commands, "LC_BUILD_VERSION", "minos"))
    libraries = field(commands, "LC_LOAD_DYLIB", "name")
    expect("only the system's libraries", libraries and all(map(SYSTEM_LIBRARY.match, libraries)),
           ", ".join(library.rsplit("/", 1)[1] for library in libraries))
    expect("no search paths of its own", not field(commands, "LC_RPATH", "path"), field(commands, "LC_RPATH", "path"))
    size = binary.stat().st_size
    expect(f"smaller than {MAX_SIZE:,} bytes", size < MAX_SIZE, f"{size:,} bytes")


def check_symbols(binary):
    undefined = set(tool("llvm-nm", "-u", "-j", binary).split())
    listed = make_stubs.symbol_names(LISTED.read_text(encoding="utf-8"))
    # The compiler has its own list of what the C library contains.
    c_library = "\n".join(path.read_text(encoding="utf-8")
                          for path in (ROOT / "node_modules" / "@zigc" / "lib" / "libc" / "darwin").glob("*.tbd"))
    known = set(re.findall(r"[\w$.]+", c_library))
    missing = sorted(undefined - listed - known)
    expect("every symbol is in a stub", not missing, ", ".join(missing) or f"{len(undefined)} symbols")
    classes = {name for name in listed if name.startswith("_OBJC_")}
    unused = sorted((listed - classes - undefined)
                    | {name for name in classes if name.startswith("_OBJC_CLASS") and name not in undefined})
    expect("every symbol of the list is needed", not unused, ", ".join(unused) or f"{len(listed)} names")


def declared_in(framework):
    """The names that our headers for a framework declare, written as in symbols.txt."""
    text = "\n".join(path.read_text(encoding="utf-8") for path in (HEADERS / framework).rglob("*.h"))
    names = set(re.findall(r"^@interface (\w+)\b(?! \()", text, re.M))  # a category adds to a class of another's
    return names | {f"_{name}" for name in [*check_declarations.functions(text),
                                            *re.findall(r"^extern [^;({]*?(\w+);", text, re.M)]}


def check_libraries():
    """Checks that symbols.txt lists each name under the library whose header declares it: with a wrong library the app
    would end at launch. No header of ours declares the names of the runtime, and those that the compiler uses."""
    home = {name: framework.name for framework in HEADERS.iterdir() for name in declared_in(framework.name)}
    listed = {name: library.rsplit("/", 1)[1]
              for library, names in make_stubs.sections(LISTED.read_text(encoding="utf-8")).items() for name in names}
    wrong = [f"{name} of {home[name]} under {library}" for name, library in listed.items()
             if home.get(name, library) != library]
    expect("every symbol stands under its own library", not wrong,
           ", ".join(wrong) or f"{len(home.keys() & listed.keys())} names checked")


def check_signature(app):
    try:
        identifier, code_hash, files = check_seal.check(app)
        expect("sealed ad hoc, and whole", True, f"{identifier}, {files} resources, code {code_hash}")
    except check_seal.Broken as fault:
        expect("sealed ad hoc, and whole", False, fault)


def check_bundle(app, expected):
    info = plistlib.loads((app / "Contents" / "Info.plist").read_bytes())
    wanted = {"CFBundleIdentifier": "app.velko.mac", "CFBundleExecutable": "Velko", "CFBundlePackageType": "APPL",
              "LSUIElement": True, "LSMinimumSystemVersion": "27.0", "CFBundleShortVersionString": expected}
    wrong = {key: info.get(key) for key, value in wanted.items() if info.get(key) != value}
    build = info.get("CFBundleVersion", "")
    numbered = re.fullmatch(r"\d+(\.\d+){0,2}", build)
    expect("Info.plist says what the app is", not wrong and numbered, wrong or f"version {expected}, build {build}")
    expect("it looks for updates only when asked", info.get("SUEnableAutomaticChecks") is False,
           info.get("SUEnableAutomaticChecks"))
    types = info.get("UTExportedTypeDeclarations", [])
    expect("the layout's type is exported",
           [(t["UTTypeIdentifier"], t["UTTypeConformsTo"], t["UTTypeTagSpecification"]) for t in types]
           == [("app.velko.layout", ["public.json"], {"public.filename-extension": ["velko"]})], len(types))
    opened = [kind for document in info.get("CFBundleDocumentTypes", []) for kind in document["LSItemContentTypes"]]
    expect("layouts are opened with the app", opened == ["app.velko.layout"], ", ".join(opened))
    schemes = [scheme for kind in info.get("CFBundleURLTypes", []) for scheme in kind["CFBundleURLSchemes"]]
    expect("addresses of its own are opened with the app", schemes == ["velko"], ", ".join(schemes))
    made = {path.name: path.read_bytes() for path in (ROOT / "packaging" / "commands").iterdir()}
    held = {path.name: path.read_bytes() for path in (app / "Contents" / "Resources" / "commands").iterdir()}
    expect("it brings the completions and the manual page", held == made and len(made) == 4, ", ".join(sorted(held)))
    icon = (app / "Contents" / "Resources" / (info["CFBundleIconFile"] + ".icns")).read_bytes()
    expect("the icon is whole", icon[:4] == b"icns" and struct.unpack(">I", icon[4:8])[0] == len(icon),
           f"{len(icon):,} bytes")


def check_zip(archive, app):
    with zipfile.ZipFile(archive) as packed:
        files = {f"{app.name}/{path.relative_to(app)}": path.read_bytes() for path in app.rglob("*") if path.is_file()}
        mode = packed.getinfo(f"{app.name}/Contents/MacOS/Velko").external_attr >> 16
        held = {name: packed.read(name) for name in packed.namelist()}
        expect("the zip holds the bundle", held == files and mode & 0o111,
               f"{archive.name}, {archive.stat().st_size:,} bytes")


def main(folder):
    app = Path(folder) / "Velko.app"
    binary = app / "Contents" / "MacOS" / "Velko"
    check_binary(binary)
    check_symbols(binary)
    check_libraries()
    check_signature(app)
    check_bundle(app, version())
    check_zip(Path(folder) / f"Velko-{version()}.zip", app)
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
