"""NumPy arrays as inputs and outputs: the numbers of CSV, bit for bit."""
import io
import math
import random
import struct
import subprocess
import unittest

from npy_arrays import npy, rows_of
from obj_case import ObjTest, dome
from tool_case import TOOL, WALL

try:
    import numpy
except ImportError:
    numpy = None

STATUS = {"empty": -1, "miss": 0, "none": 0, "outside": 0, "hit": 1, "found": 1, "on_screen": 1, "extrapolated": 2, "boundary": 3}
MISSING = (math.nan,)
QUERIES = [(["map", "--to", "3d"], 2), (["map", "--to", "3d", "--extrapolate"], 2), (["map", "--to", "2d"], 3), (["closest"], 3), (["normal"], 3),
           (["intersect"], 6), (["intersect", "--extrapolate"], 6), (["nearest"], 6), (["channel", "-"], 6)]


def arguments_on(screen, arguments):
    return [arguments[0], screen, *arguments[1:]]


def some_rows(count, width, seed=1):
    rng = random.Random(seed)
    return [[rng.uniform(-2, 2) for _ in range(width)] for _ in range(count)]


def csv(rows):
    return "".join(",".join(repr(number) for number in row) + "\n" for row in rows).encode()


def number_of(cell):
    if not cell:
        return math.nan
    return STATUS[cell] if cell in STATUS else float(cell)


def same(packed, number):
    return packed == struct.pack("<d", number) or (math.isnan(number) and math.isnan(struct.unpack("<d", packed)[0]))


