"""The table of threats: each row names tests that exist, or says why there are none."""

import re

from source_tree import Finding

THREATS = "docs/threats.md"
TEST = re.compile(r"\bTEST(?:_F|_P)?\((\w+),\s*(\w+)\)")
HEAD = re.compile(r"\| (?:threat \| tests|--- \| ---) \|$")


def check_threats(tree):
    """Every row of the tables has tests, all of which exist; rows that begin with "Not" have a reason instead."""
    if THREATS not in tree.by_path:
        return
    known = {".".join(test) for file in tree.files if file.is_cpp() and file.is_below("tests/")
             for test in TEST.findall(file.text)}
    for number, line in enumerate(tree.by_path[THREATS].lines, 1):
        if not line.startswith("| ") or HEAD.match(line):
            continue
        threat, tests = (cell.strip() for cell in line.strip("| ").split(" | ", 1))
        named = re.findall(r"`(\w+\.\w+)`", tests)
        if threat.startswith("Not: ") == bool(named):
            yield Finding("threat", THREATS, number, "a row has tests, or begins with \"Not\" and has a reason")
        for name in named:
            if name not in known:
                yield Finding("threat", THREATS, number, f"the test {name} does not exist")
