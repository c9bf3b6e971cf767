"""Plots are valid SVG with the right words and numbers, the same bytes on every run, for every screen and file name."""
import os
import pathlib
import re
import unittest

from gallery_meshes import PICTURES, meshes
from plot_case import SVG, PlotTest
from tool_case import FLAT, SAMPLES, SCREENS, WALL

GALLERY = SAMPLES.parent / "Docs" / "gallery"
CORNERS = ["u=0 v=0", "u=1 v=0", "u=0 v=1", "u=1 v=1"]
CYLINDER = ('<ScreenGeometry ClassType="class CylinderScreen"><Center_Point>{}</Center_Point><Screen_Height>{}</Screen_Height>'
            "<Screen_Radius>{}</Screen_Radius><Screen_MinTheta>{}</Screen_MinTheta><Screen_MaxTheta>{}</Screen_MaxTheta></ScreenGeometry>")


class Plot(PlotTest):
    def test_the_samples_have_their_shape_size_and_corners(self):
        expected = {
            "flat-wall.xml": ["Flat wall", "width 4 m,  height 3 m", "4 m", "3 m", "(0, -2, 0) m", "(0, 1, 0)"],
            "cylinder-200.xml": ["Section of a cylinder", "6 m", "3.521 m", "2.5 m", "10.47 m", "(0, 0, 0) m"],
            "dome.xml": ["Dome, closed around and above", "12 m", "6 m", "37.7 m", "9.425 m", "one point", "(0, 0, 1)"],
            "ruled.xml": ["Ruled surface between two arcs", "4 m", "2.5 m", "4.837 m", "4.189 m"],
        }
        for name, words in expected.items():
            with self.subTest(name):
                texts = self.texts(self.plot(str(SAMPLES / name)))
                self.assertLessEqual({name, "Perspective", "Plan (from above)", "Front (from the viewer)", "UV layout", "X", "Y", "Z", "u", "v",
                                      *CORNERS, *words}, set(texts))

    def test_lengths_are_named_in_the_unit(self):
        texts = self.texts(self.plot(WALL, "--unit", "ft"))
        self.assertIn("4 ft", texts)
        self.assertFalse([text for text in texts if text.endswith(" m")])

    def test_the_first_view_is_that_from_the_center_or_the_eye_point(self):
        expected = {
            "flat-wall.xml": ["From the eye point: perspective", "field of view: 90° × 73.74°"],
            "cylinder-200.xml": ["From the center: panorama", "azimuth × elevation: 200° × 45.24°"],
            "dome.xml": ["From the center: fisheye", "equidistant, 180° across"],
            "ruled.xml": ["From the eye point: perspective"],
            "curved-wall.obj": ["From the eye point: panorama", "azimuth × elevation: 200° × 45.25°"],
        }
        for name, words in expected.items():
            with self.subTest(name):
                svg = self.plot(str(SAMPLES / name))
                self.assertLessEqual(set(words), set(self.texts(svg)))
                self.assertIn("f9", self.classes(svg), "the front, also of a dome")

    def test_the_digest_is_the_beginning_of_that_of_info(self):
        for screen in SCREENS:
            digest = re.search("digest: +([0-9a-f]+)", self.text_of("info", screen)).group(1)
            self.assertIn("digest " + digest[:12], self.texts(self.plot(screen)))

    def test_two_runs_give_the_same_bytes_also_under_a_decimal_comma(self):
        environment = dict(os.environ, LC_ALL=os.environ["QUARN_LOCALE"], LOCPATH=os.environ["QUARN_LOCPATH"])
        for screen in SCREENS:
            first = self.plot(screen)
            self.assertEqual(self.plot(screen), first)
            self.assertEqual(self.plot(screen, env=environment), first)

    def test_a_file_holds_what_standard_output_would(self):
        self.assertEqual(self.plot(WALL, "-o", "out.svg"), "")
        self.assertEqual((self.folder / "out.svg").read_text(), self.plot(WALL))

    def test_the_gallery_is_what_the_tool_draws(self):
        drawn = {pathlib.Path(screen).stem: self.plot(screen) for screen in SCREENS}
        for name, text in meshes().items():
            drawn[name] = self.plot_mesh(text, *PICTURES[name], name=name + ".obj")
        self.assertEqual(sorted(path.stem for path in GALLERY.glob("*.svg")), sorted(drawn))
        for name, svg in drawn.items():
            with self.subTest(name):
                stored = GALLERY / (name + ".svg")
                self.assertTrue(stored.read_text() == svg, f"{stored} is old: build the target gallery")

    def test_a_stretch_has_a_scale_and_no_sides(self):
        for screen in SCREENS:
            texts = self.texts(self.plot(screen, "--color", "stretch"))
            self.assertIn("area per UV area over the mean:", texts)
            self.assertIn("1", texts)
            self.assertFalse([text for text in texts if text.startswith(("front", "back"))])
            self.assertEqual(self.plot(screen, "--color", "side"), self.plot(screen))
            self.assert_no_overlap(self.plot(screen, "--color", "stretch"))
        # A flat wall is as large as its UV square is, times its area.
        svg = self.plot(WALL, "--color", "stretch", "--unit", "ft")
        self.assertIn("mean: 12 ft² for u, v 0 to 1", self.texts(svg))
        # Each step has its rectangle in the legend, and the one of the mean paints the wall.
        self.assertEqual([step for step in range(17) if self.points_of(svg, f"k{step}") != 4], [8])

    def test_unusual_screens_fit_on_the_page(self):
        screens = {
            "wide": FLAT.format(1200, 2.5), "tall": FLAT.format(0.4, 120), "tiny": FLAT.format(3e-7, 2e-7), "huge": FLAT.format(1e150, 1e149),
            "line": FLAT.format(4, 0), "far": CYLINDER.format("120000, 34000, -5000", 3000, 6000, -1, 1),
            "narrow": CYLINDER.format("0, 0, 0", 3, 6, -0.17, 0.17), "full": CYLINDER.format("0, 0, 0", 3, 6, 0, 6.283185307179586),
            "behind": CYLINDER.format("0, 0, 0", 3, 6, 1.6, 4.7), "reversed": CYLINDER.format("0, 0, 0", 3, 6, 1.7, -1.7),
            "many turns": CYLINDER.format("1, 2, 3", 3, 6, -30, 30), "no arc": CYLINDER.format("0, 0, 0", 3, 6, 1, 1),
        }
        for name, text in screens.items():
            with self.subTest(name):
                self.file("screen.xml", text)
                svg = self.run_tool("plot", "screen.xml").stdout.decode()
                self.assertNotIn("not drawable", svg)
                self.assert_no_overlap(svg)

    def test_labels_of_the_samples_leave_each_other_free(self):
        for screen in SCREENS:
            self.assert_no_overlap(self.plot(screen))

    def test_a_screen_without_size_says_so(self):
        self.file("screen.xml", FLAT.format(0, 0))
        result = self.run_tool("plot", "screen.xml")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(len([text for text in self.texts(result.stdout.decode()) if text.startswith("not drawable")]), 4)

    def test_a_files_name_is_only_text(self):
        names = {
            "a<script>alert(1)</script>": "script>",  # the slash ends a folder's name
            "\"'&amp;<>]]>": "\"'&amp;<>]]>",
            "a\nb\tc\x1b[31m": r"a\x0ab\x09c\x1b[31m",
            b"not \xff UTF-8 \xc3": "not \ufffd UTF-8 \ufffd",
            "\u202eabc\ufffe": "\\u202eabc\ufffd",
            "Kuppel \u7a79 \U0001f3ac": "Kuppel \u7a79 \U0001f3ac",
            "x" * 200: "x" * 32 + "…" + "x" * 16,
        }
        content = pathlib.Path(WALL).read_bytes()
        for name, shown in names.items():
            with self.subTest(name):
                path = os.path.join(os.fsencode(self.folder), os.fsencode(name))
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "wb") as file:
                    file.write(content)
                svg = self.plot(path)
                self.assertIn(shown, self.texts(svg))
                self.assertEqual(self.parsed(svg).find(SVG + "title").text, shown + ": Flat wall")

    def test_errors_leave_no_file(self):
        self.file("bad.xml", "<ScreenGeometry")
        self.assert_one_error_line(self.run_tool("plot", "bad.xml", "-o", "out.svg"), 2)
        self.assert_one_error_line(self.run_tool("plot", "none.xml", "-o", "out.svg"), 2)
        self.assert_one_error_line(self.run_tool("plot", WALL, "-o", "no/out.svg"), 3)
        self.assert_one_error_line(self.run_tool("plot", WALL, "-o", "/dev/full"), 3)
        self.assert_one_error_line(self.run_tool("plot"), 2)
        self.assert_one_error_line(self.run_tool("plot", WALL, "--json"), 2)
        self.assert_one_error_line(self.run_tool("plot", WALL, "--color", "blue"), 2)
        self.assert_one_error_line(self.run_tool("plot", WALL, "--unit", "parsec"), 2)
        self.assertEqual([path.name for path in self.folder.iterdir()], ["bad.xml"])

    def test_the_screen_is_no_output(self):
        wall = self.file("wall.xml", FLAT.format(4, 3))
        self.assert_one_error_line(self.run_tool("plot", "wall.xml", "-o", "wall.xml"), 2)
        self.assertEqual(wall.read_text(), FLAT.format(4, 3))


if __name__ == "__main__":
    unittest.main()
