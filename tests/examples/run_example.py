#!/usr/bin/env python3
"""Runs an example program: run_example.py [--launcher=COMMAND] ROOT SUBJECT PROGRAM

It has to end with status 0 after printing what the file expected_output.txt beside its source holds.
"""

import argparse
import pathlib
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import program_output  # noqa: E402


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--launcher", default="")
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("subject")
    parser.add_argument("program")
    given = parser.parse_args()
    expected = (given.root / "examples" / given.subject / "expected_output.txt").read_text(encoding="utf-8")
    command = [*filter(None, given.launcher.split(";")), given.program]
    problem = program_output.problem_of(given.subject, command, expected, given.root)
    print(problem, end="")
    return 1 if problem or not expected else 0


if __name__ == "__main__":
    sys.exit(main())
