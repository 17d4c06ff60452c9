#!/usr/bin/env python3
"""Looks at the library's values in gdb: python3 gdb_test.py PROGRAM LIBRARY-FOLDER

The printers have to come with the library by gdb's own auto-loading. Exit status 77 where there is no gdb with Python.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

# What is printed, and the text that is expected behind "$1 = ".
EXPECTED = [
    ("shortText", '"caf\u00e9 \\"x\\"\\n"'),
    ("emptyText", '""'),
    ("longText", '"a text that is too long for the object, z"'),
    ("view", '"a text that is too long for the object, z"'),
    ("letter", "U+00E9 '\u00e9'"),
    ("lineFeed", "U+000A"),
    ("byte", "byte 0xff"),
    ("array", '{"a", "b"}'),
    ("texts", 'KORListValKORUnicodeString of 2 elements = {[1] = "a", [2] = "b"}'),
    ("numbers", "KORRawColldouble of 1 element = {[1] = 0.5}"),
    ("integers", "KORListValvyx_int64_t of 2 elements = {[1] = 3, [2] = -4}"),
    ("booleans", "KORListValvyx_bool of 1 element = {[1] = true}"),
    ("pointers", "KORRawCollPV of 1 element = {[1] = 0x0}"),
    ("bytes", '4 bytes = {data = "ab\\000c"}'),
    ("noBytes", "0 bytes"),
    ("tree", 'VYXPropertyTree = {["address"] = Object = {["city"] = "Troms\u00f8"}, '
             '["list"] = Array of 2 = {640.0, "wide"}, ["open"] = true, ["size"] = -2.5}'),
    ("emptyTree", "VYXPropertyTree"),
    ("manyMembers", 'VYXPropertyTree = {["1000"] = 1000.0, ["1001"] = 1001.0, ["1002"] = 1002.0...}'),
    ("address", 'VYXPropertyAccess = {value = Object = {["city"] = "Troms\u00f8"}}'),
    ("list", 'VYXListAccess = {value = Array of 2 = {640.0, "wide"}}'),
    ("nothing", "VYXPropertyAccess of nothing"),
    ("trees", 'KORListValVYXPropertyTree of 1 element = {[1] = VYXPropertyTree = {["address"] = Object = {'
              '["city"] = "Troms\u00f8"}, ["list"] = Array of 2 = {640.0, "wide"}, ["open"] = true, ["size"] = -2.5}}'),
    ("uri", 'VYXInfUri = {scheme = "ftp", host = "host", port = 8080, path = "/path", query = "q=1", '
            'fragment = "f"}'),
    ("emptyUri", "VYXInfUri"),
    ("error", '0x80004005 "Disk full"'),
    ("errors", 'KORListValVYXInfError of 1 element = {[1] = 0x80004005 "Disk full"}'),
]
# The same without debug information in the library.
EXPECTED_OF_STRIPPED = [
    ("longText", '"a text that is too long for the object, z"'),
    ("integers", "KORListValvyx_int64_t of 2 elements = {[1] = 3, [2] = -4}"),
    ("tree", "VYXPropertyTree (the library has no debug information)"),
    ("address", "VYXPropertyAccess (the library has no debug information)"),
    ("nothing", "VYXPropertyAccess of nothing"),
    ("error", "VYXInfError (the library has no debug information)"),
]
LIMITED = {"manyMembers": 6}  # "print elements"; a member counts twice


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(77)


def run_gdb(*arguments):
    environment = dict(os.environ, LC_ALL="C.UTF-8", DEBUGINFOD_URLS="")
    return subprocess.run(["gdb", "-nx", "-batch", *arguments], capture_output=True, text=True, encoding="utf-8",
                          env=environment, timeout=240, stdin=subprocess.DEVNULL)


def look(program, folder, expected, library=""):
    """What gdb prints of the values, and all of its output."""
    commands = ["set print pretty off", "set print finish off", "set width 0", "set print elements 200",
                "set disable-randomization off", f"set environment LD_PRELOAD {library}", "break Stop", "run", "up"]
    for name, _ in expected:
        limit = LIMITED.get(name, 200)
        commands += [f"set print elements {limit}", f"echo @{name}@\\n", f"print {name}"]
    options = [part for command in commands for part in ("-ex", command)]
    seen = run_gdb("-iex", f"add-auto-load-safe-path {folder}", *options, program)
    if "ptrace: Operation not permitted" in seen.stderr:
        skip("processes may not be traced here")
    return dict(re.findall(r"^@(\w+)@\n\$\d+ = (.*)$", seen.stdout, re.MULTILINE)), seen.stdout + seen.stderr


def look_at_stripped(program, folder):
    """The same with the library as packages ship it."""
    library = next(path for path in pathlib.Path(folder).glob("libVYXInfUtils.so.*.*.*") if path.suffix != ".py")
    with tempfile.TemporaryDirectory() as stripped:
        copy = pathlib.Path(stripped, library.name)
        subprocess.run(["strip", "-g", "-o", copy, library], check=True)
        shutil.copy(f"{library}-gdb.py", f"{copy}-gdb.py")
        return look(program, stripped, EXPECTED_OF_STRIPPED, copy)


def differences(looked, expected):
    shown, output = looked
    wrong = [(name, shown.get(name), text) for name, text in expected if shown.get(name) != text]
    for name, found, text in wrong:
        print(f"{name}: {found}\n    instead of: {text}")
    if wrong:
        print(output)
    return len(wrong)


def main():
    program, folder = sys.argv[1:]
    if shutil.which("gdb") is None:
        skip("no gdb is installed")
    if run_gdb("-ex", "python print(6 * 7)").stdout.strip() != "42":
        skip("this gdb has no Python")
    wrong = differences(look(program, folder, EXPECTED), EXPECTED)
    wrong += differences(look_at_stripped(program, folder), EXPECTED_OF_STRIPPED)
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
