"""Sums up what gcovr counted and ends with two lines, "lines: N %" and "branches: N %".

report_coverage.py COVERAGE.JSON EXPORTED_SYMBOLS.TXT REPORT.TXT

The report lists, file by file, what is not covered. Ends with 1 where a goal is missed or an exported function is never
called.
"""

import json
import pathlib
import re
import sys

# Lines and branches in percent, of everything and of what reads foreign input.
GOALS = {
    "all": (95, 85),
    "parsers, codecs, zip reader": (98, 92),
}
READERS = re.compile(
    r"platform/adapters/(base64|crc32|deflate|digest|ini_text|json|zip_reader|zip_source)"
    r"|platform/src/KORSysBase/(KORSysZipFile_read|zip_(archive|bytes|extraction|file_io|layout|layout_entries|names))"
    r"|platform/src/KORSysTS/(base64|number_text|utf8|wildcard)"
    r"|platform/src/Quillbase/JSON/"
    r"|platform/src/VYXLoggingAdapter/(filter|line_format|settings_file)"
    r"|VYXInfUtils.m/src/(VYXInfUri|VYXPropertyTree/parse|VYXInfStringUtil/(base64|uri_component|utf8)\.)")


class Tally:
    """Covered and all, of lines and of branches."""

    def __init__(self):
        self.lines = [0, 0]
        self.branches = [0, 0]

    def add(self, line):
        if line.get("gcovr/noncode"):
            return
        self.lines[0] += line["count"] > 0
        self.lines[1] += 1
        for branch in line["branches"]:
            self.branches[0] += branch["count"] > 0
            self.branches[1] += 1

    def percents(self):
        return tuple(100.0 * part[0] / part[1] if part[1] else 100.0 for part in (self.lines, self.branches))


def tally_of(files):
    tally = Tally()
    for file in files:
        for line in file["lines"]:
            tally.add(line)
    return tally


def uncovered(file):
    """The report's lines for a file."""
    for line in file["lines"]:
        if line.get("gcovr/noncode"):
            continue
        missed = sum(branch["count"] == 0 for branch in line["branches"])
        if line["count"] == 0:
            yield f"  {line['line_number']}: never reached"
        elif missed:
            yield f"  {line['line_number']}: {missed} of {len(line['branches'])} branches never taken"


def write_report(path, files):
    with open(path, "w", encoding="utf-8") as report:
        for file in sorted(files, key=lambda file: file["file"]):
            lines, branches = tally_of([file]).percents()
            report.write(f"{file['file']}: lines {lines:.1f} %, branches {branches:.1f} %\n")
            report.writelines(text + "\n" for text in uncovered(file))


def uncalled(files, exported):
    """The exported functions that are never called."""
    counts = {}
    for file in files:
        for function in file["functions"]:
            name = re.sub(r"\[abi:\w+\]", "", function["name"])
            counts[name] = counts.get(name, 0) + function["execution_count"]
    return sorted(name for name, count in counts.items() if count == 0 and name in exported)


def main():
    coverage, symbols, report = map(pathlib.Path, sys.argv[1:])
    files = json.loads(coverage.read_text(encoding="utf-8"))["files"]
    write_report(report, files)
    exported = set(symbols.read_text(encoding="utf-8").splitlines())
    never = uncalled(files, exported)
    for name in never:
        print(f"never called: {name}")
    groups = {"parsers, codecs, zip reader": [file for file in files if READERS.search(file["file"])], "all": files}
    is_missed = bool(never)
    for name, group in groups.items():
        percents = tally_of(group).percents()
        is_missed = is_missed or any(percent < goal for percent, goal in zip(percents, GOALS[name]))
        if name != "all":
            print(f"{name}: lines {percents[0]:.1f} %, branches {percents[1]:.1f} %, goals {GOALS[name]}")
    print(f"what is not covered: {report}")
    print(f"lines: {percents[0]:.1f} %\nbranches: {percents[1]:.1f} %")
    sys.exit(1 if is_missed else 0)


if __name__ == "__main__":
    main()
