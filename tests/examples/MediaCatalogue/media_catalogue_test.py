#!/usr/bin/env python3
"""Runs MediaCatalogue over folders of many kinds."""

import json
import os
import unittest

from check_catalogue import facts_of
from program_case import NOBODY, SOURCES, ProgramCase


class MediaCatalogueTest(ProgramCase):
    def test_help(self):
        run = self.run_program("--help")
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertTrue(run.stdout.startswith(b"Usage: MediaCatalogue [--out FOLDER] [--log FILE] "))
        self.assertIn(b"MediaCatalogue --verify FILE ", run.stdout)

    def test_misuse(self):
        self.write("file")
        rows = [
            ((), "FOLDER is missing"),
            (("",), "FOLDER is empty"),
            (("--out", "results"), "FOLDER is missing"),
            (("media", "media"), "more than one FOLDER: 'media' and 'media'"),
            (("--wrong", "media"), "unknown option '--wrong'"),
            (("-h",), "unknown option '-h'"),
            (("media", "--out"), "--out needs a folder"),
            (("media", "--out", ""), "--out needs a folder"),
            (("media", "--log"), "--log needs a file"),
            (("media", "--log-level"), "--log-level needs a level"),
            (("media", "--log-level", "LOUD"), "'LOUD' is no level"),
            (("--verify",), "--verify needs a file"),
            (("--verify", "catalogue.json", "media"), "--verify takes no FOLDER"),
        ]
        for arguments, problem in rows:
            with self.subTest(arguments=arguments):
                run = self.run_program(*arguments)
                message = f"MediaCatalogue: {problem}; MediaCatalogue --help tells more\n"
                self.assertEqual((run.returncode, run.stdout, run.stderr), (2, b"", message.encode()))
        self.assertEqual(os.listdir(self.root), ["media"])

    def test_missing_folder(self):
        self.write("file")
        rows = [("gone", "There is no folder gone"),
                ("media/file", "Cannot list the folder media/file: Not a directory")]
        for folder, problem in rows:
            with self.subTest(folder=folder):
                run = self.run_program(folder)
                message = f"MediaCatalogue: {problem}\n"
                self.assertEqual((run.returncode, run.stdout, run.stderr), (2, b"", message.encode()))
        self.assertEqual(os.listdir(self.root), ["media"])

    def test_tree_of_files(self):
        self.write("clip.MP4", bytes(range(256)) * 1000)
        self.write("empty", b"")
        self.write("zeros.bin", b"\0" * 4097)
        self.write("with blanks/and more/a b.txt")
        self.write("caf\u00e9/\u65e5\u672c \U0001f3ac.json", b"{}")
        self.write('quote".md')
        self.write("colon:semicolon;.wav")
        self.assert_catalogued(self.run_program("media"))
        files = self.catalogue()["files"]
        types = {path: entry["mediaType"] for path, entry in files.items()}
        self.assertEqual(types, {
            "clip.MP4": "video/mp4",
            "empty": "application/octet-stream",
            "zeros.bin": "application/octet-stream",
            "with blanks\\and more\\a b.txt": "text/plain",
            "caf\u00e9\\\u65e5\u672c \U0001f3ac.json": "application/json",
            'quote".md': "text/markdown",
            "colon:semicolon;.wav": "audio/wav",
        })
        self.assertEqual(self.catalogue()["folder"], str(self.media))

    def test_empty_folder(self):
        self.assert_catalogued(self.run_program("media"))
        self.assertEqual(self.catalogue()["totals"], {"bytes": 0, "byMediaType": {}, "failures": 0, "files": 0})

    def test_same_folder_gives_same_bytes(self):
        for index in range(50):
            self.write(f"{index * 7919 % 50}/file{index}.txt", b"x" * index)
        self.assert_catalogued(self.run_program("media"))
        first = (self.root / "build/demo/catalogue.json").read_bytes()
        self.assert_catalogued(self.run_program("media"))
        self.assertEqual((self.root / "build/demo/catalogue.json").read_bytes(), first)

    def test_folder_whose_name_has_separators_of_path_lists(self):
        folder = self.root / "a;b:c d"
        self.media.rename(folder)
        self.media = folder
        self.write("file.txt")
        self.assert_catalogued(self.run_program(folder.name))

    def test_folder_whose_name_looks_like_an_option(self):
        folder = self.root / "--out"
        self.media.rename(folder)
        self.media = folder
        self.write("file.txt")
        self.assert_catalogued(self.run_program("--", "--out"))

    def test_out_folder(self):
        self.write("file.txt")
        self.assert_catalogued(self.run_program("--out", "deep/er/results", "media"), "deep/er/results")
        self.assertFalse((self.root / "build").exists())

    def test_out_inside_folder_is_left_out(self):
        self.write("file.txt")
        self.write("results of others/file.txt")
        for _ in range(2):
            self.assert_catalogued(self.run_program("--out", "media/results", "media"), "media/results")
        expected = {"file.txt", "results of others\\file.txt"}
        self.assertEqual(set(self.catalogue("media/results")["files"]), expected)

    def test_out_that_is_the_folder(self):
        self.write("file.txt")
        self.write("sub/catalogue.json", b"[]")
        for _ in range(2):
            run = self.run_program("--out", "media", "media")
            self.assertEqual((run.returncode, run.stderr), (0, b""))
            self.assertEqual(set(self.catalogue("media")["files"]), {"file.txt", "sub\\catalogue.json"})

    def test_out_that_cannot_be_made(self):
        self.write("file.txt")
        run = self.run_program("--out", "media/file.txt/results", "media")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"Not a directory", run.stderr)

    def test_links_and_special_files(self):
        self.write("real/file.txt")
        (self.media / "link to file").symlink_to("real/file.txt")
        (self.media / "dangling").symlink_to("nowhere")
        (self.media / "real" / "loop").symlink_to("..")
        os.mkfifo(self.media / "pipe")
        run = self.run_program("media")
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)
        files = self.catalogue()["files"]
        self.assertEqual(files["link to file"], {**facts_of(self.media / "real/file.txt"),
                                                 "mediaType": "application/octet-stream"})
        self.assertIn("real\\file.txt", files)
        self.assertFalse({"dangling", "pipe"} & files.keys())

    def test_name_that_is_no_utf8(self):
        self.write("good.txt")
        with open(os.fsencode(self.media) + b"/bad\xff.txt", "wb") as file:
            file.write(b"content")
        run = self.run_program("media")
        reason = "The name is no UTF-8 and has no place in a JSON text"
        self.assertEqual(run.returncode, 0)
        self.assertEqual(run.stderr.decode(), f"MediaCatalogue: bad\ufffd.txt: {reason}\n")
        self.assertEqual(set(self.catalogue()["files"]), {"good.txt"})
        self.assertEqual(self.catalogue()["failures"], {"bad\ufffd.txt": reason})

    def test_unreadable_file_is_reported_and_skipped(self):
        self.write("good.txt")
        self.write("private.txt").chmod(0)
        self.root.chmod(0o777)
        # Root reads everything: the program runs as somebody else then.
        other_user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        run = self.run_program("media", **other_user)
        self.assertEqual(run.returncode, 0, run)
        self.assertIn(b"[VYX][ERROR] ", run.stdout)
        self.assertIn(b"Error opening the file:     .\\private.txt", run.stdout)
        reason = self.catalogue()["failures"]["private.txt"]
        self.assertTrue(reason.endswith("private.txt' for reading: Permission denied"), reason)
        self.assertEqual(run.stderr.decode(), f"MediaCatalogue: private.txt: {reason}\n")
        self.assertEqual(set(self.catalogue()["files"]), {"good.txt"})
        self.assertEqual(self.catalogue()["totals"]["failures"], 1)

    def test_results_that_cannot_be_written(self):
        self.write("good.txt")
        (self.root / "out" / "catalogue.json").mkdir(parents=True)
        run = self.run_program("--out", "out", "media")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"MediaCatalogue: Cannot write '", run.stderr)

    def test_file_too_large_for_one_read(self):
        self.write("good.txt")
        with open(self.media / "large.bin", "wb") as file:
            file.truncate(5 * 1024**3)
        run = self.run_program("media")
        self.assertEqual(run.returncode, 0, run)
        self.assertEqual(set(self.catalogue()["files"]), {"good.txt"})
        self.assertEqual(set(self.catalogue()["failures"]), {"large.bin"})

    def test_files_that_no_archive_takes(self):
        self.write("good.txt")
        self.write("c:drive.txt")
        run = self.run_program("media")
        self.assertEqual(run.returncode, 0, run)
        self.assertEqual(set(self.catalogue()["files"]), {"good.txt", "c:drive.txt"})
        self.assertEqual(self.packed(), {"good.txt": b"content"})
        self.assertIn("MediaCatalogue: left out of the archive: c:drive.txt: ", run.stderr.decode())
        self.assertIn("its path names a drive", run.stderr.decode())

    def test_large_entry_that_grows_much(self):
        with open(self.media / "zeros.bin", "wb") as file:
            file.truncate(100 * 1024**2)
        self.write("exactly a piece", os.urandom(1024**2))
        run = self.run_program("media")
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)
        self.assertLess((self.root / "build/demo/catalogue.zip").stat().st_size, 2 * 1024**2)

    def test_performance_report(self):
        for index in range(20):
            self.write(f"{index}.txt", b"x" * 1000)
        run = self.run_program("media")
        self.assert_catalogued(run)
        report = json.loads((self.root / "build/demo/performance.json").read_text("utf-8"))
        durations, memory, throughput = report["Durations"], report["Memory"], report["Throughput"]
        self.assertEqual(set(report), {"Durations", "Memory", "Throughput"})
        self.assertEqual(set(durations), {"ListFiles", "ReadFiles", "WriteCatalogue", "PackFiles", "Run"})
        self.assertEqual({(entry["Unit"], entry["HigherIsBetter"]) for entry in durations.values()},
                         {("microseconds", False)})
        steps = [entry["Value"] for name, entry in durations.items() if name != "Run"]
        self.assertTrue(0 < sum(steps) <= durations["Run"]["Value"], durations)
        self.assertEqual({name: entry["Unit"] for name, entry in memory.items()}, {"Current": "bytes", "Peak": "bytes"})
        self.assertTrue(0 < memory["Current"]["Value"] <= memory["Peak"]["Value"], memory)
        for name, count, unit in (("FilesPerSecond", 20, "number"), ("BytesPerSecond", 20000, "bytes")):
            value = int(count * 1e6 / durations["Run"]["Value"])
            self.assertEqual(throughput[name], {"Value": value, "Unit": unit, "HigherIsBetter": True})
        files_per_second = throughput["FilesPerSecond"]["Value"]
        line = f"Measured: {self.root}/build/demo/performance.json ({files_per_second} files per second)\n"
        self.assertIn(line, run.stdout.decode())

    def test_performance_report_that_cannot_be_written(self):
        self.write("good.txt")
        (self.root / "out" / "performance.json").mkdir(parents=True)
        run = self.run_program("--out", "out", "media")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"performance.json", run.stderr)

    def test_archive_that_cannot_be_written(self):
        self.write("good.txt")
        (self.root / "out" / "catalogue.zip").mkdir(parents=True)
        run = self.run_program("--out", "out", "media")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"catalogue.zip", run.stderr)

    def test_summary_in_the_users_language(self):
        self.write("file.txt")
        english = ("  media type                       files           bytes\n", "Packed and read back equal: ")
        french = ("  type de m\u00e9dia                 fichiers          octets\n",
                  "Archiv\u00e9 et relu \u00e0 l'identique : ")
        rows = [
            ({"LANG": "fr_FR.UTF-8"}, french),
            ({"LANG": "fr_CA"}, french),
            ({"LANG": "C"}, english),
            ({"LANG": "fr_FR.UTF-8", "LC_ALL": "en_GB.UTF-8"}, english),
            ({"LANG": "de_DE.UTF-8"}, english),
            ({}, english),
        ]
        for variables, lines in rows:
            with self.subTest(variables=variables):
                run = self.run_program("media", env={"KORInstallPath": os.fspath(SOURCES), **variables})
                self.assert_catalogued(run)
                for line in lines:
                    self.assertIn(line, run.stdout.decode())
        elsewhere = {"LANG": "fr_FR.UTF-8", "KORInstallPath": os.fspath(self.root)}
        without_catalogs = self.run_program("media", env=elsewhere)
        self.assert_catalogued(without_catalogs)
        self.assertIn(english[0], without_catalogs.stdout.decode())
        missing = self.run_program("gone", env={"LANG": "fr", "KORInstallPath": os.fspath(SOURCES)})
        self.assertEqual((missing.returncode, missing.stderr), (2, b"MediaCatalogue: Il n'y a pas de dossier gone\n"))

    def test_message_catalog_that_cannot_be_used(self):
        self.write("file.txt")
        folder = self.root / "resources/msgcatalog"
        folder.mkdir(parents=True)
        (folder / "MediaCatalogue.json").write_text("{")
        run = self.run_program("media", env={"KORInstallPath": os.fspath(self.root)})
        self.assert_catalogued(run)
        self.assertIn(b"media type", run.stdout)
        self.assertIn(b"Cannot use the message catalog '", run.stdout)

    def test_any_locale_and_closed_input(self):
        self.write("caf\u00e9.txt")
        for locale in ("C", "C.UTF-8", "tr_TR.UTF-8"):
            with self.subTest(locale=locale):
                self.assert_catalogued(self.run_program("media", env={"LC_ALL": locale}))


if __name__ == "__main__":
    unittest.main()
