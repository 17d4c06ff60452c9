"""Who may include what: the layers from the exported headers down to the host, and the homes of foreign headers."""

import posixpath
import re

from source_tree import Finding

EXPORTED = "VYXInfUtils.m/include/"
LIBRARY = "VYXInfUtils.m/src/"
TYPES = "platform/include/"
PLATFORM = "platform/src/"
OS_CONTRACTS = "platform/os/*.h"
OS_POSIX = "platform/os/posix/"
OS_LINUX = "platform/os/linux/"
OS_WINDOWS = "platform/os/windows/"
ADAPTERS = "platform/adapters/"
EXAMPLES = "examples/"
PROGRAMS = "programs/"

# A layer, and the layers whose files it may include besides its own.
LAYERS = {
    EXPORTED: {TYPES},
    LIBRARY: {EXPORTED, TYPES, OS_CONTRACTS},
    TYPES: set(),
    PLATFORM: {TYPES, OS_CONTRACTS, ADAPTERS},
    OS_CONTRACTS: set(),
    OS_POSIX: {OS_CONTRACTS},
    OS_LINUX: {OS_CONTRACTS, OS_POSIX},
    OS_WINDOWS: {OS_CONTRACTS},
    ADAPTERS: set(),
    EXAMPLES: {EXPORTED, TYPES},
    PROGRAMS: {EXPORTED, TYPES, OS_CONTRACTS},
}

# Contracts below the platform types may name result codes, which are plain constants.
ALWAYS_ALLOWED = {"platform/include/KORSysBase/KORResult.h"}

THIRD_PARTY = re.compile(
    r"^(utf8proc\.h|simdjson\.h|rapidjson/.*|libdeflate\.h|openssl/.*|hwy/.*|fmt/.*|spdlog/.*|zip\.h|zlib\.h)$")
# For callers of fmt: the one exported header that names a third-party library, and that no other header includes.
FORMAT_HEADER = "VYXInfUtils.m/include/VYXInfFormat.h"
WINDOWS_HEADER = re.compile(r"^(windows|windef|winbase|winnt|tlhelp32|psapi|bcrypt|shlobj|winternl)\.h$", re.IGNORECASE)
WINDOWS_WRAPPER = "platform/os/windows/windows_api.h"
WINDOWS_CALLERS = "tests/windows/"  # they stand for programs that use both

STANDARD = set("""
algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
clocale cmath compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint cstdio
cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem forward_list fstream functional
future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore
set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view strstream
syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
variant vector version
""".split())

INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
OS_CONDITION = re.compile(
    r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(_WIN32|_WIN64|WIN32|__MINGW\w*|__CYGWIN__|_MSC_VER|__linux__|__linux|"
    r"__unix__|__APPLE__|__FreeBSD__|__ANDROID__)\b")
OS_CONDITION_HOMES = ("platform/os/", "platform/include/VYXExport.h", "tests/platform/os/")


def layer_of(path):
    """The layer that a file belongs to, or None for tests and benchmarks, which may include everything."""
    if re.fullmatch(r"platform/os/[^/]+\.h", path):
        return OS_CONTRACTS
    folders = (layer for layer in LAYERS if layer != OS_CONTRACTS)
    return next((layer for layer in folders if path.startswith(layer)), None)


def resolve(tree, file, name):
    """The file of the project that a quoted include means, or None."""
    folder = posixpath.dirname(file.path)
    roots = [folder, EXPORTED, LIBRARY, TYPES, "", "tests"]
    if file.is_below("tests/"):
        roots.append(posixpath.dirname(folder))
    candidates = (posixpath.normpath(posixpath.join(root, name)) for root in roots)
    return next((path for path in candidates if path in tree.by_path), None)


def check_project_include(tree, file, layer, name, line):
    target = resolve(tree, file, name)
    if target is None:
        yield Finding("include", file.path, line, f'"{name}" is no file of the project')
        return
    if layer is None or target in ALWAYS_ALLOWED:
        return
    if layer == ADAPTERS and target == WINDOWS_WRAPPER:
        return  # the headers of the system's own libraries build on that one
    if target == FORMAT_HEADER:
        yield Finding("third-party", file.path, line, f"{FORMAT_HEADER} is for callers only")
    target_layer = layer_of(target)
    if target_layer != layer and target_layer not in LAYERS[layer]:
        yield Finding("layer", file.path, line, f"{layer} may not include {target}")


def check_foreign_include(file, layer, name, line):
    if name in STANDARD or layer is None and not WINDOWS_HEADER.match(name):
        return
    if WINDOWS_HEADER.match(name):
        if file.path != WINDOWS_WRAPPER and not file.is_below(WINDOWS_CALLERS):
            yield Finding("windows-header", file.path, line, f"<{name}> belongs in {WINDOWS_WRAPPER} only")
    elif THIRD_PARTY.match(name):
        if layer != ADAPTERS and not (file.path == FORMAT_HEADER and name.startswith("fmt/")):
            yield Finding("third-party", file.path, line, f"<{name}> belongs in {ADAPTERS} only")
    elif layer not in (OS_POSIX, OS_LINUX, OS_WINDOWS):
        yield Finding("host-header", file.path, line, f"<{name}> is no C++ header; it belongs below platform/os/ only")


def check_includes(tree):
    """Includes go downwards only, and foreign headers stay at home."""
    for file in filter(lambda file: file.is_cpp(), tree.files):
        layer = layer_of(file.path)
        for number, text in enumerate(file.lines, 1):
            match = INCLUDE.match(text)
            if not match:
                continue
            quoted, name = match.group(1) == '"', match.group(2)
            if quoted and not THIRD_PARTY.match(name) and not WINDOWS_HEADER.match(name):
                yield from check_project_include(tree, file, layer, name, number)
            else:
                yield from check_foreign_include(file, layer, name, number)


def check_os_conditions(tree):
    """Code is chosen by the build, not by a conditional on the host."""
    for file in filter(lambda file: file.is_cpp() and not file.is_below(*OS_CONDITION_HOMES), tree.files):
        for number, text in enumerate(file.lines, 1):
            match = OS_CONDITION.match(text)
            if match:
                yield Finding("os-conditional", file.path, number, f"conditional on {match.group(1)}")
