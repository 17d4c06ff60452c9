"""What the library's code must not do although the compiler lets it, and what has to be said where it is done."""

import re

from source_tree import Finding

LIBRARY = ("VYXInfUtils.m/", "platform/")
EXPORTED = ("VYXInfUtils.m/include/", "platform/include/")

COMMENT = re.compile(r"//.*|/\*.*?\*/|^\s*\*.*")
NO_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:[^"\\\n]|\\.)*"|^\s*#[^\n]*', re.DOTALL | re.MULTILINE)
COMMENT_OR_TEXT = re.compile(COMMENT.pattern + r'|"(?:[^"\\]|\\.)*"')

# Each with the rule that it breaks.
FORBIDDEN = [
    ("thread",
     re.compile(r"\b(std::j?thread(?!::hardware_concurrency)|std::async|pthread_create|_beginthread|CreateThread)\b"),
     "the library starts no threads"),
    ("regex", re.compile(r"(std::w?regex|<regex>)"), "its recursion is as deep as the text is long"),
    ("locale",
     re.compile(r"\b(setlocale|newlocale|uselocale|std::locale|imbue|std::[io]?stringstream|strcoll|strtod|"
                r"std::sto[dfl]d?|(?:is(?:alpha|alnum|digit|xdigit|space|upper|lower|punct|print|cntrl)|tolower|"
                r"toupper)(?=\())\b"),
     "its result depends on the locale"),
]
PLAIN_TYPE = r"(?:std::)?(?:u?int(?:8|16|32|64)?(?:_t)?|unsigned|bool|char|long|size_t|double)\b|.*\*"
# A parameter: its type, and its name before a comma, a bracket or its default.
PARAMETER = re.compile(
    r"[(,]\s*(?P<type>(?:const\s+)?[A-Za-z_][\w:]*(?:<[^()]*?>)?(?:\s+const)?)(?:\s|[*&]+\s)\s*"
    r"(?P<name>[a-z]\w*)\s*(?=[,)=])")
PARAMETER_NAME = re.compile(r"(i|o|io)[A-Z]")
NO_TYPE = {"return", "throw", "new", "delete", "case", "else", "typename", "class", "not", "sizeof"}
NO_NAME = {"char", "short", "int", "long", "const"}
STATEMENT = re.compile(r"\b(?:if|for|while|switch|catch)(?: constexpr)? $")

THREAD_LOCAL = re.compile(r"\bthread_local\s+(?:const\s+)?(.+?)\s+\w+\s*(?:\{|=|;)")

NOLINT = re.compile(r"\bNOLINT(?:NEXTLINE|BEGIN)?\b(?P<told>\([\w.,*-]+\): \S)?")
PRAGMA = re.compile(r"^\s*#\s*pragma\s+(?:GCC|clang)\s+diagnostic\s+ignored\b")

# A line of code behind the slashes: a statement, or the head of a block. Prose may end with a brace or a semicolon too.
DEAD_CODE = re.compile(
    r"^\s*//\s?(?:(?:return|throw|delete|break|continue|goto)\b[^.]*;|#\s*(?:include|define|if)\b.*|"
    r"(?:if|for|while|switch) \(.*(?:\{|;)|[\w:>.\[\]()*&-]+\([^;]*\);|[\w:<>*&, ]+ =(?!=) .*\S;|\}(?:;| else \{)?)$")


def check_forbidden(tree):
    """No threads, no regular expressions, nothing that depends on the locale."""
    for file in filter(lambda file: file.is_cpp() and file.is_below(*LIBRARY), tree.files):
        for number, line in enumerate(file.lines, 1):
            code = COMMENT_OR_TEXT.sub("", line)
            for rule, pattern, reason in FORBIDDEN:
                match = pattern.search(code)
                if match:
                    yield Finding(rule, file.path, number, f"'{match.group(1)}': {reason}")


def check_thread_locals(tree):
    """A variable of a thread has no destructor: the type says so by itself, or an assertion in the same file."""
    for file in filter(lambda file: file.is_cpp() and file.is_below(*LIBRARY), tree.files):
        for number, line in enumerate(file.lines, 1):
            match = THREAD_LOCAL.search(COMMENT.sub("", line))
            if not match or re.fullmatch(PLAIN_TYPE, match.group(1)):
                continue
            if f"is_trivially_destructible_v<{match.group(1)}>" not in file.text:
                yield Finding("thread-local", file.path, number, f"{match.group(1)} may have a destructor")


def check_suppressions(tree):
    """Whoever silences a checker says which one, and why."""
    for file in filter(lambda file: file.is_cpp(), tree.files):
        for number, line in enumerate(file.lines, 1):
            match = NOLINT.search(line)
            if match and not match.group("told"):
                yield Finding("suppression", file.path, number, "NOLINT(check): reason")
            if PRAGMA.match(line) and not explained(file.lines, number):
                yield Finding("suppression", file.path, number, "a comment above says why the warning is silenced")


def explained(lines, number):
    """The pragma, or the one that opens its scope, follows a comment."""
    above = (line.strip() for line in reversed(lines[:number - 1]))
    return next((line for line in above if not line.startswith("#pragma")), "").startswith("//")


def check_exports(tree):
    """What is exported is declared in a header that is installed."""
    for file in filter(lambda file: file.is_cpp() and not file.is_below(*EXPORTED, "tests/"), tree.files):
        for number, line in enumerate(file.lines, 1):
            if "VYX_EXPORT" in COMMENT_OR_TEXT.sub("", line):
                yield Finding("export", file.path, number, "VYX_EXPORT outside the exported headers")


def check_dead_code(tree):
    """Code that is not wanted is deleted; the history keeps it."""
    for file in filter(lambda file: file.is_cpp(), tree.files):
        for number, line in enumerate(file.lines, 1):
            if DEAD_CODE.match(line):
                yield Finding("dead-code", file.path, number, "commented-out code")


def check_parameters(tree):
    """A parameter's name says which way it goes: iInput, oOutput, ioBoth."""
    for file in filter(lambda file: file.is_cpp() and file.is_below(*LIBRARY), tree.files):
        text = without_comments(file.text)
        for match in PARAMETER.finditer(text):
            name, kind = match.group("name"), match.group("type").split()[0]
            if PARAMETER_NAME.match(name) or name in NO_NAME or kind in NO_TYPE:
                continue
            if STATEMENT.search(text[max(0, match.start() - 20):match.start()]):
                continue
            line = text.count("\n", 0, match.start("name")) + 1
            yield Finding("parameter", file.path, line, f"parameter '{name}' is not named iInput, oOutput or ioBoth")


def without_comments(text):
    """The code in its lines: comments, texts and what the preprocessor reads are gone."""
    return NO_CODE.sub(keep_lines, text)


def keep_lines(match):
    return "\n" * match.group().count("\n")
