"""Every message about a screen file."""
import os
import re
import subprocess
import unittest

from tool_case import FLAT, ToolTest

OPEN = '<ScreenGeometry ClassType="class FlatScreen">'
SIZES = "<Screen_Width>4</Screen_Width><Screen_Height>3</Screen_Height>"

# name: content of the file, and what follows "error: FILE" in the line.
REFUSED = {
    "empty": ("", ": an empty file, expected the XML, OBJ or STL file of a screen"),
    "no_xml": ("Screen\n", ":1: not well-formed XML: .*"),
    "cut": (OPEN + SIZES + "\n", ":2: not well-formed XML: .*"),
    "wrong_end_tag": ("<a>\n\n<b></a>", ":3: not well-formed XML: .*"),
    "two_roots": ("<a/>\n<b/>", ":2: not well-formed XML: .*"),
    "bad_version": ('<?xml version="7.0"?><a/>', ":1: not well-formed XML: .*"),
    "undefined_entity": ("<a>\n&wall;</a>", ":2: not well-formed XML: .*"),
    "doctype": ("<!DOCTYPE a>\n<a/>", ":1: found a DOCTYPE, expected a document without one"),
    "too_deep": ("<a>\n" + "<a>" * 64 + "</a>" * 65, ":2: found elements nested more than 64 deep, expected at most 64 levels"),
    "no_screen": ("<Room><Screen/></Room>", ": found no screen, expected a ScreenGeometry element"),
    "other_case": ("<screengeometry/>", ": found no screen, expected a ScreenGeometry element"),
    "no_class_type": ("<a>\n<ScreenGeometry/></a>", ':2: found no ClassType in the ScreenGeometry element, expected .*"class FlatScreen".*'),
    "unknown_class_type": ('<a>\n<ScreenGeometry ClassType="class Cube"/></a>', ':2: found the ClassType "class Cube", expected .*"class FlatScreen".*'),
    "class_type_with_controls": ('<ScreenGeometry ClassType="&#x85;&#9;"/>', r':1: found the ClassType "\\x85\\x09", expected .*'),
    "no_width": (OPEN + "\n<Screen_Height>3</Screen_Height></ScreenGeometry>", ":1: found no Screen_Width in the ScreenGeometry element, expected <Screen_Width>"),
    "no_height": (OPEN + "<Screen_Width>3</Screen_Width></ScreenGeometry>", ":1: found no Screen_Height in the ScreenGeometry element, expected <Screen_Height>"),
    "tag_below_another": (OPEN + "<Sizes>" + SIZES + "</Sizes></ScreenGeometry>", ":1: found no Screen_Width .*"),
    "no_number": (OPEN + "\n<Screen_Width>wide</Screen_Width></ScreenGeometry>", ':2: found "wide" in Screen_Width, expected a number'),
    "earlier_of_two_no_number": (OPEN + "<Screen_Width>wide</Screen_Width>" + SIZES + "</ScreenGeometry>", ':1: found "wide" in Screen_Width, expected a number'),
    "empty_number": (FLAT.format("", 3), ':1: found "" in Screen_Width, expected a number'),
    "blank_number": (FLAT.format(4, " \n "), ':1: found "" in Screen_Height, expected a number'),
    "garbage_behind": (FLAT.format("4 m", 3), ':1: found "4 m" in Screen_Width, expected a number'),
    "decimal_comma": (FLAT.format("4,5", 3), ':1: found "4,5" in Screen_Width, expected a number'),
    "hexadecimal": (FLAT.format("0x10", 3), ':1: found "0x10" in Screen_Width, expected a number'),
    "long_number": (FLAT.format("x" * 10000, 3), ':1: found "x{40}\\.\\.\\." in Screen_Width, expected a number'),
    "beyond_double": (FLAT.format("1e400", 3), ':1: found "1e400" in Screen_Width, expected a number'),
    "negative": (FLAT.format(-4, 3), r':1: found "-4" in Screen_Width, expected a number from 0 to 1e\+150'),
    "negative_height": (FLAT.format(4, "-1e-300"), r':1: found "-1e-300" in Screen_Height, expected a number from 0 to 1e\+150'),
    "nan": (FLAT.format("nan", 3), r':1: found "nan" in Screen_Width, expected a number from 0 to 1e\+150'),
    "infinite": (FLAT.format(4, "inf"), r':1: found "inf" in Screen_Height, expected a number from 0 to 1e\+150'),
    "too_large": (FLAT.format("1.01e150", 3), r':1: found "1.01e150" in Screen_Width, expected a number from 0 to 1e\+150'),
}

ACCEPTED = {
    "largest": FLAT.format("1e150", "1e150"),
    "smallest": FLAT.format("5e-324", "1e-310"),
    "below_a_double": FLAT.format("4", "3.0000000000000000000000000000000000000000000000000000000001"),
    "deepest": "<a>" * 61 + FLAT.format(4, 3) + "</a>" * 61,
    "blanks_around_numbers": FLAT.format("\n 4\t", "\r\n3"),
    "unknown_tags": OPEN + "<Color>red</Color>" + SIZES + "</ScreenGeometry>",
    "other_attributes": OPEN.replace(" ", ' Name="x" ', 1) + SIZES + "</ScreenGeometry>",
    "instructions_and_comments": "<?q?><!-- <a> --><a><?q?>" + FLAT.format(4, 3) + "<!-- - --></a><!-- -->",
    "declaration": '<?xml version="1.0" encoding="ISO-8859-1" standalone="yes"?>' + FLAT.format(4, 3),
    "version_1_1": '<?xml version="1.1"?>' + FLAT.format(4, 3),
}


