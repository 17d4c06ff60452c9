#!/usr/bin/env python3
"""Builds small libraries that differ in their binary interface: abi.py has to see each difference. abi_test.py GXX"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

import abi

COMPILER = sys.argv.pop() if len(sys.argv) > 1 else "g++"

SHAPE = """
class __attribute__((visibility("default"))) VYXShape {
 public:
  virtual ~VYXShape() = 0;
  virtual int Area(int iScale) const = 0;
  virtual int Area(double iScale) const;
};
class __attribute__((visibility("default"))) VYXTag {
 public:
  virtual ~VYXTag();
  virtual void Mark();
};
class __attribute__((visibility("default"))) VYXSquare : public VYXShape, public VYXTag {
 public:
  int Area(int iScale) const override;
  int Area(double iScale) const override;
  int side = 0;
};
"""
BODIES = """
VYXShape::~VYXShape() = default;
int VYXShape::Area(double) const { return 1; }
VYXTag::~VYXTag() = default;
void VYXTag::Mark() {}
int VYXSquare::Area(int) const { return side; }
int VYXSquare::Area(double) const { return side; }
"""

SLOTS = [
    "VYXShape",
    "  0 (pure)", "  1 (pure)", "  2 (pure)", "  3 VYXShape::Area(double) const",
    "VYXSquare",
    "  0 VYXSquare::~VYXSquare()", "  1 VYXSquare::~VYXSquare()",
    "  2 VYXSquare::Area(int) const", "  3 VYXSquare::Area(double) const",
    "VYXSquare, base 1",
    "  0 non-virtual thunk to VYXSquare::~VYXSquare()", "  1 non-virtual thunk to VYXSquare::~VYXSquare()",
    "  2 VYXTag::Mark()",
    "VYXTag",
    "  0 VYXTag::~VYXTag()", "  1 VYXTag::~VYXTag()", "  2 VYXTag::Mark()",
]


class Library:
    """A shared library built of a header and bodies, and the folder of its header."""

    def __init__(self, header, bodies):
        self.work = tempfile.TemporaryDirectory()
        self.folder = self.work.name
        pathlib.Path(self.folder, "shape.h").write_text(header)
        source, self.path = pathlib.Path(self.folder, "shape.cpp"), f"{self.folder}/shape.so"
        source.write_text('#include "shape.h"\n' + bodies)
        options = ["-O1", "-fPIC", "-fvisibility=hidden", "-shared"]
        subprocess.run([COMPILER, *options, "-o", self.path, source], check=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.work.cleanup()


class AbiTest(unittest.TestCase):
    def test_slots_are_told_one_by_one(self):
        with Library(SHAPE, BODIES) as library:
            self.assertEqual(abi.virtual_slots(library.path), SLOTS)

    def test_exchanged_overloads_are_found(self):
        pure, other = "  virtual int Area(int iScale) const = 0;\n", "  virtual int Area(double iScale) const;\n"
        header = SHAPE.replace(pure + other, other + pure)
        with Library(header, BODIES) as library:
            changes = abi.differences(SLOTS, abi.virtual_slots(library.path))
        self.assertIn("+  2 VYXSquare::Area(double) const", changes)

    def test_new_and_lost_symbols_are_found(self):
        renamed = [text.replace("Mark", "Label") for text in (SHAPE, BODIES)]
        with Library(SHAPE, BODIES) as before, Library(*renamed) as now:
            changes = abi.differences(abi.exported_symbols(before.path), abi.exported_symbols(now.path))
        self.assertIn("-VYXTag::Mark()", changes)
        self.assertIn("+VYXTag::Label()", changes)

    def test_sizes_are_found(self):
        with Library(SHAPE, BODIES) as library:
            sizes = abi.class_sizes(COMPILER, [library.folder])
        self.assertEqual(sizes, ["VYXShape size=8 align=8", "VYXSquare size=24 align=8", "VYXTag size=8 align=8"])

    def test_equal_lists_do_not_differ(self):
        self.assertEqual(abi.differences(SLOTS, list(SLOTS)), [])


if __name__ == "__main__":
    unittest.main()
