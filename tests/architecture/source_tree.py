"""The files of the project, as the architecture rules see them."""

import os
import pathlib

GENERATED = {".git", ".cache", "build", "__pycache__"}
CPP = {".h", ".cpp"}
SCRIPTS = {".py", ".cmake"}


class SourceFile:
    """One file: its path below the root with forward slashes, and its text."""

    def __init__(self, root, path):
        self.path = path.relative_to(root).as_posix()
        self.suffix = path.suffix
        self.bytes = path.read_bytes()
        self.text = self.bytes.decode("utf-8", "replace")
        self.lines = self.text.splitlines()

    def is_cpp(self):
        return self.suffix in CPP

    def is_source(self):
        """Code in any language; documents and data are not."""
        name = self.path.rsplit("/", 1)[-1]
        return self.is_cpp() or self.suffix in SCRIPTS or name == "CMakeLists.txt" or self.bytes.startswith(b"#!")

    def is_below(self, *folders):
        return any(self.path.startswith(folder) for folder in folders)


class Finding:
    """A broken rule, with its place."""

    def __init__(self, rule, path, line, message):
        self.rule, self.path, self.line, self.message = rule, path, line, message

    def __str__(self):
        return f"{self.path}:{self.line}: [{self.rule}] {self.message}"


class SourceTree:
    """Every file and folder below a root, except what builds leave behind."""

    def __init__(self, root):
        self.root = pathlib.Path(root).resolve()
        self.files, self.folders = [], []
        for folder, names, files in os.walk(self.root):
            names[:] = sorted(name for name in names if name not in GENERATED)
            here = pathlib.Path(folder)
            if files and here != self.root:
                self.folders.append(here.relative_to(self.root).as_posix())
            # A checkout made by `git worktree` has a file of this name where others have the folder.
            regular = (here / name for name in sorted(files) if name != ".git")
            self.files += [SourceFile(self.root, path) for path in regular if path.is_file()]
        self.by_path = {file.path: file for file in self.files}
