#!/usr/bin/env python3
"""The examples that documents.py finds, and what it refuses."""

import pathlib
import sys
import tempfile
import unittest

from documents import BadExample, examples_of

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program_output import comparable, problem_of, without_information  # noqa: E402

HEADER = """#pragma once
/**
 * Adds.
 *
 * ```cpp
 * Add(1, 2);  // 3
 * ```
 */
int Add(int iLeft, int iRight);
"""


def examples_in(text, name="page.md"):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / name
        path.write_text(text, encoding="utf-8")
        return examples_of(path, name)


def page(code, rest=""):
    return f"# A page\n\n```cpp\n{code}\n```\n{rest}"


class DocumentsTest(unittest.TestCase):
    def test_value_behind_an_expression_is_printed_and_expected(self):
        example = examples_in(page('Upper("a");  // "A"'))[0]
        self.assertEqual(example.body, [(4, 'Documentation::Show(Upper("a"));')])
        self.assertEqual(example.expected, '"A"\n')

    def test_lists_numbers_and_truth_values_are_values(self):
        for value in ('"a", "b"', "-3", "0.5", "true", '"quoted \\" mark"'):
            self.assertEqual(examples_in(page(f"F();  // {value}"))[0].expected, value + "\n")

    def test_other_remarks_are_none(self):
        with self.assertRaises(BadExample):
            examples_in(page("F();  // reads the file"))

    def test_definitions_are_not_printed(self):
        with self.assertRaises(BadExample):
            examples_in(page("const int value = F();  // 3"))

    def test_remark_behind_printing_is_expected_as_it_stands(self):
        example = examples_in(page('std::cout << "a" << "\\n";  // a'))[0]
        self.assertEqual(example.expected, "a\n")
        self.assertEqual(len(example.body), 1)

    def test_block_behind_the_code_is_expected(self):
        example = examples_in(page("F();  // 3", "\nThis prints\n\n```text\nfour\n```\n"))[0]
        self.assertEqual(example.expected, "four\n")
        self.assertEqual(example.body, [(4, "F();  // 3")])

    def test_block_behind_other_text_is_not(self):
        with self.assertRaises(BadExample):
            examples_in(page("F();", "\nThe format is another matter.\n\n```text\nfour\n```\n"))

    def test_example_that_checks_nothing_is_refused(self):
        with self.assertRaisesRegex(BadExample, "page.md:4: the example checks nothing"):
            examples_in(page("F();"))

    def test_classes_go_in_front_of_the_function(self):
        example = examples_in(page("struct S {\n  int value = 1;\n};\n\nusing T = S;\nT().value;  // 1"))[0]
        declarations = [text for _, text in example.declarations]
        self.assertEqual(declarations, ["struct S {", "  int value = 1;", "};", "using T = S;"])
        self.assertEqual([text for _, text in example.body], ["", "Documentation::Show(T().value);"])

    def test_whole_program_stays_whole(self):
        example = examples_in(page("#include <cstdio>\nint main() {\n}", "\n```text\nx\n```\n"))[0]
        self.assertTrue(example.is_program)
        self.assertEqual(example.includes, ["#include <cstdio>"])

    def test_comments_of_headers_hold_examples(self):
        example = examples_in(HEADER, "add.h")[0]
        self.assertEqual((example.line, example.expected), (6, "3\n"))

    def test_times_and_numbers_of_log_lines_do_not_count(self):
        line = "2019-03-05_14-07-09; ERROR; 42; 43; FAILURE RETURN (VYXInfrastructure/a.cpp:12)\n"
        other = line.replace("2019", "2020").replace("42", "7").replace(":12", ":9")
        self.assertEqual(comparable(line), comparable(other))
        self.assertNotEqual(comparable(line), comparable(line.replace("ERROR", "WARN")))
        self.assertNotEqual(comparable(line), comparable(line.replace("a.cpp", "b.cpp")))

    def test_only_information_is_left_out(self):
        line = "2019-03-05_14-07-09; INFO; 42; 43; ready\n"
        self.assertEqual(without_information(comparable(line + "output\n")), "output\n")
        kept = comparable(line.replace("INFO", "ERROR"))
        self.assertEqual(without_information(kept), kept)

    def test_program_is_wrong_by_its_output_or_its_status(self):
        def problem(code):
            return problem_of("program", [sys.executable, "-c", code], "a\n", pathlib.Path())

        self.assertEqual(problem("print('a')"), "")
        self.assertIn("-a", problem("print('b')"))
        self.assertIn("status 3", problem("print('a'); raise SystemExit(3)"))


if __name__ == "__main__":
    unittest.main()
