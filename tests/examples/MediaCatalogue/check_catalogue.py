#!/usr/bin/env python3
"""Compares a catalogue with the folder that it tells about: check_catalogue.py CATALOGUE FOLDER.

Exit status 1 if they differ. Everything is computed anew here, from the files' bytes.
"""

import hashlib
import json
import os
import pathlib
import sys
import zlib


def facts_of(path):
    content = path.read_bytes()
    return {
        "size": len(content),
        "lastWriteTime": int(path.stat().st_mtime_ns // 1_000_000_000),
        "crc32": f"{zlib.crc32(content):08x}",
        "sha256": hashlib.sha256(content).hexdigest(),
    }


def files_below(folder, without):
    """Relative path with the library's separators, and facts, of every regular file outside the folder `without`."""
    for parent, names, files in os.walk(folder, followlinks=True):
        names[:] = [name for name in names if pathlib.Path(parent, name).resolve() != without]
        for name in files:
            path = pathlib.Path(parent, name)
            if path.is_file():
                yield str(path.relative_to(folder)).replace("/", "\\"), facts_of(path)


def differences(catalogue, folder, out):
    """What the catalogue says and the folder does not, as lines of text."""
    expected = dict(files_below(folder, out))
    found = catalogue["files"]
    for path in sorted(expected.keys() | found.keys()):
        told = {key: value for key, value in found.get(path, {}).items() if key != "mediaType"}
        if told != expected.get(path, {}):
            yield f"{path}: catalogue {told}, folder {expected.get(path)}"
    by_type = catalogue["totals"]["byMediaType"]
    totals = {"files": len(found), "bytes": sum(entry["size"] for entry in found.values())}
    for key, value in totals.items():
        if catalogue["totals"][key] != value or sum(total[key] for total in by_type.values()) != value:
            yield f"totals of {key}: {catalogue['totals']}, counted {value}"
    if catalogue["totals"]["failures"] != len(catalogue["failures"]):
        yield f"failures: {catalogue['totals']['failures']}, listed {catalogue['failures']}"


def main():
    catalogue_path, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    catalogue = json.loads(catalogue_path.read_text("utf-8"))
    lines = list(differences(catalogue, folder, catalogue_path.parent.resolve()))
    print("\n".join(lines) or f"{len(catalogue['files'])} files as catalogued")
    return 1 if lines or not catalogue["files"] else 0


if __name__ == "__main__":
    sys.exit(main())
