"""What the commands answer about meshes from OBJ files, a wall and a dome whose shapes are known."""
import base64
import json
import math
import os
import pathlib
import re
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

import jsonschema

from obj_case import ObjTest, dome, wall

SCHEMAS = pathlib.Path(__file__).resolve().parents[3] / "Docs" / "schemas"
POSITION = ("x", "y", "z")


def numbers(row, names):
    return [float(row[name]) for name in names]


class MeshAnswers(ObjTest):
    def setUp(self):
        super().setUp()
        self.file("wall.obj", wall())
        self.file("dome.obj", dome())
        self.file("bare.obj", wall(corner="{0}//1"))

    def assert_near(self, actual, expected, delta=1e-6):
        for a, b in zip(actual, expected, strict=True):
            self.assertAlmostEqual(a, b, delta=delta)

    def test_map_says_how_each_position_was_got(self):
        uv = b"0.25,0.5\n0,0\n1.25,0.5\n-0.5,2\nnan,0\n"
        rows = self.rows("map", "wall.obj", "--to", "3d", stdin=uv)
        self.assertEqual([row["status"] for row in rows], ["on_screen", "on_screen", "outside", "outside", "outside"])
        self.assert_near(numbers(rows[0], POSITION), [-1, 0, 0])
        self.assertEqual([rows[2][name] for name in POSITION], ["", "", ""])
        rows = self.rows("map", "wall.obj", "--to", "3d", "--extrapolate", stdin=uv)
        self.assertEqual([row["status"] for row in rows], ["on_screen", "on_screen", "extrapolated", "extrapolated", "outside"])
        self.assert_near(numbers(rows[2], POSITION), [3, 0, 0])
        self.assert_near(numbers(rows[3], POSITION), [-4, 0, -4.5])

    def test_a_result_does_not_depend_on_earlier_queries(self):
        uv = [f"{i % 7 * 0.3 - 0.4},{i % 5 * 0.3 - 0.1}" for i in range(60)]
        rows = self.rows("map", "dome.obj", "--to", "3d", "--extrapolate", stdin="\n".join(uv).encode())
        self.assertEqual({row["status"] for row in rows}, {"on_screen", "extrapolated"})
        for i in range(0, 60, 13):
            self.assertEqual(self.rows("map", "dome.obj", "--to", "3d", "--extrapolate", stdin=uv[i].encode()), rows[i:i + 1])

    def test_map_to_uv_says_how_each_was_got(self):
        points = b"1,0,0.75\n3,0,0\n1,-0.5,0.75\n0,nan,0\n"
        rows = self.rows("map", "wall.obj", "--to", "2d", stdin=points)
        self.assertEqual([row["status"] for row in rows], ["on_screen", "outside", "outside", "outside"])
        self.assert_near(numbers(rows[0], "uv"), [0.75, 0.25])
        rows = self.rows("map", "wall.obj", "--to", "2d", "--extrapolate", stdin=points)
        self.assertEqual([row["status"] for row in rows[::2]], ["on_screen", "extrapolated"])
        self.assertIn(rows[1]["status"], ("extrapolated", "outside"))  # beyond one of its edges a triangle has no UV
        self.assert_near(numbers(rows[2], "uv"), [0.75, 0.25])

    def test_uv_to_3d_and_back(self):
        uv = [(0.5 + 0.4 * math.sin(i) * (i % 10) / 10, 0.5 + 0.4 * math.cos(i) * (i % 10) / 10) for i in range(100)]
        there = self.rows("map", "dome.obj", "--to", "3d", stdin="\n".join(f"{u},{v}" for u, v in uv).encode())
        self.assertEqual({row["status"] for row in there}, {"on_screen"})
        back = self.rows("map", "dome.obj", "--to", "2d", stdin="\n".join(",".join(row[name] for name in POSITION) for row in there).encode())
        for row, expected in zip(back, uv, strict=True):
            self.assert_near(numbers(row, "uv"), expected, 1e-9)

    def test_a_mesh_without_uv_maps_nothing_and_says_so(self):
        for stdin in (b"0.5,0.5\n",):
            result = self.run_tool("map", "bare.obj", "--to", "3d", "--extrapolate", stdin=stdin)
            self.assertEqual(result.stdout, b"u,v,status,x[m],y[m],z[m]\n0.5,0.5,outside,,,\n")
            self.assertEqual(result.stderr, b"warning: bare.obj: the mesh has no usable UV, see quarnscreen info\n")
            self.assertEqual(result.returncode, 0)

    def test_several_boundaries_are_stated_once(self):
        self.file("two.obj", "v 0 0 0\nv 1 0 0\nv 0 0 1\nv 3 0 0\nv 4 0 0\nv 3 0 1\nvt 0 0\nvt .4 0\nvt 0 .4\nvt .6 .6\nvt 1 .6\nvt .6 1\n"
                  "vn 0 -1 0\nf 1/1/1 2/2/1 3/3/1\nf 4/4/1 5/5/1 6/6/1\n")
        for arguments in (("map", "two.obj", "--to", "3d"), ("grid", "two.obj"), ("points", "two.obj"), ("convert", "two.obj", "-o", "copy.obj"),
                          ("transform", "two.obj", "--scale", "2", "-o", "large.obj"), ("refine", "two.obj", "--max-edge", "0.5", "-o", "fine.obj")):
            with self.subTest(arguments[0]):
                lines = self.run_tool(*arguments, stdin=b"0.5,0.5\n").stderr.decode().splitlines()
                self.assertEqual(len(lines), 1, lines)
                self.assertIn("warning: two.obj: the mesh has several boundaries, ", lines[0])

    def test_rays(self):
        rays = b"0.5,-5,0.5,0.5,-4,0.5\n0.5,5,0.5,0.5,4,0.5\n0.5,-5,0.5,0.5,-6,0.5\n"
        rows = self.rows("intersect", "wall.obj", stdin=rays)
        self.assertEqual([row["status"] for row in rows], ["hit", "hit", "miss"])
        self.assert_near(numbers(rows[0], [*POSITION, "u", "v", "t"]), [0.5, 0, 0.5, 0.625, 1 / 3, 5])
        self.assertEqual([row["side"] for row in rows[:2]], ["-1", "1"])
        self.assertRegex(rows[0]["triangle"], r"\A\d+\Z")
        for angle in range(0, 360, 7):
            direction = [math.sin(math.radians(angle)) * 0.5, math.cos(math.radians(angle)) * 0.5, 0.7]
            row, = self.rows("intersect", "dome.obj", stdin=",".join(map(str, [0, 0, 0, *direction])).encode())
            self.assertAlmostEqual(math.hypot(*numbers(row, POSITION)), 6, delta=0.06)  # of the facets
            self.assertEqual(row["side"], "-1")

    def test_extrapolated_rays_are_marked(self):
        rays = b"0,-1,0,0,0,0\n3,-5,0,3,-0.01,0\n0,1,0,0,0,0\n"
        for side, expected in (([], ["hit", "boundary", "hit"]), (["--side", "0"], ["hit", "boundary", "hit"]),
                               (["--side", "-1"], ["hit", "boundary", "boundary"]), (["--side", "+1"], ["boundary", "boundary", "hit"])):
            rows = self.rows("intersect", "wall.obj", "--extrapolate", *side, stdin=rays)
            self.assertEqual([row["status"] for row in rows], expected, side)
            for row in rows:
                self.assertEqual(row["triangle"] == "", row["status"] == "boundary")
        # The ray runs beside the right edge, x = 2 and y = 0, and passes nearest to it in its plane.
        row = self.rows("intersect", "wall.obj", "--extrapolate", stdin=rays)[1]
        self.assert_near(numbers(row, [*POSITION, "t"]), [3, 0, 0, 5 / 4.99])
        self.assertEqual([row[name] for name in ("u", "v", "side")], ["", "", ""])

    def test_a_mesh_without_boundary_has_no_fallback(self):
        corners = [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)]
        faces = ["1//1 3//1 2//1", "1//1 2//1 4//1", "1//1 4//1 3//1", "2//1 3//1 4//1"]
        self.file("closed.obj", "".join(f"v {x} {y} {z}\n" for x, y, z in corners) + "vn 0 0 1\n" + "".join(f"f {face}\n" for face in faces))
        row, = self.rows("intersect", "closed.obj", "--extrapolate", stdin=b"5,5,5,6,6,6\n")
        self.assertEqual((row["status"], row["x"]), ("miss", ""))

    def test_sides_need_extrapolation(self):
        self.assertEqual(self.error_line("intersect", "wall.obj", "--side", "1"), "error: found --side without --extrapolate, expected both or none\n")
        self.assertRegex(self.error_line("intersect", "wall.obj", "--extrapolate", "--side", "2"), r"--side: 2 not in .*\(see --help\)")

    def test_normals(self):
        rows = self.rows("normal", "wall.obj", stdin=b"0.3,0,0.3\n0.3,-0.1,0.3\n9,0,0\nnan,0,0\n")
        self.assertEqual([row["status"] for row in rows], ["found", "none", "none", "none"])
        self.assertEqual(numbers(rows[0], ("nx", "ny", "nz")), [0, -1, 0])
        self.assertEqual([rows[1][name] for name in ("nx", "ny", "nz")], ["", "", ""])

    def test_closest_positions(self):
        rows = self.rows("closest", "wall.obj", stdin=b"0.7,-2,0.2\n0,0,0\n0,-3,0\n9,9,9\n9,0,0\ninf,0,0\n")
        self.assertEqual([row["status"] for row in rows], ["found", "found", "found", "none", "none", "none"])
        names = ("closestX", "closestY", "closestZ")
        self.assert_near(numbers(rows[0], names), [0.7, 0, 0.2])
        self.assertEqual([numbers(row, names) for row in rows[1:3]], [[0, 0, 0]] * 2)
        self.assertEqual([rows[3][name] for name in names], ["", "", ""])
        row, = self.rows("closest", "dome.obj", stdin=b"0,0,0\n")
        self.assertNotEqual([row[name] for name in names], ["0", "0", "0"])

    def test_require_counts_what_is_none(self):
        for command in ("normal", "closest"):
            result = self.run_tool(command, "wall.obj", "--require", stdin=b"0.3,0,0.3\n9,9,9\n")
            self.assertEqual((result.returncode, result.stderr), (1, b"error: 1 of 2 rows have no result, expected a result in each\n"))

    def test_nearest_and_channel(self):
        rows = self.rows("nearest", "wall.obj", stdin=b"0.5,-1,0.5,0,-1,0\n0,-1,0,1,0,0\n")
        self.assertEqual([row["status"] for row in rows], ["hit", "none"])
        self.assertAlmostEqual(float(rows[0]["distance"]), 1)
        rows = self.rows("channel", "wall.obj", "-", stdin=b"0,-5,0,0.5,0,0\n0,-5,0,1,0,1\n")
        self.assertEqual([row["status"] for row in rows], ["hit", "hit"])

    def test_points_go_row_by_row(self):
        rows = self.rows("points", "wall.obj", "--columns", "3", "--rows", "2")
        self.assertEqual([(row["column"], row["row"]) for row in rows], [("1", "1"), ("2", "1"), ("3", "1"), ("1", "2"), ("2", "2"), ("3", "2")])
        for row in rows:
            self.assert_near(numbers(row, POSITION), [2 * int(row["column"]) - 4, 0, 4.5 - 3 * int(row["row"])])
        rows = self.rows("points", "dome.obj", "--columns", "3", "--rows", "3")
        self.assertEqual([(row["column"], row["row"]) for row in rows], [(str(i % 3 + 1), str(i // 3 + 1)) for i in range(9)])
        self.assertEqual([row["status"] for row in rows], ["outside", "on_screen", "outside", *["on_screen"] * 3, "outside", "on_screen", "outside"])
        lines = self.run_tool("points", "bare.obj", "--columns", "2", "--rows", "2").stdout.decode().splitlines()[1:]
        for column, row, status, x, _, z, u, v in (line.split(",") for line in lines):
            self.assertEqual((column, row, status, u, v), ("", "", "boundary", "", ""))
            self.assertTrue(abs(float(x)) == 2 or abs(float(z)) == 1.5)

    def test_boundary_and_grid(self):
        boundary = [tuple(numbers(row, POSITION)) for row in self.rows("boundary", "wall.obj")]
        self.assertEqual(len(boundary), 15)
        self.assertEqual(boundary[0], boundary[-1])
        self.assertTrue(all(abs(x) == 2 or abs(z) == 1.5 for x, _, z in boundary))
        grid = self.rows("grid", "dome.obj", "--density", "5")
        self.assertGreater(len({row["polyline"] for row in grid}), 5)
        for row in grid:
            self.assertLess(math.hypot(*numbers(row, POSITION)), 6.000001)

    def test_the_format_is_detected_by_the_content(self):
        self.file("wall.xml", wall())
        self.file("mesh.obj", (self.folder / self.xml("mesh.xml")).read_text())
        for name in ("wall.xml", "mesh.obj"):
            self.assertEqual(self.rows("points", name), self.rows("points", "wall.obj"))

    def test_xml_and_obj_answer_alike(self):
        mesh = self.xml("mesh.xml")
        old = self.file("old.xml", '<ScreenGeometry ClassType="class OBJScreen">' + base64.b64encode(wall().encode()).decode() + "</ScreenGeometry>")
        rays = b"0.3,-5,0.2,0.5,0,0\n0,-5,0,1,0,1\n"
        for screen in (mesh, str(old)):
            self.assertEqual(self.text_of("intersect", screen, stdin=rays), self.text_of("intersect", "wall.obj", stdin=rays))
            self.assertEqual(self.info(screen)["digest"], self.info("wall.obj")["digest"])

    def test_axes_and_scale(self):
        # From a file in millimeters with y upwards, seen along -z.
        turned = re.sub(r"^v (\S+) (\S+) (\S+)$", lambda m: f"v {float(m[1]) * 1000} {float(m[3]) * 1000} 0", wall(), flags=re.MULTILINE)
        self.file("turned.obj", turned)
        options = ["--forward", "-Z", "--up", "Y", "--scale", "0.001"]
        info = self.info("turned.obj", *options)
        self.assertEqual(info["frame"], "forward -Z, up Y, scale 0.001")
        self.assert_near([float(x) for x in re.findall(r"-?[0-9][0-9.e-]*", info["bounds"].replace("-0,", "0,"))], [-2, 0, -1.5, 2, 0, 1.5])
        mesh = self.xml("mesh.xml", turned, "-Z", "Y", "0.001")
        self.assertEqual(self.rows("points", mesh), self.rows("points", "turned.obj", *options))

    def test_plots_show_boundary_and_grid(self):
        for name, count in (("wall.obj", 24), ("dome.obj", 360), ("bare.obj", 24)):
            svg = self.text_of("plot", name)
            subprocess.run(["xmllint", "--noout", "-"], input=svg.encode(), check=True)
            root = ElementTree.fromstring(svg)
            classes = {element.get("class") for element in root.iter()}
            texts = [element.text for element in root.iter() if element.text]
            self.assertIn(f"Mesh of {count} triangles", texts)
            self.assertIn("boundary", classes)
            self.assertEqual("grid" in classes, name != "bare.obj")
            self.assertEqual("the mesh has no UV" in texts, name == "bare.obj")
            self.assertEqual(self.text_of("plot", name), svg)

    def test_json_follows_the_schemas(self):
        points, rays, uv = b"0.3,0,0.3\n9,9,9\n", b"0,-1,0,0,0,0\n0,-1,0,3,0,0\n", b"0.5,0.5\n3,3\nnan,0\n"
        for name, arguments, stdin in (("info", [], b""), ("map", ["--to", "3d", "--extrapolate"], uv), ("map", ["--to", "2d"], points), ("normal", [], points),
                                       ("closest", [], points), ("intersect", ["--extrapolate"], rays), ("intersect", [], rays), ("nearest", [], rays),
                                       ("grid", [], b""), ("boundary", [], b""), ("points", ["--columns", "3"], b""), ("channel", ["-"], rays)):
            for screen in ("wall.obj", "dome.obj", "bare.obj"):
                with self.subTest(name=name, screen=screen):
                    document = json.loads(self.run_tool(name, screen, *arguments, "--json", stdin=stdin).stdout)
                    jsonschema.Draft202012Validator(json.loads((SCHEMAS / f"{name}.schema.json").read_text())).validate(document)

    def test_the_locale_changes_nothing(self):
        environment = dict(os.environ, LC_ALL=os.environ["QUARN_LOCALE"], LOCPATH=os.environ["QUARN_LOCPATH"])
        for command in ("info", "grid", "boundary", "plot"):
            self.assertEqual(self.text_of(command, "dome.obj", env=environment), self.text_of(command, "dome.obj"))


if __name__ == "__main__":
    unittest.main()
