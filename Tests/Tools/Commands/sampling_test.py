"""Grids, boundaries and calibration positions."""
import math
import os
import re
import unittest

from tool_case import FLAT, SCREENS, WALL, Case, ToolTest, add_cases

FLAT_SCREEN, CYLINDER, DOME, RULED = SCREENS
POLYLINE = "polyline,x[m],y[m],z[m]\n"


class Sampling(ToolTest):
    def rows(self, *arguments):
        return [[float(cell) for cell in line.split(",") if cell != "on_screen"] for line in self.text_of(*arguments).splitlines()[1:]]

    def assert_near(self, position, expected):
        for a, b in zip(position, expected, strict=True):
            self.assertAlmostEqual(a, b, places=12)

    def test_a_grid_has_an_odd_number_of_lines_and_closes(self):
        for screen in SCREENS:
            for density in range(2, 10):
                lines = density | 1
                rows = self.rows("grid", screen, "--density", str(density))
                with self.subTest(screen=screen, density=density):
                    self.assertEqual(len(rows), 2 * (21 * lines + 3 * (lines - 1)))
                    self.assertEqual({row[0] for row in rows}, {1.0})
                    self.assert_near(rows[0], rows[-1])

    def test_the_default_grid_has_11_lines(self):
        self.assertEqual(self.text_of("grid", WALL), self.text_of("grid", WALL, "--density", "11"))

    def test_outlines_have_the_positions_of_their_shapes(self):
        # One for two degrees of the cylinder's 200; on the dome the sides count the azimuth and the rest the elevation.
        for screen, counts in ((FLAT_SCREEN, [20] * 4), (CYLINDER, [100, 20, 100, 20]), (DOME, [180, 45, 180, 45]), (RULED, [20] * 4)):
            rows = self.rows("boundary", screen)
            with self.subTest(screen):
                self.assertEqual([sum(row[0] == number for row in rows) for number in range(1, 5)], counts)
                self.assertEqual(rows, sorted(rows, key=lambda row: row[0]))

    def test_the_outline_of_a_full_circle_keeps_the_numbers_of_its_edges(self):
        ring = self.file("ring.xml", self.text_of("make", "cylinder", "--radius", "1", "--height", "1", "--arc", "360deg"))
        rows = self.rows("boundary", str(ring))
        self.assertEqual({row[0] for row in rows}, {1.0, 3.0})
        self.assertEqual(len(rows), 360)

    def test_points_stand_column_by_column_from_the_top(self):
        self.assertEqual(self.rows("points", WALL, "--columns", "3", "--rows", "2"),
                         [[1, 1, -2, 0, 1.5, 0, 0], [1, 2, -2, 0, -1.5, 0, 1], [2, 1, 0, 0, 1.5, 0.5, 0], [2, 2, 0, 0, -1.5, 0.5, 1],
                          [3, 1, 2, 0, 1.5, 1, 0], [3, 2, 2, 0, -1.5, 1, 1]])
        rows = self.rows("points", CYLINDER, "--columns", "3", "--rows", "3")
        self.assertEqual([row[:2] for row in rows], [[column, row] for column in (1, 2, 3) for row in (1, 2, 3)])
        self.assert_near(rows[1][2:5], [-3 * math.sin(math.radians(100)), 3 * math.cos(math.radians(100)), 0])
        self.assert_near(rows[3][2:5], [0, 3, 1.25])
        self.assertEqual(len(self.rows("points", WALL)), 25)

    def test_every_place_of_a_mesh_has_a_row(self):
        # Half of the UVs at the pole are in no triangle.
        mesh = self.file("dome.obj", self.text_of("make", "dome", "--radius", "6m", "--angle", "180deg", "--grid", "8x16"))
        lines = self.text_of("points", str(mesh), "--columns", "20", "--rows", "10").splitlines()
        self.assertEqual(lines[0], "column,row,status,x[m],y[m],z[m],u,v")
        rows = [line.split(",") for line in lines[1:]]
        self.assertEqual([row[:2] for row in rows], [[str(column), str(row)] for row in range(1, 11) for column in range(1, 21)])
        for column, row, status, *position, u, v in rows:
            self.assertAlmostEqual(float(u), (int(column) - 1) / 19)
            self.assertAlmostEqual(float(v), (int(row) - 1) / 9)
            self.assertEqual(status, "outside" if position == [""] * 3 else "on_screen")
        self.assertEqual({row[2] for row in rows[:20]}, {"outside"})
        self.assertEqual({row[2] for row in rows[40:]}, {"on_screen"})
        again = self.text_of("map", str(mesh), "--to", "3d", stdin="\n".join(lines).encode()).splitlines()[1:]
        self.assertEqual([line.split(",")[2:6] for line in again], [row[2:6] for row in rows])

    def test_points_of_a_moved_cylinder_are_relative_to_its_centre(self):
        arguments = ["make", "cylinder", "--radius", "1", "--height", "1", "--arc", "90deg"]
        here = self.file("here.xml", self.text_of(*arguments))
        there = self.file("there.xml", self.text_of(*arguments, "--center", "1,2,3"))
        self.assertEqual(self.text_of("points", str(here)), self.run_tool("points", str(there)).stdout.decode())
        self.assertIn("relative to its center", self.text_of("points", "--help"))

    def test_positions_that_are_not_finite_are_nan(self):
        line = str(self.file("line.xml", FLAT.format("1e150", 3)))
        self.assertEqual(self.text_of("points", line, "--columns", "2", "--rows", "2").splitlines()[1], "1,1,on_screen,-5e+149,0,1.5,0,0")

    def test_the_locale_changes_nothing(self):
        environment = dict(os.environ, LC_ALL=os.environ["QUARN_LOCALE"], LOCPATH=os.environ["QUARN_LOCPATH"])
        for screen in SCREENS:
            for command in ("info", "grid", "boundary", "points"):
                self.assertEqual(self.text_of(command, screen, env=environment), self.text_of(command, screen))


