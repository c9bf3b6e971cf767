"""What info reports about meshes: their status, their measures, and the parts of the file without effect."""
import json
import math
import unittest

from obj_case import ObjTest, dome, wall


class MeshInfo(ObjTest):
    def mesh(self, text, *arguments):
        """The members of "mesh" in JSON, and the lines for people."""
        self.file("a.obj", text)
        document = json.loads(self.run_tool("info", "a.obj", "--json", *arguments).stdout)
        lines = self.run_tool("info", "a.obj", *arguments).stdout.decode().splitlines()
        return document["mesh"], {key: value.strip() for key, value in (line.split(":", 1) for line in lines)}

    def test_a_good_wall(self):
        mesh, lines = self.mesh(wall())
        self.assertEqual((mesh["status"], mesh["statusText"]), ("ok", "good; everything works"))
        self.assertEqual((mesh["triangles"], mesh["boundaryPoints"]), (24, 14))
        self.assertAlmostEqual(mesh["area"], 12)
        for coordinate in mesh["centroid"]:
            self.assertAlmostEqual(coordinate, 0)
        self.assertEqual(mesh["uvRange"], {"min": [0, 0], "max": [1, 1]})
        self.assertEqual(set(mesh["ignored"].values()), {0})
        self.assertEqual((lines["type"], lines["status"], lines["ignored"]), ("class OBJScreen", "good; everything works", "nothing"))
        self.assertEqual((lines["triangles"], lines["UV range"], lines["boundary points"]), ("24", "(0, 0) to (1, 1)", "14"))
        self.assertEqual((lines["is valid"], lines["has UV mapping"], lines["frame"]), ("yes", "yes", "forward Y, up Z, scale 1"))

    def test_a_fine_dome_has_nearly_the_measures_of_half_a_sphere(self):
        mesh, _ = self.mesh(dome(40, 120))
        self.assertEqual(mesh["status"], "ok")
        self.assertAlmostEqual(mesh["area"], 2 * math.pi * 36, delta=0.1)
        self.assertAlmostEqual(mesh["centroid"][2], 3, delta=0.01)
        self.assertEqual(mesh["boundaryPoints"], 120)

    def test_a_screen_without_triangles_has_no_mesh(self):
        self.file("flat.xml", self.text_of("make", "flat", "--width", "4", "--height", "3"))
        self.assertIsNone(json.loads(self.text_of("info", "flat.xml", "--json"))["mesh"])

    def test_no_vt_line(self):
        text = "\n".join(line for line in wall(corner="{0}//1").split("\n") if not line.startswith("vt"))
        mesh, lines = self.mesh(text)
        self.assertEqual(mesh["status"], "no_uv")
        self.assertTrue(mesh["statusText"].startswith("the file has no vt line; rays, normals"))
        self.assertIsNone(mesh["uvRange"])
        self.assertEqual((lines["UV range"], lines["has UV mapping"], lines["is valid"]), ("none", "no", "yes"))

    def test_the_first_corner_without_uv_is_named_by_its_line(self):
        lines = wall().split("\n")
        for bad in ("1//1", "1/99/1", "1/0/1"):
            changed = lines[:-1] + [f"f {bad} 2/2/1 3/3/1", ""]
            mesh, _ = self.mesh("\n".join(changed))
            self.assertEqual(mesh["status"], "no_uv")
            self.assertTrue(mesh["statusText"].startswith("a face has a corner without UV at line 54; "), mesh["statusText"])

    def test_the_first_uv_outside_is_named_by_the_line_of_its_face(self):
        mesh, _ = self.mesh(wall().replace("vt 0.0 0.0", "vt -0.001 0.0"))
        self.assertEqual((mesh["status"], mesh["statusText"]), ("uv_out_of_range", "a face has a UV outside of 0 to 1 at line 42; everything works"))
        self.assertAlmostEqual(mesh["uvRange"]["min"][0], -0.001)
        mesh, _ = self.mesh("vt 5 5\n" + wall().replace("/", "@").replace("@", "/"))
        self.assertEqual(mesh["status"], "uv_out_of_range")

    def test_two_components_have_no_single_boundary(self):
        faces = [line for line in wall().split("\n") if line.startswith("f")]
        mesh, lines = self.mesh(wall().replace(faces[1] + "\n", "").replace(faces[5] + "\n", "").replace(faces[9] + "\n", ""))
        self.assertEqual(mesh["status"], "bad_boundary")
        self.assertIn("does not have exactly one closed boundary", lines["status"])
        self.assertEqual(lines["has UV mapping"], "no")

    def test_several_boundaries_are_reported_once_with_a_remedy(self):
        faces = [line for line in wall().split("\n") if line.startswith("f")]
        self.file("a b.obj", wall().replace(faces[1] + "\n", "").replace(faces[5] + "\n", "").replace(faces[9] + "\n", ""))
        warning = ("warning: a b.obj: the mesh has several boundaries, at holes, at gaps between its parts or at seams; only the first one is used, and UV does "
                   "not work; to find them, try: quarnscreen check 'a b.obj'\n")
        for command in (["info", "a b.obj"], ["boundary", "a b.obj"], ["transform", "a b.obj", "--scale", "2", "-o", "out.xml"], ["compare", "a b.obj", "a b.obj"],
                        ["refine", "a b.obj", "--max-edge", "0.5", "-o", "out.xml"]):
            with self.subTest(command):
                lines = self.run_tool(*command).stderr.decode().splitlines(keepends=True)
                self.assertEqual([line for line in lines if line.startswith("warning: ")], [warning])
        # The check names the triangles itself.
        self.assertNotIn("warning: ", self.run_tool("check", "a b.obj").stderr.decode())

    def test_surface_measures_of_a_mesh(self):
        self.file("a.obj", wall())
        surface = json.loads(self.text_of("info", "a.obj", "--json"))["surface"]
        self.assertEqual(surface["extent"], {"min": [-2, 0, -1.5], "max": [2, 0, 1.5]})
        self.assertEqual(surface["size"], {"width": 4, "depth": 0, "height": 3})
        self.assertEqual((surface["area"], surface["edges"], surface["boundaryLength"]), (12, None, 14))

    def test_what_has_no_effect_is_counted(self):
        head = ("# made by hand\nmtllib wall.mtl\no Wall\ng left\ns 1\nusemtl red\nusemtl blue\ns off\nvp 0.5 0.5\nl 1 2\np 1\n"
                "$ a comment\n\n   \n")
        text = wall().replace("v -2.0 0 1.5\n", "v -2.0 0 1.5 0.9 0.1 0.2\n").replace("v 2.0 0 1.5\n", "v 2.0 0 1.5 1.0\n").replace(" 0.0\n", " 0.0 0\n")
        mesh, lines = self.mesh(head + text)
        self.assertEqual(mesh["status"], "ok")
        self.assertEqual(mesh["ignored"], {"materials": 2, "materialLibraries": 1, "groups": 1, "objects": 1, "smoothing": 2, "colors": 1, "weights": 1,
                                           "thirdUVs": 5, "otherLines": 3})
        self.assertTrue(lines["ignored"].startswith("2 materials (usemtl), 1 material libraries (mtllib), 1 groups (g)"))

    def test_files_of_another_system_give_the_same(self):
        expected, _ = self.mesh(wall())
        for text in (wall().replace("\n", "\r\n"), wall().replace("\n", " \n"), wall().replace("\n", " \r\n"), wall().replace("f ", "f   ")):
            mesh, _ = self.mesh(text)
            self.assertEqual(mesh, expected)

    def test_normals_of_the_file_have_no_effect(self):
        expected, _ = self.mesh(wall())
        mesh, _ = self.mesh(wall().replace("vn 0 -1 0", "vn 1 1 1"))
        self.assertEqual(mesh, expected)

    def test_the_frame_is_reported(self):
        mesh, _ = self.mesh(wall(), "--forward", "-X", "--up", "Z", "--scale", "2")
        self.assertEqual((mesh["forward"], mesh["up"], mesh["scale"]), ("-X", "Z", 2))
        self.assertAlmostEqual(mesh["area"], 48)


if __name__ == "__main__":
    unittest.main()
