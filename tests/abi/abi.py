#!/usr/bin/env python3
"""Holds a binary interface against the list of it that was reviewed.

    abi.py symbols LIST --library LIBRARY                   the names that the library exports
    abi.py slots LIST --library LIBRARY                     the order of the virtual functions of its exported classes
    abi.py sizes LIST --compiler GXX --include FOLDER...    size and alignment of the classes in the headers

Exit status 1 where they differ; with --write the list is made anew instead.
"""

import argparse
import difflib
import pathlib
import re
import subprocess
import sys
import tempfile

POINTER = 8
NEEDS_FMT = "VYXInfFormat.h"  # has templates only, and may be read where fmt is
OWN_CLASS = re.compile(r"(VYX|KOR|QRM|QB::|JSON::|json::|qrm::|PerformanceReport)")
REFRESH = "scripts/refresh-abi writes the list anew; docs/versioning.md says what such a change means"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def demangle(names):
    return dict(zip(names, run("c++filt", *names).splitlines())) if names else {}


def exported_symbols(library):
    """Names as they are written in C++: the variants of a constructor are one."""
    names = [line.split()[-1] for line in run("nm", "-D", "--defined-only", library).splitlines()]
    return sorted(set(demangle(names).values()))


def defined(library, *options):
    """Name, address and size of what a symbol table of the library defines."""
    for line in run("nm", "-S", "--defined-only", *options, library).splitlines():
        fields = line.split()
        if len(fields) == 4:
            yield fields[3], int(fields[0], 16), int(fields[1], 16)


def relocations(library):
    """What the loader puts at an address: the name of a symbol, or another address."""
    targets = {}
    for line in run("readelf", "-rW", library).splitlines():
        named = re.match(r"([0-9a-f]{8,})\s+\w+\s+R_X86_64_64\s+[0-9a-f]+\s+(\S+) \+ 0$", line)
        plain = re.match(r"([0-9a-f]{8,})\s+\w+\s+R_X86_64_RELATIVE\s+([0-9a-f]+)$", line)
        if named:
            targets[int(named.group(1), 16)] = named.group(2).split("@")[0]
        elif plain:
            targets[int(plain.group(1), 16)] = int(plain.group(2), 16)
    return targets


def slots_of_table(address, size, targets, names_at):
    """The functions of one table in order. A class with several bases has a group of them for each."""
    groups = []
    for place in range(address, address + size, POINTER):
        target = targets.get(place)
        name = target if isinstance(target, str) else names_at.get(target)
        if name is not None and name.startswith("_ZTI"):
            for group in groups[-1:]:
                group.pop()  # the distance to the whole object, which opens the next group
            groups.append([])
        elif groups:
            groups[-1].append(name)
    return groups


def virtual_slots(library):
    """Tables of the exported classes. A pure function shows its place here, its name in the class that implements it;
    the destructors of an abstract class, which no object of it can run, are left out of the tables by the compiler."""
    targets, names_at = relocations(library), {}
    for name, address, _ in sorted(defined(library), reverse=True):
        names_at[address] = name
    tables = [entry for entry in defined(library, "-D") if entry[0].startswith("_ZTV")]
    found = {name: slots_of_table(address, size, targets, names_at) for name, address, size in tables}
    functions = {function for groups in found.values() for group in groups for function in group if function}
    plain = demangle(sorted(set(found) | functions)) | {None: "(none)", "__cxa_pure_virtual": "(pure)"}
    lines = []
    for table in sorted(found, key=plain.get):
        for number, group in enumerate(found[table]):
            lines.append(plain[table].removeprefix("vtable for ") + (f", base {number}" if number else ""))
            lines += [f"  {slot} {plain[function]}" for slot, function in enumerate(group)]
    return lines


def class_sizes(compiler, folders):
    """Every class of the project that its headers define."""
    headers = [header.relative_to(folder) for folder in map(pathlib.Path, folders) for header in folder.rglob("*.h")
               if header.name != NEEDS_FMT]
    with tempfile.TemporaryDirectory() as work:
        source, dump = pathlib.Path(work, "headers.cpp"), pathlib.Path(work, "classes")
        source.write_text("".join(f'#include "{header.as_posix()}"\n' for header in sorted(headers)))
        run(compiler, "-std=c++20", "-fsyntax-only", f"-fdump-lang-class={dump}",
            *[option for folder in folders for option in ("-I", folder)], str(source))
        found = re.findall(r"^Class (.+)\n\s+(size=\d+ align=\d+)$", dump.read_text(), re.MULTILINE)
    return sorted({f"{name} {size}" for name, size in found if OWN_CLASS.match(name)})


def differences(reviewed, current):
    """Lines that are gone, with "-", and lines that are new, with "+"."""
    changed = difflib.unified_diff(reviewed, current, "reviewed", "built", lineterm="", n=1)
    return list(changed)


def current_lines(options):
    if options.what == "sizes":
        return class_sizes(options.compiler, options.include)
    read = {"symbols": exported_symbols, "slots": virtual_slots}[options.what]
    return read(options.library)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("what", choices=["symbols", "slots", "sizes"])
    parser.add_argument("list", type=pathlib.Path)
    parser.add_argument("--library")
    parser.add_argument("--compiler")
    parser.add_argument("--include", nargs="+")
    parser.add_argument("--write", action="store_true")
    options = parser.parse_args()
    lines = current_lines(options)
    if not lines:
        sys.exit("abi: nothing was found to compare")
    if options.write:
        options.list.write_text("".join(line + "\n" for line in lines))
        return 0
    changes = differences(options.list.read_text().splitlines(), lines)
    print("\n".join(changes + [REFRESH]) if changes else f"{len(lines)} lines as reviewed")
    return 1 if changes else 0


if __name__ == "__main__":
    sys.exit(main())
