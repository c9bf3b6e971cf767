"""Command lines: every option, and every way to get them wrong. No shell takes part."""
import os
import unittest

from tool_case import FLAT, WALL, Case, ToolTest, add_cases



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
    usage_case("no_command", [], "found no command after quarnscreen, expected one of info, map, .*, completion"),
    usage_case("unknown_command", ["frobnicate", WALL], 'found the command "frobnicate", which quarnscreen does not have, expected one of info, map, .*'),
    usage_case("misspelled_command", ["itnersect", WALL], r'found the command "itnersect", which quarnscreen does not have, did you mean intersect\?'),
    usage_case("command_in_capitals", ["Info", WALL], r'found the command "Info", which .*, did you mean info\?'),
    usage_case("beginning_of_a_command", ["inf", WALL], r'found the command "inf", which .*, did you mean info\?'),
    usage_case("empty_command", [""], 'found the command "", which .*'),
    usage_case("two_commands", ["info", WALL, "map"], 'found the argument "map", .*'),
    usage_case("no_screen", ["info"], "SCREEN is required"),
    usage_case("only_dashes", ["info", "--"], "SCREEN is required"),
    usage_case("too_many_names", ["info", WALL, WALL], 'found the argument ".*", one more than quarnscreen info takes'),
    usage_case("unknown_option", ["info", WALL, "--cube"], 'found the option "--cube", which quarnscreen info does not have'),
    usage_case("misspelled_option", ["info", WALL, "--uint", "mm"], r'found the option "--uint", which quarnscreen info does not have, did you mean --unit\?'),
    usage_case("misspelled_option_with_value", ["make", "flat", "--widht=4", "--height", "3"],
               r'found the option "--widht", which quarnscreen make flat does not have, did you mean --width\?'),
    usage_case("misspelled_option_before_the_screen", ["info", "--uint", "mm", WALL], r'found the option "--uint", .*, did you mean --unit\?'),
    usage_case("empty_value", ["info", "--unit=", WALL], "found --unit= without a value"),
    usage_case("empty_value_before_another_option", ["plot", WALL, "--color=", "-o", "a.svg"], "found --color= without a value"),
    Case("name_with_an_equals_sign", ["info", "--", "--a="], "", "error: --a=: no such file, .*", 2),
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
    *(Case(f"refused_{digits or 'no'}_digits", ["info", WALL, "--digits", digits], "", f'error: found --digits "{digits}", expected a whole number from 1 to 17\n', 2)
      for digits in ("0", "18", "-1", "", "7.5", "nan")),
    Case("refused_columns_beyond_memory", ["points", WALL, "--columns", "2000000000", "--rows", "2000000000"], "",
         "error: found --columns 2000000000 and --rows 2000000000 for 4000000000000000000 positions, .* expected smaller numbers, or a larger --max-memory\n", 2),
    Case("refused_density_beyond_memory", ["grid", WALL, "--density", "1000000", "--max-memory", "1M"], "", "error: found --density 1000000 for .*\n", 2),
    Case("refused_two_standard_inputs", ["channel", WALL, "-", "--extra", "-"], "",
         "error: RAYS and --extra both on the standard input, expected one of them in a file\n", 2),
    Case("refused_empty_name", ["intersect", WALL, ""], "", "error: an empty file name, expected a CSV file of rays\n", 2),
    Case("flags_twice", ["info", WALL, "--json", "--json"], r"\{.*"),
    Case("options_in_front", ["info", "--unit=mm", WALL], r".* mm\n.*"),
    Case("short_option_with_value", ["info", WALL, "-o-"], r".* m\n.*"),
    Case("long_option_with_value", ["map", WALL, "--to=3d"], r".*on_screen,0,0,0\n", stdin=b"0.5,0.5"),
    Case("memory", ["info", WALL, "--max-memory", "1M"], r".* m\n.*"),
])

if __name__ == "__main__":
    unittest.main()
