"""What CSV inputs may look like, and every message about them."""
import re
import unittest

from tool_case import WALL, Case, ToolTest, add_cases

HEADER = r"ray,status,[^\n]*\n"
HIT = r"1,hit,[^\n]*\n"


def ray_case(name, text, out=HEADER, err="", exit_code=2):
    return Case(name, ["intersect", WALL], out, err, exit_code, text if isinstance(text, bytes) else text.encode())


class Csv(ToolTest):
    def test_the_file_is_named(self):
        self.file("rays.csv", "# rays\n\n1,2,3,4,5\n")
        result = self.run_tool("intersect", WALL, "rays.csv")
        self.assertEqual(result.stderr.decode(), "error: rays.csv:3: found 5 numbers, expected 6 (fromX,fromY,fromZ,toX,toY,toZ)\n")
        self.assertEqual(result.returncode, 2)

    def test_files_that_cannot_be_read(self):
        for arguments in (["map", WALL, "--to", "2d"], ["intersect", WALL], ["nearest", WALL], ["channel", WALL]):
            result = self.run_tool(*arguments, "nowhere.csv")
            self.assertRegex(result.stderr.decode(), r"\Aerror: nowhere\.csv: no such file, expected a CSV file of \w+\n\Z")
            self.assertEqual((result.returncode, result.stdout), (2, b""))
            result = self.run_tool(*arguments, str(self.folder))
            self.assertRegex(result.stderr.decode(), r"\Aerror: /.*: a directory, expected a CSV file of \w+\n\Z")
            self.assertEqual((result.returncode, result.stdout), (2, b""))

    def test_an_extra_file_is_checked_whole(self):
        self.file("extra.csv", "0,-5,0,0,0,0\nwrong\n")
        result = self.run_tool("channel", WALL, "-", "--extra", "extra.csv", stdin=b"0,-5,0,0,0,0\n")
        self.assertRegex(result.stderr.decode(), r'\Aerror: extra\.csv:2: found "wrong", expected a number for fromX .*\n\Z')
        self.assertEqual((result.returncode, result.stdout), (2, b""))

    def test_json_of_a_wrong_input_prints_nothing(self):
        result = self.run_tool("intersect", WALL, "--json", stdin=b"0,-5,0,0,0,0\nx\n")
        self.assertEqual((result.returncode, result.stdout), (2, b""))
        self.assert_one_error_line(result, 2)

    def test_memory_is_bounded(self):
        rays = b"0,-5,0,9,0,0\n" * 1000
        result = self.run_tool("channel", WALL, "-", "--max-memory", "100K", stdin=rays)
        self.assertEqual(result.stderr.decode(), "error: standard input: 427 rays before the first that hits, expected fewer, or a larger --max-memory\n")
        self.assertEqual(result.returncode, 2)
        for output in ((), ("--json",)):
            self.assertGreater(self.text_of("intersect", WALL, "--max-memory", "100K", *output, stdin=rays).count("\n"), 1000)


add_cases(Csv, [
    ray_case("bytes_before_and_line_ends", b"\xef\xbb\xbffromX,fromY,fromZ,toX,toY,toZ\r\n0,-5,0,0,0,0\r\n", HEADER + HIT, "", 0),
    ray_case("comments_and_blank_lines", "# a ray\n\n  \n 0 ,\t-5, 0,0,0,0  \n# end", HEADER + HIT, "", 0),
    ray_case("signs_and_forms_of_numbers", "+0,-5.,.0,0e0,0E+0,-0", HEADER + HIT, "", 0),
    ray_case("too_few", "1,2,3,4,5", HEADER, r"error: standard input:1: found 5 numbers, expected 6 \(fromX,fromY,fromZ,toX,toY,toZ\)\n"),
    ray_case("too_many", "1,2,3,4,5,6,7", HEADER, r"error: standard input:1: found 7 numbers, expected 6 .*\n"),
    ray_case("one", "1", HEADER, r"error: standard input:1: found 1 number, expected 6 .*\n"),
    ray_case("trailing_comma", "1,2,3,4,5,6,", HEADER, r"error: standard input:1: found 7 numbers, expected 6 .*\n"),
    ray_case("no_number", "1,2,3,4,5,x", HEADER, r'error: standard input:1: found "x", expected a number for toZ .*\n'),
    ray_case("empty_cell", "1,2,,4,5,6", HEADER, r'error: standard input:1: found "", expected a number for fromZ .*\n'),
    ray_case("another_separator_than_the_header", "fromX,fromY,fromZ,toX,toY,toZ\n1;2;3;4;5;6", HEADER, r'error: standard input:2: found "1;2;3;4;5;6", expected a number for fromX .*\n'),
    ray_case("too_large_a_number", "1e999,2,3,4,5,6\n1e999,2,3,4,5,6", HEADER, r'error: standard input:1: found "1e999", .*\n'),
    ray_case("control_characters", "1,2,3,4,5,\x1b[2J\x07", HEADER, re.escape(r'error: standard input:1: found "\x1b[2J\x07", expected ') + ".*\n"),
    ray_case("bytes_that_are_not_utf8", b"1,2,3,4,5,\xff\x00", HEADER, re.escape('error: standard input:1: found "\ufffd\\x00", expected ') + ".*\n"),
    ray_case("earlier_answers_stay", "0,-5,0,0,0,0\nx\n", HEADER + HIT, r"error: standard input:2: .*\n"),
    ray_case("an_endless_line", "1" * 1100000, HEADER, r"error: standard input:1: found a line of more than 1000000 bytes, expected 6 numbers\n"),
    Case("columns_of_map_to_3d", ["map", WALL, "--to", "3d"], ".*", r"error: standard input:1: found 3 numbers, expected 2 \(u,v\)\n", 2, b"1,2,3"),
    Case("columns_of_map_to_2d", ["map", WALL, "--to", "2d"], ".*", r"error: standard input:1: found 2 numbers, expected 3 \(x,y,z\)\n", 2, b"1,2"),
    Case("columns_of_nearest", ["nearest", WALL], ".*", r"error: standard input:1: found 2 numbers, expected 6 \(x,y,z,dx,dy,dz\)\n", 2, b"1,2"),
])

if __name__ == "__main__":
    unittest.main()
