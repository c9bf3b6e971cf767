"""Columns by name, further columns of the input, and commands that read what another one wrote."""
import csv
import io
import os
import subprocess
import unittest

from tool_case import SAMPLES, TOOL, WALL, Case, ToolTest, add_cases

RAYS = str(SAMPLES / "flat-wall-rays.csv")
UV = str(SAMPLES / "flat-wall-uv.csv")
DOME = str(SAMPLES / "dome.obj")
RAY_NAMES = "fromX,fromY,fromZ,toX,toY,toZ\n"


class Columns(ToolTest):
    def rows(self, text):
        """The rows of a CSV text, each as a dictionary by the columns' names without unit."""
        header, *rows = csv.reader(io.StringIO(text))
        names = [name.split("[")[0] for name in header]
        self.assertEqual(len(set(names)), len(names))
        return [dict(zip(names, row, strict=True)) for row in rows]

    def pipe(self, *commands):
        """The rows of the last of several command lines, each of which reads the one before it."""
        line = " | ".join(f'"$TOOL" {command}' for command in commands)
        environment = dict(os.environ, TOOL=TOOL, WALL=WALL, DOME=DOME, RAYS=RAYS, UV=UV)
        result = subprocess.run(["bash", "-o", "pipefail", "-c", line], capture_output=True, cwd=self.folder, env=environment, timeout=120, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return self.rows(result.stdout.decode())

    def test_map_reads_what_map_wrote(self):
        uv = [[row["u"], row["v"], row["status"]] for row in self.pipe('map "$WALL" "$UV" --to 3d', 'map "$WALL" --to 2d')]
        self.assertEqual(uv, [["0", "0", "on_screen"], ["1", "1", "on_screen"], ["0.5", "0.5", "on_screen"], ["", "", "empty"]])
        there = self.pipe('map "$WALL" "$UV" --to 3d', 'map "$WALL" --to 2d', 'map "$WALL" --to 3d')
        self.assertEqual(list(there[0]), ["u", "v", "status", "x", "y", "z"])
        self.assertEqual([row["x"] for row in there], ["-2", "2", "0", ""])

    def test_intersect_reads_what_intersect_wrote(self):
        once = self.pipe('intersect "$WALL" "$RAYS"')
        self.assertEqual(self.pipe('intersect "$WALL" "$RAYS"', 'intersect "$WALL"'), once)
        self.assertEqual(self.pipe('intersect "$WALL" "$RAYS"', 'intersect "$DOME"', 'intersect "$WALL"'), once)
        self.assertEqual([row["status"] for row in self.pipe('intersect "$WALL" "$RAYS"', 'map "$WALL" --to 2d')],
                         ["on_screen"] * 3 + ["empty", "on_screen", "empty"])

    def test_nearest_and_channel_read_what_they_wrote(self):
        self.file("lines.csv", "name,x,y,z,dx,dy,dz\na,0,-5,0,0,1,0\nb,0,-5,0,5,1,0\n")
        once = self.pipe('nearest "$WALL" lines.csv')
        self.assertEqual(list(once[0])[-7:], ["name", "fromX", "fromY", "fromZ", "dx", "dy", "dz"])
        self.assertEqual(self.pipe('nearest "$WALL" lines.csv', 'nearest "$WALL"'), once)
        self.assertEqual([row["name"] for row in self.pipe('nearest "$WALL" lines.csv', 'intersect "$WALL"')], ["a", "b"])
        self.assertEqual(self.pipe('intersect "$WALL" "$RAYS"', 'channel "$WALL" -', 'channel "$WALL" -'),
                         self.pipe('intersect "$WALL" "$RAYS"', 'channel "$WALL" -'))

    def test_samples_are_read_by_other_commands(self):
        for first, number in (('points "$DOME" --columns 20 --rows 10', 200), ('grid "$WALL" --density 3', 138), ('boundary "$WALL"', 80)):
            for second, statuses in (('closest "$DOME"', {"found", "none", "empty"}), ('normal "$DOME"', {"found", "none", "empty"}),
                                     ('map "$DOME" --to 2d', {"on_screen", "outside", "empty"})):
                with self.subTest(first=first, second=second):
                    rows = self.pipe(first, second)
                    self.assertEqual(len(rows), number)
                    self.assertLessEqual({row["status"] for row in rows}, statuses)
                    self.assertTrue("polyline" in rows[0] or "column" in rows[0])
        self.assertEqual(len(self.pipe('points "$DOME" --columns 20 --rows 10', 'map "$DOME" --to 3d')), 200)

    def test_rows_keep_their_further_columns(self):
        self.file("rays.csv", 'camera;"toZ";toY;toX;fromX;fromY;fromZ;note\n"a;1";0;0;0;0;-5;0;x,y\nb;9;9;9;0;-5;0;"say ""hi""\n and bye"\n;;;;;;;last\n')
        rows = self.pipe('intersect "$WALL" rays.csv', 'intersect "$WALL"', 'map "$WALL" --to 2d')
        self.assertEqual([row["camera"] for row in rows], ["a;1", "b", ""])
        self.assertEqual([row["note"] for row in rows], ["x,y", 'say "hi"\n and bye', "last"])
        self.assertEqual([row["status"] for row in rows], ["on_screen", "empty", "empty"])

    def test_empty_rows_count_as_missing(self):
        result = self.run_tool("map", WALL, "--to", "3d", "--require", stdin=b"u,v\n0,0\n,\n")
        self.assertEqual(result.stdout, b"u,v,status,x[m],y[m],z[m]\n0,0,on_screen,-2,0,1.5\n,,empty,,,\n")
        self.assertEqual((result.returncode, result.stderr), (1, b"error: 1 of 2 rows have no result, expected a result in each\n"))

    def test_a_header_of_another_unit_is_an_error(self):
        self.file("points.csv", self.text_of("points", WALL, "--unit", "mm"))
        result = self.run_tool("map", WALL, "points.csv", "--to", "2d")
        self.assertEqual(result.stderr.decode(), 'error: points.csv:1: found the column "x[mm]", expected lengths in m, or the option --unit mm\n')
        self.assertEqual(result.returncode, 2)
        self.assertIn("x[mm]", self.text_of("map", WALL, "points.csv", "--to", "2d", "--unit", "mm"))


def map_case(name, text, err, to="3d"):
    return Case("refused_" + name, ["map", WALL, "--to", to], r"(u,v,status,.*\n)?", "error: standard input" + err + r"\n", 2,
                text if isinstance(text, bytes) else text.encode())


def read_case(name, text):
    return Case("read_" + name, ["map", WALL, "--to", "3d"], r"u,v,status,[^\n]*\n0\.25,0\.5,on_screen,-1,0,0\n0,0,[^\n]*\n", stdin=text.encode())


add_cases(Columns, [
    map_case("letter_for_a_digit", "O.5,0.5\n0.5,0.5\n", r':1: found "O\.5", expected a number for u \(u,v\)'),
    map_case("letters_for_all_digits", "O.5,O.5\n0.5,0.5\n", r':1: found the columns "O\.5,O\.5", expected u,v, or rows of numbers'),
    map_case("unknown_names", "a,b\n0.5,0.5\n", r':1: found the columns "a,b", expected u,v, or rows of numbers'),
    map_case("names_of_another_command", RAY_NAMES + "0,0,0,1,1,1\n", r':1: found the columns "fromX,.*", expected x,y,z \(or posX\.\., positionX\.\.\), or rows of numbers', "2d"),
    map_case("decimal_commas", "0,5;0,5\n", r':1: found decimal commas in "0,5;0,5", expected decimal points \(the command tr , \. converts them\)'),
    map_case("decimal_commas_below_a_header", "u;v\n0.5;0.5\n0,5;0\n", r':3: found decimal commas in "0,5;0", expected decimal points .*'),
    map_case("web_page", "<!DOCTYPE html>\n<html><body>\n<p>0.5,0.5\n", ":1: found a web page or XML, expected u,v, or rows of numbers"),
    map_case("prose", "Dear reader,\nthese are my points.\n", r':1: found the columns "Dear reader,", expected .*'),
    map_case("utf16", "u,v\n0.5,0.5\n".encode("utf-16"), r": found UTF-16 text, expected UTF-8 \(the command iconv -f UTF-16 -t UTF-8 converts it\)"),
    map_case("empty", "", ": found no rows, expected rows of u,v"),
    map_case("only_a_header", "v,u\n", ": found no rows, expected rows of v,u"),
    map_case("two_columns_of_one_name", "u,v,U\n1,2,3\n", r':1: found two columns named "u", expected different names'),
    map_case("a_missing_cell", "u,v,id\n0.5,,a\n", r':2: found "", expected a number for v \(u,v,id\)'),
    read_case("names_in_another_order", "v,u\n0.5,0.25\n0,0\n"),
    read_case("semicolons", "0.25;0.5\n0;0\n"),
    read_case("tabs", "v\tu\n0.5\t0.25\n0\t0\n"),
    Case("empty_cells_between_tabs", ["map", WALL, "--to", "3d"], r"[^\n]*,id,note\n0\.5,0\.5,on_screen,0,0,0,,\n0\.5,0\.5,on_screen,0,0,0,,a\n",
         stdin=b"id\tu\tv\tnote\n\t0.5\t0.5\t\n\t0.5\t0.5\ta\n"),
    read_case("blanks", "  0.25   0.5\n 0 0\n"),
    read_case("carriage_returns", "v,u\r0.5,0.25\r0,0\r"),
    read_case("carriage_returns_and_line_feeds", "v;u\r\n0.5;0.25\r\n0;0\r\n"),
    Case("coordinates_in_another_order", ["map", WALL, "--to", "2d"], r"x\[m\],.*\n1,0,0\.75,on_screen,0\.75,0\.25\n", stdin=b"z,y,x\n0.75,0,1\n"),
    Case("a_ray_by_its_direction", ["intersect", WALL], r"[^\n]*,t,dZ,dY,dX,fromX,fromY,fromZ\n1,hit,1,0,-1,0\.75,0\.8333333333333334,-1,,5,-0\.2,1,0,1,-5,0\n",
         stdin=b"dZ,dY,dX,fromX,fromY,fromZ\n-0.2,1,0,1,-5,0\n"),
])

if __name__ == "__main__":
    unittest.main()
