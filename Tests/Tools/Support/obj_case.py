"""OBJ texts that tests write, and a base class with the command lines that they share."""
import base64
import math

from tool_case import ToolTest


def wall(columns=4, rows=3, corner="{0}/{0}/1"):
    """A wall of 4 by 3 m in the plane y = 0 that faces the viewer, of quads, with its UVs."""
    lines = []
    for row in range(rows + 1):
        for column in range(columns + 1):
            lines.append(f"v {4 * column / columns - 2} 0 {1.5 - 3 * row / rows}")
    for row in range(rows + 1):
        for column in range(columns + 1):
            lines.append(f"vt {column / columns} {row / rows}")
    lines.append("vn 0 -1 0")
    for row in range(rows):
        for column in range(columns):
            a = row * (columns + 1) + column + 1
            b = a + columns + 1
            lines.append("f " + " ".join(corner.format(index) for index in (a, b, b + 1, a + 1)))
    return "\n".join(lines) + "\n"


def dome(rings=8, sectors=24, radius=6.0):
    """A dome above the plane z = 0, seen from inside, whose UV is a disk as on a fisheye picture."""
    lines = [f"v 0 0 {radius}"]
    uvs = ["vt 0.5 0.5"]
    for ring in range(1, rings + 1):
        for sector in range(sectors):
            angle, tilt = 2 * math.pi * sector / sectors, math.pi / 2 * ring / rings
            x, y = math.sin(angle), math.cos(angle)
            lines.append(f"v {radius * math.sin(tilt) * x:.9f} {radius * math.sin(tilt) * y:.9f} {radius * math.cos(tilt):.9f}")
            uvs.append(f"vt {0.5 + 0.5 * ring / rings * x:.9f} {0.5 - 0.5 * ring / rings * y:.9f}")
    faces = []
    for ring in range(rings):
        for sector in range(sectors):
            inner = [1 + max(ring - 1, 0) * sectors + 1 + (sector + k) % sectors for k in (0, 1)] if ring else [1]
            outer = [1 + ring * sectors + 1 + (sector + k) % sectors for k in (0, 1)]
            corners = [*inner, *reversed(outer)]
            faces.append("f " + " ".join(f"{index}/{index}/1" for index in reversed(corners)))
    return "\n".join([*lines, *uvs, "vn 0 0 -1", *faces]) + "\n"


class ObjTest(ToolTest):
    def rows(self, *arguments, **options):
        """The rows of a CSV answer, each as a dictionary of text by the columns' names without unit."""
        header, *lines = self.text_of(*arguments, **options).splitlines()
        names = [name.split("[")[0] for name in header.split(",")]
        return [dict(zip(names, line.split(","), strict=True)) for line in lines]

    def info(self, *arguments):
        lines = self.text_of("info", *arguments).splitlines()
        return {key: value.strip() for key, value in (line.split(":", 1) for line in lines)}

    def error_line(self, *arguments, exit_code=2, **options):
        result = self.run_tool(*arguments, **options)
        self.assertEqual(result.stdout, b"")
        self.assert_one_error_line(result, exit_code)
        return result.stderr.decode()

    def xml(self, name, text=None, forward="Y", up="Z", scale="1"):
        """The XML file of an OBJ screen with such a text, a wall by default."""
        encoded = base64.b64encode((wall() if text is None else text).encode()).decode()
        self.file(name, f'<ScreenGeometry ClassType="class OBJScreen">\n<ScreenString>{encoded}</ScreenString>\n<AxisForward>{forward}</AxisForward>\n'
                        f"<AxisUpward>{up}</AxisUpward>\n<Scale>{scale}</Scale>\n</ScreenGeometry>\n")
        return name
