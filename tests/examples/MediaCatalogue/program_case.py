"""What the tests of MediaCatalogue share: the program as a process, in a folder of its own.

The environment variable MEDIA_CATALOGUE names the program.
"""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest
import zipfile

from check_catalogue import differences

PROGRAM = os.path.abspath(os.environ["MEDIA_CATALOGUE"])
SOURCES = pathlib.Path(__file__).resolve().parents[3]
NOBODY = 65534


class ProgramCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        self.media = self.root / "media"
        self.media.mkdir()

    def write(self, name, content=b"content"):
        path = self.media / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def run_program(self, *arguments, env=None, **options):
        if env is None:
            env = {name: value for name, value in os.environ.items()
                   if name != "KORInstallPath" and not name.startswith("VYX_")}
        return subprocess.run([PROGRAM, *map(os.fspath, arguments)], cwd=self.root, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=120, check=False, env=env, **options)

    def catalogue(self, out="build/demo"):
        return json.loads((self.root / out / "catalogue.json").read_text("utf-8"))

    def packed(self, out="build/demo"):
        """Name, with the library's separators, and content of every entry of the archive."""
        with zipfile.ZipFile(self.root / out / "catalogue.zip") as archive:
            return {name.replace("/", "\\"): archive.read(name) for name in archive.namelist()}

    def assert_catalogued(self, run, out="build/demo"):
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)
        self.assertEqual(self.packed(out), {path: (self.media / path.replace("\\", "/")).read_bytes()
                                            for path in self.catalogue(out)["files"]})
        self.assertEqual(list(differences(self.catalogue(out), self.media, self.root / out)), [])
