#!/usr/bin/env python3
"""Plants one violation after another in a small clean tree: each must be found, at its place, and nothing else."""

import pathlib
import re
import tempfile
import unittest

import code_rules
from check_architecture import check

CLEAN = {
    "HACKING.md": "- `VYXInfUtils.m/include/` - headers\n- `VYXInfUtils.m/src/` - sources\n"
                  "- `platform/os/` - contracts\n- `platform/os/posix/` - implementation\n"
                  "- `platform/adapters/` - libraries\n",
    "VYXInfUtils.m/include/VYXInfThing.h": "#pragma once\n\n#include <string>\n",
    "VYXInfUtils.m/src/CMakeLists.txt": "target_sources(library PRIVATE VYXInfThing.cpp)\n",
    "VYXInfUtils.m/src/VYXInfThing.cpp": '#include "VYXInfThing.h"\n\n#include "platform/os/clock.h"\n',
    "platform/os/CMakeLists.txt": "target_sources(os PRIVATE posix/clock.cpp)\n",
    "platform/os/clock.h": "#pragma once\n",
    "platform/os/posix/clock.cpp": '#include "platform/os/clock.h"\n\n#include <unistd.h>\n',
    "platform/adapters/CMakeLists.txt": "target_sources(adapters PRIVATE unicode_utf8proc.cpp)\n",
    "platform/adapters/unicode_utf8proc.cpp": "#include <utf8proc.h>\n",
}

SOURCE = "VYXInfUtils.m/src/VYXInfThing.cpp"
HEADER = "VYXInfUtils.m/include/VYXInfThing.h"
CONTRACT = "platform/os/clock.h"
COMMON_FUNCTION = "void Run() {\n" + "  Step();\n" * 41 + "}\n"
LONG_FUNCTION = "void Run() {\n" + "  Step();\n" * 81 + "}\n"

