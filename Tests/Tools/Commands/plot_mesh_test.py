"""Pictures of meshes show their boundary, UV grid, holes and defects, in few bytes, the same ones on every run."""
import math
import os
import re
import resource
import unittest

from gallery_meshes import dome, text_of, wall_with_defects
from obj_case import wall
from plot_case import PlotTest
from tool_case import SAMPLES


def sheet(columns, rows, uv=lambda u, v: (u, v), skip=lambda column, row: False, flip=(), depth=0.2):
    """A wavy wall of 4 by 3 m whose faces of the numbers in flip are flipped."""
    positions = [(4 * c / columns - 2, depth * math.sin(5 * c / columns), 1.5 - 3 * r / rows) for r in range(rows + 1) for c in range(columns + 1)]
    uvs = [uv(c / columns, r / rows) for r in range(rows + 1) for c in range(columns + 1)]
    faces = []
    for row in range(rows):
        for column in range(columns):
            a = row * (columns + 1) + column
            b = a + columns + 1
            if not skip(column, row):
                faces += [[(a, a), (b, b), (b + 1, b + 1)], [(a, a), (b + 1, b + 1), (a + 1, a + 1)]]
    for face in flip:
        faces[face].reverse()
    return text_of(positions, uvs, faces)


def octahedron():
    """A closed mesh without UV."""
    corners = [(1, 0, 0), (-1, 0, 0), (0, 1, 0), (0, -1, 0), (0, 0, 1), (0, 0, -1)]
    faces = [(x, y, z) if (x + (y - 2) + (z - 4)) % 2 == 0 else (y, x, z) for x in (0, 1) for y in (2, 3) for z in (4, 5)]
    lines = [f"v {x} {y} {z}" for x, y, z in corners] + ["vn 0 0 1"] + ["f " + " ".join(f"{i + 1}//1" for i in face) for face in faces]
    return "\n".join(lines) + "\n"


def area(path):
    """Twice the area of a polygon, with the sign of its orientation."""
    numbers = [float(number) for number in path.split()]
    corners = list(zip(numbers[::2], numbers[1::2]))
    return sum(a[0] * b[1] - a[1] * b[0] for a, b in zip(corners, corners[1:] + corners[:1]))


