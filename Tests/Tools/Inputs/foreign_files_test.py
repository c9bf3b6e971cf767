"""Files of other kinds are named, with a remedy that works; UTF-16 is read; no other file passes for a mesh."""
import gzip
import io
import random
import struct
import unittest
import zipfile

from obj_case import ObjTest, wall
from tool_case import FLAT, TOOL

EXPECTED = "expected the XML, OBJ or STL file of a screen"
EXPORT = "; export it as OBJ from the program that made it"
UNPACK = "; unpack it and read the OBJ or STL file in it"


def packed(name):
    stream = io.BytesIO()
    with zipfile.ZipFile(stream, "w") as archive:
        archive.writestr(name, wall())
    return stream.getvalue()


# name of the file: contents, what they are called, and the remedy.
FOREIGN = {
    "a.ply": (b"ply\nformat ascii 1.0\nelement vertex 3\n", "a PLY mesh", EXPORT),
    "a.off": (b"OFF\n3 1 0\n0 0 0\n1 0 0\n0 0 1\n3 0 1 2\n", "an OFF mesh", EXPORT),
    "a.gltf": (b'{"asset": {"version": "2.0"}, "meshes": []}', "a glTF file", EXPORT),
    "a.glb": (b"glTF" + struct.pack("<3I", 2, 20, 0), "a binary glTF file", EXPORT),
    "a.json": (b'{"rows": []}', "a JSON document", ""),
    "a.csv": (b"x,y,z\n0,0,0\n", "a CSV file", ""),
    "a.xyz": (b"0 0 0\n1 0 0\n", "a list of points without faces", "; build a mesh from the points and export it as OBJ"),
    "a.mtl": (b"# white\nnewmtl white\nKd 1 1 1\n", "a material library", "; read the OBJ file that names it"),
    "a.pdf": (b"%PDF-1.4\n", "a PDF document", ""),
    "a.zip": (packed("a.obj"), "a zip archive", UNPACK),
    "a.3mf": (packed("3D/3dmodel.model"), "a 3MF mesh", EXPORT),
    "a.obj.gz": (gzip.compress(wall().encode()), "a gzip archive", UNPACK),
    "a.png": (b"\x89PNG\r\n\x1a\n" + bytes(200), "a PNG picture", ""),
    "a.jpg": (b"\xff\xd8\xff\xe0" + bytes(200), "a JPEG picture", ""),
    "a.html": (b"<!DOCTYPE html>\n<html></html>", "a web page", "; download the file that it links to"),
    "a.fbx": (b"Kaydara FBX Binary  \0" + bytes(200), "an FBX file", EXPORT),
    "a.dxf": (b"  0\nSECTION\n  2\nHEADER\n", "a DXF file", EXPORT),
    "a.txt": (b"a note\n", "a text of an unknown kind", ""),
    "a.dat": (bytes(range(1, 9)) * 40, "binary data of an unknown kind", ""),
}


