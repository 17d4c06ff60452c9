#!/usr/bin/env python3
"""Runs MediaCatalogue --verify as a second process over what a first one catalogued."""

import base64
import json
import os
import pathlib
import unittest

from program_case import NOBODY, SOURCES, ProgramCase

CATALOGUE = "build/demo/catalogue.json"
CONTAINER = "VYX::Inf::MediaContainer"


def items_of(container, prefix=""):
    """Path and media item of every file below a container."""
    for item in container["mediaContainerContent"] or []:
        path = prefix + item["mediaName"]
        if item["$type"] == CONTAINER:
            yield from items_of(item, path + "\\")
        else:
            yield path, item


class VerifyTest(ProgramCase):
    def verify(self, catalogue=CATALOGUE, **options):
        return self.run_program("--verify", catalogue, **options)

    def assert_unchanged(self, count):
        self.assert_catalogued(self.run_program("media"))
        run = self.verify()
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)
        self.assertIn(f"All as catalogued: {count} files\n", run.stdout.decode())

    def assert_differences(self, lines, count, **options):
        run = self.verify(**options)
        self.assertEqual((run.returncode, run.stderr), (1, b""), run)
        shown = run.stdout.decode().splitlines()
        for line in lines:
            self.assertIn(line, shown)
        self.assertEqual(shown[-1], f"Not as catalogued: {len(lines)} of {count} files")

    def change(self, edit):
        """Edits the catalogue as a value."""
        catalogue = self.catalogue()
        edit(catalogue)
        (self.root / CATALOGUE).write_text(json.dumps(catalogue), "utf-8")

    def test_media_of_every_kind(self):
        self.write("picture.png", b"small")
        self.write("film.mp4", b"f" * 1025)
        self.write("sub/recording.flac", b"r" * 1024)
        self.write("sub/sub/text.txt", b"")
        self.write("sub/other", b"o" * 100000)
        self.assert_unchanged(5)
        media = self.catalogue()["media"]
        self.assertEqual((media["$type"], media["mediaName"]), (CONTAINER, "media"))
        items = dict(items_of(media))
        self.assertEqual({path: item["$type"] for path, item in items.items()}, {
            "picture.png": "MediaCatalogue::Picture",
            "film.mp4": "MediaCatalogue::Film",
            "sub\\recording.flac": "MediaCatalogue::Recording",
            "sub\\sub\\text.txt": "MediaCatalogue::Text",
            "sub\\other": "MediaCatalogue::OtherFile",
        })
        for path, item in items.items():
            with self.subTest(path=path):
                file = self.media / path.replace("\\", "/")
                [content] = item["fileContent"]
                self.assertEqual(content["location"], f"file:///{file}")
                small = file.read_bytes() if file.stat().st_size <= 1024 else b""
                self.assertEqual(base64.b64decode(content["content"]), small)
                self.assertEqual(item["fileSize"], file.stat().st_size)
                self.assertEqual(item["mediaDescription"], self.catalogue()["files"][path]["mediaType"])

    def test_odd_names(self):
        names = ["a b.txt", "100%.txt", "%41.txt", "a#b.txt", "caf\u00e9 \u65e5\u672c.txt", "?query.txt", "a&b=c;d.txt",
                 " leading", "'quoted\".txt", "# folder/50% of \u00e9t\u00e9/a b#c%20d.png", "line\nfeed.txt"]
        for index, name in enumerate(names):
            self.write(name, name.encode() * (index * 100 + 1))
        folder = self.root / "odd # 100% \u00e9t\u00e9"
        self.media.rename(folder)
        self.media = folder
        self.assert_catalogued(self.run_program(folder.name))
        run = self.verify()
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)
        self.write(names[2], b"changed")
        self.write(names[-1], b"changed")
        size = len(names[-1]) * 1001
        self.assert_differences([f"%41.txt: 7 bytes, catalogued {7 * 201}",
                                 f"line?feed.txt: 7 bytes, catalogued {size}"], len(names))

    def test_empty_folder(self):
        self.assert_unchanged(0)

    def test_twenty_thousand_files(self):
        for folder in range(100):
            (self.media / f"folder {folder}").mkdir()
            for index in range(200):
                (self.media / f"folder {folder}" / f"file {index}.txt").write_bytes(b"%d " % index * (folder + 1))
        self.assert_unchanged(20000)
        self.write("folder 7/file 7.txt", b"changed")
        (self.media / "folder 99" / "file 199.txt").unlink()
        self.assert_differences(["folder 7\\file 7.txt: 7 bytes, catalogued 16",
                                 "folder 99\\file 199.txt: is gone"], 20000)

    def test_folders_nested_deeply(self):
        self.write("d/" * 300 + "file.txt")
        self.write("d/" * 200 + "file.txt")
        self.write("d/" * 199 + "file.txt")
        self.assert_unchanged(3)
        self.write("d/" * 300 + "file.txt", b"new")
        self.assert_differences(["d\\" * 300 + "file.txt: 3 bytes, catalogued 7"], 3)

    def test_differences(self):
        for name in ("same", "changed small", "removed small"):
            self.write(name)
        for name in ("changed", "removed", "truncated", "emptied", "folder now"):
            self.write(name, b"x" * 5000)
        self.write("grown")
        self.write("empty", b"")
        self.write("empty, folder now", b"")
        self.assert_unchanged(11)
        self.write("changed small", b"CONTENT")
        self.write("changed", b"x" * 4999 + b"y")
        self.write("truncated", b"x" * 4999)
        self.write("emptied", b"")
        self.write("grown", b"content and more")
        self.write("added")
        for name in ("removed", "removed small", "folder now", "empty, folder now"):
            (self.media / name).unlink()
        (self.media / "folder now").mkdir()
        (self.media / "empty, folder now").mkdir()
        self.assert_differences([
            "changed: the content has changed (SHA-256)",
            "changed small: the content has changed (SHA-256)",
            "emptied: 0 bytes, catalogued 5000",
            "empty, folder now: cannot be read; the trace above tells why",
            "folder now: cannot be read; the trace above tells why",
            "grown: 16 bytes, catalogued 7",
            "removed: is gone",
            "removed small: is gone",
            "truncated: 4999 bytes, catalogued 5000",
        ], 11)

    def test_unreadable_file(self):
        self.write("private", b"x" * 5000)
        self.assert_unchanged(1)
        (self.media / "private").chmod(0)
        self.root.chmod(0o777)
        other_user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        self.assert_differences(["private: cannot be read; the trace above tells why"], 1, **other_user)

    def test_folder_that_is_gone(self):
        self.write("file")
        self.assert_unchanged(1)
        self.media.rename(self.root / "elsewhere")
        self.assert_differences(["file: is gone"], 1)

    def test_catalogue_whose_entries_are_wrong(self):
        for name in ("a", "b", "c", "d"):
            self.write(name)
        self.assert_unchanged(4)

        def edit(catalogue):
            items = dict(items_of(catalogue["media"]))
            items["a"]["fileContent"][0]["content"] = base64.b64encode(b"another").decode()
            items["b"]["fileContent"][0]["location"] = "http://example.org/b"
            items["c"]["fileContent"][0]["location"] = "file:////dev/zero"
            items["d"]["fileSha256"] = "0" * 64
        self.change(edit)
        self.assert_differences([
            "a: the copy in the catalogue is not what was catalogued",
            "b: the location names no file",
            "c: cannot be read; the trace above tells why",
            "d: the copy in the catalogue is not what was catalogued",
        ], 4)

    def test_missing_catalogue(self):
        run = self.verify("gone.json")
        self.assertEqual((run.returncode, run.stderr), (2, b"MediaCatalogue: There is no file 'gone.json'\n"))
        run = self.verify("media")
        self.assertEqual(run.returncode, 2)
        self.assertRegex(run.stderr, b"media'.*: Is a directory")

    def test_file_that_is_no_catalogue(self):
        media = '{"$type": "%s", "mediaName": "", "mediaDescription": "", "mediaContainerContent": [%s]}'
        totals = '"totals": {"files": %d}'
        deep = "[" * 100000
        rows = [
            ("", "it is no JSON object; the trace above tells why"),
            ("\xff", "it is no JSON object; the trace above tells why"),
            ("[]", "it is no JSON object; the trace above tells why"),
            ('{"media": ', "it is no JSON object; the trace above tells why"),
            ('{"media": ' + deep, "it is no JSON object; the trace above tells why"),
            ("{}", "it has no media"),
            ('{"media": [1, "x", {}]}', "it has no media"),
            ('{"media": {}}', "its media cannot be rebuilt; the trace above tells why"),
            ('{"media": {"$type": "Unknown"}}', "its media cannot be rebuilt; the trace above tells why"),
            ('{"media": {"$type": "VYX::Inf::LoadableContent", "location": "", "content": ""}}',
             "its media are no container"),
            ('{"media": %s}' % (media % (CONTAINER, '{"$type": "VYX::Inf::LoadableContent", "location": "",'
                                         ' "content": ""}')), "its media cannot be rebuilt; the trace above tells why"),
            ('{"media": %s}' % (media % (CONTAINER, '{"$type": "MediaCatalogue::Text", "mediaName": "",'
                                         ' "mediaDescription": "", "fileSize": -1, "fileSha256": "",'
                                         ' "fileContent": []}')),
             "its media cannot be rebuilt; the trace above tells why"),
            ('{"media": %s}' % (media % (CONTAINER, "")), "it has no totals"),
            ('{"media": %s, "totals": {"files": "0"}}' % (media % (CONTAINER, "")), "it has no totals"),
            ('{"media": %s, %s}' % (media % (CONTAINER, ""), totals % 3), "it tells of 3 files, but has media of 0"),
        ]
        for text, reason in rows:
            with self.subTest(text=text[:200]):
                (self.root / "broken.json").write_text(text, "latin-1")
                run = self.verify("broken.json")
                message = f"MediaCatalogue: 'broken.json' is no catalogue: {reason}\n"
                self.assertEqual((run.returncode, run.stderr.decode()), (2, message), run)

    def test_every_truncation_of_a_catalogue(self):
        self.write("file")
        self.assert_unchanged(1)
        text = (self.root / CATALOGUE).read_bytes()
        for size in range(0, len(text), 97):
            with self.subTest(size=size):
                (self.root / "cut.json").write_bytes(text[:size])
                self.assertEqual(self.verify("cut.json").returncode, 2)

    def test_folder_whose_name_is_no_utf8(self):
        folder = os.fsencode(self.root) + b"/bad\xff"
        os.mkdir(folder)
        with open(folder + b"/file.txt", "wb") as file:
            file.write(b"content")
        run = self.run_program(folder)
        self.assertEqual((run.returncode, run.stderr),
                         (0, b"MediaCatalogue: no media: the folder's name is no UTF-8\n"))
        self.assertEqual(set(self.catalogue()["files"]), {"file.txt"})
        self.assertIn(b"it has no media", self.verify().stderr)

    def test_in_french(self):
        self.write("file")
        self.assert_unchanged(1)
        environment = {"KORInstallPath": os.fspath(SOURCES), "LANG": "fr_FR.UTF-8"}
        self.assertIn("Tout est comme catalogu\u00e9 : 1 fichiers", self.verify(env=environment).stdout.decode())
        pathlib.Path(self.media, "file").unlink()
        self.assertIn("file : a disparu", self.verify(env=environment).stdout.decode())


if __name__ == "__main__":
    unittest.main()
