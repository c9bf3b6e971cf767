"""Runs the tool as a process, and makes a test of each line of a table."""
import os
import pathlib
import re
import subprocess
import tempfile
import unittest
from typing import NamedTuple

TOOL = os.environ["QUARN_TOOL"]
SAMPLES = pathlib.Path(__file__).resolve().parents[3] / "Samples"
WALL = str(SAMPLES / "flat-wall.xml")
SCREENS = [str(SAMPLES / name) for name in ("flat-wall.xml", "cylinder-200.xml", "dome.xml", "ruled.xml")]
FLAT = '<ScreenGeometry ClassType="class FlatScreen"><Screen_Width>{}</Screen_Width><Screen_Height>{}</Screen_Height></ScreenGeometry>'


class Case(NamedTuple):
    """One run: what goes in, the patterns that the whole of each stream fits, and the exit code."""
    name: str
    arguments: list
    out: str = ""
    err: str = ""
    exit: int = 0
    stdin: bytes = b""


class ToolTest(unittest.TestCase):
    """Each test runs in an empty folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quarnscreen-test-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def run_tool(self, *arguments, stdin=b"", **options):
        return subprocess.run([TOOL, *arguments], input=stdin, capture_output=True, cwd=self.folder, timeout=120,
                              check=False, **options)

    def text_of(self, *arguments, **options):
        result = self.run_tool(*arguments, **options)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return result.stdout.decode()

    def check(self, case):
        result = self.run_tool(*case.arguments, stdin=case.stdin)
        for stream, pattern in ((result.stdout, case.out), (result.stderr, case.err)):
            text = stream.decode()
            self.assertTrue(re.fullmatch(pattern, text, re.DOTALL), f"{pattern!r} does not fit {text!r}")
        self.assertEqual(result.returncode, case.exit)

    def assert_one_error_line(self, result, exit_code):
        text = result.stderr.decode()
        lines = [line for line in text.splitlines(keepends=True) if not line.startswith("warning: ")]
        self.assertEqual(result.returncode, exit_code, text)
        self.assertEqual(len(lines), 1, text)
        self.assertRegex(lines[0], r"\Aerror: [ -~\u00a0-\uffff]+\n\Z")


def add_cases(test_class, cases):
    for case in cases:
        name = "test_" + case.name
        assert not hasattr(test_class, name), name
        setattr(test_class, name, lambda self, case=case: self.check(case))
