#!/usr/bin/env python3
"""Runs the examples of documents: check_examples.py [--launcher=COMMAND] ROOT PROGRAM DOCUMENT...

Each runs in an empty folder of its own, finds the project's message catalogs, and has to end with status 0 after
printing what the document says. Times, process and thread numbers and source lines in the log count for nothing, nor
do messages of level INFO where the document shows none.
"""

import argparse
import difflib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

from documents import examples_of

CONSOLE_LINE = re.compile(r"^\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d; (\w+) *; \d+; \d+; ", re.MULTILINE)
FILE_LINE = re.compile(r"^\[[-0-9: .]+\]\[\d+\]", re.MULTILINE)
SOURCE_LINE = re.compile(r"(\.\w+):\d+\)")


def comparable(text):
    text = CONSOLE_LINE.sub(r"<time>; \1; <process>; <thread>; ", text.replace("\r\n", "\n"))
    return SOURCE_LINE.sub(r"\1:<line>)", FILE_LINE.sub("[<time>][<thread>]", text))


def without_information(text):
    return "".join(line for line in text.splitlines(keepends=True) if not line.startswith("<time>; INFO;"))


def run(command, root):
    kept = {name: value for name, value in os.environ.items() if not name.startswith(("VYX_", "KOR", "LANG", "LC_"))}
    with tempfile.TemporaryDirectory() as folder:
        return subprocess.run(command, cwd=folder, env={**kept, "KORInstallPath": str(root)}, stdin=subprocess.DEVNULL,
                              capture_output=True, encoding="utf-8", errors="replace", timeout=60, check=False)


def problem_of(example, program, root):
    """What is wrong with an example, or an empty text."""
    result = run(program + ([] if example.is_program else [f"{example.path}:{example.line}"]), root)
    wanted, got = comparable(example.expected), comparable(result.stdout)
    if wanted == without_information(wanted):
        got = without_information(got)
    if result.returncode == 0 and wanted == got:
        return ""
    lines = difflib.unified_diff(wanted.splitlines(), got.splitlines(), "document", "program", lineterm="")
    return f"{example.path}:{example.line}: status {result.returncode}\n" + "\n".join(lines) + result.stderr


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--launcher", default="")
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("program")
    parser.add_argument("documents", nargs="+")
    given = parser.parse_args()
    program = [*filter(None, given.launcher.split(";")), given.program]
    examples = [example for name in given.documents for example in examples_of(given.root / name, name)]
    problems = list(filter(None, (problem_of(example, program, given.root) for example in examples)))
    print("\n".join(problems), f"{len(examples)} examples, {len(problems)} wrong", sep="\n")
    return 1 if problems or not examples else 0


if __name__ == "__main__":
    sys.exit(main())