class ScreenErrors(ToolTest):
    def error_line(self, *arguments, exit_code=2):
        result = self.run_tool(*arguments)
        self.assertEqual(result.stdout, b"")
        self.assert_one_error_line(result, exit_code)
        return result.stderr.decode()

    def test_a_file_that_is_no_screen_is_refused_with_its_line(self):
        for name, (content, message) in REFUSED.items():
            with self.subTest(name):
                self.file("a.xml", content)
                self.assertRegex(self.error_line("info", "a.xml"), r"\Aerror: a\.xml" + message + r"\n\Z")

    def test_every_command_refuses_alike(self):
        self.file("a.xml", "<a/>")
        for arguments in (["info", "a.xml", "--json"], ["map", "a.xml", "--to", "2d"], ["intersect", "a.xml"],
                          ["nearest", "a.xml"], ["channel", "a.xml", "-"], ["grid", "a.xml"], ["boundary", "a.xml"], ["points", "a.xml"]):
            with self.subTest(arguments):
                self.assertEqual(self.error_line(*arguments), "error: a.xml: found no screen, expected a ScreenGeometry element\n")

    def test_a_file_that_is_odd_but_right_is_read(self):
        for name, content in ACCEPTED.items():
            with self.subTest(name):
                self.file("a.xml", content)
                self.assertEqual(self.text_of("points", "a.xml").count("\n"), 26)

    def test_files_that_cannot_be_read(self):
        (self.folder / "folder").mkdir()
        self.file("file", "")
        for path, message in (("nowhere.xml", "no such file, expected the XML, OBJ or STL file of a screen"),
                              ("folder", "a directory, expected the XML, OBJ or STL file of a screen"),
                              ("file/a.xml", "cannot be opened: Not a directory"),
                              ("x" * 300, "cannot be opened: File name too long"),
                              ("-", "no such file, expected the XML, OBJ or STL file of a screen")):
            with self.subTest(path):
                self.assertEqual(self.error_line("info", path), f"error: {path}: {message}\n")
        self.assertEqual(self.error_line("info", ""), "error: an empty file name, expected the XML, OBJ or STL file of a screen\n")

    @unittest.skipIf(os.geteuid() == 0, "root may read everything")
    def test_a_file_without_permission(self):
        self.file("a.xml", FLAT.format(4, 3)).chmod(0)
        self.assertEqual(self.error_line("info", "a.xml"), "error: a.xml: cannot be opened: Permission denied\n")

    def test_a_read_that_fails_is_the_systems_failure(self):
        self.assertRegex(self.error_line("info", "/proc/self/mem", exit_code=3), "cannot be read: Input/output error")

    def test_an_endless_file_is_refused(self):
        os.mkfifo(self.folder / "endless.obj")
        with subprocess.Popen("yes 'v 0 0 0' > endless.obj", shell=True, cwd=self.folder, stderr=subprocess.DEVNULL):
            line = self.error_line("info", "endless.obj", "--max-memory", "10M")
        self.assertEqual(line, "error: endless.obj: found a document that may need more than 10.0 MiB of memory, "
                               "expected a smaller one, or a larger --max-memory\n")
        self.assertIn("/dev/zero: found binary data of an unknown kind", self.error_line("info", "/dev/zero", "--max-memory", "10M"))

    def test_the_memory_limit_counts_text_elements_and_attributes(self):
        for name, body in (("text", "x" * 100000), ("elements", "<b/>" * 2000), ("attributes", '<b c=""/>' * 1300)):
            with self.subTest(name):
                self.file("a.xml", "<a>\n" + body + FLAT.format(4, 3) + "</a>")
                self.assertRegex(self.error_line("info", "a.xml", "--max-memory", "1M"), r"more than 1\.0 MiB of memory")
                self.text_of("info", "a.xml", "--max-memory", "2M")

    def test_zero_sizes_are_warned_of(self):
        self.file("a.xml", "<a>\n" + FLAT.format(0, 3) + "</a>")
        result = self.run_tool("points", "a.xml")
        self.assertEqual(result.stderr.decode(), "warning: a.xml:2: the width is 0: UV cannot be computed\n")
        self.assertEqual(result.returncode, 0)
        self.file("a.xml", FLAT.format("-0.0", "0e5"))
        self.assertEqual(len(re.findall("^warning: ", self.run_tool("points", "a.xml").stderr.decode(), re.MULTILINE)), 2)

    def test_further_screens_are_warned_of(self):
        self.file("a.xml", "<a>" + FLAT.format(4, 3) + "\n" + FLAT.format(8, 6) + "\n<ScreenGeometry/></a>")
        result = self.run_tool("info", "a.xml")
        self.assertEqual(result.stderr.decode(), "warning: a.xml:2: found 3 screens, only the first is read\n")
        self.assertIn("4 by 3 m", result.stdout.decode())

    def test_the_first_screen_of_the_document_is_read(self):
        self.file("a.xml", "<a><b>" + FLAT.format(4, 3) + "</b>" + FLAT.format(8, 6) + "</a>")
        self.assertIn("4 by 3 m", self.run_tool("info", "a.xml").stdout.decode())


if __name__ == "__main__":
    unittest.main()
