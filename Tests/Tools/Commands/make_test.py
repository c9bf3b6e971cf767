"""Files of screens that the tool makes."""
import math
import os
import re
import subprocess
import unittest
from fractions import Fraction

from tool_case import Case, ToolTest, add_cases

SPHERE = ["make", "sphere", "--radius", "3m", "--min-theta", "-60deg", "--max-theta", "60deg", "--min-phi", "-20deg", "--max-phi", "40deg"]
CYLINDER = ["make", "cylinder", "--radius", "3", "--height", "2"]
# Every shape, with each of its options once.
MADE = {
    "flat": ["make", "flat", "--width", "4m", "--height", "3m"],
    "cylinder": [*CYLINDER, "--min-theta", "-0.5rad", "--max-theta", "210deg", "--center", "1,-2.5,300mm"],
    "cylinder_by_arc": [*CYLINDER, "--arc", "3.66rad"],
    "sphere": [*SPHERE, "--center", "0.1,0.2,0.3"],
    "dome": ["make", "dome", "--radius", "19.7ft", "--angle", "210deg", "--center", "1,1,1"],
    "ruled": ["make", "ruled", "--width", "4m", "--height", "2.5m", "--top-arc", "120deg", "--bottom-arc", "1rad"],
}


PI = Fraction("3.14159265358979323846264338327950288419716939937510")


def radians(degrees):
    """The number nearest to the true one; math.radians() may be its neighbor."""
    return float(Fraction(degrees) * PI / 180)