class PlotMesh(PlotTest):
    def test_areas_of_one_class_run_one_way_so_that_none_cancels_another(self):
        for screen in ("curved-wall.obj", "cylinder-200.xml"):
            svg = self.plot(str(SAMPLES / screen), "--color", "stretch")
            paths = re.findall(r'<path class="k\d+" d="([^"]*)"', svg)
            areas = [area(part) for path in paths for part in re.findall(r"M([^Mz]*)z", path)]
            self.assertGreater(len(areas), 100)
            self.assertGreaterEqual(min(areas), 0)

    def test_a_good_mesh_has_no_defect(self):
        svg = self.plot_mesh(dome())
        texts = self.texts(svg)
        self.assertLessEqual({"one component,  no defects", "UV from (0, 0) to (1, 1)"}, set(texts))
        self.assertFalse([text for text in texts if text.startswith(("flipped", "bad UV", "overlap", "holes")) or "none" in text])
        self.assertFalse(self.classes(svg) & {"flipped", "bad-uv", "overlap", "hole"})
        for name in ("grid", "boundary", "uv-fill", "border"):
            self.assertGreater(self.points_of(svg, name), 50)

    def test_defects_are_painted_and_counted(self):
        svg = self.plot_mesh(wall_with_defects())
        self.assertLessEqual({"flipped: 3", "bad UV: 60", "60 locally mirrored", "holes: 1", "seam of the UVs", "one component,  holes: 1,  flipped: 3,  bad UV: 60"}, set(self.texts(svg)))
        # In the view from the eye point, the perspective, the front and the UV layout. The plan sees a wall from its edge.
        self.assertEqual(self.points_of(svg, "flipped"), 4 + 4 * 3 * 3)
        self.assertEqual(self.points_of(svg, "bad-uv"), 4 + 4 * 3 * 60)
        self.assertGreater(self.points_of(svg, "hole"), 10)

    def test_uvs_outside_and_twice_are_reported(self):
        texts = set(self.texts(self.plot_mesh(sheet(8, 4, uv=lambda u, v: (1.5 * u, v)))))
        self.assertLessEqual({"24 outside of 0 to 1", "bad UV: 24", "UV from (0, 0) to (1.5, 1)"}, texts)
        folded = set(self.texts(self.plot_mesh(sheet(8, 4, uv=lambda u, v: (1 - abs(2 * u - 1), v)))))
        self.assertLessEqual({"overlap: 64", "32 locally mirrored"}, folded)
        mirrored = set(self.texts(self.plot_mesh(sheet(8, 4, uv=lambda u, v: (1 - u, v)))))
        self.assertLessEqual({"UV: all mirrored, from the front"}, mirrored)

    def test_a_mesh_without_uv_has_a_surface_and_says_so(self):
        svg = self.plot_mesh(wall(corner="{0}//1"))
        self.assertIn("the mesh has no UV", self.texts(svg))
        self.assertIn("boundary", self.classes(svg))
        self.assertNotIn("grid", self.classes(svg))
        self.assertTrue([name for name in self.classes(svg) if name and re.fullmatch(r"f\d+", name)])
        self.assertIn("no UV", self.texts(self.plot_mesh(wall(corner="{0}//1"), "--color", "stretch")))

    def test_a_closed_mesh_is_drawn(self):
        texts = self.texts(self.plot_mesh(octahedron()))
        self.assertIn("one component,  closed: no boundary,  no UV", texts)
        self.assertIn("2 m", texts)
        self.assertFalse([text for text in texts if text.startswith("not drawable")])

    def test_the_stretch_is_relative_to_the_mean(self):
        # The UV of the right half is three times as wide as that of the left one: 2 and 2/3 of the mean.
        svg = self.plot_mesh(sheet(8, 4, uv=lambda u, v: (u / 2, v) if u < 0.5 else (1.5 * u - 0.5, v), depth=0), "--color", "stretch")
        self.assertLessEqual({"1/2", "2/3", "1", "1.5", "2"}, set(self.texts(svg)))
        # The view from the eye point, the perspective, the front and the UV layout have 32 triangles of each.
        self.assertEqual({step: self.points_of(svg, f"k{step}") for step in range(17)}, {step: 4 + (4 * 3 * 32 if step in (3, 16) else 0) for step in range(17)})
        even = self.plot_mesh(wall(), "--color", "stretch")
        self.assertGreater(self.points_of(even, "k8"), 50)
        self.assertEqual(self.points_of(even, "k7"), 4)
        self.assertIn("mean: 12 m² for u, v 0 to 1", self.texts(even))

    def test_pages_stay_small_and_the_same(self):
        meshes = {"ten": sheet(5, 1), "all": sheet(50, 50, flip=[7]), "cells": sheet(120, 90, skip=lambda c, r: (c - 60) ** 2 + (r - 40) ** 2 < 90, flip=[77])}
        for name, text in meshes.items():
            for options in ([], ["--color", "stretch"]):
                with self.subTest(name=name, options=options):
                    svg = self.plot_mesh(text, *options)
                    self.assertLess(len(svg), 1_500_000)
                    self.assertEqual(self.plot_mesh(text, *options), svg)
                    environment = dict(os.environ, LC_ALL=os.environ["QUARN_LOCALE"], LOCPATH=os.environ["QUARN_LOCPATH"])
                    self.assertEqual(self.plot_mesh(text, *options, env=environment), svg)
                    self.parsed(svg)
                    self.assert_no_overlap(svg)
        self.assertIn("flipped-dot", self.classes(self.plot_mesh(text)))

    def test_faces_with_the_whole_uv_square_each_are_drawn_about_as_soon_as_others(self):
        side = 70
        positions = [(4 * c / side - 2, 2, 1.5 - 3 * r / side) for r in range(side + 1) for c in range(side + 1)]
        corners = [[a, a + side + 1, a + side + 2, a + 1] for a in ((side + 1) * r + c for r in range(side) for c in range(side))]
        uvs = {"usual": [(c / side, r / side) for r in range(side + 1) for c in range(side + 1)], "whole": [(0, 0), (0, 1), (1, 1), (1, 0)]}
        seconds = {}
        for name, places in uvs.items():
            text = text_of(positions, places, [list(zip(face, face if name == "usual" else range(4))) for face in corners])
            before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
            svg = self.plot_mesh(text)
            seconds[name] = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before
        self.assertLessEqual({"Mesh of 9800 triangles", "overlap: 9800"}, set(self.texts(svg)))
        self.assertLess(seconds["whole"], 20 * seconds["usual"], "each of them took as long as all cells of the picture")

    def test_unusual_meshes_fit_on_the_page(self):
        flat = "\n".join(["v 0 0 0", "v 1 0 0", "v 2 0 0", "vn 0 0 1", "f 1//1 2//1 3//1"]) + "\n"
        far = text_of([(9e5, 0, 0), (9e5 + 4, 0, 0), (9e5, 0, 4)], [(-1e30, 5), (1e30, 5), (0, 1e30)], [[(0, 0), (1, 1), (2, 2)]])
        point = "\n".join(["v 3 3 3", "vn 0 0 1", "f 1//1 1//1 1//1"]) + "\n"
        for text in (flat, far, point):
            texts = self.texts(self.plot_mesh(text))
            self.assertIn("Mesh of 1 triangle", texts)
            self.assertEqual(len([words for words in texts if words.startswith("not drawable")]), 4 if text == point else 0)


if __name__ == "__main__":
    unittest.main()
