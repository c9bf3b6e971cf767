"""The completion script for bash, loaded and called."""
import re
import subprocess
import unittest

from tool_case import ToolTest


class Completion(ToolTest):
    def setUp(self):
        super().setUp()
        self.script = self.text_of("completion", "bash")

    def complete(self, *words):
        """What bash offers for the last word."""
        quoted = " ".join(f"'{word}'" for word in words)
        commands = f"{self.script}\nCOMP_WORDS=(quarnscreen {quoted}); COMP_CWORD={len(words)}; _quarnscreen\nprintf '%s\\n' \"${{COMPREPLY[@]}}\""
        result = subprocess.run(["bash", "--norc", "-c", commands], capture_output=True, cwd=self.folder, check=True, text=True)
        self.assertEqual(result.stderr, "")
        return result.stdout.split()

    def test_commands(self):
        self.assertEqual(self.complete("i"), ["info", "intersect"])
        self.assertIn("--version", self.complete("--"))

    def test_every_option_that_help_tells_is_offered(self):
        for command in self.complete(""):
            if command.startswith("-"):
                continue
            documented = re.findall(r"(?<=[ ,])-{1,2}[a-z][a-z-]*", self.text_of(command, "--help").split("Options:")[1].split("Example:")[0])
            with self.subTest(command):
                self.assertEqual(sorted(self.complete(command, "-")), sorted(set(documented)))

    def test_values(self):
        self.assertEqual(self.complete("map", "--to", ""), ["3d", "2d"])
        self.assertEqual(self.complete("info", "--unit", "c"), ["cm"])
        self.assertEqual(self.complete("plot", "--color", ""), ["side", "stretch"])
        self.assertEqual(self.complete("completion", ""), ["bash"])
        self.assertEqual(self.complete("info", "--max-memory", ""), [])
        self.assertEqual(self.complete("info", "--re"), ["--repair"])
        self.assertEqual(self.complete("compare", "--obj"), ["--object", "--object-b"])
        self.assertEqual(self.complete("info", "--object", ""), [])

    def test_the_shapes_of_make(self):
        self.assertEqual(self.complete("make", ""), ["flat", "cylinder", "sphere", "dome", "ruled"])
        self.assertEqual(self.complete("make", "d"), ["dome"])
        self.assertEqual(self.complete("make", "dome", ""), [])
        self.assertEqual(self.complete("make", "dome", "--a"), ["--angle"])
        self.assertEqual(self.complete("make", "ruled", "--unit", "c"), ["cm"])
        self.assertEqual(self.complete("make", "dome", "--radius", ""), [])
        for shape in self.complete("make", ""):
            documented = re.findall(r"(?<=[ ,])-{1,2}[a-z][a-z-]*(?= [A-Z,]|,)", self.text_of("make", shape, "--help").split("Options:")[1].split("Example:")[0])
            with self.subTest(shape):
                self.assertLessEqual(set(documented), set(self.complete("make", shape, "-")))
                self.assertIn("--unit", documented)

    def test_files(self):
        self.file("wall.xml", "")
        self.assertEqual(self.complete("info", "wa"), ["wall.xml"])
        self.assertEqual(self.complete("info", "-o", "wa"), ["wall.xml"])
        self.assertEqual(self.complete("channel", "wall.xml", "--extra", "wa"), ["wall.xml"])

    def test_an_unknown_command_gets_no_error(self):
        self.assertNotIn("--json", self.complete("cube", "--"))


if __name__ == "__main__":
    unittest.main()
