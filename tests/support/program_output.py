"""Runs a program that documents show, and compares its output with what they say.

It runs in an empty folder of its own and finds the project's message catalogs. Times, process and thread numbers and
source lines in the log count for nothing, nor do messages of level INFO where none is expected.
"""

import difflib
import os
import re
import subprocess
import tempfile

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


def problem_of(name, command, expected, root):
    """What is wrong with a program that has to end with status 0 after printing a text, or an empty text."""
    result = run(command, root)
    wanted, got = comparable(expected), comparable(result.stdout)
    if wanted == without_information(wanted):
        got = without_information(got)
    if result.returncode == 0 and wanted == got:
        return ""
    lines = difflib.unified_diff(wanted.splitlines(), got.splitlines(), "expected", "printed", lineterm="")
    return f"{name}: status {result.returncode}\n" + "\n".join(lines) + result.stderr
