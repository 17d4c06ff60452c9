"""How every file is written: characters, lengths, open ends, and what the library must not call."""

import re

from source_tree import Finding

PRODUCT = ("VYXInfUtils.m/", "platform/", "examples/", "programs/")
LIBRARY = ("VYXInfUtils.m/", "platform/")

LONGEST_LINE = 120
LONGEST_FILE = 500
LONGEST_FUNCTION = 80
COMMON_FUNCTION = 40  # the limit for 95 of 100

# Spelled in two halves, so that this file does not find itself.
OPEN_END = re.compile(r"\b(TO" + r"DO|FIX" + r"ME|XX" + r"X|HA" + r"CK)\b")

# A library neither prints nor ends the program. The exceptions, each with the reason that it may.
FORBIDDEN_CALL = re.compile(
    r"\b(std::cout|std::cerr|std::clog|(?:std::)?(?:v?f?printf|puts|fputs|putchar|fwrite|abort|exit|_exit|quick_exit|"
    r"terminate)\s*\()")
CALL_HOMES = {
    "platform/os/": "the contracts for the console and for processes are implemented there",
    "platform/src/KORSysBase/collections.cpp": "a position outside a list stops the program, with a message",
}
COMMENT_OR_TEXT = re.compile(r'//.*|/\*.*?\*/|^\s*\*.*|"(?:[^"\\]|\\.)*"')


def check_characters(tree):
    """Sources are ASCII with LF, no tabs, no blanks at line ends, and end with a line feed."""
    for file in tree.files:
        if not file.is_source() and file.suffix != ".md":
            continue
        if b"\r" in file.bytes:
            yield Finding("line-end", file.path, 1, "carriage return")
        if file.bytes and not file.bytes.endswith(b"\n"):
            yield Finding("line-end", file.path, len(file.lines), "no line feed at the end")
        if file.is_source():
            yield from check_source_lines(file)


def check_source_lines(file):
    for number, line in enumerate(file.lines, 1):
        if not line.isascii():
            yield Finding("ascii", file.path, number, "character outside ASCII; write it as an escape")
        if "\t" in line:
            yield Finding("tab", file.path, number, "tab")
        if line != line.rstrip():
            yield Finding("trailing-blank", file.path, number, "blank at the end of the line")
        if len(line) > LONGEST_LINE:
            yield Finding("line-length", file.path, number, f"{len(line)} characters; {LONGEST_LINE} are the limit")


def check_open_ends(tree):
    """What is unfinished is not landed."""
    for file in filter(lambda file: file.is_source(), tree.files):
        for number, line in enumerate(file.lines, 1):
            match = OPEN_END.search(line)
            if match:
                yield Finding("open-end", file.path, number, match.group(1))


def check_calls(tree):
    """The library does not print past its logger and does not end the program."""
    for file in filter(lambda file: file.is_cpp() and file.is_below(*LIBRARY), tree.files):
        if file.is_below(*CALL_HOMES):
            continue
        for number, line in enumerate(file.lines, 1):
            match = FORBIDDEN_CALL.search(COMMENT_OR_TEXT.sub("", line))
            if match:
                yield Finding("call", file.path, number, f"'{match.group(1)}' in the library")


def check_headers(tree):
    """Every header guards itself the same way."""
    for file in filter(lambda file: file.suffix == ".h", tree.files):
        if "#pragma once" not in file.lines[:1]:
            yield Finding("guard", file.path, 1, "a header begins with #pragma once")


def check_lengths(tree):
    """A long file holds two topics, a long function two jobs."""
    lengths = []
    for file in filter(lambda file: file.is_cpp() and file.is_below(*PRODUCT), tree.files):
        if len(file.lines) > LONGEST_FILE:
            length = len(file.lines)
            yield Finding("file-length", file.path, length, f"{length} lines; {LONGEST_FILE} are the limit")
        for start, length in functions_of(file):
            lengths.append(length)
            if length > LONGEST_FUNCTION:
                yield Finding("function-length", file.path, start, f"{length} lines; {LONGEST_FUNCTION} are the limit")
    long = sum(length > COMMON_FUNCTION for length in lengths)
    if long * 20 > max(len(lengths), 20):
        text = f"{long} of {len(lengths)} functions have more than {COMMON_FUNCTION} lines"
        yield Finding("function-length", "CONTRIBUTING.md", 1, text)


def functions_of(file):
    """Measures what opens a brace at the margin after a parenthesis and closes it there, as the formatter lays out."""
    start = None
    for number, line in enumerate(file.lines, 1):
        if start is None and line.endswith("{") and "(" in line and not line.startswith((" ", "#", "namespace", "/")):
            start = number
        elif start is not None and line.startswith("}"):
            yield start, number - start
            start = None
