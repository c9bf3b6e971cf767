"""What the query commands answer about curved screens, compared with positions known from their shapes."""
import json
import math
import unittest

from tool_case import SAMPLES, SCREENS, ToolTest

_, CYLINDER, DOME, RULED = SCREENS
RAYS = str(SAMPLES / "dome-rays.csv")


def on_cylinder(u, v):
    theta = math.radians(200 * u - 100)
    return 3 * math.sin(theta), 3 * math.cos(theta), 2.5 * (0.5 - v)


def on_dome(u, v):
    theta, phi = math.radians(360 * u - 180), math.radians(90 * (1 - v))
    return 6 * math.sin(theta) * math.cos(phi), 6 * math.cos(theta) * math.cos(phi), 6 * math.sin(phi)


def on_ruled(u, v):
    """Between a top arc of 120 and a bottom arc of 60 degrees over a chord of 4."""
    ends = []
    for arc in (120, 60):
        half = math.radians(arc / 2)
        radius = 2 / math.sin(half)
        angle = (2 * u - 1) * half
        ends.append((radius * math.sin(angle), radius * (math.cos(angle) - math.cos(half))))
    return *((1 - v) * top + v * bottom for top, bottom in zip(*ends)), 2.5 * (0.5 - v)


SURFACES = {CYLINDER: on_cylinder, DOME: on_dome, RULED: on_ruled}
UVS = [(u / 8, v / 8) for u in range(1, 8) for v in range(1, 8)]


def csv(rows):
    return "\n".join(",".join(repr(number) for number in row) for row in rows).encode()