class Make(ToolTest):
    def numbers(self, *arguments):
        """The numbers of each tag that is made, as they read back."""
        tags = re.findall(r"<(\w+)>([^<]*)</", self.text_of(*arguments))
        return {tag: [float(number) for number in text.split(", ")] for tag, text in tags}

    def number(self, tag, *arguments):
        return self.numbers(*arguments)[tag][0]

    def test_a_document_is_the_screen_alone(self):
        self.assertEqual(self.text_of(*MADE["flat"]),
                         '<?xml version="1.0" encoding="UTF-8"?>\n<ScreenGeometry ClassType="class FlatScreen">\n'
                         "    <Screen_Width>4.000000000000000e+00</Screen_Width>\n    <Screen_Height>3.000000000000000e+00</Screen_Height>\n</ScreenGeometry>\n")

    def test_documents_are_well_formed(self):
        for name, arguments in MADE.items():
            with self.subTest(name):
                subprocess.run(["xmllint", "--noout", "-"], input=self.text_of(*arguments).encode(), check=True)

    def width_of(self, text, unit):
        """The width of a wall as it is made; some of these are warned of for their size."""
        result = self.run_tool("make", "flat", "--width", text, "--height", "1", "--unit", unit)
        self.assertEqual(result.returncode, 0)
        return float(re.search("<Screen_Width>(.*)</", result.stdout.decode())[1])

    def test_lengths_are_converted_once_rounded(self):
        for text, unit, expected in (("6m", "m", 6), ("6000mm", "m", 6), ("600cm", "m", 6), ("19.7ft", "m", 6.00456), ("236in", "m", 5.9944),
                                     ("6", "m", 6), ("6m", "mm", 6000), ("1ft", "in", 12), ("1in", "cm", 2.54), ("1in", "mm", 25.4), ("0.3m", "cm", 30),
                                     ("0.1in", "ft", 0.1 / 12), ("1e3mm", "m", 1), ("+1.5m", "m", 1.5), (" 6 m ", "m", 6), ("1m", "ft", 1 / 0.3048), ("6", "yd", 6),
                                     ("6", "km", 6), ("6", "dm", 6), ("1.1", "mm", 1.1), ("7.1mm", "mm", 7.1), ("25.4mm", "in", 1), ("30.48cm", "ft", 1),
                                     ("4m", "dm", 40), ("4dm", "m", 0.4), ("2km", "m", 2000), ("3yd", "m", 2.7432), ("1km", "yd", 1000 / 0.9144), ("1yd", "km", 0.0009144)):
            with self.subTest(text=text, unit=unit):
                self.assertEqual(f"{self.width_of(text, unit):.15e}", f"{expected:.15e}")

    def test_angles_are_converted_to_radians(self):
        for text, expected in (("180deg", math.pi), ("-90deg", -math.pi / 2), ("210deg", radians(210)), ("3.66rad", 3.66), ("0deg", 0), ("1e1deg", radians(10)), ("-0.5rad", -0.5)):
            with self.subTest(text):
                made = self.number("Screen_MinTheta", *CYLINDER, "--min-theta", text, "--max-theta", "4rad")
                self.assertEqual(f"{made:.15e}", f"{expected:.15e}")

    def test_a_cylinders_arc_lies_around_its_middle(self):
        made = self.numbers(*CYLINDER, "--arc", "200deg")
        self.assertEqual(made["Screen_MinTheta"], [-made["Screen_MaxTheta"][0]])
        self.assertEqual(self.text_of(*CYLINDER, "--arc", "200deg"), self.text_of(*CYLINDER, "--min-theta", "-100deg", "--max-theta", "100deg"))

    def test_a_dome_reaches_from_the_zenith_down(self):
        for angle, edge in (("180deg", 0), ("210deg", radians(-15)), ("60deg", radians(60)), ("3.141592653589793rad", 0), ("360deg", -math.pi / 2)):
            with self.subTest(angle):
                made = self.numbers("make", "dome", "--radius", "6m", "--angle", angle)
                self.assertEqual(f"{made['Screen_MinPhi'][0]:.15e}", f"{edge:.15e}")
                self.assertEqual(made["Screen_MaxPhi"], [1.570796326794897])
                self.assertEqual((made["Screen_MinTheta"], made["Screen_MaxTheta"]), ([-math.pi], [math.pi]))

    def test_a_diameter_is_twice_the_radius(self):
        for shape in ("cylinder", "dome", "sphere"):
            arguments = [argument.replace("--radius", "--diameter") for argument in MADE[shape]]
            with self.subTest(shape):
                self.assertEqual(2 * self.number("Screen_Radius", *arguments), self.number("Screen_Radius", *MADE[shape]))

    def test_a_ruled_screens_arcs_are_those_of_its_limits(self):
        made = self.numbers(*MADE["ruled"])
        self.assertEqual(made, {"Screen_Width": [4], "Screen_Height": [2.5], "Screen_MinTheta": [-1.047197551196598], "Screen_MaxTheta": [1.047197551196598],
                                "Screen_MinPhi": [-0.5], "Screen_MaxPhi": [0.5]})

    def test_a_centre_is_converted_too(self):
        self.assertEqual(self.numbers(*MADE["cylinder"])["Center_Point"], [1, -2.5, 0.3])
        self.assertEqual(self.numbers(*SPHERE)["Center_Point"], [0, 0, 0])
        self.assertEqual(self.numbers(*SPHERE, "--center=-1ft,1in,2", "--unit", "in")["Center_Point"], [-12, 1, 2])

    def test_what_is_made_reads_back_as_the_same_screen(self):
        for name, arguments in MADE.items():
            with self.subTest(name):
                self.file("made.xml", self.text_of(*arguments))
                numbers = [float(text) for text in re.findall(r"-?\d+(?:\.\d+)?(?:e-?\d+)?(?= m\n| radians\n)", self.text_of("info", "made.xml", "--digits", "17").split("is valid")[0])]
                made = self.numbers(*arguments)
                made.pop("Center_Point", None)
                self.assertEqual(sorted(numbers), sorted(value for [value] in made.values()))

    def test_the_locale_changes_nothing(self):
        environment = dict(os.environ, LC_ALL=os.environ["QUARN_LOCALE"], LOCPATH=os.environ["QUARN_LOCPATH"])
        for name, arguments in MADE.items():
            with self.subTest(name):
                self.assertEqual(self.text_of(*arguments, env=environment), self.text_of(*arguments))

    def test_a_screen_that_is_refused_leaves_no_file(self):
        self.assertEqual(self.run_tool("make", "flat", "--width", "-1", "--height", "1", "-o", "out.xml").returncode, 2)
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_every_help_has_an_example_that_works(self):
        for shape in ("flat", "cylinder", "sphere", "dome", "ruled"):
            text = self.text_of("make", shape, "--help")
            self.assertIn(f"Usage: quarnscreen make {shape} [OPTIONS]\n", text)
            example = re.search(r"\nExample:\n  quarnscreen (.*)\n\Z", text)[1]
            self.assertIn("<ScreenGeometry ", self.text_of(*example.split()))


def refused(name, arguments, message):
    return Case("refused_" + name, arguments, "", rf"error: {message}\n", 2)


def refused_length(name, text, *more):
    return refused("length_" + name, ["make", "flat", "--width", text, "--height", "1", *more],
                   f'found --width "{re.escape(text)}", expected a number in m, or a length such as 6m or 236in')


def refused_angle(name, text):
    return refused("angle_" + name, [*CYLINDER, "--arc", text], f'found --arc "{text}", expected an angle with its unit, such as 210deg or 3.66rad')


