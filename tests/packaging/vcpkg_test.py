#!/usr/bin/env python3
"""Holds the vcpkg manifest and the overlay port against the build, as far as that goes without vcpkg."""

import json
import pathlib
import re
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]
VCPKG = TOP / "packaging" / "vcpkg"
PORT = VCPKG / "ports" / "vyxinfutils"

# What the build asks for, by the name it asks for, and the package of vcpkg that has it.
PACKAGES = {
    "hwy": "highway", "libhwy": "highway",
    "deflate": "libdeflate", "libdeflate": "libdeflate",
    "libzip": "libzip",
    "libcrypto": "openssl",
    "simdjson": "simdjson",
    "utf8proc": "utf8proc", "libutf8proc": "utf8proc",
    "ZLIB": "zlib",
}
FEATURES = {"tests": {"gtest"}, "benchmarks": {"benchmark", "rapidjson"}}
HOST_TOOLS = {"vcpkg-cmake", "vcpkg-cmake-config"}
OF_THE_SYSTEM = {"PkgConfig", "Threads"}
OF_CMAKE = {"PKG_CONFIG_EXECUTABLE"}
FUNCTIONS = {
    "vcpkg_check_linkage", "vcpkg_find_acquire_program", "vcpkg_cmake_configure", "vcpkg_cmake_install",
    "vcpkg_cmake_config_fixup", "vcpkg_fixup_pkgconfig", "vcpkg_copy_tools", "vcpkg_install_copyright",
}


def read(*parts):
    return pathlib.Path(*parts).read_text(encoding="utf-8")


def names(dependencies):
    return [entry if isinstance(entry, str) else entry["name"] for entry in dependencies]


def needed_by_build():
    """Packages that the files of the build look for, under the names that they use."""
    text = "".join(read(path) for path in sorted(TOP.glob("cmake/Dependencies*.cmake")))
    found = set(re.findall(r"pkg_check_modules\(\w+ REQUIRED IMPORTED_TARGET (\S+)\)", text))
    found |= set(re.findall(r"find_package\((\w+)", text)) | set(re.findall(r"find_library\(\w+ (\w+)", text))
    for loop in re.findall(r"foreach\(package ([\w ]+)\)", text):
        found |= set(loop.split())
    return found - OF_THE_SYSTEM


class VcpkgTest(unittest.TestCase):
    def setUp(self):
        self.manifest = json.loads(read(VCPKG, "vcpkg.json"))
        self.port = json.loads(read(PORT, "vcpkg.json"))
        self.portfile = re.sub(r"#.*", "", read(PORT, "portfile.cmake"))
        self.build = read(TOP, "CMakeLists.txt")

    def test_names_version_and_text_are_those_of_the_build(self):
        version = re.search(r"\n\s+VERSION (\S+)", self.build).group(1)
        description = re.search(r'DESCRIPTION "(.*)"', self.build).group(1)
        for document in (self.manifest, self.port):
            self.assertEqual(document["name"], PORT.name)
            self.assertEqual(document["version"], version)
            self.assertEqual(document["description"], description)
            for name in [document["name"], *names(document["dependencies"])]:
                self.assertRegex(name, r"^[a-z0-9]+(-[a-z0-9]+)*$")

    def test_manifest_has_what_the_build_needs_and_no_more(self):
        needed = needed_by_build()
        self.assertGreater(len(needed), 5)
        self.assertEqual(needed - set(PACKAGES), set(), "what the build looks for, and no package is known for")
        self.assertEqual(set(names(self.manifest["dependencies"])), {PACKAGES[name] for name in needed})

    def test_port_has_the_same_and_the_tools_of_its_functions(self):
        expected = set(names(self.manifest["dependencies"])) | HOST_TOOLS
        self.assertEqual(set(names(self.port["dependencies"])), expected)
        tools = {entry["name"] for entry in self.port["dependencies"] if isinstance(entry, dict) and entry.get("host")}
        self.assertEqual(tools, HOST_TOOLS)

    def test_features_have_what_the_tests_and_benchmarks_need(self):
        found = {name: set(feature["dependencies"]) for name, feature in self.manifest["features"].items()}
        self.assertEqual(found, FEATURES)

    def test_options_of_the_port_exist(self):
        passed = set(re.findall(r"-D(\w+)=", self.portfile))
        offered = set(re.findall(r"option\((\w+)", self.build))
        self.assertIn("VYX_BUILD_TESTS", passed)
        self.assertEqual(passed - offered - OF_CMAKE, set())

    def test_functions_of_the_port_exist(self):
        self.assertEqual(set(re.findall(r"\b(vcpkg_\w+)\(", self.portfile)), FUNCTIONS)

    def test_paths_of_the_port_lead_somewhere(self):
        upwards = re.search(r'SOURCE_PATH "\$\{CMAKE_CURRENT_LIST_DIR\}/([./]+)"', self.portfile).group(1)
        self.assertEqual((PORT / upwards).resolve(), TOP)
        for path in re.findall(r"\$\{SOURCE_PATH\}/([\w./-]+)", self.portfile):
            self.assertTrue((TOP / path).is_file(), path)


if __name__ == "__main__":
    unittest.main()
