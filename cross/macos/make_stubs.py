#!/usr/bin/env python3
"""Writes linker stubs (.tbd) from a list of symbols and classes: make_stubs.py LIST FOLDER"""
import sys
from pathlib import Path


def sections(text):
    """Install name -> lines, in the order of the list."""
    found, current = {}, None
    for line in text.splitlines():
        line = line.strip()
        if line.startswith("["):
            current = found.setdefault(line.strip("[]"), [])
        elif line and not line.startswith("#"):
            current.append(line)
    return found


def symbol_names(text):
    """Every name as the linker sees it; a class stands for itself and its metaclass."""
    names = set()
    for lines in sections(text).values():
        for line in lines:
            names |= {line} if line.startswith("_") else {f"_OBJC_CLASS_$_{line}", f"_OBJC_METACLASS_$_{line}"}
    return names


def stub(install_name, lines):
    def quoted(names):
        return ", ".join(f"'{name}'" for name in names)

    symbols = [line for line in lines if line.startswith("_")]
    classes = [line for line in lines if not line.startswith("_")]
    text = "--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-macos ]\n"
    text += f"install-name: '{install_name}'\nexports:\n  - targets: [ arm64-macos ]\n"
    text += f"    symbols: [ {quoted(symbols)} ]\n" if symbols else ""
    text += f"    objc-classes: [ {quoted(classes)} ]\n" if classes else ""
    return text + "...\n"


def location(install_name):
    """Where the linker looks: X.framework/X.tbd for frameworks, libx.tbd for the rest."""
    name = install_name.rsplit("/", 1)[1]
    return f"{name}.framework/{name}.tbd" if ".framework/" in install_name else name.split(".")[0] + ".tbd"


def main(listing, folder):
    for install_name, lines in sections(Path(listing).read_text(encoding="utf-8")).items():
        file = Path(folder) / location(install_name)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(stub(install_name, lines), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