def count_case(name, arguments, option, text):
    return Case("refused_" + name, arguments, "", rf'error: found {option} "{text}", expected a whole number from 2 to 2147483647\n', 2)


add_cases(Sampling, [
    count_case("density_1", ["grid", WALL, "--density", "1"], "--density", "1"),
    count_case("density_0", ["grid", WALL, "--density", "0"], "--density", "0"),
    count_case("density_below_0", ["grid", WALL, "--density", "-3"], "--density", "-3"),
    count_case("density_beyond_int", ["grid", WALL, "--density", "2147483648"], "--density", "2147483648"),
    count_case("density_with_fraction", ["grid", WALL, "--density", "3.5"], "--density", "3.5"),
    count_case("density_in_words", ["grid", WALL, "--density", "many"], "--density", "many"),
    count_case("empty_density", ["grid", WALL, "--density", ""], "--density", ""),
    count_case("1_column", ["points", WALL, "--columns", "1"], "--columns", "1"),
    count_case("1_row", ["points", WALL, "--rows", "1"], "--rows", "1"),
    count_case("octal_count", ["points", WALL, "--rows", "0x10"], "--rows", "0x10"),
    Case("count_with_leading_0", ["points", WALL, "--rows", "010", "--columns", "2"], r"(?:[^\n]*\n){21}"),
    Case("density_twice", ["grid", WALL, "--density", "3", "--density", "3"], "", r"error: .* \(see --help\)\n", 2),
    Case("boundary_with_density", ["boundary", WALL, "--density", "3"], "", r"error: .* \(see --help\)\n", 2),
    Case("require_is_for_queries", ["grid", WALL, "--require"], "", r"error: .* \(see --help\)\n", 2),
    Case("greatest_density", ["grid", WALL, "--density", "2147483647", "--max-memory", "1G"], "",
         r"error: found --density 2147483647 for 103079215104 positions, which may need more than 1\.0 GiB of memory, expected smaller numbers, or a larger --max-memory\n", 2),
    Case("greatest_counts", ["points", WALL, "--columns", "2147483647", "--rows", "2147483647", "--max-memory", "1G"], "",
         r"error: found --columns 2147483647 and --rows 2147483647 for 4611686014132420609 positions, which may need more than 1\.0 GiB .*\n", 2),
    Case("counts_that_just_fit", ["points", WALL, "--columns", "2", "--rows", "7281", "--max-memory", "1M"], re.escape("column,row,status,x[m],y[m],z[m],u,v\n") + ".*"),
    Case("counts_that_just_do_not_fit", ["points", WALL, "--columns", "2", "--rows", "7282", "--max-memory", "1M"], "", "error: found --columns 2 and --rows 7282 for 14564 positions.*\n", 2),
    Case("json_needs_no_memory", ["points", WALL, "--columns", "70", "--rows", "100", "--max-memory", "1M", "--json"], r'\{"command":"points",.*\n\]\}\n'),
    Case("unit_in_the_header", ["boundary", WALL, "--unit", "mm"], re.escape("polyline,x[mm],y[mm],z[mm]\n1,-2,0,1.5\n") + ".*"),
    Case("boundary_of_the_wall", ["boundary", WALL], re.escape(POLYLINE + "1,-2,0,1.5\n1,-2,0,1.35\n") + ".*"),
    Case("grid_of_the_wall", ["grid", WALL, "--density", "2"], re.escape(POLYLINE + "1,-2,0,1.5\n1,-2,0,1.35\n") + r".*\n1,-2,0,1\.5\n"),
])

if __name__ == "__main__":
    unittest.main()