add_cases(Make, [
    refused("no_shape", ["make"], r"found no command after quarnscreen make, expected one of flat, cylinder, sphere, dome, ruled \(see --help\)"),
    refused("unknown_shape", ["make", "cube"], r'found the command "cube", which quarnscreen make does not have, expected one of flat, .* \(see --help\)'),
    refused("misspelled_shape", ["make", "doem"], r'found the command "doem", which quarnscreen make does not have, did you mean dome\? \(see --help\)'),
    refused("two_shapes", [*MADE["flat"], "dome"], r".* \(see --help\)"),
    refused("flat_without_width", ["make", "flat", "--height", "1"], r"--width is required \(see --help\)"),
    refused("dome_without_angle", ["make", "dome", "--radius", "1"], r"--angle is required \(see --help\)"),
    refused("sphere_without_limit", SPHERE[:-2], r"--max-phi is required \(see --help\)"),
    refused("ruled_without_arc", MADE["ruled"][:-2], r"--bottom-arc is required \(see --help\)"),
    refused("cylinder_without_limits", CYLINDER, "missing --arc, or --min-theta and --max-theta"),
    refused("cylinder_with_one_limit", [*CYLINDER, "--max-theta", "1rad"], "missing --arc, or --min-theta and --max-theta"),
    refused("cylinder_with_both", [*CYLINDER, "--arc", "1rad", "--max-theta", "1rad"], r"--arc excludes --max-theta \(see --help\)"),
    refused("option_of_another_shape", [*MADE["flat"], "--radius", "1"], r".* \(see --help\)"),
    refused("option_twice", [*MADE["flat"], "--width", "1"], r".* \(see --help\)"),
    refused("unknown_unit", [*MADE["flat"], "--unit", "parsec"], r"--unit: parsec not in \{.*\} \(see --help\)"),
    refused_length("empty", ""), refused_length("without_number", "m"), refused_length("in_words", "wide"), refused_length("of_unknown_unit", "6furlong"),
    refused("length_of_many_letters", ["make", "flat", "--width", "x" * 10000, "--height", "1"], r'found --width "x{40}\.\.\.", expected .*'),
    refused_length("in_capitals", "6M"), refused_length("with_two_units", "6ft3in"), refused_length("with_comma", "6,5m"), refused_length("nan", "nan"),
    refused_length("infinite", "inf"), refused_length("beyond_double", "1e400m"), refused_length("hexadecimal", "0x6m"), refused_length("of_an_angle", "6deg"),
    refused_angle("without_unit", "210"), refused_angle("in_capitals", "210DEG"), refused_angle("of_unknown_unit", "210gon"), refused_angle("empty", ""),
    refused_angle("with_comma", "3,66rad"), refused_angle("nan", "nanrad"), refused_angle("infinite", "infdeg"),
    refused("centre_of_two", [*SPHERE, "--center", "1,2"], 'found --center "1,2", expected three lengths such as 0,1.5m,-2m'),
    refused("centre_of_four", [*SPHERE, "--center", "1,2,3,4"], 'found --center "1,2,3,4", expected three lengths such as 0,1.5m,-2m'),
    refused("centre_in_words", [*SPHERE, "--center", "1,2,here"], 'found --center "1,2,here", expected a number in m, or .*'),
    refused("negative_width", ["make", "flat", "--width", "-4m", "--height", "1"], 'found --width "-4m", expected a length above 0'),
    refused("width_0", ["make", "flat", "--width=0", "--height", "1"], 'found --width "0", expected a length above 0'),
    refused("height_that_underflows", ["make", "flat", "--width", "1", "--height", "1e-400"], 'found --height "1e-400", expected a length above 0'),
    refused("radius_0_of_a_mesh", ["make", "dome", "--radius", "0mm", "--angle", "90deg", "--grid", "4x4"], 'found --radius "0mm", expected a length above 0'),
    refused("huge_radius", ["make", "dome", "--radius", "1.1e150", "--angle", "1deg"], r'found --radius "1.1e150", expected a number from 0 to 1e\+150 in m'),
    refused("overflowing_height", ["make", "flat", "--width", "1", "--height", "1e308ft", "--unit", "mm"], r'found --height "1e308ft", expected a number from 0 to 1e\+150 in mm'),
    refused("huge_centre", [*SPHERE, "--center", "0,-2e150,0"], r'found --center "0,-2e150,0", expected a number from -1e\+150 to 1e\+150 in m'),
    refused("huge_limit", [*CYLINDER, "--min-theta", "-1e9rad", "--max-theta", "1rad"], r'found --min-theta "-1e9rad", expected a number from -1000 to 1000 \(radians\)'),
    refused("equal_limits", [*CYLINDER, "--min-theta", "1rad", "--max-theta", "1rad"], 'found --max-theta "1rad", expected an angle other than that of --min-theta'),
    refused("dome_below_nothing", ["make", "dome", "--radius", "1", "--angle", "-1deg"], 'found --angle "-1deg", expected an angle above 0deg, and at most 360deg'),
    refused("dome_of_0", ["make", "dome", "--radius", "1", "--angle", "0deg"], 'found --angle "0deg", expected an angle above 0deg, and at most 360deg'),
    refused("dome_beyond_the_sphere", ["make", "dome", "--radius", "1", "--angle", "360.1deg"], 'found --angle "360.1deg", expected an angle above 0deg, and at most 360deg'),
    refused("cylinder_beyond_a_circle", [*CYLINDER, "--arc", "361deg"], 'found --arc "361deg", expected an angle above 0deg, and at most 360deg'),
    refused("cylinder_of_0", [*CYLINDER, "--arc", "0deg"], 'found --arc "0deg", expected an angle above 0deg, and at most 360deg'),
    refused("arc_of_0", [*MADE["ruled"][:-2], "--bottom-arc", "0deg"], 'found --bottom-arc "0deg", expected an angle above 0deg and below 360deg, by at least 1e-9rad'),
    refused("arc_of_a_full_circle", [*MADE["ruled"][:-2], "--bottom-arc", "360deg"], 'found --bottom-arc "360deg", expected an angle above 0deg and below 360deg, .*'),
    refused("negative_arc", ["make", "ruled", "--width", "1", "--height", "1", "--top-arc", "-1rad", "--bottom-arc", "1rad"], 'found --top-arc "-1rad", expected .*'),
    refused("no_radius", ["make", "dome", "--angle", "180deg"], "missing --radius or --diameter"),
    refused("radius_and_diameter", ["make", "dome", "--radius", "1", "--diameter", "2", "--angle", "180deg"], r"--radius excludes --diameter \(see --help\)"),
    refused("diameter_in_words", ["make", "dome", "--diameter", "wide", "--angle", "180deg"], 'found --diameter "wide", expected a number in m, .*'),
    refused("diameter_0", ["make", "cylinder", "--diameter", "0", "--height", "1", "--arc", "1rad"], 'found --diameter "0", expected a length above 0'),
    refused("grid_of_one_cell", ["make", "dome", "--radius", "6", "--angle", "180deg", "--grid", "1x1"],
            "found --grid 1x1, expected at least 1 row and 3 columns, so that each cell spans less than half a turn"),
    Case("refused_default_grid_for_many_turns", [*CYLINDER, "--min-theta", "-1000rad", "--max-theta", "1000rad", "-o", "a.obj"], "",
         "warning: .*\\nerror: found the default --grid 32x64, expected at least 1 row and 637 columns, .*\\n", 2),
    refused("mesh_below_floats", ["make", "flat", "--width", "1e-200", "--height", "1", "--grid", "2x2"], "found a screen without area at the precision of floats, .*"),
    refused("grid_beyond_memory", [*MADE["flat"], "--grid", "4096x4096", "--max-memory", "1G"], "found a mesh of 33554432 triangles, .*, or a larger --max-memory"),
    *(refused(f"grid_{i}", [*MADE["flat"], "--grid", grid], f'found --grid "{grid}", expected rows and columns from 1 to 4096, such as 32x64')
      for i, grid in enumerate(("", "0x4", "4x0", "-1x4", "4x4097", "4", "4x", "nanxnan"))),
    Case("warned_of_limits_beyond_a_circle", [*CYLINDER, "--min-theta", "-181deg", "--max-theta", "180deg"], "<.*>\n",
         "warning: the range of theta is 361 degrees, more than a full turn: the screen overlaps itself, and a position has several UVs\n"),
    Case("warned_of_a_limit_beyond_the_pole", [*SPHERE[:-1], "100deg"], "<.*>\n", "warning: the range of phi reaches 100 degrees, beyond a pole at 90 degrees: .*\n"),
    Case("warned_of_millimetres_as_metres", ["make", "dome", "--radius", "6000", "--angle", "180deg"], "<.*>\n",
         "warning: the screen is 18000 m across, which is too large for a screen; if its lengths are in mm, write --radius 6000mm\n"),
    Case("warned_of_metres_as_millimetres", ["make", "flat", "--width", "4", "--height", "3", "--unit", "mm"], "<.*>\n",
         "warning: the screen is 5 mm across, which is too small for a screen; if its lengths are in m, write --width 4m\n"),
    Case("full_circle", [*CYLINDER, "--arc", "6.283185307179586rad"], "<.*>\n"),
    Case("smallest_and_largest_arc", ["make", "ruled", "--width", "1", "--height", "1", "--top-arc", "1e-9rad", "--bottom-arc", "6.283185306rad"], "<.*>\n", "warning: the screen is 2.397812e\\+09 m across, which is too large for a screen; check the units of its lengths\n"),
])

if __name__ == "__main__":
    unittest.main()
