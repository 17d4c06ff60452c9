#!/usr/bin/env python3
"""Relative links of installed pages lead somewhere: check_links.py FOLDER. Exit status 1 if one does not."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "architecture"))

from source_tree import SourceTree  # noqa: E402
from tree_rules import check_links  # noqa: E402


def main():
    tree = SourceTree(sys.argv[1])
    pages = [file for file in tree.files if file.suffix == ".md"]
    findings = list(check_links(tree))
    for finding in findings:
        print(finding)
    if not pages:
        print(f"no pages in {sys.argv[1]}")
    return 1 if findings or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
