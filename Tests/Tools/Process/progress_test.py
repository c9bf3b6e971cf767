"""What a person at a terminal sees while the tool works for more than a second."""
import os
import pty
import subprocess
import threading
import time
import unittest

from tool_case import TOOL, WALL, ToolTest

PATIENCE = 1.8  # seconds, in which the line has to show


class Terminal:
    """A terminal that keeps what is written to it."""

    def __init__(self):
        self.end, self.side_of_tool = pty.openpty()
        self.text = b""
        self.reader = threading.Thread(target=self.read)
        self.reader.start()

    def read(self):
        try:
            while chunk := os.read(self.end, 4096):
                self.text += chunk
        except OSError:
            pass  # the other side is closed

    def text_at_end(self):
        os.close(self.side_of_tool)
        self.reader.join(60)
        os.close(self.end)
        return self.text.decode()


def shown(text):
    """What a terminal shows in the end, line by line."""
    lines = []
    for line in text.replace("\r\n", "\n").split("\n"):
        row = ""
        for part in line.split("\r"):
            row = part + row[len(part):]
        lines.append(row.rstrip())
    return lines


class Progress(ToolTest):
    def run_slowly(self, first, then, *arguments, terminal=None, stdout=subprocess.PIPE, wait=PATIENCE):
        """Gives the first rows, waits, gives the rest, and returns what came out."""
        stderr = terminal.side_of_tool if terminal else subprocess.PIPE
        with subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE, stdout=stdout, stderr=stderr, cwd=self.folder) as process:
            process.stdin.write(first)
            process.stdin.flush()
            time.sleep(wait)
            process.stdin.write(then)
            process.stdin.close()
            out = process.stdout.read() if process.stdout else b""
            err = b"" if terminal else process.stderr.read()
            self.assertIn(process.wait(60), (0, 2))
        return out, err

    def test_rows_are_counted_and_the_line_goes_at_the_end(self):
        terminal = Terminal()
        out, _ = self.run_slowly(b"0.5,0.5\n" * 1200, b"0.5,0.5\n", "map", WALL, "--to", "3d", terminal=terminal)
        text = terminal.text_at_end()
        self.assertRegex(text, r"map: 1,200 rows, 1\.\d s")
        self.assertNotIn("%", text)
        self.assertNotIn("\n", text)
        self.assertEqual(shown(text), [""])
        self.assertEqual(out.count(b"\n"), 1202)

    def test_an_error_takes_the_place_of_the_line(self):
        terminal = Terminal()
        self.run_slowly(b"0.5,0.5\n", b"x\n", "map", WALL, "--to", "3d", terminal=terminal)
        text = terminal.text_at_end()
        self.assertIn("map: 1 row, ", text)
        self.assertEqual(shown(text), ['error: standard input:2: found "x", expected a number for u (u,v)', ""])

    def test_short_runs_and_other_streams_see_nothing(self):
        terminal = Terminal()
        self.run_slowly(b"0.5,0.5\n", b"", "map", WALL, "--to", "3d", terminal=terminal, wait=0)
        self.assertEqual(terminal.text_at_end(), "")
        _, err = self.run_slowly(b"0.5,0.5\n", b"0.5,0.5\n", "map", WALL, "--to", "3d")
        self.assertEqual(err, b"")

    def test_answers_on_the_same_terminal_are_not_disturbed(self):
        terminal = Terminal()
        self.run_slowly(b"0.5,0.5\n", b"0.5,0.5\n", "map", WALL, "--to", "3d", terminal=terminal, stdout=terminal.side_of_tool)
        self.assertNotIn("row,", terminal.text_at_end())

    def test_a_long_load_shows_its_stage(self):
        os.mkfifo(self.folder / "wall\x1b.xml")
        terminal = Terminal()
        with subprocess.Popen([TOOL, "info", "wall\x1b.xml"], stdout=subprocess.PIPE, stderr=terminal.side_of_tool, cwd=self.folder) as process:
            with open(self.folder / "wall\x1b.xml", "wb") as file:
                time.sleep(PATIENCE)
                with open(WALL, "rb") as wall:
                    file.write(wall.read())
            self.assertIn(b"class FlatScreen", process.stdout.read())
            self.assertEqual(process.wait(60), 0)
        text = terminal.text_at_end()
        self.assertRegex(text, r"reading wall\\x1b\.xml, 1\.\d s")
        self.assertEqual(shown(text), [""])


if __name__ == "__main__":
    unittest.main()
