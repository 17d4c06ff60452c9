"""What belongs together: folders and their map, sources and the build."""

import posixpath
import re

from source_tree import Finding

BUILT = ("VYXInfUtils.m/src/", "platform/", "examples/", "programs/", "tests/", "benchmarks/", "fuzz/")
MAP = "HACKING.md"
PACKAGES = "scripts/install-packages"
NOTICES = "THIRD_PARTY.md"
# Packages of headers; dpkg-dev is a tool, and so is what the compiler brings for its sanitizers.
HEADERS = re.compile(r"(?<![\w-])(?!dpkg-dev|libclang-rt)[\w.+-]+-dev(?![\w-])")
LINK = re.compile(r"\]\((?!\w+:)([^)#\s]+)")


def is_mapped(folder, named):
    """A folder is in the map itself, or mirrors below tests/ one that is."""
    mirrored = folder.removeprefix("tests/")
    return folder in named or folder != mirrored and any(mirrored == mirror_of(name) for name in named)


def mirror_of(name):
    """The tests of the folders src/ and include/ stand directly below the mirror of what holds these."""
    return re.sub(r"/(src|include)(?=/|$)", "", name)


def check_map(tree):
    """HACKING.md names every folder, and no folder that is gone."""
    if MAP not in tree.by_path:
        yield Finding("map", MAP, 1, "the map of the tree is missing")
        return
    named = {name.rstrip("/") for name in re.findall(r"^- `([^`]+/)`", tree.by_path[MAP].text, re.MULTILINE)}
    for folder in tree.folders:
        if not is_mapped(folder, named):
            yield Finding("map", MAP, 1, f"folder {folder}/ is not named")
    for name in sorted(named):
        if not (tree.root / name).is_dir():
            yield Finding("map", MAP, 1, f"folder {name}/ does not exist")


def check_links(tree):
    """A relative link in a document leads somewhere."""
    for file in filter(lambda file: file.suffix == ".md", tree.files):
        for number, line in prose_of(file):
            for target in LINK.findall(line):
                if not (tree.root / posixpath.dirname(file.path) / target).exists():
                    yield Finding("link", file.path, number, f"{target} does not exist")


def prose_of(document):
    """The numbered lines of a document outside its fenced blocks of code."""
    is_code = False
    for number, line in enumerate(document.lines, 1):
        if line.startswith("```"):
            is_code = not is_code
        elif not is_code:
            yield number, line


def check_build_lists(tree):
    """Every source is named in the CMakeLists.txt of its folder or of one above it, or with its full path in any."""
    lists = "".join(file.text for file in tree.files if file.path.endswith("CMakeLists.txt"))
    for file in filter(lambda file: file.suffix == ".cpp" and file.is_below(*BUILT), tree.files):
        is_near = any(is_listed(tree, file, folder) for folder in parents(file.path))
        if not is_near and "${PROJECT_SOURCE_DIR}/" + file.path not in lists:
            yield Finding("build-list", file.path, 1, "no CMakeLists.txt names this source")


def parents(path):
    while path:
        path = posixpath.dirname(path)
        yield path


def is_listed(tree, file, folder):
    build = tree.by_path.get(posixpath.join(folder, "CMakeLists.txt"))
    relative = posixpath.relpath(file.path, folder or ".")
    return build is not None and re.search(r"(?<![\w./-])" + re.escape(relative) + r"(?![\w.])", build.text) is not None


def check_dependencies(tree):
    """What is linked or included comes from packages that the project installs, and is listed with its licence."""
    if PACKAGES not in tree.by_path:
        return
    script, listed = tree.by_path[PACKAGES], ""
    if NOTICES in tree.by_path:
        listed = tree.by_path[NOTICES].text
    for number, line in enumerate(script.lines, 1):
        for package in HEADERS.findall(line.partition("#")[0]):
            if not re.search(rf"(?<![\w-]){re.escape(package)}(?![\w-])", listed):
                yield Finding("dependency", PACKAGES, number, f"{NOTICES} does not name {package}")
    for number, line in enumerate(listed.splitlines(), 1):
        for package in HEADERS.findall(line):
            if package not in script.text:
                yield Finding("dependency", NOTICES, number, f"{PACKAGES} does not install {package}")
