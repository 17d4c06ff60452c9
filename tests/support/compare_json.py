"""Compares two JSON files as Python's json module reads them: python3 compare_json.py DOCUMENT OUTPUT

OUTPUT must hold what DOCUMENT holds, except that null members of objects are left out and numbers are doubles. It may
hold control characters without escapes inside strings. The first difference is printed and gives the exit code 1.
"""

import json
import sys


def expected(value):
    """What a property tree keeps of a value."""
    if isinstance(value, dict):
        return {key: expected(member) for key, member in value.items() if member is not None}
    if isinstance(value, list):
        return [expected(element) for element in value]
    if isinstance(value, int) and not isinstance(value, bool):
        return float(value)
    return value


def difference(path, left, right):
    """The path of the first difference, or None."""
    if isinstance(left, dict) and isinstance(right, dict):
        if left.keys() != right.keys():
            return f"{path}: keys {sorted(left.keys() ^ right.keys())[:5]}"
        pairs = ((f"{path}/{key}", left[key], right[key]) for key in left)
    elif isinstance(left, list) and isinstance(right, list):
        if len(left) != len(right):
            return f"{path}: {len(left)} and {len(right)} elements"
        pairs = ((f"{path}/{index}", *pair) for index, pair in enumerate(zip(left, right)))
    else:
        same = type(left) is type(right) and repr(left) == repr(right)
        return None if same else f"{path}: {left!r} and {right!r}"
    return next((found for pair in pairs if (found := difference(*pair)) is not None), None)


def read(path, strict):
    with open(path, encoding="utf-8") as file:
        return json.load(file, strict=strict)


def main():
    document, output = sys.argv[1:3]
    found = difference("", expected(read(document, True)), expected(read(output, False)))
    if found is not None:
        print(found)
    return 0 if found is None else 1


if __name__ == "__main__":
    sys.exit(main())
