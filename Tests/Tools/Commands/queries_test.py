"""What the commands answer about the sample wall of 4 by 3 m."""
import os
import re
import unittest

from tool_case import FLAT, SAMPLES, WALL, Case, ToolTest, add_cases

RAYS = str(SAMPLES / "flat-wall-rays.csv")
POINTS = str(SAMPLES / "flat-wall-points.csv")
UV = str(SAMPLES / "flat-wall-uv.csv")
LINES = str(SAMPLES / "flat-wall-lines.csv")

MAP_3D = "u,v,status,x[m],y[m],z[m]\n"
MAP_2D = "x[m],y[m],z[m],status,u,v\n"
HITS = "ray,status,x[m],y[m],z[m],u,v,side,triangle,t\n"
NEAREST = "line,status,x[m],y[m],z[m],u,v,side,triangle,distance[m]\n"
CHANNEL = "ray,status,x[m],y[m],z[m]\n"
ENDS = ",fromX,fromY,fromZ,toX,toY,toZ\n"  # of the rays of a file with a header


class Answers(ToolTest):
    def test_info_names_everything(self):
        lines = dict(line.split(":", 1) for line in self.text_of("info", WALL, "--unit", "cm").splitlines())
        values = {key: value.strip() for key, value in lines.items()}
        self.assertEqual(len({len(value) - len(value.lstrip()) + len(key) for key, value in lines.items()}), 1)
        self.assertEqual(values["file"], WALL)
        self.assertEqual(values["type"], "class FlatScreen")
        self.assertEqual(values["width"], "4 cm")
        self.assertEqual(values["height"], "3 cm")
        self.assertEqual(values["is valid"], "yes")
        self.assertEqual(values["has UV mapping"], "yes")
        self.assertEqual(values["bounds"], "(-2, 0, -1.5) to (2, 0, 1.5) cm")
        self.assertEqual(values["width by height"], "4 by 3 cm, depth 0 cm")
        self.assertEqual(values["eye point"], "(0, -2, 0) cm")
        self.assertEqual(values["heading"], "(0, 1, 0)")
        # The arc tangent of the diagonal, 5, over half the longer side, 2.
        self.assertRegex(values["max angle"], r"\A68\.19859 degrees, 1\.19029 radians\Z")
        self.assertAlmostEqual(float(values["aspect ratio"]), 4 / 3, places=6)
        # SHA-1 of the doubles 4 and 3.
        self.assertEqual(values["digest"], "0fbc620c393c8baa53190e35e8cab90e1149cc10")
        self.assertEqual(len(values), 16)

    def test_a_screen_below_the_root_and_as_the_root_answer_alike(self):
        root = self.file("root.xml", FLAT.format(4, 3))
        self.assertEqual(self.text_of("intersect", str(root), RAYS), self.text_of("intersect", WALL, RAYS))

    def test_answers_do_not_depend_on_the_locale(self):
        environment = dict(os.environ, LC_ALL=os.environ["QUARN_LOCALE"], LOCPATH=os.environ["QUARN_LOCPATH"])
        for arguments in (["info", WALL], ["info", WALL, "--json"], ["map", WALL, "--to", "3d", UV],
                          ["intersect", WALL, RAYS], ["intersect", WALL, RAYS, "--json"]):
            self.assertEqual(self.text_of(*arguments, env=environment), self.text_of(*arguments))

    def test_answers_read_back_as_the_same_positions(self):
        uv = self.text_of("map", WALL, "--to", "2d", POINTS, "--extrapolate").splitlines()[1:]
        back = self.text_of("map", WALL, "--to", "3d", "--extrapolate",
                            stdin="\n".join(",".join(row.split(",")[4:]) for row in uv).encode())
        self.assertEqual([row.split(",")[3:6:2] for row in back.splitlines()[1:]],
                         [row.split(",")[0:3:2] for row in uv])

    def test_channel_takes_the_side_from_an_extra_ray(self):
        hit = self.file("extra.csv", "9,9,9,9,9,8\n0,-5,0,0,0,0\n")
        miss = self.file("miss.csv", "0,-5,0,9,0,0\n")
        self.assertEqual(self.text_of("channel", WALL, str(miss)), CHANNEL + "1,miss,,,\n")
        self.assertEqual(self.text_of("channel", WALL, str(miss), "--extra", str(miss)), CHANNEL + "1,miss,,,\n")
        self.assertEqual(self.text_of("channel", WALL, str(miss), "--extra", str(hit)), CHANNEL + "1,hit,9,0,0\n")
        self.assertEqual(self.text_of("channel", WALL, "-", "--extra", str(hit), stdin=miss.read_bytes()),
                         CHANNEL + "1,hit,9,0,0\n")
        self.assertEqual(self.text_of("channel", WALL, str(miss), "--extra", "-", stdin=hit.read_bytes()),
                         CHANNEL + "1,hit,9,0,0\n")

    def test_a_screen_without_width_has_positions_but_no_uv(self):
        flat = str(self.file("line.xml", FLAT.format(0, 2)))
        rows = self.run_tool("intersect", flat, stdin=b"0,-1,0,0,0,0").stdout.decode()
        self.assertEqual(rows, HITS + "1,hit,0,0,0,nan,0.5,-1,,1\n")
        rows = self.run_tool("intersect", flat, "--json", stdin=b"0,-1,0,0,0,0").stdout.decode()
        self.assertIn('"u":null,"v":0.5', rows)
        rows = self.run_tool("map", flat, "--to", "2d", "--extrapolate", stdin=b"0,0,0\n1,0,0").stdout.decode()
        self.assertEqual(rows, MAP_2D + "0,0,0,outside,,\n1,0,0,outside,,\n")

    def test_every_help_has_an_example_that_works(self):
        names = re.findall(r"^  (\w+)  +\w", self.text_of("--help").split("Subcommands:")[1], re.MULTILINE)
        self.assertEqual(names, ["info", "map", "intersect", "nearest", "closest", "normal", "channel", "grid", "boundary", "points", "plot", "check", "make", "convert", "refine", "transform", "compare", "completion"])
        for name in names[:-1]:
            example = re.search(r"\nExample:\n  quarnscreen (.*)\n\Z", self.text_of(name, "--help"))[1]
            arguments = [str(SAMPLES.parent / word) if word.startswith("Samples/") else word for word in example.split()]
            self.assertTrue(self.text_of(*arguments) or list(self.folder.iterdir()))
        self.assertRegex(self.text_of("completion", "--help"), r"\nExample:\n  source <\(quarnscreen completion bash\)\n")


