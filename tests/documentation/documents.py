"""The examples of documents: fenced blocks of C++ in Markdown pages and in the comments of headers.

A block is either a whole program or a piece of a function's body; what begins at the margin with class, struct or
namespace is put in front of that function. What it prints is checked: it is

- the block of "text" or "json" that follows it, with nothing but "This prints" between the two, or else
- the remarks behind its lines: "std::cout << ...;  // what the line prints" and "expression;  // its value", where a
  value is a text in quotation marks, a number, true or false, or several of these joined by commas.

An example that checks nothing is refused.
"""

import dataclasses
import pathlib
import re

FENCE = re.compile(r"^```(\w*)\s*$")
LEADING_TO_OUTPUT = re.compile(r"^((this|which) )?prints\b.{0,30}$", re.IGNORECASE)
DECLARATION = re.compile(r"^(class|struct|namespace|enum|using) ")
LITERAL = r'(?:"(?:[^"\\]|\\.)*"|-?\d+(?:\.\d+)?|true|false)'
VALUE = re.compile(rf"^(\s*)(\S.*);\s+// ({LITERAL}(?:, {LITERAL})*)$")
PRINTING = re.compile(r"^\s*std::cout << .*;\s+// (.+)$")


class BadExample(Exception):
    """An example that cannot be checked, with its place."""


@dataclasses.dataclass
class Block:
    language: str
    line: int  # of the first line inside
    lines: list


@dataclasses.dataclass
class Example:
    path: str
    line: int
    includes: list
    declarations: list  # (line number, text)
    body: list  # (line number, text)
    expected: str
    is_program: bool


def blocks_of(path):
    """The fenced blocks of a document with the text between neighbours: (block, is directly behind the last one)."""
    lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
    if path.suffix == ".h":
        lines = [re.sub(r"^\s*(\*(?!/) ?|/// ?)", "", line) if is_comment(line) else "\0" for line in lines]
    block, gap = None, False
    for number, line in enumerate(lines, 1):
        fence = FENCE.match(line)
        if block is None and fence:
            block = Block(fence.group(1), number + 1, [])
        elif block is not None and fence:
            yield block, not gap
            block, gap = None, False
        elif block is not None:
            block.lines.append(line)
        elif line.strip() and not LEADING_TO_OUTPUT.match(line):
            gap = True


def is_comment(line):
    return re.match(r"^\s*(\*|///|/\*\*)", line) is not None


def examples_of(path, name):
    """The examples of a document; name is what messages call it."""
    found = []
    for block, is_adjacent in blocks_of(path):
        if block.language == "cpp":
            found.append((block, None))
        elif block.language in ("text", "json") and is_adjacent and found and found[-1][1] is None:
            found[-1] = (found[-1][0], block)
    return [example_from(name, code, output) for code, output in found]


def example_from(name, code, output):
    numbered = list(enumerate(code.lines, code.line))
    is_program = any(line.startswith("int main(") for line in code.lines)
    includes = [line for line in code.lines if line.startswith("#include ")]
    rest = [(number, line) for number, line in numbered if not line.startswith("#include ")]
    if output is not None:
        expected = "\n".join(output.lines) + "\n"
    else:
        rest, expected = show_values(rest)
    if not expected:
        raise BadExample(f"{name}:{code.line}: the example checks nothing")
    declarations, body = ([], rest) if is_program else split_declarations(rest)
    return Example(name, code.line, includes, declarations, body, expected, is_program)


def show_values(numbered):
    """The lines with every remarked expression printed, and what they then print."""
    lines, expected = [], ""
    for number, line in numbered:
        value, printing = VALUE.match(line), PRINTING.match(line)
        if printing:
            expected += printing.group(1) + "\n"
        elif value and " = " not in value.group(2):
            line = f"{value.group(1)}Documentation::Show({value.group(2)});"
            expected += value.group(3) + "\n"
        lines.append((number, line))
    return lines, expected


def split_declarations(numbered):
    """What stands in front of the function, and what stands in it."""
    declarations, body, is_inside = [], [], False
    for number, line in numbered:
        if DECLARATION.match(line):
            is_inside = True
        (declarations if is_inside else body).append((number, line))
        if is_inside and (line.startswith("}") or line.endswith(";") and DECLARATION.match(line)):
            is_inside = False
    return declarations, body
