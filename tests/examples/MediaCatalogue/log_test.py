#!/usr/bin/env python3
"""Runs MediaCatalogue with its log in various places."""

import os
import re
import unittest

from program_case import SOURCES, ProgramCase

LINE = re.compile(r"\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{6}\]\[\d+\]\[VYX\]\[([A-Z]+)\] ")
RUN_LOG = re.compile(r"MediaCatalogue_\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d_\d+\.log")


class LogTest(ProgramCase):
    def levels(self, path):
        """The levels in a log file, all of whose lines must be lines of a log."""
        lines = (self.root / path).read_text("utf-8").splitlines()
        matches = [LINE.match(line) for line in lines]
        self.assertTrue(all(matches), lines)
        return {match.group(1) for match in matches}

    def run_logs(self, out="build/demo"):
        return [name for name in os.listdir(self.root / out) if name.endswith(".log")]

    def test_file_of_this_run(self):
        self.write("file.txt")
        run = self.run_program("media")
        self.assert_catalogued(run)
        [name] = self.run_logs()
        self.assertRegex(name, RUN_LOG)
        self.assertEqual(self.levels(f"build/demo/{name}"), {"INFO"})
        text = (self.root / "build/demo" / name).read_text("utf-8")
        for part in (f"Cataloguing {self.media}", "@ListFiles:", "@ReadFiles:", "@WriteCatalogue:", "@PackFiles:"):
            self.assertIn(part, text)
        self.assertTrue(text.endswith("VYXInfLog::Close\n"), text)
        self.assertIn(f"The log is in {self.root}/build/demo/{name}\n", run.stdout.decode())
        self.assertIn(b"Packed and read back equal: ", run.stdout)
        self.assertNotIn(b"[VYX]", run.stdout)
        self.assert_catalogued(self.run_program("media"))
        self.assertEqual(len(self.run_logs()), 2)

    def test_file_by_name(self):
        self.write("file.txt")
        for log in ("run.log", "logs/deep/run.log", "media/run.log", "media/sub/run.log"):
            with self.subTest(log=log):
                (self.root / log).parent.mkdir(parents=True, exist_ok=True)
                run = self.run_program("--log", log, "media")
                self.assertEqual((run.returncode, run.stderr), (0, b""), run)
                self.assertEqual(self.levels(log), {"INFO"})
                self.assertEqual(self.run_logs(), [])
                self.assertNotIn(log.removeprefix("media/").replace("/", "\\"), self.catalogue()["files"])
                self.assertIn(b"Packed and read back equal: ", run.stdout)

    def test_levels(self):
        self.write("file.txt")
        rows = [
            (("--log-level", "ERROR"), {}, set()),
            (("--log-level", "info"), {}, {"INFO"}),
            (("--log-level", "TRACE"), {}, {"INFO", "TRACE"}),
            ((), {"VYX_LOG_LEVEL": "TRACE"}, {"INFO", "TRACE"}),
            (("--log-level", "TRACE"), {"VYX_LOG_LEVEL": "WARN"}, set()),
            (("--log-level", "ERROR"), {"VYX_LOG_LEVEL": "no level"}, set()),
        ]
        for index, (arguments, variables, levels) in enumerate(rows):
            with self.subTest(arguments=arguments, variables=variables):
                run = self.run_program("--log", f"{index}.log", *arguments, "media", env=variables)
                self.assertEqual((run.returncode, run.stderr), (0, b""), run)
                self.assertEqual(self.levels(f"{index}.log") - {"DEBUG"}, levels)

    def test_failures_are_on_the_screen_and_in_the_log(self):
        self.write("good.txt")
        with open(self.media / "large.bin", "wb") as file:
            file.truncate(5 * 1024**3)
        run = self.run_program("--log", "run.log", "media")
        self.assertEqual(run.returncode, 0)
        self.assertIn(b"[VYX][ERROR] ", run.stdout)
        self.assertIn("ERROR", self.levels("run.log"))
        self.assertIn("Not catalogued: large.bin: ", (self.root / "run.log").read_text("utf-8"))

    def test_output_of_the_environment(self):
        self.write("file.txt")
        run = self.run_program("media", env={"VYX_LOG_OUTPUT": "CONSOLE"})
        self.assert_catalogued(run)
        self.assertEqual(self.run_logs(), [])
        (self.root / "logs").mkdir()
        run = self.run_program("media", env={"VYX_LOG_OUTPUT": "logs"})
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, b"", b""))
        [name] = self.run_logs("logs")
        self.assertRegex(name, RUN_LOG)
        self.assertIn("Packed and read back equal: ", (self.root / "logs" / name).read_text("utf-8"))
        self.assertEqual(self.run_logs(), [])

    def test_settings_file_of_the_environment(self):
        self.write("file.txt")
        (self.root / "log.ini").write_text('[Sinks.File]\nDestination=TextFile\nFileName="settings.log"\n'
                                           'Format="%Severity%: %Message%"\nFilter="%Severity% <= INFO"\n')
        run = self.run_program("media", env={"VYX_LOG_CONFIG_FILE": os.fspath(self.root / "log.ini")})
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)
        self.assertIn(b"Packed and read back equal: ", run.stdout)
        self.assertEqual(self.run_logs(), [])
        self.assertIn("INFO: Cataloguing ", (self.root / "settings.log").read_text("utf-8"))
        self.assertEqual(os.listdir(self.media), ["file.txt"])

    def test_log_that_cannot_be_written(self):
        self.write("file.txt")
        run = self.run_program("--log", "media/file.txt/run.log", "media")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"MediaCatalogue: Cannot write the log file '", run.stderr)
        self.assertFalse((self.root / "build/demo/catalogue.json").exists())

    def test_log_of_verifying(self):
        self.write("file.txt")
        self.assert_catalogued(self.run_program("media"))
        before = self.run_logs()
        self.assertEqual(self.run_program("--verify", "build/demo/catalogue.json").returncode, 0)
        self.assertEqual(self.run_logs(), before)
        run = self.run_program("--verify", "build/demo/catalogue.json", "--log", "verify.log", "--log-level", "TRACE")
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertIn("INFO", self.levels("verify.log"))
        self.assertNotIn(b"[VYX]", run.stdout)

    def test_settings_example_serves(self):
        self.write("file.txt")
        settings = SOURCES / "resources/logging/settings.ini"
        run = self.run_program("media", env={"VYX_LOG_CONFIG_FILE": os.fspath(settings)})
        self.assertEqual((run.returncode, run.stderr), (0, b""), run)


if __name__ == "__main__":
    unittest.main()
