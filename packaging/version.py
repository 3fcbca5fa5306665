#!/usr/bin/env python3
"""Prints Velko's version, as the CMakeLists.txt at the top of the project says it."""
import re
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent / "CMakeLists.txt"


def version():
    return re.search(r"project\(Velko VERSION ([0-9.]+)", PROJECT.read_text(encoding="utf-8"))[1]


if __name__ == "__main__":
    print(version())
