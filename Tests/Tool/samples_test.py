"""The sample screens are what the tool makes, byte for byte, and every command answers about each of them."""
import unittest

from tool_case import SAMPLES, SCREENS, ToolTest

# What made the samples.
MADE = {
    "cylinder-200.xml": ["make", "cylinder", "--radius", "3m", "--arc", "200deg", "--height", "2.5m"],
    "dome.xml": ["make", "dome", "--radius", "6m", "--angle", "180deg"],
    "ruled.xml": ["make", "ruled", "--width", "4m", "--height", "2.5m", "--top-arc", "120deg", "--bottom-arc", "60deg"],
}
RAYS = str(SAMPLES / "dome-rays.csv")
QUERIES = [["map", "--to", "3d", str(SAMPLES / "flat-wall-uv.csv")], ["map", "--to", "2d", str(SAMPLES / "flat-wall-points.csv")],
           ["intersect", RAYS], ["nearest", str(SAMPLES / "flat-wall-lines.csv")],
           ["closest", str(SAMPLES / "flat-wall-points.csv")], ["channel", RAYS], ["grid"], ["boundary"], ["points"]]


class Samples(ToolTest):
    def test_the_samples_are_what_the_tool_makes(self):
        for name, arguments in MADE.items():
            with self.subTest(name):
                self.assertEqual(self.text_of(*arguments), (SAMPLES / name).read_text())
                self.assertEqual(self.text_of(*arguments, "-o", name), "")
                self.assertEqual((self.folder / name).read_bytes(), (SAMPLES / name).read_bytes())

    def test_every_screen_of_the_samples_is_tested(self):
        self.assertEqual(sorted(SCREENS), sorted(str(path) for path in SAMPLES.glob("*.xml")))

    def test_every_command_answers_about_every_sample(self):
        for screen in SCREENS:
            self.assertIn("is valid:", self.text_of("info", screen))
            for command, *arguments in QUERIES:
                with self.subTest(screen=screen, command=command):
                    header, *rows = self.text_of(command, screen, *arguments).splitlines()
                    self.assertGreater(len(rows), 2)
                    self.assertEqual({row.count(",") for row in rows}, {header.count(",")})
                    self.assertIn('"rows":[', self.text_of(command, screen, *arguments, "--json"))


if __name__ == "__main__":
    unittest.main()
