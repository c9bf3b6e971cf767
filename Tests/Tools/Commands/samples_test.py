"""The sample screens are what the tool makes, byte for byte, and every command answers about each of them."""
import unittest

from tool_case import SAMPLES, SCREENS, ToolTest

# What made the samples.
MADE = {
    "cylinder-200.xml": ["make", "cylinder", "--radius", "3m", "--arc", "200deg", "--height", "2.5m"],
    "curved-wall.obj": ["make", "cylinder", "--radius", "3m", "--arc", "200deg", "--height", "2.5m", "--grid", "8x40"],
    "dome.obj": ["make", "dome", "--radius", "6m", "--angle", "180deg", "--grid", "16x48"],
    "dome.xml": ["make", "dome", "--radius", "6m", "--angle", "180deg"],
    "ruled.xml": ["make", "ruled", "--width", "4m", "--height", "2.5m", "--top-arc", "120deg", "--bottom-arc", "60deg"],
}
MESHES = [str(SAMPLES / name) for name in ("curved-wall.obj", "dome.obj", "measured-dome.obj")]
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
        self.assertEqual(sorted(MESHES), sorted(str(path) for path in SAMPLES.glob("*.obj")))

    def test_a_mesh_that_is_made_is_saved_and_loaded_with_its_digest(self):
        self.run_tool("convert", MESHES[1], "-o", "dome.xml").check_returncode()
        digests = [next(line for line in self.text_of("info", screen).splitlines() if line.startswith("digest:")) for screen in (MESHES[1], "dome.xml")]
        self.assertEqual(digests[0], digests[1])

    def test_positions_of_the_dome_map_back_to_their_uv(self):
        uvs, positions = SAMPLES / "dome-uv.csv", []
        for row in self.text_of("map", MESHES[1], "--to", "3d", str(uvs)).splitlines()[1:]:
            u, v, status, *position = row.split(",")
            self.assertEqual(status, "on_screen")
            positions.append((float(u), float(v), ",".join(position)))
        back = self.text_of("map", MESHES[1], "--to", "2d", "-", stdin="\n".join(row[2] for row in positions).encode()).splitlines()[1:]
        for (u, v, _), row in zip(positions, back, strict=True):
            *_, status, u_back, v_back = row.split(",")
            self.assertEqual(status, "on_screen")
            self.assertAlmostEqual(float(u_back), u, 6)
            self.assertAlmostEqual(float(v_back), v, 6)

    def test_every_ray_of_the_fan_strikes_the_dome(self):
        rows = self.text_of("intersect", MESHES[1], str(SAMPLES / "dome-fan.csv")).splitlines()[1:]
        self.assertEqual([row.split(",")[1] for row in rows], ["hit"] * 9)

    def test_every_command_answers_about_every_sample(self):
        for screen in [*SCREENS, *MESHES[:2]]:
            self.assertIn("is valid:", self.text_of("info", screen))
            for command, *arguments in QUERIES:
                with self.subTest(screen=screen, command=command):
                    header, *rows = self.text_of(command, screen, *arguments).splitlines()
                    self.assertGreater(len(rows), 2)
                    self.assertEqual({row.count(",") for row in rows}, {header.count(",")})
                    self.assertIn('"rows":[', self.text_of(command, screen, *arguments, "--json"))


if __name__ == "__main__":
    unittest.main()