class Npy(ObjTest):
    def assert_same_numbers(self, content, text):
        rows = rows_of(content)
        lines = text.splitlines()[1:]
        self.assertEqual(len(rows), len(lines))
        for row, line in zip(rows, lines):
            cells = line.split(",")
            self.assertEqual(len(row), len(cells))
            for packed, cell in zip(row, cells):
                self.assertTrue(same(packed, number_of(cell)), (packed, line))

    def test_results_are_the_numbers_of_csv(self):
        self.file("dome.obj", dome())
        for screen in (WALL, "dome.obj"):
            for query, width in QUERIES:
                arguments = arguments_on(screen, query)
                stdin = csv(some_rows(2000, width))
                with self.subTest(arguments):
                    text = self.run_tool(*arguments, stdin=stdin).stdout.decode()
                    written = self.run_tool(*arguments, "--npy", stdin=stdin)
                    self.assertEqual(written.returncode, 0)
                    self.assert_same_numbers(written.stdout, text)
                    self.run_tool(*arguments, "-o", "out.npy", stdin=stdin).check_returncode()
                    self.assertEqual((self.folder / "out.npy").read_bytes(), written.stdout)

    def test_samples_of_a_screen_are_the_numbers_of_csv(self):
        self.file("dome.obj", dome())
        for screen in (WALL, "dome.obj"):
            for command in ("grid", "boundary", "points"):
                with self.subTest(screen=screen, command=command):
                    self.assert_same_numbers(self.run_tool(command, screen, "--npy").stdout, self.run_tool(command, screen).stdout.decode())

    def test_each_form_of_array_is_read_as_csv_is(self):
        rows = some_rows(5000, 2)
        expected = self.text_of("map", WALL, "--to", "3d", stdin=csv(rows))
        for number in ("<f8", ">f8"):
            for fortran in (False, True):
                for version in (1, 2, 3):
                    with self.subTest(number=number, fortran=fortran, version=version):
                        self.file("rows.dat", npy(rows, number, fortran, version))
                        self.assertTrue(self.text_of("map", WALL, "--to", "3d", "rows.dat") == expected)
        floats = [[struct.unpack("<f", struct.pack("<f", value))[0] for value in row] for row in rows]
        self.file("rows.npy", npy(rows, "<f4"))
        self.assertTrue(self.text_of("map", WALL, "--to", "3d", "rows.npy") == self.text_of("map", WALL, "--to", "3d", stdin=csv(floats)))

    def test_each_command_reads_its_columns_by_position(self):
        for query, width in QUERIES:
            with self.subTest(query):
                rows = some_rows(700, width)
                arguments = arguments_on(WALL, query)
                self.assertEqual(self.run_tool(*arguments, stdin=npy(rows)).stdout, self.run_tool(*arguments, stdin=csv(rows)).stdout)

    def test_one_dimension_is_one_row(self):
        self.assertEqual(self.text_of("map", WALL, "--to", "3d", stdin=npy([[0.5, 0.5]], shape=(2,))),
                         self.text_of("map", WALL, "--to", "3d", stdin=b"0.5,0.5\n"))

    def test_an_array_may_begin_inside_of_a_file(self):
        for fortran in (False, True):
            path = self.file("rows", b"before" + npy(some_rows(10, 2), fortran=fortran))
            with open(path, "rb") as file:
                file.seek(6)
                result = subprocess.run([TOOL, "map", WALL, "--to", "3d"], stdin=file, capture_output=True, check=False)
            self.assertEqual(result.stdout.decode(), self.text_of("map", WALL, "--to", "3d", stdin=csv(some_rows(10, 2))))

    def test_missing_values_are_nan_and_nan_is_an_empty_row(self):
        stdin = npy([MISSING * 2, [0.5, 0.5], [2.0, math.nan]])
        self.assertEqual(self.text_of("map", WALL, "--to", "3d", stdin=stdin).splitlines()[1:],
                         [",,empty,,,", "0.5,0.5,on_screen,0,0,0", "2,nan,outside,,,"])
        rows = rows_of(self.run_tool("map", WALL, "--to", "3d", "--npy", stdin=stdin).stdout)
        numbers = [[struct.unpack("<d", packed)[0] for packed in row] for row in rows]
        self.assertEqual([row[2] for row in numbers], [-1, 1, 0])
        self.assertTrue(all(math.isnan(value) for value in numbers[0][:2] + numbers[0][3:] + numbers[2][3:]))
        self.assertEqual(self.run_tool("map", WALL, "--to", "3d", "--npy", "--require", stdin=stdin).returncode, 1)

    def test_further_columns_follow_as_numbers(self):
        rows = rows_of(self.run_tool("map", WALL, "--to", "3d", "--npy", stdin=b'id,u,name,v,w\n7,0.5,left,0.5,"8"\n').stdout)
        self.assertEqual([struct.unpack("<d", rows[0][i])[0] for i in (6, 8)], [7, 8])
        self.assertTrue(math.isnan(struct.unpack("<d", rows[0][7])[0]))

    def test_results_of_rows_come_while_an_array_waits(self):
        content = npy([[0.5, 0.5], [0.25, 0.5]])
        with subprocess.Popen([TOOL, "map", WALL, "--to", "3d"], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            process.stdin.write(content[:-16])
            process.stdin.flush()
            process.stdout.readline()
            self.assertEqual(process.stdout.readline(), b"0.5,0.5,on_screen,0,0,0\n")
            process.stdin.write(content[-16:])
            process.stdin.close()
            self.assertEqual(process.wait(60), 0)

    def test_a_short_row_is_answered_before_the_next(self):
        with subprocess.Popen([TOOL, "map", WALL, "--to", "3d"], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            process.stdin.write(b"1,0\n")
            process.stdin.flush()
            process.stdout.readline()
            self.assertEqual(process.stdout.readline(), b"1,0,on_screen,2,0,1.5\n")
            process.stdin.close()
            self.assertEqual(process.wait(60), 0)

    def test_wrong_arrays_are_errors_that_name_the_file(self):
        rows = [[0.5, 0.5], [0.25, 0.5]]
        for content, message in (
                (npy(some_rows(2, 3)), "found a NumPy array of 3 columns, expected 2 (u,v)"),
                (npy([[1]]), "found a NumPy array of 1 column, expected 2 (u,v)"),
                (npy([[1, 2]], "<i8"), 'found a NumPy array of "<i8", expected floats: "<f8" (numpy.float64), ">f8" or "<f4"'),
                (npy(rows) + b"x", "found 33 bytes after the NumPy header, expected 32 (2 x 2 numbers of 8 bytes)"),
                (npy(rows)[:-1], "found 31 bytes after the NumPy header, expected 32 (2 x 2 numbers of 8 bytes)"),
                (npy(rows)[:20], "found the end of the input in its header, expected the rest of a NumPy array"),
                (npy(rows, version=4), "found the version 4.0 of the NumPy array format, expected 1.0, 2.0 or 3.0"),
                (npy([(1, 2)], shape=(0, 2))[:-16], "found no rows, expected rows of u,v")):
            self.file("rows.npy", content)
            self.assertEqual(self.error_line("map", WALL, "--to", "3d", "rows.npy", "--npy"), f"error: rows.npy: {message}\n")

    def test_wrong_streams_are_errors(self):
        rows = [[0.5, 0.5], [0.25, 0.5]]
        for content, message in (
                (npy(rows)[:-1], "found the end of the input after 1 of 2 rows, expected the rest of a NumPy array"),
                (npy(rows) + b"x", "found bytes after the last row of the NumPy array, expected the end of the input"),
                (npy(rows, fortran=True), "found a NumPy array in Fortran order in a stream, expected a file, or C order (numpy.ascontiguousarray)")):
            self.assertEqual(self.error_line("map", WALL, "--to", "3d", "--npy", stdin=content), f"error: standard input: {message}\n")

    def test_an_error_leaves_no_part_of_an_array(self):
        self.file("out.npy", "old")
        stdin = b"0.5,0.5\n" * 100000 + b"x\n"
        for output in (["--npy"], ["-o", "out.npy"]):
            self.assertRegex(self.error_line("map", WALL, "--to", "3d", *output, stdin=stdin), "standard input:100001: found \"x\"")
        self.assertEqual([path.name for path in self.folder.iterdir()], ["out.npy"])
        self.assertEqual((self.folder / "out.npy").read_bytes(), b"old")

    def test_names_and_options_have_to_agree(self):
        for arguments in (["intersect", WALL, "-o", "x.csv", "--npy"], ["intersect", WALL, "-o", "x.npy", "--json"], ["info", WALL, "-o", "x.npy"],
                          ["intersect", WALL, "--npy", "--json"], ["info", WALL, "--npy"], ["compare", WALL, WALL, "-o", "x.npy"]):
            self.error_line(*arguments)
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_arrays_do_not_depend_on_the_threads(self):
        stdin = npy(some_rows(30000, 6))
        first = self.run_tool("intersect", WALL, "--npy", "--threads", "1", stdin=stdin).stdout
        self.assertEqual(len(rows_of(first)), 30000)
        self.assertTrue(self.run_tool("intersect", WALL, "--npy", "--threads", "7", stdin=stdin).stdout == first)

    @unittest.skipIf(numpy is None, "NumPy is not installed")
    def test_numpy_reads_and_writes_the_same_arrays(self):
        rows = numpy.array(some_rows(1000, 3))
        expected = self.run_tool("map", WALL, "--to", "2d", "--npy", stdin=csv(rows.tolist())).stdout
        for array in (rows, numpy.asfortranarray(rows), rows.astype(">f8")):
            numpy.save(self.folder / "rows.npy", array)
            self.assertEqual(self.run_tool("map", WALL, "--to", "2d", "rows.npy", "--npy").stdout, expected)
        result = numpy.load(io.BytesIO(expected))
        self.assertEqual(result.shape, (1000, 6))
        self.assertTrue((result[:, :3] == rows).all())


if __name__ == "__main__":
    unittest.main()
