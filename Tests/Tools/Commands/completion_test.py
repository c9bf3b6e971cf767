"""The completion scripts, loaded and called by their shells."""
import re
import shutil
import subprocess
import unittest

from tool_case import ToolTest

# Shows what the script passes to the functions of zsh: one line for each argument.
ZSH_FUNCTIONS = """
compdef() { : }
_arguments() { print -rl -- "words: $words ($CURRENT)" "$@" }
_describe() { print -rl -- "${(@P)2}" }
"""


def options_in(help_text):
    """The options that a help text lists."""
    return sorted(set(re.findall(r"(?<=[ ,])-{1,2}[a-z][a-z-]*", help_text.split("Options:")[1].split("Example:")[0])))


class BashCompletion(ToolTest):
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

    def test_every_option_of_the_help_is_offered(self):
        for command in self.complete(""):
            if not command.startswith("-"):
                with self.subTest(command):
                    self.assertEqual(sorted(self.complete(command, "-")), options_in(self.text_of(command, "--help")))

    def test_values(self):
        self.assertEqual(self.complete("map", "--to", ""), ["3d", "2d"])
        self.assertEqual(self.complete("info", "--unit", "c"), ["cm"])
        self.assertEqual(self.complete("plot", "--color", ""), ["side", "stretch"])
        self.assertEqual(self.complete("completion", ""), ["bash", "zsh", "fish"])
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


@unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
class ZshCompletion(ToolTest):
    def setUp(self):
        super().setUp()
        self.script = self.text_of("completion", "zsh")

    def run_zsh(self, commands):
        result = subprocess.run(["zsh", "-f", "-c", commands], capture_output=True, cwd=self.folder, check=True, text=True)
        self.assertEqual(result.stderr, "")
        return result.stdout.splitlines()

    def passed(self, *words):
        """What the script passes to the functions of zsh for the last word."""
        quoted = " ".join(f"'{word}'" for word in words)
        return self.run_zsh(f"{ZSH_FUNCTIONS}\n{self.script}\nwords=(quarnscreen {quoted}); CURRENT={len(words) + 1}; _quarnscreen")

    def test_it_is_valid(self):
        path = self.file("_quarnscreen", self.script)
        self.assertTrue(self.script.startswith("#compdef quarnscreen\n"))
        self.assertEqual(self.run_zsh(f"zsh -n '{path}'"), [])

    def test_commands_have_descriptions(self):
        self.assertIn("compare:Measure the distance between the surfaces of two screens", self.passed(""))
        self.assertIn("dome", [line.split(":")[0] for line in self.passed("make", "")])

    def test_every_option_of_the_help_is_offered(self):
        for command in ("info", "map", "plot", "compare", "convert"):
            offered = [re.sub(r"^\(.*?\)", "", line).split("[")[0] for line in self.passed(command, "-") if re.match(r"(\(.*\))?-", line)]
            with self.subTest(command):
                self.assertEqual(sorted(offered), options_in(self.text_of(command, "--help")))

    def test_values_and_files(self):
        offered = self.passed("map", "wall.xml", "--to", "")
        self.assertEqual(offered[0], "words: map wall.xml --to  (4)")
        self.assertTrue(any(line.startswith("--to[") and line.endswith(":(3d 2d)") for line in offered), offered)
        self.assertTrue(any(line.endswith("FILE:_files") for line in offered), offered)
        self.assertIn(":value:(bash zsh fish)", self.passed("completion", ""))

    def test_names_of_one_option_exclude_each_other(self):
        self.assertTrue(any(line.startswith("(-o --output)-o[") for line in self.passed("info", "-")))

    def test_the_shapes_of_make(self):
        offered = self.passed("make", "dome", "--")
        self.assertEqual(offered[0], "words: dome -- (2)")
        self.assertTrue(any(line.startswith("--angle[") for line in offered))


@unittest.skipUnless(shutil.which("fish"), "fish is not installed")
class FishCompletion(ToolTest):
    def setUp(self):
        super().setUp()
        self.file("quarnscreen.fish", self.text_of("completion", "fish"))

    def run_fish(self, *arguments):
        environment = {"HOME": str(self.folder), "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
        result = subprocess.run(["fish", "--no-config", *arguments], capture_output=True, cwd=self.folder, check=True, text=True, env=environment)
        self.assertEqual(result.stderr, "")
        return result.stdout.splitlines()

    def complete(self, line):
        """What fish offers for the end of the line, by its description."""
        offered = self.run_fish("-c", f"source quarnscreen.fish; complete -C '{line}'")
        return dict((word + "\t").split("\t")[:2] for word in offered)

    def test_it_is_valid(self):
        self.assertEqual(self.run_fish("--no-execute", "quarnscreen.fish"), [])

    def test_commands_have_descriptions(self):
        offered = self.complete("quarnscreen ")
        self.assertEqual(offered["compare"], "Measure the distance between the surfaces of two screens")
        self.assertNotIn("dome", offered)
        self.assertIn("--version", self.complete("quarnscreen --"))

    def test_every_option_of_the_help_is_offered(self):
        for command in ("info", "map", "plot", "compare", "convert"):
            with self.subTest(command):
                documented = options_in(self.text_of(command, "--help"))
                self.assertEqual(sorted(self.complete(f"quarnscreen {command} --")), [name for name in documented if name.startswith("--")])

    def test_values_and_files(self):
        self.file("wall.xml", "")
        self.assertEqual(set(self.complete("quarnscreen map wall.xml --to ")), {"3d", "2d"})
        self.assertEqual(list(self.complete("quarnscreen info --unit c")), ["cm"])
        self.assertIn("wall.xml", self.complete("quarnscreen info wa"))
        self.assertIn("wall.xml", self.complete("quarnscreen info -o wa"))
        self.assertEqual(self.complete("quarnscreen info --max-memory wa"), {})
        self.assertEqual(set(self.complete("quarnscreen completion ")), {"bash", "zsh", "fish"})

    def test_the_shapes_of_make(self):
        self.assertIn("dome", self.complete("quarnscreen make "))
        self.assertIn("--angle", self.complete("quarnscreen make dome --"))
        self.assertNotIn("--angle", self.complete("quarnscreen make flat --"))
        self.assertNotIn("dome", self.complete("quarnscreen make dome "))


if __name__ == "__main__":
    unittest.main()
