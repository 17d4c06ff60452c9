#!/usr/bin/env python3
"""Runs the examples of documents: check_examples.py [--launcher=COMMAND] ROOT PROGRAM DOCUMENT...

Each has to end with status 0 after printing what the document says; support/program_output.py tells how that is
compared.
"""

import argparse
import pathlib
import sys

from documents import examples_of

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import program_output  # noqa: E402


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--launcher", default="")
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("program")
    parser.add_argument("documents", nargs="+")
    given = parser.parse_args()
    program = [*filter(None, given.launcher.split(";")), given.program]
    examples = [example for name in given.documents for example in examples_of(given.root / name, name)]
    problems = []
    for example in examples:
        place = f"{example.path}:{example.line}"
        command = program + ([] if example.is_program else [place])
        problems.append(program_output.problem_of(place, command, example.expected, given.root))
    problems = list(filter(None, problems))
    print("\n".join(problems), f"{len(examples)} examples, {len(problems)} wrong", sep="\n")
    return 1 if problems or not examples else 0


if __name__ == "__main__":
    sys.exit(main())
