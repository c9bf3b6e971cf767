"""Outputs are replaced atomically, and never replace an input."""
import errno
import os
import pathlib
import signal
import subprocess
import unittest

from tool_case import FLAT, TOOL, WALL, ToolTest

ROWS = b"0,-5,0,0,0,0\n"


class Output(ToolTest):
    def assert_refused(self, arguments, message, exit_code=2, **options):
        before = self.contents()
        result = self.run_tool(*arguments, **options)
        self.assertEqual(result.stderr.decode(), f"error: {message}\n")
        self.assertEqual(result.returncode, exit_code)
        self.assertEqual(self.contents(), before)

    def contents(self):
        return {path.name: path.read_bytes() for path in self.folder.iterdir() if path.is_file()}

    def test_a_file_holds_what_standard_output_would(self):
        for arguments in (["info", WALL], ["info", WALL, "--json"], ["intersect", WALL], ["intersect", WALL, "--json"]):
            self.assertEqual(self.text_of(*arguments, "-o", "out", stdin=ROWS), "")
            self.assertEqual(self.contents(), {"out": self.text_of(*arguments, "-o", "-", stdin=ROWS).encode()})

    def test_a_file_is_replaced_and_keeps_its_mode(self):
        out = self.file("out", "old")
        out.chmod(0o640)
        self.text_of("info", WALL, "-o", "out")
        self.assertIn("class FlatScreen", out.read_text())
        self.assertEqual(out.stat().st_mode & 0o777, 0o640)

    def test_a_new_file_has_the_users_mode(self):
        self.text_of("info", WALL, "-o", "out", umask=0o027)
        self.assertEqual((self.folder / "out").stat().st_mode & 0o777, 0o640)

    def test_a_link_stays_a_link(self):
        out = self.file("out", "old")
        (self.folder / "link").symlink_to("out")
        self.text_of("info", WALL, "-o", "link")
        self.assertTrue((self.folder / "link").is_symlink())
        self.assertIn("class FlatScreen", out.read_text())

    def test_a_wrong_input_leaves_the_old_file(self):
        self.file("out", "old")
        self.assert_refused(["intersect", WALL, "-o", "out"], "standard input:2: found 1 number, expected 6 (fromX,fromY,fromZ,toX,toY,toZ)",
                            stdin=ROWS + b"1\n")
        self.assertEqual(self.contents(), {"out": b"old"})

    def test_a_missing_answer_still_writes_the_file(self):
        result = self.run_tool("intersect", WALL, "--require", "-o", "out", stdin=b"0,1,0,0,2,9\n")
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"1,miss,", self.contents()["out"])

    def test_an_input_is_no_output(self):
        wall = self.file("wall.xml", FLAT.format(4, 3))
        rays = self.file("rays.csv", ROWS)
        self.file("other.csv", ROWS)
        os.link(wall, self.folder / "hard")
        (self.folder / "soft").symlink_to("wall.xml")
        for name in ("wall.xml", str(wall), "./wall.xml", "hard", "soft"):
            with self.subTest(name):
                self.assert_refused(["info", "wall.xml", "-o", name], f"{name}: the output is also an input, expected another file")
        for arguments in (["intersect", "wall.xml", "rays.csv"], ["nearest", "wall.xml", "rays.csv"], ["channel", "wall.xml", "rays.csv"],
                          ["channel", "wall.xml", "other.csv", "--extra", "rays.csv"]):
            with self.subTest(arguments):
                self.assert_refused([*arguments, "-o", "rays.csv"], "rays.csv: the output is also an input, expected another file")
        with open(rays, "rb") as file:
            result = subprocess.run([TOOL, "intersect", WALL, "-o", "rays.csv"], stdin=file, capture_output=True, cwd=self.folder, check=False)
        self.assertEqual((result.returncode, rays.read_bytes()), (2, ROWS))

    def test_places_where_no_file_can_be(self):
        self.assert_refused(["info", WALL, "-o", ""], "an empty file name, expected a file to write")
        self.assert_refused(["info", WALL, "-o", "."], ".: a directory, expected a file to write")
        self.assert_refused(["info", WALL, "-o", "no/out"], "no/out: cannot be written: No such file or directory", 3)
        self.assert_refused(["info", WALL, "-o", "x" * 255], f"{'x' * 255}: cannot be written: File name too long", 3)

    def test_devices_are_written_as_they_stand(self):
        self.text_of("info", WALL, "-o", "/dev/null")
        self.assertTrue(pathlib.Path("/dev/null").is_char_device())
        self.assertIn("class FlatScreen", self.text_of("info", WALL, "-o", "/dev/stdout"))
        self.assert_refused(["info", WALL, "-o", "/dev/full"], "/dev/full: cannot be written: No space left on device", 3)

    def test_a_full_device_behind_standard_output(self):
        for arguments in (["info", WALL], ["intersect", WALL], ["intersect", WALL, "--json"], ["completion", "bash"], ["--help"], ["--version"]):
            with self.subTest(arguments), open("/dev/full", "wb") as full:
                result = subprocess.run([TOOL, *arguments], input=ROWS, stdout=full, stderr=subprocess.PIPE, check=False)
                self.assertEqual(result.stderr.decode(), f"error: standard output: cannot be written: {os.strerror(errno.ENOSPC)}\n")
                self.assertEqual(result.returncode, 3)

    def test_closed_streams(self):
        def run_without(descriptor, *arguments):
            return subprocess.run([TOOL, *arguments], stdin=subprocess.DEVNULL, capture_output=True, cwd=self.folder, check=False,
                                  preexec_fn=lambda: os.close(descriptor))
        result = run_without(1, "info", WALL)
        self.assertEqual(result.stderr.decode(), "error: standard output: cannot be written: Bad file descriptor\n")
        self.assertEqual(result.returncode, 3)
        result = run_without(0, "intersect", WALL)
        self.assertEqual(result.stderr.decode(), "error: standard input: cannot be read: Bad file descriptor\n")
        self.assertEqual(result.returncode, 3)
        result = run_without(2, "info", "nowhere.xml")
        self.assertEqual((result.returncode, result.stdout), (2, b""))
        self.file("zero.xml", FLAT.format(0, 3))
        self.assertEqual(run_without(2, "info", "zero.xml", "-o", "out").returncode, 0)
        self.assertNotIn(b"warning", self.contents()["out"])

    def test_a_reader_that_leaves_ends_the_tool(self):
        with subprocess.Popen([TOOL, "intersect", WALL], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            process.stdout.close()
            try:
                process.stdin.write(ROWS * 100000)
                process.stdin.close()
            except BrokenPipeError:
                pass
            self.assertEqual(process.wait(60), -signal.SIGPIPE)
            self.assertEqual(process.stderr.read(), b"")

    def test_answers_come_while_the_input_waits(self):
        with subprocess.Popen([TOOL, "intersect", WALL], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            process.stdin.write(ROWS)
            process.stdin.flush()
            process.stdout.readline()
            self.assertEqual(process.stdout.readline(), b"1,hit,0,0,0,0.5,0.5,-1,,1\n")
            process.stdin.close()
            self.assertEqual(process.wait(60), 0)

    def test_a_killed_run_leaves_the_old_file(self):
        self.file("out", "old")
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGKILL):
            with subprocess.Popen([TOOL, "intersect", WALL, "-o", "out"], stdin=subprocess.PIPE, cwd=self.folder) as process:
                process.stdin.write(ROWS * 1000)
                process.stdin.flush()
                process.send_signal(number)
                self.assertEqual(process.wait(60), -number)
            self.assertEqual((self.folder / "out").read_bytes(), b"old")


if __name__ == "__main__":
    unittest.main()
