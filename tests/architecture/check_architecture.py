#!/usr/bin/env python3
"""Holds the rules of the code base against a tree: check_architecture.py [ROOT]. Exit status 1 if one is broken."""

import pathlib
import sys

import code_rules
import include_rules
import text_rules
import threat_rules
import tree_rules
from source_tree import SourceTree

RULES = [
    include_rules.check_includes,
    include_rules.check_os_conditions,
    code_rules.check_forbidden,
    code_rules.check_thread_locals,
    code_rules.check_suppressions,
    code_rules.check_exports,
    code_rules.check_dead_code,
    code_rules.check_parameters,
    text_rules.check_characters,
    text_rules.check_open_ends,
    text_rules.check_calls,
    text_rules.check_headers,
    text_rules.check_lengths,
    tree_rules.check_map,
    tree_rules.check_links,
    tree_rules.check_build_lists,
    tree_rules.check_dependencies,
    threat_rules.check_threats,
]


def check(root):
    """All findings in the tree below a root."""
    tree = SourceTree(root)
    return [finding for rule in RULES for finding in rule(tree)]


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parents[2]
    findings = check(root)
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings by {len(RULES)} rules")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