add_cases(Answers, [
    Case("map_to_3d", ["map", WALL, "--to", "3d", UV],
         out=re.escape(MAP_3D + "0,0,on_screen,-2,0,1.5\n1,1,on_screen,2,0,-1.5\n0.5,0.5,on_screen,0,0,0\n1.25,0.5,outside,,,\n")),
    Case("map_to_3d_extrapolated", ["map", WALL, "--to", "3d", UV, "--extrapolate"],
         out=re.escape(MAP_3D) + r".*\n1\.25,0\.5,extrapolated,3,0,0\n"),
    Case("map_to_2d", ["map", WALL, "--to", "2d", POINTS],
         out=re.escape(MAP_2D + "0,0,0,on_screen,0.5,0.5\n-2,0,1.5,on_screen,0,0\n3,0,0,outside,,\n1,-1,0.5,outside,,\n")),
    Case("map_to_2d_extrapolated", ["map", WALL, "--to", "2d", POINTS, "--extrapolate"],
         out=re.escape(MAP_2D) + r".*3,0,0,extrapolated,1\.25,0\.5\n1,-1,0\.5,extrapolated,0\.75,0\.3333333333333333\n"),
    Case("map_from_standard_input", ["map", WALL, "--to", "3d", "-"], stdin=b"0.25,0.5", out=re.escape(MAP_3D + "0.25,0.5,on_screen,-1,0,0\n")),
    Case("map_reads_standard_input_by_default", ["map", WALL, "--to", "3d"], stdin=b"0.25,0.5\n", out=r".*on_screen,-1,0,0\n"),
    Case("map_of_numbers_that_are_not_finite", ["map", WALL, "--to", "3d", "--extrapolate"], stdin=b"nan,0\ninf,0\n-inf,nan\n",
         out=re.escape(MAP_3D + "nan,0,outside,,,\ninf,0,outside,,,\n-inf,nan,outside,,,\n")),
    Case("map_of_positions_that_are_not_finite", ["map", WALL, "--to", "2d", "--extrapolate"], stdin=b"nan,0,0\n0,0,inf\n",
         out=re.escape(MAP_2D + "nan,0,0,outside,,\n0,0,inf,outside,,\n")),
    Case("map_of_nothing", ["map", WALL, "--to", "3d"], err="error: standard input: found no rows, expected rows of u,v\n", exit=2),
    Case("map_json_of_nothing", ["map", WALL, "--to", "3d", "--json"], stdin=b"v,u\n", err="error: standard input: found no rows, expected rows of v,u\n", exit=2),
    Case("intersect", ["intersect", WALL, RAYS],
         out=re.escape(HITS[:-1] + ENDS) + r"1,hit,0,0,0,0\.5,0\.5,-1,,1,0,-5,0,0,0,0\n2,hit,.*\n3,hit,2,0,-1,1,0\.8333333333333334,-1,,2,0,-5,0,1,-2\.5,-0\.5\n"
             r"4,miss,,,,,,,,,0,-5,0,3,0,0\n5,hit,-2,0,-1,0,0\.8333333333333334,-1,,-2,0,2,0,1,3,0\.5\n6,miss,,,,,,,,,0,-5,0,1,-5,0\n"),
    Case("intersect_in_millimetres", ["intersect", WALL, "--unit", "mm"], stdin=b"0,5,0,0,4,0", out=r"ray,status,x\[mm\],y\[mm\],z\[mm\],.*\n1,hit,0,0,0,0\.5,0\.5,1,,5\n"),
    Case("intersect_of_rays_that_are_not_finite", ["intersect", WALL], stdin=b"nan,0,0,1,1,1\n0,-1,0,0,inf,0\n1e300,1e300,1e300,-1e300,-1e300,-1e300",
         out=re.escape(HITS) + r"1,miss,,,,,,,,\n2,miss,,,,,,,,\n3,(miss,,,,,,,,|hit,.*)\n"),
    Case("nearest", ["nearest", WALL, LINES], out=re.escape(NEAREST[:-1] + ",fromX,fromY,fromZ,dx,dy,dz\n1,hit,0,0,0,0.5,0.5,-1,,5,0,-5,0,0,1,0\n"
                                                                         "2,hit,1,0,0.5,0.75,0.3333333333333333,1,,2,1,-2,0.5,0,-1,0\n3,none,,,,,,,,,0,-5,0,5,1,0\n")),
    Case("nearest_extrapolated", ["nearest", WALL, "--extrapolate"], stdin=b"3,-1,0,0,2,0\n3,-1,0,0,2,9\n",
         out=re.escape(NEAREST + "1,hit,3,0,0,1.25,0.5,-1,,1\n2,none,,,,,,,,\n")),
    Case("nearest_without_extrapolation", ["nearest", WALL], stdin=b"3,-1,0,0,2,0\n", out=re.escape(NEAREST + "1,none,,,,,,,,\n")),
    Case("normal", ["normal", WALL, POINTS], out=re.escape("x[m],y[m],z[m],status,nx,ny,nz\n0,0,0,found,0,-1,0\n") + ".*"),
    Case("normal_that_there_is_none_of", ["normal", str(SAMPLES / "dome.xml")], stdin=b"0,0,0\n0,0,5\nnan,0,0\n",
         out=re.escape("x[m],y[m],z[m],status,nx,ny,nz\n0,0,0,none,,,\n0,0,5,found,0,0,-1\nnan,0,0,none,,,\n")),
    Case("closest", ["closest", WALL], stdin=b"0,0,0\n3,-1,9\n0,inf,0\n",
         out=re.escape("x[m],y[m],z[m],status,closestX[m],closestY[m],closestZ[m]\n0,0,0,found,0,0,0\n3,-1,9,found,2,0,1.5\n0,inf,0,none,,,\n")),
    Case("intersect_extrapolated", ["intersect", WALL, "--extrapolate"], stdin=b"0,-1,0,0,0,0\n3,-1,0,3,0,0\n",
         out=re.escape(HITS + "1,hit,0,0,0,0.5,0.5,-1,,1\n2,extrapolated,3,0,0,1.25,0.5,-1,,1\n")),
    Case("channel", ["channel", WALL, RAYS], out=re.escape(CHANNEL[:-1] + ENDS + "1,hit,0,0,0,0,-5,0,0,0,0\n2,hit,-1.9,0,1.4,0,-5,0,-1.9,0,1.4\n"
                                                                 "3,hit,2,0,-1,0,-5,0,1,-2.5,-0.5\n4,hit,3,0,0,0,-5,0,3,0,0\n5,hit,-2,0,-1,0,2,0,1,3,0.5\n6,miss,,,,0,-5,0,1,-5,0\n")),
    Case("channel_of_rays_that_all_miss", ["channel", WALL, "-"], stdin=b"0,-5,0,9,0,0\n0,-5,0,-9,0,0\n", out=re.escape(CHANNEL + "1,miss,,,\n2,miss,,,\n")),
    Case("channel_whose_first_rays_miss", ["channel", WALL, "-"], stdin=b"0,-5,0,9,0,0\n0,-5,0,-9,0,0\n0,-5,0,0,0,0\n",
         out=re.escape(CHANNEL + "1,hit,9,0,0\n2,hit,-9,0,0\n3,hit,0,0,0\n")),
    Case("require_with_all_answers", ["intersect", WALL, "--require"], stdin=b"0,-5,0,0,0,0", out=r".*\n1,hit,.*"),
    Case("require_with_a_miss", ["intersect", WALL, RAYS, "--require"], out=r".*\n6,miss,,,,,,,,,0,-5,0,1,-5,0\n", exit=1,
         err="error: 2 of 6 rows have no result, expected a result in each\n"),
    Case("require_of_map", ["map", WALL, UV, "--to", "3d", "--require"], out=r".*outside.*", err="error: 1 of 4 rows .*", exit=1),
    Case("require_of_nearest", ["nearest", WALL, LINES, "--require"], out=r".*none.*", err="error: 1 of 3 rows .*", exit=1),
    Case("require_of_channel", ["channel", WALL, RAYS, "--require", "--json"], out=r".*miss.*", err="error: 1 of 6 rows .*", exit=1),
])

if __name__ == "__main__":
    unittest.main()