class ForeignFiles(ObjTest):
    def assert_named(self, name, kind, remedy, *command):
        self.assertEqual(self.error_line(*command, name, *(["-o", "out.obj"] if command[0] == "convert" else [])),
                         f"error: {name}: found {kind}, {EXPECTED}{remedy}\n")

    def test_each_is_named_by_every_command_that_reads_a_screen(self):
        for name, (content, kind, remedy) in FOREIGN.items():
            with self.subTest(name):
                self.file(name, content)
                for command in (["info"], ["check"], ["convert"], ["plot"], ["boundary"]):
                    self.assert_named(name, kind, remedy, *command)
                self.assertFalse((self.folder / "out.obj").exists())

    def test_the_contents_count_and_not_the_name(self):
        for name, (content, kind, remedy) in FOREIGN.items():
            if "unknown" in kind:
                continue
            with self.subTest(name):
                self.file("wall.stl", content)
                self.assert_named("wall.stl", kind, remedy, "info")

    def test_a_program_of_any_size_is_no_mesh(self):
        with open(TOOL, "rb") as file:
            program = file.read(84 + 50 * 4000)
        for count in (400, 4000):
            content = program[:80] + struct.pack("<i", count) + program[84:84 + 50 * count]
            self.file("a.stl", content)
            self.assert_named("a.stl", "an ELF program or library", "", "info")
            self.file("a.stl", b"program" + content[7:])
            self.assert_named("a.stl", "a file that contains no STL", "", "info")
            self.assert_named("a.stl", "a file that contains no STL", "", "convert")

    def test_random_bytes_are_no_mesh(self):
        rng = random.Random(1)
        for count in (5, 50):
            self.file("a.dat", rng.randbytes(80) + struct.pack("<i", count) + rng.randbytes(50 * count))
            self.assert_named("a.dat", "binary data of an unknown kind", "", "info")

    def test_a_text_stl_with_a_control_byte_is_refused_with_its_line(self):
        facet = "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n"
        text = "solid wall\n" + facet * 5 + "endsolid wall\n"
        self.file("a.stl", text.replace("vertex 1", "vertex\x01 1", 1))
        self.assertEqual(self.error_line("convert", "a.stl", "-o", "a.obj"),
                         'error: a.stl:5: found "vertex\\x01", expected "vertex" or "endloop"\n')

    def test_two_real_habits_of_text_stl_are_read(self):
        facet = "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet{}\n"
        self.file("a.stl", "solid wall\n" + facet.format(" 1") + facet.format("") + "end solid\n")
        self.run_tool("convert", "a.stl", "-o", "a.obj").check_returncode()
        self.assertEqual(self.info("a.obj")["triangles"], "2")

    def test_utf16_is_read_with_and_without_mark(self):
        text = "# Größe\n" + wall()
        self.file("utf8.obj", text)
        expected = self.info("utf8.obj")
        for encoding in ("utf-16", "utf-16-le", "utf-16-be"):
            with self.subTest(encoding):
                self.file("a.obj", text.encode(encoding))
                self.assertEqual({**self.info("a.obj"), "file": ""}, {**expected, "file": ""})
                self.run_tool("convert", "a.obj", "-o", "b.obj").check_returncode()
                self.assertEqual((self.folder / "b.obj").read_bytes(), text.encode())
        self.file("a.obj", b"\xfe\xff" + text.encode("utf-16-be"))
        self.assertEqual(self.info("a.obj")["triangles"], "24")

    def test_utf16_of_other_formats_is_read_too(self):
        facet = "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n"
        self.file("a.stl", f"solid wall\n{facet}endsolid\n".encode("utf-16"))
        self.run_tool("convert", "a.stl", "-o", "a.obj").check_returncode()
        self.assertEqual(self.info("a.obj")["triangles"], "1")
        self.file("a.xml", FLAT.format(4, 3).encode("utf-16"))
        self.assertIn("class FlatScreen", self.text_of("info", "a.xml"))
        self.file("a.csv", "x,y,z\n0,0,0\n".encode("utf-16"))
        self.assert_named("a.csv", "a CSV file", "", "info")

    def test_obj_files_without_faces_are_told_so(self):
        vertices = "v 0 0 0\nv 1 0 0\nv 0 0 1\n"
        cases = {vertices: "", vertices + "p 1 2 3\n": ", only points", vertices + "p 1\nl 1 2\n": ", only points and lines",
                 vertices + "l 1 2 3\n": ", only lines", vertices + "curv 0 1 1 2 3\n": ", only curves"}
        for text, elements in cases.items():
            with self.subTest(elements):
                self.file("a.obj", text)
                for command in (["info", "a.obj"], ["check", "a.obj"], ["convert", "a.obj", "-o", "b.obj"]):
                    self.assertEqual(self.error_line(*command), f"error: a.obj: found no face in the OBJ text{elements}, "
                                     'expected lines that begin with "f"; export the surface with its faces\n')


if __name__ == "__main__":
    unittest.main()
