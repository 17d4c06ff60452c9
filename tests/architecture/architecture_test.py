#!/usr/bin/env python3
"""Plants one violation after another in a small clean tree: each must be found, at its place, and nothing else."""

import pathlib
import tempfile
import unittest

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
LONG_FUNCTION = "void Run() {\n" + "  Step();\n" * 81 + "}\n"

# File, its planted text, and the findings as (rule, path, line).
PLANTED = [
    (SOURCE, "#include <windows.h>\n", ("windows-header", SOURCE, 1)),
    ("platform/os/posix/clock.cpp", "#include <Windows.h>\n", ("windows-header", "platform/os/posix/clock.cpp", 1)),
    (SOURCE, "\n#include <utf8proc.h>\n", ("third-party", SOURCE, 2)),
    (SOURCE, '#include "hwy/highway.h"\n', ("third-party", SOURCE, 1)),
    ("platform/os/posix/clock.cpp", "#include <openssl/evp.h>\n", ("third-party", "platform/os/posix/clock.cpp", 1)),
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
    ("docs/page.md", "text\n", ("map", "HACKING.md", 1)),
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

    def test_missing_map_is_found(self):
        files = {path: text for path, text in CLEAN.items() if path != "HACKING.md"}
        self.assertEqual(findings_in(files), [("map", "HACKING.md", 1)])


if __name__ == "__main__":
    unittest.main()