# File, its planted text, and the findings as (rule, path, line).
PLANTED = [
    (SOURCE, "#include <windows.h>\n", ("windows-header", SOURCE, 1)),
    ("platform/os/posix/clock.cpp", "#include <Windows.h>\n", ("windows-header", "platform/os/posix/clock.cpp", 1)),
    (SOURCE, "\n#include <utf8proc.h>\n", ("third-party", SOURCE, 2)),
    (SOURCE, '#include "hwy/highway.h"\n', ("third-party", SOURCE, 1)),
    ("platform/os/posix/clock.cpp", "#include <openssl/evp.h>\n", ("third-party", "platform/os/posix/clock.cpp", 1)),
    ("VYXInfUtils.m/include/VYXInfFormat.h", "#pragma once\n#include <fmt/format.h>\n#include <zip.h>\n",
     ("third-party", "VYXInfUtils.m/include/VYXInfFormat.h", 3)),
    (HEADER, "#pragma once\n#include <fmt/format.h>\n", ("third-party", HEADER, 2)),
    (HEADER, "#pragma once\n#include <unistd.h>\n", ("host-header", HEADER, 2)),
    ("platform/adapters/unicode_utf8proc.cpp", "#include <sys/stat.h>\n",
     ("host-header", "platform/adapters/unicode_utf8proc.cpp", 1)),
    (HEADER, '#pragma once\n#include "platform/os/clock.h"\n', ("layer", HEADER, 2)),
    (CONTRACT, '#pragma once\n#include "VYXInfThing.h"\n', ("layer", CONTRACT, 2)),
    (SOURCE, '#include "platform/os/posix/clock.cpp"\n', ("layer", SOURCE, 1)),
    (SOURCE, '#include "platform/adapters/unicode_utf8proc.cpp"\n', ("layer", SOURCE, 1)),
    ("platform/adapters/unicode_utf8proc.cpp", '#include "platform/os/clock.h"\n',
     ("layer", "platform/adapters/unicode_utf8proc.cpp", 1)),
    (SOURCE, '#include "VYXInfOther.h"\n', ("include", SOURCE, 1)),
    (SOURCE, "#if defined(_WIN32)\n#endif\n", ("os-conditional", SOURCE, 1)),
    (HEADER, "#pragma once\n#  ifdef __linux__\n#endif\n", ("os-conditional", HEADER, 2)),
    (SOURCE, "// caf\u00e9\n", ("ascii", SOURCE, 1)),
    (SOURCE, "int a;\t\n", ("tab", SOURCE, 1), ("trailing-blank", SOURCE, 1)),
    (SOURCE, "int a; \n", ("trailing-blank", SOURCE, 1)),
    (SOURCE, "int a;\r\n", ("line-end", SOURCE, 1)),
    (SOURCE, "int a;", ("line-end", SOURCE, 1)),
    (SOURCE, "// " + "a" * 118 + "\n", ("line-length", SOURCE, 1)),
    (SOURCE, "\n// TO" "DO: finish\n", ("open-end", SOURCE, 2)),
    (SOURCE, "  std::cout << 1;\n", ("call", SOURCE, 1)),
    (SOURCE, "  std::printf(\"x\");\n", ("call", SOURCE, 1)),
    (SOURCE, "  abort();\n", ("call", SOURCE, 1)),
    (HEADER, "#include <string>\n", ("guard", HEADER, 1)),
    (SOURCE, "int a;\n" * 501, ("file-length", SOURCE, 501)),
    (SOURCE, "\n" + LONG_FUNCTION, ("function-length", SOURCE, 2)),
    (SOURCE, ("\n" + COMMON_FUNCTION) * 2, ("function-length", "CONTRIBUTING.md", 1)),
    (SOURCE, "  std::thread worker(Run);\n", ("thread", SOURCE, 1)),
    ("platform/os/posix/clock.cpp", "  pthread_create(&id, nullptr, Run, nullptr);\n",
     ("thread", "platform/os/posix/clock.cpp", 1)),
    (SOURCE, "#include <regex>\n", ("regex", SOURCE, 1)),
    (SOURCE, "  return std::regex_match(text, kPattern);\n", ("regex", SOURCE, 1)),
    (SOURCE, "  std::ostringstream text;\n", ("locale", SOURCE, 1)),
    (SOURCE, "  return std::isspace(letter) != 0;\n", ("locale", SOURCE, 1)),
    (SOURCE, "thread_local std::string tLast;\n", ("thread-local", SOURCE, 1)),
    (SOURCE, "  call();  // NOLINT\n", ("suppression", SOURCE, 1)),
    (SOURCE, "  call();  // NOLINT(bugprone-branch-clone)\n", ("suppression", SOURCE, 1)),
    (SOURCE, "#pragma GCC diagnostic push\n#pragma GCC diagnostic ignored \"-Wformat\"\n", ("suppression", SOURCE, 2)),
    (SOURCE, "class VYX_EXPORT Hidden {};\n", ("export", SOURCE, 1)),
    (SOURCE, "  // Run(1);\n", ("dead-code", SOURCE, 1)),
    (SOURCE, "  // if (ready) {\n", ("dead-code", SOURCE, 1)),
    (SOURCE, "  //  count = 1;\n", ("dead-code", SOURCE, 1)),
    (SOURCE, "void Run(int count);\n", ("parameter", SOURCE, 1)),
    (SOURCE, "void Run(int iCount,\n         const std::string& name = {});\n", ("parameter", SOURCE, 2)),
    ("scripts/install-packages", "build=(libzip-dev)\n",
     ("map", "HACKING.md", 1), ("dependency", "scripts/install-packages", 1)),
    ("docs/page.md", "text\n", ("map", "HACKING.md", 1)),
    ("docs/threats.md", "| threat | tests |\n| --- | --- |\n| links | `Files.FollowsNone` |\n| rain | an umbrella |\n",
     ("map", "HACKING.md", 1), ("threat", "docs/threats.md", 3), ("threat", "docs/threats.md", 4)),
    ("HACKING.md", CLEAN["HACKING.md"] + "- `gone/` - nothing\n", ("map", "HACKING.md", 1)),
    ("platform/os/README.md", "\n[gone](posix/gone.h)\n", ("link", "platform/os/README.md", 2)),
    ("VYXInfUtils.m/src/forgotten.cpp", "int a;\n", ("build-list", "VYXInfUtils.m/src/forgotten.cpp", 1)),
    ("VYXInfUtils.m/src/Thing.cpp", "int a;\n", ("build-list", "VYXInfUtils.m/src/Thing.cpp", 1)),
]

