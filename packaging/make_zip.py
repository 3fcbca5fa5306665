#!/usr/bin/env python3
"""Packs an app bundle so that equal bundles give equal files: make_zip.py APP OUT.zip"""
import os
import stat
import sys
import zipfile
from pathlib import Path

MOMENT = (2026, 1, 1, 0, 0, 0)


def main(app, out):
    app = Path(app)
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for file in sorted(path for path in app.rglob("*") if path.is_symlink() or path.is_file()):
            entry = zipfile.ZipInfo(f"{app.name}/{file.relative_to(app)}", MOMENT)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3
            if file.is_symlink():  # frameworks are full of them
                mode, content = stat.S_IFLNK | 0o755, os.readlink(file).encode()
            else:
                executable = file.stat().st_mode & stat.S_IXUSR
                mode, content = stat.S_IFREG | (0o755 if executable else 0o644), file.read_bytes()
            entry.external_attr = mode << 16
            archive.writestr(entry, content)


if __name__ == "__main__":
    main(*sys.argv[1:])