class Shapes(ToolTest):
    def rows(self, *arguments, **options):
        header, *lines = self.text_of(*arguments, **options).splitlines()
        return [dict(zip(header.replace("[m]", "").split(","), line.split(","), strict=True)) for line in lines]

    def assert_near(self, row, names, expected, places=9):
        for name, value in zip(names, expected, strict=True):
            self.assertAlmostEqual(float(row[name]), value, places=places)

    def test_map_follows_the_surface_both_ways(self):
        for screen, surface in SURFACES.items():
            # The search for a ruling ends within 1e-6 of u.
            places = 5 if screen == RULED else 9
            rows = self.rows("map", screen, "--to", "3d", "--extrapolate", stdin=csv(UVS))
            for uv, row in zip(UVS, rows, strict=True):
                with self.subTest(screen=screen, uv=uv):
                    self.assert_near(row, "xyz", surface(*uv))
            # A ruled screen refuses some of its own positions, by the last bits of that search.
            self.assertGreater(sum(row["status"] == "on_screen" for row in rows), 40 if screen == RULED else len(UVS) - 1)
            for uv, row in zip(UVS, self.rows("map", screen, "--to", "2d", "--extrapolate", stdin=csv(surface(*uv) for uv in UVS)), strict=True):
                with self.subTest(screen=screen, position_of=uv):
                    self.assert_near(row, "uv", uv, places)

    def test_map_outside_of_the_screen(self):
        for screen in SURFACES:
            rows = self.rows("map", screen, "--to", "3d", stdin=b"0.5,-1\n-1,0.5\nnan,0\n")
            self.assertEqual([row["status"] for row in rows][2], "outside")
        self.assertEqual([row["status"] for row in self.rows("map", CYLINDER, "--to", "3d", stdin=b"1.2,0.5\n0.5,1.2\n0.5,0.5")], ["outside", "outside", "on_screen"])
        self.assertEqual([row["status"] for row in self.rows("map", CYLINDER, "--to", "2d", stdin=b"0,-3,0\n0,3,0\n0,2,0")], ["outside", "on_screen", "outside"])
        self.assertEqual([row["status"] for row in self.rows("map", CYLINDER, "--to", "2d", "--extrapolate", stdin=b"0,2,0")], ["extrapolated"])

    def test_intersect_meets_the_surface_on_the_way_to_it(self):
        for screen, surface in SURFACES.items():
            eye = (0.01, -1.5, 0.02) if screen == RULED else (0.01, 0.02, 0.03)
            rays = [(*eye, *surface(*uv)) for uv in UVS]
            for uv, row in zip(UVS, self.rows("intersect", screen, stdin=csv(rays)), strict=True):
                with self.subTest(screen=screen, uv=uv):
                    self.assertEqual(row["status"], "hit")
                    self.assert_near(row, "xyz", surface(*uv), 4)
                    self.assert_near(row, "uvt", (*uv, 1), 4)

    def test_intersect_of_the_sample_rays(self):
        rows = self.rows("intersect", DOME, RAYS)
        self.assertEqual([(row["ray"], row["status"], row["side"]) for row in rows],
                         [("1", "hit", "-1"), ("2", "hit", "-1"), ("3", "hit", "-1"), ("4", "hit", "-1"), ("5", "miss", ""), ("6", "hit", "1"), ("6", "hit", "-1")])
        self.assert_near(rows[0], "xyzvt", (0, 0, 6, 0, 4.5))
        self.assert_near(rows[1], "xyz", (0, math.sqrt(36 - 1.5 ** 2), 1.5))
        for row, side in ((rows[5], -1), (rows[6], 1)):
            self.assert_near(row, "xyz", (0, side * math.sqrt(27), 3))

    def test_nearest_looks_both_ways(self):
        for screen, near in ((CYLINDER, (0, 3, 0)), (DOME, (0, 0, 6))):
            direction = [number / 3 for number in near]
            towards, away = self.rows("nearest", screen, stdin=csv([(0, 0, 0, *direction), (0, 0, 0, *(-number for number in direction))]))
            for row in (towards, away):
                self.assert_near(row, "xyz", near)
                self.assertAlmostEqual(float(row["distance"]), math.dist((0, 0, 0), near), places=9)
        # A line through a ruled screen is answered where it runs towards +Y.
        self.assertEqual([row["status"] for row in self.rows("nearest", RULED, stdin=b"0,-1,0,0,1,0\n0,-1,0,1,0,0\n")], ["hit", "none"])

    def test_channel_continues_the_surface_that_the_first_hit_shows(self):
        rays = b"0,0,0,0,1,0\n0,0,0,0,-1,0\n0,0,0,0,1,3\n0,0,0,0,0,1\n"
        rows = self.rows("channel", CYLINDER, "-", stdin=rays)
        self.assertEqual([row["status"] for row in rows], ["hit", "hit", "hit", "miss"])
        self.assert_near(rows[1], "xyz", (0, -3, 0))
        self.assert_near(rows[2], "xyz", (0, 3, 9))
        rows = self.rows("channel", DOME, "-", stdin=b"0,0,0,0,0,-1\n0,0,0,0,0,1\n")
        self.assert_near(rows[0], "xyz", (0, 0, -6))
        rows = self.rows("channel", RULED, "-", stdin=b"0,-1,0,0,1,0\n0,-1,3,0,1,3\n0,1,0,0,-1,0\n")
        self.assertEqual([row["status"] for row in rows], ["hit", "hit", "miss"])
        self.assert_near(rows[1], "xz", (0, 3))

    def test_info_reports_the_parameters(self):
        lines = dict(line.split(":", 1) for line in self.text_of("info", CYLINDER, "--unit", "ft").splitlines())
        values = {key: value.strip() for key, value in lines.items()}
        self.assertEqual(list(values), ["file", "type", "center", "height", "radius", "min theta", "max theta", "is valid", "has UV mapping",
                                        "extent", "width by height", "area", "edge lengths", "eye point", "heading", "max angle", "aspect ratio", "digest"])
        self.assertEqual((values["center"], values["height"], values["radius"]), ("(0, 0, 0) ft", "2.5 ft", "3 ft"))
        self.assertEqual(values["min theta"], "-100 degrees, -1.745329 radians")
        self.assertAlmostEqual(float(values["aspect ratio"]), 3 * math.radians(200) / 2.5, places=5)
        self.assertEqual(values["width by height"], "6 by 2.5 ft, depth 3.520945 ft")
        self.assertEqual(values["area"], "26.17994 ft^2")
        self.assertEqual(values["edge lengths"], "top 10.47198 ft, right 2.5 ft, bottom 10.47198 ft, left 2.5 ft")
        dome = self.text_of("info", DOME)
        self.assertIn("extent:          (-6, -6, 0) to (6, 6, 6) m\nwidth by height: 12 by 6 m, depth 12 m\narea:            226.1947 m^2\n", dome)
        self.assertIn("edge lengths:    top 0 m, right 9.424778 m, bottom 37.69911 m, left 9.424778 m\n", dome)
        self.assertIn("bounds:          (-6, -6, -6) to (6, 6, 6) m\n", dome)
        self.assertIn("heading:         (0, 0, 1)\n", dome)
        self.assertIn("max phi:         90 degrees, 1.570796 radians\n", dome)

    def test_info_has_the_digits_that_are_requested(self):
        for digits, theta in (("3", "-100 degrees, -1.75 radians"), ("4", "-100 degrees, -1.745 radians"), ("7", "-100 degrees, -1.745329 radians"),
                              ("17", "-100 degrees, -1.74532925199433 radians")):
            self.assertIn(f"min theta:       {theta}\n", self.text_of("info", CYLINDER, "--digits", digits))
        self.assertEqual(self.text_of("info", CYLINDER), self.text_of("info", CYLINDER, "--digits", "7"))
        self.assertEqual(self.text_of("info", CYLINDER, "--json"), self.text_of("info", CYLINDER, "--json", "--digits", "1"))

    def test_info_as_json(self):
        dome = json.loads(self.text_of("info", DOME, "--json"))
        self.assertEqual(dome["parameters"]["center"], [0, 0, 0])
        self.assertEqual(dome["parameters"]["radius"], 6)
        self.assertEqual(dome["parameters"]["minTheta"]["radians"], -math.pi)
        self.assertAlmostEqual(dome["parameters"]["maxPhi"]["degrees"], 90, places=12)
        self.assertEqual(dome["surface"]["extent"], {"min": [-6, -6, 0], "max": [6, 6, 6]})
        self.assertEqual(dome["surface"]["size"], {"width": 12, "depth": 12, "height": 6})
        self.assertAlmostEqual(dome["surface"]["area"], 72 * math.pi, places=11)
        self.assertAlmostEqual(dome["surface"]["edges"]["bottom"], 12 * math.pi, places=11)
        self.assertIsNone(dome["surface"]["boundaryLength"])
        ruled = json.loads(self.text_of("info", RULED, "--json"))
        self.assertIsNone(ruled["bounds"])
        # The sum under the arc cosine is beyond 1 here, so there is no angle.
        self.assertEqual(ruled["maxAngle"], {"degrees": None, "radians": None})

    def test_a_cylinder_off_the_z_axis_is_warned_of_where_rays_are_used(self):
        rays = b"fromX,fromY,fromZ,toX,toY,toZ\n1,0,0,1,1,0\n1,0,0,1,2,0\n"
        self.file("off.xml", self.text_of("make", "cylinder", "--radius", "3m", "--arc", "200deg", "--height", "2m", "--center", "1,-0.5,4"))
        self.file("up.xml", self.text_of("make", "cylinder", "--radius", "3m", "--arc", "200deg", "--height", "2m", "--center", "0,0,4"))
        for command in (["intersect"], ["nearest"], ["channel", "-"]):
            with self.subTest(command):
                result = self.run_tool(command[0], "off.xml", *command[1:], "--unit", "ft", stdin=rays)
                self.assertEqual(result.stderr.decode(),
                                 "warning: off.xml: rays miss or hit wrong positions, because the cylinder's axis passes through (1, -0.5, 0) ft and is not the "
                                 "Z axis; query its mesh, from quarnscreen convert off.xml -o mesh.obj, or subtract that position from the rays and query a cylinder on "
                                 "the Z axis\n")
                self.text_of(command[0], "up.xml", *command[1:], stdin=rays)
        self.text_of("map", "off.xml", "--to", "3d", stdin=b"0.5,0.5\n")
        # The remedy works.
        self.text_of("convert", "off.xml", "--grid", "3x201", "-o", "mesh.obj")
        self.assertEqual([row["status"] for row in self.rows("intersect", "mesh.obj", stdin=b"1,-0.5,4,1,1,4\n")], ["hit"])

    def test_calibration_points_without_their_center_are_warned_of(self):
        for shape in (["cylinder", "--height", "2", "--arc", "1rad"], ["dome", "--angle", "90deg"]):
            self.file("off.xml", self.text_of("make", *shape, "--radius", "3", "--center", "0,0,0.25"))
            result = self.run_tool("points", "off.xml")
            self.assertEqual(result.stderr.decode(), "warning: off.xml: the positions are relative to the screen's center; add (0, 0, 0.25) m to each\n")
        self.text_of("points", DOME)

    def test_an_aspect_ratio_that_cannot_be_estimated_is_warned_of(self):
        self.file("line.xml", self.text_of("make", "flat", "--width", "1", "--height", "1").replace("<Screen_Height>1.0", "<Screen_Height>0.0"))
        result = self.run_tool("info", "line.xml")
        self.assertRegex(result.stderr.decode(), r"\Awarning: line\.xml:4: the height is 0: UV cannot be computed\nwarning: calculateAspectRatio failed.*\n\Z")
        self.assertRegex(result.stdout.decode(), r"\naspect ratio: +1\n")


if __name__ == "__main__":
    unittest.main()
