"""Reads strict JSON texts as Python's json module does: python3 read_strict_json.py COUNT COMPACT STRICT...

COMPACT holds COUNT texts of the tree's fixed format, one a line, where control characters may stand without escapes.
Each file STRICT holds as many texts behind which U+001E stands; they must be JSON in every respect, without
not-a-number, infinities and repeated keys, and mean the same. The first difference is printed, with the
exit code 1.
"""

import json
import sys


def refuse_constant(name):
    raise ValueError(f"{name} is no JSON")


def unique_members(pairs):
    members = dict(pairs)
    if len(members) != len(pairs):
        raise ValueError("a key is repeated")
    return members


def read(text, strict):
    return json.loads(text.decode("utf-8"), strict=strict, parse_constant=refuse_constant, parse_int=float,
                      object_pairs_hook=unique_members)


def texts_of(path, separator, count):
    with open(path, "rb") as file:
        texts = file.read().split(separator)
    if len(texts) != count + 1 or texts[-1] != b"":
        sys.exit(f"{path}: {len(texts) - 1} texts instead of {count}")
    return texts[:-1]


def main():
    count = int(sys.argv[1])
    expected = [repr(read(text, False)) for text in texts_of(sys.argv[2], b"\n", count)]
    for path in sys.argv[3:]:
        for text, meaning in zip(texts_of(path, b"\x1e", count), expected):
            try:
                found = repr(read(text, True))
            except ValueError as error:
                sys.exit(f"{error}: {text!r}")
            if found != meaning:
                sys.exit(f"{text!r} means {found}, not {meaning}")


if __name__ == "__main__":
    main()
