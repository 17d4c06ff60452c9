#!/usr/bin/env python3
"""Holds packaging/natvis against the headers: well-formed, and only types and members that exist."""

import pathlib
import re
import unittest
import xml.etree.ElementTree

TOP = pathlib.Path(__file__).resolve().parents[2]
NATVIS = TOP / "packaging/natvis/VYXInfUtils.natvis"
HEADERS = [path for folder in ("VYXInfUtils.m", "platform/include") for path in sorted((TOP / folder).rglob("*.h"))]
NAMESPACE = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"

# The elements that hold expressions: as their text, in braces inside the text, in an attribute.
EXPRESSIONS = ("Size", "ValuePointer", "ValueNode", "ExpandedItem", "StringView", "Exec", "Item")
BRACED = re.compile(r"\{([^{}]+)\}")
MEMBER = re.compile(r"(?:->|\.)([A-Za-z_]\w*)|(?<![\w>.:$])(_[a-z]\w*)")
CLASS = re.compile(r"\b(?:class|struct|union)\s+(?:VYX_EXPORT\s+)?(\w+)\s*(?:final\s*)?(?::[^;{()]*)?\{")
STANDARD = re.compile(r"_M_\w+")  # members of libstdc++, which gdb_test.py relies on as well


class Headers:
    """Which class has which members, by name only, and what its members' types are called."""

    def __init__(self):
        self.bodies = {}
        for path in HEADERS:
            text = re.sub(r"//[^\n]*", "", re.sub(r"/\*.*?\*/", "", path.read_text(), flags=re.DOTALL))
            for match in CLASS.finditer(text):
                self.bodies.setdefault(match.group(1), "")
                self.bodies[match.group(1)] += self._body(text, match.end())

    @staticmethod
    def _body(text, start):
        depth, place = 1, start
        while depth > 0:
            depth += {"{": 1, "}": -1}.get(text[place], 0)
            place += 1
        return text[start:place]

    def has(self, name):
        return name in self.bodies

    def declares(self, name, member):
        return re.search(rf"[\w>*&]\s+\*?{member}\s*(?:=[^;]*|\[[^\]]*\])?;", self.bodies[name]) is not None


def expressions(element):
    for part in element.iter():
        tag = part.tag.removeprefix(NAMESPACE)
        text = (part.text or "").strip()
        for attribute in ("Condition", "InitialValue"):
            if attribute in part.attrib:
                yield part.attrib[attribute]
        if tag in EXPRESSIONS:
            yield text
        if tag == "DisplayString":
            yield from BRACED.findall(text)
        if tag == "Item":
            yield from BRACED.findall(part.attrib.get("Name", ""))


def members_of(expression):
    for dotted, leading in MEMBER.findall(expression):
        yield (dotted or leading), bool(leading)


class NatvisTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = xml.etree.ElementTree.parse(NATVIS).getroot()
        cls.headers = Headers()

    def types(self):
        for element in self.root.iter(NAMESPACE + "Type"):
            names = [element.attrib["Name"]]
            names += [other.attrib["Name"] for other in element.iter(NAMESPACE + "AlternativeType")]
            yield element, [re.sub(r"<.*|.*::", "", name) for name in names]

    def test_every_value_type_is_shown(self):
        shown = {name for _, names in self.types() for name in names}
        expected = {"KORUnicodeString", "KORUnicodeChar", "KORListValKORUnicodeString", "KORRawColldouble",
                    "KORRawCollPV", "KORListVal", "Binary", "StringView", "Value", "Array", "Object",
                    "VYXPropertyTree", "VYXPropertyAccess", "VYXListAccess", "VYXInfUri", "VYXInfError"}
        self.assertEqual(expected - shown, set())

    def test_types_exist(self):
        for _, names in self.types():
            for name in names:
                self.assertTrue(self.headers.has(name), f"no header defines {name}")

    def test_members_exist(self):
        count = 0
        for element, names in self.types():
            for expression in expressions(element):
                for member, is_own in members_of(expression):
                    if STANDARD.fullmatch(member):
                        continue
                    owners = names if is_own else self.headers.bodies
                    found = [self.headers.declares(owner, member) for owner in owners]
                    self.assertTrue(all(found) if is_own else any(found), f"{names}: {member} in {expression}")
                    count += 1
        self.assertGreater(count, 50)


if __name__ == "__main__":
    unittest.main()