# Texts that look like violations and are none.
INNOCENT = [
    (SOURCE, '// abort() would end the program\nconst char* kText = "printf(";\n'),
    (SOURCE, "#ifdef ERROR\n#undef ERROR\n#endif\n"),
    (SOURCE, "void Run() {\n" + "  Step();\n" * 79 + "}\n"),
    (SOURCE, COMMON_FUNCTION),
    (SOURCE, "  return std::thread::hardware_concurrency();  // not std::thread itself\n"),
    (SOURCE, "thread_local std::uint32_t tCount = 0;\nthread_local const char* tName = nullptr;\n"),
    (SOURCE, "static_assert(std::is_trivially_destructible_v<Text>);\nconstinit thread_local Text tText{1, 2};\n"),
    (SOURCE, "  call();  // NOLINT(bugprone-branch-clone): both are wanted\n"),
    (SOURCE, "// The format is the caller's.\n#pragma GCC diagnostic push\n"
             "#pragma GCC diagnostic ignored \"-Wformat\"\n"),
    (SOURCE, "void Run(const std::vector<int>& iTimes, int* oCount, bool ioDone = false);\n"),
    (SOURCE, "  for (int index = 0; index < 3; ++index) {\n  if (const int found = Find(word & kMask)) {\n"),
    (SOURCE, "// Run(int count)\n  return static_cast<unsigned char>(first);\n"),
    (SOURCE, "// Reads term = factor { factor } ;\n// which may be empty; it is closed by }\n"),
    (HEADER, "#pragma once\nclass VYX_EXPORT Shown {};\n"),
    ("platform/os/posix/clock.cpp", "#if !defined(__linux__)\n#error wrong host\n#endif\n"),
    ("tests/platform/os/CMakeLists.txt", "# A folder that mirrors a mapped one\n"),
    ("tests/VYXInfUtils.m/CMakeLists.txt", "# A folder that mirrors one of sources\n"),
    ("platform/os/CMakeLists.txt", "target_sources(os PRIVATE ${PROJECT_SOURCE_DIR}/platform/os/posix/clock.cpp)\n"),
    ("platform/os/README.md", "[clock](posix/clock.cpp#here), [top](../../HACKING.md), [web](https://example.org/)\n"),
    ("platform/os/windows_api.md", "Text with caf\u00e9  \n"),
    ("build/dev/generated.cpp", "#include <windows.h>"),
]


def findings_in(files):
    with tempfile.TemporaryDirectory() as folder:
        for path, text in files.items():
            target = pathlib.Path(folder, path)
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(text.encode())
        return [(finding.rule, finding.path, finding.line) for finding in check(folder)]


class ArchitectureTest(unittest.TestCase):
    def test_clean_tree_has_no_findings(self):
        self.assertEqual(findings_in(CLEAN), [])

    def test_each_planted_violation_is_found(self):
        for path, text, *expected in PLANTED:
            with self.subTest(path=path, text=text[:60]):
                self.assertEqual(findings_in({**CLEAN, path: text}), expected)

    def test_innocent_texts_are_left_alone(self):
        for path, text in INNOCENT:
            with self.subTest(path=path, text=text[:60]):
                self.assertEqual(findings_in({**CLEAN, path: text}), [])

    def test_every_rule_is_planted_and_named_in_the_rules_of_the_code_base(self):
        rules = pathlib.Path(__file__).resolve().parents[2].joinpath("CONTRIBUTING.md").read_text(encoding="utf-8")
        sources = "".join(path.read_text() for path in pathlib.Path(__file__).parent.glob("*_rules.py"))
        known = set(re.findall(r'Finding\("([\w-]+)"', sources)) | {rule for rule, _, _ in code_rules.FORBIDDEN}
        self.assertEqual(known, {finding[0] for _, _, *findings in PLANTED for finding in findings})
        self.assertEqual([rule for rule in sorted(known) if f"`{rule}`" not in rules], [])

    def test_missing_map_is_found(self):
        files = {path: text for path, text in CLEAN.items() if path != "HACKING.md"}
        self.assertEqual(findings_in(files), [("map", "HACKING.md", 1)])


if __name__ == "__main__":
    unittest.main()
