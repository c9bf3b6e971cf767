"""The memory for results of any format does not grow with them."""
import os
import pathlib
import subprocess
import unittest

from tool_case import TOOL, WALL, ToolTest

SANITIZED = b"__asan_init" in pathlib.Path(TOOL).read_bytes() or b"__tsan_init" in pathlib.Path(TOOL).read_bytes()
ROW = b"0.12345678901234567,0.98765432109876543\n"
ROW_COUNT = 300000
# Bytes by which the peak may exceed that of a few rows. The results themselves are at least five times as large.
ALLOWED = 8 << 20


@unittest.skipIf(SANITIZED, "the memory of a sanitized tool is not that of the tool")
class LargeResults(ToolTest):
    def peak(self, rows, *arguments):
        with open(rows, "rb") as stdin, open(self.folder / "results", "wb") as results, \
                subprocess.Popen([TOOL, "map", WALL, "--to", "3d", "--threads", "1", *arguments], stdin=stdin, stdout=results, cwd=self.folder) as process:
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(process.returncode, 0)
        return usage.ru_maxrss * 1024

    def test_memory_does_not_grow_with_the_rows(self):
        # The blocks have their full size from a few thousand rows on.
        few = self.file("few", ROW * 20000)
        many = self.file("many", ROW * ROW_COUNT)
        for arguments in ((), ("--json",), ("--npy",), ("--json", "-o", "out.json"), ("-o", "out.npy")):
            with self.subTest(arguments):
                growth = self.peak(many, *arguments) - self.peak(few, *arguments)
                self.assertLess(growth, ALLOWED)


if __name__ == "__main__":
    unittest.main()
