"""What the pictures of the documentation are drawn with: an SVG page, views of the world, and answers of the tool."""
import csv
import io
import math
import pathlib
import subprocess
import xml.sax.saxutils

ROOT = pathlib.Path(__file__).resolve().parents[1]

STYLE = """\
text{font-family:Helvetica,Arial,"Liberation Sans","DejaVu Sans",sans-serif;font-size:13px;fill:#222}
.title{font-size:15px;font-weight:bold}
.note{fill:#555}
.strong{font-weight:bold}
.red{fill:#c2185b}
.green{fill:#1b7f3b}
text{paint-order:stroke;stroke:#fff;stroke-width:3px;stroke-linejoin:round}
path{fill:none;stroke-linejoin:round;stroke-linecap:round}
.page{fill:#fff}
.panel{fill:none;stroke:#bbb}
.screen{stroke:#111;stroke-width:2.6px}
.grid{stroke:#8aa4bd;stroke-width:.9px}
.axis{stroke:#555;stroke-width:1.3px}
.axis-head{fill:#555}
.angle{stroke:#174a7c;stroke-width:1.4px}
.angle-head{fill:#174a7c}
.ray{stroke:#c2185b;stroke-width:1.8px}
.ray-head{fill:#c2185b}
.normal{stroke:#1b7f3b;stroke-width:2px}
.normal-head{fill:#1b7f3b}
.thin{stroke:#777;stroke-width:1px;stroke-dasharray:4 4}
.dot{fill:#111}
.query{fill:#fff;stroke:#c2185b;stroke-width:2px}
"""


def number(value):
    """A coordinate with one decimal, and no negative zero."""
    text = f"{value:.1f}"
    return "0.0" if text == "-0.0" else text


class Tool:
    """Runs the tool in the project's folder."""

    def __init__(self, path):
        self.path = str(pathlib.Path(path).resolve())

    def text(self, *arguments, stdin=""):
        result = subprocess.run([self.path, *arguments], cwd=ROOT, input=stdin, capture_output=True, text=True, check=True)
        return result.stdout

    def rows(self, *arguments, header="", lines=()):
        """The rows of a CSV answer by the columns' names without unit; numbers where a cell holds one."""
        stdin = "\n".join([header, *(",".join(repr(float(cell)) for cell in line) for line in lines)]) + "\n"
        reader = csv.DictReader(io.StringIO(self.text(*arguments, stdin=stdin if header else "")))
        return [{name.split("[")[0]: self.cell(cell) for name, cell in row.items()} for row in reader]

    def positions(self, screen, uvs, *options):
        """Positions of UVs; none where the screen has none."""
        rows = self.rows("map", screen, *options, "--to", "3d", header="u,v", lines=uvs)
        return [(row["x"], row["y"], row["z"]) if row["status"] != "outside" else None for row in rows]

    def angle(self, screen, name):
        """An angle of a screen in degrees."""
        line = next(line for line in self.text("info", screen).splitlines() if line.startswith(name + ":"))
        return float(line.split(":")[1].split()[0])

    @staticmethod
    def cell(text):
        try:
            return float(text)
        except ValueError:
            return text


class View:
    """A view of the world: two of its coordinates, with a scale and the place of the origin on the page."""

    def __init__(self, x, y, scale, across=0, upward=2):
        self.x, self.y, self.scale, self.across, self.upward = x, y, scale, across, upward

    def at(self, position):
        return self.flat(position[self.across], position[self.upward])

    def flat(self, right, up):
        return (self.x + self.scale * right, self.y - self.scale * up)


class Picture:
    """An SVG document that grows."""

    def __init__(self, width, height, title):
        self.parts = ['<?xml version="1.0" encoding="UTF-8"?>',
                      f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">',
                      f"<title>{xml.sax.saxutils.escape(title)}</title>", f"<style>\n{STYLE}</style>",
                      f'<rect class="page" width="{width}" height="{height}"/>']

    def svg(self):
        return "\n".join([*self.parts, "</svg>"]) + "\n"

    def panel(self, x, y, width, height, title):
        self.parts.append(f'<rect class="panel" x="{x}" y="{y}" width="{width}" height="{height}"/>')
        self.text((x + 12, y + 22), title, "title")

    def text(self, at, text, style="", anchor="start"):
        self.parts.append(f'<text class="{style}" x="{number(at[0])}" y="{number(at[1])}" text-anchor="{anchor}">'
                          f"{xml.sax.saxutils.escape(text)}</text>")

    def path(self, points, style, closed=False):
        if len(points) > 1:
            self.parts.append(f'<path class="{style}" d="M{" ".join(f"{number(x)} {number(y)}" for x, y in points)}{"z" if closed else ""}"/>')

    def dot(self, at, style="dot", radius=4.5):
        self.parts.append(f'<circle class="{style}" cx="{number(at[0])}" cy="{number(at[1])}" r="{radius}"/>')

    def arrow(self, start, end, style, shaft=None):
        """A line with a head at its end; the shaft may hold points on the way."""
        points = [start, *(shaft or []), end]
        self.path(points, style)
        before = points[-2]
        length = math.hypot(end[0] - before[0], end[1] - before[1])
        along = ((end[0] - before[0]) / length, (end[1] - before[1]) / length)
        wings = [(end[0] - 10 * along[0] + side * 4 * along[1], end[1] - 10 * along[1] - side * 4 * along[0]) for side in (1, -1)]
        corners = " ".join(f"{number(x)} {number(y)}" for x, y in (end, *wings))
        self.parts.append(f'<path class="{style}-head" d="M{corners}z"/>')

    def axes(self, at, right, up, length=44):
        """Two axes of the world from a place of the page."""
        for label, end, place in ((right, (at[0] + length, at[1]), (at[0] + length + 6, at[1] + 4)),
                                  (up, (at[0], at[1] - length), (at[0] - 4, at[1] - length - 7))):
            self.arrow(at, end, "axis")
            self.text(place, label, "note")
