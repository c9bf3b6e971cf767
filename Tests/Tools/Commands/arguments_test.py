"""Command lines: every option, and every way to get them wrong. No shell takes part."""
import os
import unittest

from tool_case import FLAT, WALL, Case, ToolTest, add_cases

NO_ROWS = r"[^\n]*\n"


class Arguments(ToolTest):
    def test_names_that_look_like_something_else(self):
        for name in ("-x.xml", "--json", "info", "a b.xml", "ä\u20ac.xml", "[a].xml", "{}", "a=b", "%s%n.xml", "@a", "/".join(["."] * 200) + "/w.xml"):
            self.file(name, FLAT.format(4, 3))
            with self.subTest(name):
                self.assertIn("class FlatScreen", self.text_of("info", "--", name))

    def test_a_name_that_is_not_utf8(self):
        with open(os.path.join(os.fsencode(self.folder), b"\xff.xml"), "w", encoding="ascii") as file:
            file.write(FLAT.format(4, 3))
        self.assertIn("file: ", self.text_of("info", b"\xff.xml"))
        self.assertIn('"screen": "\ufffd.xml"', self.text_of("info", b"\xff.xml", "--json"))

    def test_names_are_shown_escaped(self):
        result = self.run_tool("info", "\x1b[2J\n.xml")
        self.assertEqual(result.stderr.decode(), "error: \\x1b[2J\\x0a.xml: no such file, expected the XML, OBJ or STL file of a screen\n")
        self.file("\x1b.xml", FLAT.format(4, 3))
        self.assertIn("\\x1b.xml", self.text_of("info", "\x1b.xml"))
        self.assertIn('"screen": "\\u001b.xml"', self.text_of("info", "\x1b.xml", "--json"))

    def test_a_hundred_thousand_arguments(self):
        self.assert_one_error_line(self.run_tool("info", WALL, *["x"] * 100000), 2)

    def test_no_arguments_at_all(self):
        self.assert_one_error_line(self.run_tool(), 2)

    def test_help_and_version_in_every_place(self):
        self.assertRegex(self.text_of("--version"), r"\Aquarnscreen \d+\.\d+\.\d+\n\Z")
        self.assertEqual(self.text_of("-h"), self.text_of("--help"))
        for command in ("info", "map", "intersect", "nearest", "closest", "normal", "channel", "grid", "boundary", "points", "plot", "check", "make", "convert", "refine", "transform", "compare", "completion"):
            self.assertIn(f"Usage: quarnscreen {command} ", self.text_of(command, "--help"))
            self.assertEqual(self.text_of(command, "-h"), self.text_of(command, "--help"))


def usage_case(name, arguments, message=".*"):
    return Case("refused_" + name, arguments, "", rf"error: {message} \(see --help\)\n", 2)


add_cases(Arguments, [
    usage_case("no_command", [], "A subcommand is required"),
    usage_case("unknown_command", ["cube"]),
    usage_case("command_in_capitals", ["Info", WALL]),
    usage_case("beginning_of_a_command", ["inf", WALL]),
    usage_case("empty_command", [""]),
    usage_case("two_commands", ["info", WALL, "map"]),
    usage_case("no_screen", ["info"], "SCREEN is required"),
    usage_case("only_dashes", ["info", "--"], "SCREEN is required"),
    usage_case("too_many_names", ["info", WALL, WALL]),
    usage_case("unknown_option", ["info", WALL, "--cube"]),
    usage_case("unknown_short_option", ["info", WALL, "-z"]),
    usage_case("option_of_another_command", ["info", WALL, "--require"]),
    usage_case("name_with_a_dash", ["info", "-x.xml"]),
    usage_case("map_without_to", ["map", WALL], "--to is required"),
    usage_case("map_to_4d", ["map", WALL, "--to", "4d"], r"--to: 4d not in \{3d,2d\}"),
    usage_case("channel_without_rays", ["channel", WALL], "RAYS is required"),
    usage_case("completion_without_shell", ["completion"], "SHELL is required"),
    usage_case("completion_of_another_shell", ["completion", "tcsh"]),
    usage_case("unknown_unit", ["info", WALL, "--unit", "parsec"], r"--unit: parsec not in \{mm,cm,dm,m,km,in,ft,yd\}"),
    usage_case("empty_unit", ["info", WALL, "--unit", ""]),
    usage_case("option_without_value", ["info", WALL, "--unit"]),
    usage_case("unit_twice", ["info", WALL, "--unit", "m", "--unit", "mm"]),
    usage_case("output_twice", ["info", WALL, "-o", "a", "--output", "b"]),
    usage_case("to_twice", ["map", WALL, "--to", "3d", "--to", "3d"]),
    usage_case("memory_twice", ["info", WALL, "--max-memory", "1G", "--max-memory", "1G"]),
    Case("refused_memory", ["info", WALL, "--max-memory", "much"], "", 'error: found --max-memory "much", expected a size such as 500M or 2G\n', 2),
    Case("refused_no_memory", ["info", WALL, "--max-memory", "0"], "", 'error: found --max-memory "0", expected .*\n', 2),
    Case("refused_too_little_memory", ["info", WALL, "--max-memory", "1K"], "", "error: /.*: found a document that may need more than 1.0 KiB .*\n", 2),
    Case("refused_two_standard_inputs", ["channel", WALL, "-", "--extra", "-"], "",
         "error: RAYS and --extra both on the standard input, expected one of them in a file\n", 2),
    Case("refused_empty_name", ["intersect", WALL, ""], "", "error: an empty file name, expected a CSV file of rays\n", 2),
    Case("flags_twice", ["info", WALL, "--json", "--json"], r"\{.*"),
    Case("options_in_front", ["info", "--unit=mm", WALL], r".* mm\n.*"),
    Case("short_option_with_value", ["info", WALL, "-o-"], r".* m\n.*"),
    Case("long_option_with_value", ["map", WALL, "--to=3d"], NO_ROWS),
    Case("memory", ["info", WALL, "--max-memory", "1M"], r".* m\n.*"),
])

if __name__ == "__main__":
    unittest.main()
