"""One wall as many programs write it: the same 24 triangles, positions and UVs in more than a hundred styles."""
from dataclasses import dataclass, replace


def six_digits(number):
    return f"{number:.6f}"


@dataclass(frozen=True)
class Style:
    """The habits of one program."""
    header: str = ""
    end: str = "\n"
    separator: str = " "
    trailing: str = ""
    number: object = six_digits
    corner: str = "vtn"  # what a corner refers to
    cut: str = "quads"  # or triangles, or strips: one polygon a row
    relative: bool = False
    order: str = "blocks"  # or rows: data and faces in turn; or faces first
    color: str = ""  # behind a position
    third_uv: str = ""
    normal: str = "0 -1 0"
    group: str = ""  # before the faces
    footer: str = ""
    final_end: bool = True
    mark: bytes = b""
    face_keyword: str = "f"
    face_comment: str = ""
    joined: str = ""  # between the corners of a face
    codec: str = "utf-8"
    unused: bool = False  # a vertex and a UV that no face refers to

    @property
    def has_uv(self):
        return "t" in self.corner


COLUMNS, ROWS = 4, 3
FORMS = {"vt": "{v}/{t}", "vn": "{v}//{n}", "vtn": "{v}/{t}/{n}"}


def text_of(style):
    return style.mark + _Writer(style).text().encode(style.codec)


class _Writer:
    def __init__(self, style):
        self.style = style
        self.lines = []
        self.counts = {"v": 0, "t": 0, "n": 0}

    def text(self):
        style = self.style
        self.lines += style.header.splitlines()
        if style.order == "faces":
            self.faces(range(ROWS))
        if style.order == "rows":
            self.row_of_data(0)
            for row in range(ROWS):
                self.row_of_data(row + 1)
                self.faces([row])
        else:
            for kind in "vtn":
                for row in range(ROWS + 1):
                    self.data(row, kind)
            if style.unused:
                self.add("v", ["1", "2", "3"])
                self.add("vt", ["0.5", "0.5"])
            if style.order != "faces":
                self.faces(range(ROWS))
        self.lines += style.footer.splitlines()
        text = style.end.join(self.lines)
        return text + style.end if style.final_end else text

    def row_of_data(self, row):
        for kind in "vtn":
            self.data(row, kind)

    def data(self, row, kind):
        if kind != "v" and kind not in self.style.corner:
            return
        if kind == "n" and row > 0:
            return
        for column in range(COLUMNS + 1 if kind != "n" else 1):
            self.counts[kind] += 1
            if kind == "v":
                numbers = [self.style.number(x) for x in (4 * column / COLUMNS - 2, 0.0, 1.5 - 3 * row / ROWS)]
                self.add("v", numbers + self.style.color.split())
            elif kind == "t":
                numbers = [self.style.number(x) for x in (column / COLUMNS, row / ROWS)]
                self.add("vt", numbers + self.style.third_uv.split())
            else:
                self.add("vn", self.style.normal.split())

    def add(self, keyword, words, comment=""):
        self.lines.append(self.style.separator.join([keyword, *words]) + self.style.trailing + comment)

    def reference(self, number, kind):
        return str(number - self.counts[kind] - 1) if self.style.relative else str(number)

    def corner(self, row, column):
        vertex = row * (COLUMNS + 1) + column + 1
        parts = {"v": self.reference(vertex, "v"), "t": self.reference(vertex, "t"), "n": self.reference(1, "n")}
        form = FORMS.get(self.style.corner, self.style.corner.replace("v", "{v}"))
        return form.format(**parts)

    def faces(self, rows):
        self.lines += self.style.group.splitlines()
        for row in rows:
            for polygon in self.polygons(row):
                corners = [self.style.joined + self.corner(*place) for place in polygon]
                self.add(self.style.face_keyword, corners, self.style.face_comment)

    def polygons(self, row):
        if self.style.cut == "strips":
            return [[(row, 0), *((row + 1, c) for c in range(COLUMNS + 1)), *((row, c) for c in range(COLUMNS, 0, -1))]]
        cells = [[(row, c), (row + 1, c), (row + 1, c + 1), (row, c + 1)] for c in range(COLUMNS)]
        if self.style.cut == "quads":
            return cells
        return [triangle for a, b, c, d in cells for triangle in ((a, b, c), (a, c, d))]


def _digits(count):
    return lambda number: f"{number:.{count}g}"


def _fixed(count):
    return lambda number: f"{number:.{count}f}"


MODELLER = Style(header="# Modeller 3.1\nmtllib wall.mtl\no Wall", group="usemtl Material\ns off")
SCULPTOR = Style(header="# Sculpted\n#Vertex Count 20\n#Face Count 12", color="0.752941 0.752941 0.752941", corner="vt", cut="quads")
CAD = Style(header="# Exported from CAD\n# Units: meters", number=_fixed(8), corner="vn", cut="triangles", end="\r\n")
SCANNER = Style(header="# Scan", number=_digits(9), corner="v", cut="triangles", color="127 127 127")
GAME = Style(header="# Level", corner="vtn", cut="triangles", end="\r\n", third_uv="0.0", group="g default\nusemtl wall")
SCRIPT = Style(number=repr, corner="v", cut="quads")
RELATIVE = Style(relative=True, order="rows")
OLD = Style(end="\r", header="# Old")

STYLES = {
    "as a modelling program": MODELLER,
    "as a modelling program without normals": replace(MODELLER, corner="vt"),
    "as a modelling program without UVs": replace(MODELLER, corner="vn"),
    "as a modelling program with positions alone": replace(MODELLER, corner="v"),
    "as a modelling program with triangles": replace(MODELLER, cut="triangles"),
    "as a modelling program with long polygons": replace(MODELLER, cut="strips"),
    "as a modelling program with trailing blanks": replace(MODELLER, trailing=" "),
    "as a modelling program with two blanks behind the keyword": replace(MODELLER, separator="  "),
    "as a modelling program on Windows": replace(MODELLER, end="\r\n"),
    "as a modelling program on Windows with trailing blanks": replace(MODELLER, end="\r\n", trailing=" "),
    "as a modelling program on Windows without normals": replace(MODELLER, end="\r\n", corner="vt"),
    "as a modelling program on Windows without a final line end": replace(MODELLER, end="\r\n", final_end=False),
    "as a modelling program without a final line end": replace(MODELLER, final_end=False),
    "as a modelling program with smoothing groups": replace(MODELLER, group="g wall\nusemtl a\ns 1"),
    "as a modelling program with curves beside the mesh": replace(MODELLER, footer="o Path\nv 9 9 9\nv 8 8 8\nl 21 22"),
    "as a modelling program with points": replace(MODELLER, footer="p 1 2 3\np -1"),
    "as a modelling program with vertex groups as comments": replace(MODELLER, footer="# group: \\\n# vertex 1"),
    "as a sculpting program": SCULPTOR,
    "as a sculpting program with its own color comments": replace(SCULPTOR, color="", footer="#MRGB ffffffffff\n#MRGB ffff"),
    "as a sculpting program with an open last line": replace(SCULPTOR, final_end=False),
    "as a sculpting program with w and color": replace(SCULPTOR, color="1.0 0.5 0.5 0.5"),
    "as a sculpting program with old line ends": replace(SCULPTOR, end="\r"),
    "as a sculpting program with triangles": replace(SCULPTOR, cut="triangles"),
    "as a sculpting program with groups and no members": replace(SCULPTOR, group="g a\ng b\ng"),
    "as a painting program": replace(SCULPTOR, corner="vtn", color="1 1 1", third_uv="0"),
    "as a CAD program": CAD,
    "as a CAD program with blanks behind faces": replace(CAD, trailing=" "),
    "as a CAD program with a name with blanks": replace(CAD, group="g Wall panel: front #2\nusemtl RAL 9010"),
    "as a CAD program with a folder as the library": replace(CAD, header="mtllib C:\\Models\\wall\\"),
    "as a CAD program with a folder as the library on Linux": replace(CAD, end="\n", header="mtllib C:\\Models\\wall\\"),
    "as a CAD program with all digits": replace(CAD, number=_digits(17)),
    "as a CAD program with exponents": replace(CAD, number=lambda x: f"{x:.9E}"),
    "as a CAD program with exponents of three digits": replace(CAD, number=lambda x: f"{x:.9e}".replace("e+0", "e+00").replace("e-0", "e-00")),
    "as a CAD program with plus signs": replace(CAD, number=lambda x: f"{x:+.6f}"),
    "as a CAD program with plus signs in normals": replace(CAD, normal="+0.0 -1.0 +0.0"),
    "as a CAD program with tabs": replace(CAD, separator="\t"),
    "as a CAD program with aligned columns": replace(CAD, number=lambda x: f"{x:14.6f}"),
    "as a CAD program with indented lines": replace(CAD, face_keyword="  f"),
    "as a CAD program with lines indented by tabs": replace(CAD, face_keyword="\tf"),
    "as a CAD program with curves": replace(CAD, footer="cstype bspline\ndeg 3\ncurv 0 1 1 2 3 4\nparm u 0 0 0 0 1 1 1 1\nend"),
    "as a CAD program with surfaces on several lines": replace(CAD, footer="cstype bezier\ndeg 3 3\nsurf 0 1 0 1 1 2 3 4 \\\n5 6 7 8\nparm u 0 1\nend", end="\n"),
    "as a CAD program with parameter points": replace(CAD, header="vp 0 1\nvp 1 1 1"),
    "as a CAD program with layers": replace(CAD, group="g Layer_01\ng Layer_02 Layer_01\ns 0"),
    "as a CAD program with an empty object": replace(CAD, header="o Empty\no Wall"),
    "as a CAD program with the last UV out of order": replace(CAD, footer="vt 0 0\nvn 1 0 0"),
    "as a scanning program": SCANNER,
    "as a scanning program without colors": replace(SCANNER, color=""),
    "as a scanning program with colors from 0 to 1": replace(SCANNER, color="0.5 0.5 0.5"),
    "as a scanning program with color and opacity": replace(SCANNER, color="0.5 0.5 0.5 1.0"),
    "as a scanning program with a normal for each vertex": replace(SCANNER, corner="vn"),
    "as a scanning program with normals that are no numbers": replace(SCANNER, corner="vn", normal="nan nan nan"),
    "as a scanning program with normals of nothing": replace(SCANNER, corner="vn", normal="0 0 0"),
    "as a scanning program with normals of division by zero": replace(SCANNER, corner="vn", normal="-1.#IND 1.#QNAN 0"),
    "as a scanning program with vertices that are not used": replace(SCANNER, unused=True),
    "as a scanning program with old line ends": replace(SCANNER, end="\r"),
    "as a scanning program with an open last line": replace(SCANNER, final_end=False),
    "as a scanning program with a long header": replace(SCANNER, header="\n".join(f"# point {i}" for i in range(3000))),
    "as a scanning program with texture": replace(SCANNER, corner="vt", group="usemtl material_0000"),
    "as a photo program": replace(SCANNER, corner="vt", header="mtllib scene.obj.mtl", number=_fixed(12), color=""),
    "as a game program": GAME,
    "as a game program with relative numbers": replace(GAME, relative=True),
    "as a game program without normals": replace(GAME, corner="vt"),
    "as a game program with lines of one object each": replace(GAME, order="rows", group="o part\ng part\nusemtl part"),
    "as a game program with relative numbers by object": replace(GAME, order="rows", relative=True, group="o part"),
    "as a game program with a byte order mark": replace(GAME, mark=b"\xef\xbb\xbf"),
    "as a game program with a byte order mark before a vertex": replace(GAME, mark=b"\xef\xbb\xbf", header=""),
    "as a game program with empty lines": replace(GAME, header="\n\n# Level\n\n", footer="\n\n"),
    "as a game program with degrees of detail": replace(GAME, header="bevel on\nc_interp off\nd_interp on"),
    "as a game program with shadows": replace(GAME, footer="shadow_obj wall.obj\ntrace_obj wall.obj"),
    "as a game program with UVs beside the square": replace(GAME, footer="vt 2 2 0"),
    "as a game program with seven digits": replace(GAME, number=_digits(7)),
    "as a script": SCRIPT,
    "as a script with triangles": replace(SCRIPT, cut="triangles"),
    "as a script with UVs": replace(SCRIPT, corner="vt"),
    "as a script with normals": replace(SCRIPT, corner="vn"),
    "as a script with everything": replace(SCRIPT, corner="vtn"),
    "as a script without a final line end": replace(SCRIPT, final_end=False),
    "as a script with whole numbers where they are": replace(SCRIPT, number=lambda x: f"{x:g}"),
    "as a script with bare points": replace(SCRIPT, number=lambda x: f"{x:.9g}".replace("0.", ".")),
    "as a script with points behind": replace(SCRIPT, number=lambda x: f"{x:g}." if x == int(x) else f"{x:.9g}"),
    "as a script with comments behind faces": replace(SCRIPT, face_comment=" # cell"),
    "as a script with comments close behind faces": replace(SCRIPT, face_comment="#cell"),
    "as a script with comments behind everything": replace(SCRIPT, trailing=" # made"),
    "as a script that writes faces first": replace(SCRIPT, order="faces", corner="vtn"),
    "as a script that writes faces first without normals": replace(SCRIPT, order="faces"),
    "as a script that counts back": replace(SCRIPT, relative=True),
    "as a script that writes row by row": replace(SCRIPT, order="rows"),
    "as a script in another country": replace(SCRIPT, header="# Größe der Wand: Übermaß", group="g Wände"),
    "as a script with 8-bit letters": replace(SCRIPT, header="# Größe", group="g Wände", codec="latin-1"),
    "as a script with dollar comments": replace(SCRIPT, header="$ made"),
    "as a script with slashes behind which nothing is": replace(SCRIPT, corner="v//"),
    "as a script with the number 0 for none": replace(SCRIPT, corner="v/0/0"),
    "as a script with a polygon a row": replace(SCRIPT, cut="strips"),
    "as a script with lines that go on": replace(SCRIPT, joined="\\\n "),
    "as a script with lines that go on, on Windows": replace(SCRIPT, joined="\\\r\n ", end="\r\n"),
    "as a script with line ends made twice": replace(MODELLER, end="\r\r\n"),
    "as a script with line ends made twice and no normals": replace(SCRIPT, end="\r\r\n"),
    "as a library of animations": replace(RELATIVE, header="# animation", group="s 1"),
    "as a library with relative numbers": RELATIVE,
    "as a library with relative numbers without normals": replace(RELATIVE, corner="vt"),
    "as a library with relative positions alone": replace(RELATIVE, corner="v"),
    "as a library with relative normals": replace(RELATIVE, corner="vn"),
    "as a library with relative polygons": replace(RELATIVE, cut="strips"),
    "as a library with relative numbers on Windows": replace(RELATIVE, end="\r\n"),
    "as a library with tabs": replace(RELATIVE, separator="\t", trailing="\t"),
    "as a program on an old Mac": OLD,
    "as a program on an old Mac without normals": replace(OLD, corner="vt"),
    "as a program on an old Mac without a final line end": replace(OLD, final_end=False),
    "as a program under DOS": replace(GAME, footer="\x1a", final_end=False),
    "as a program under DOS that ends a face by its mark": replace(GAME, trailing="\x1a"),
    "as a program that fills its blocks": replace(MODELLER, footer="\0" * 300, final_end=False),
    "as a program of the first days": replace(MODELLER, face_keyword="fo"),
    "as an architecture program": replace(MODELLER, number=_fixed(4), header="# File units = meters", end="\r\n", corner="vtn", trailing=" "),
    "as an architecture program with many groups": replace(MODELLER, group="\n".join(f"g Mesh{i} Model" for i in range(50))),
    "as an architecture program with faces of two corners": replace(MODELLER, footer="f 1/1/1 2/2/1\nf 1"),
    "as a terrain program": replace(SCRIPT, number=_fixed(2), corner="vt", cut="triangles"),
    "as a terrain program with blank groups": replace(SCRIPT, group="g \no ", corner="vt"),
    "as a medical program": replace(SCANNER, number=_digits(6), header="# vtk\n\n", corner="vn", normal="0 -1 0"),
    "as a web program": replace(MODELLER, number=repr, header="mtllib ./wall.mtl\no"),
    "as a web program with null normals": replace(MODELLER, footer="vn null null null"),
    "as a web program with a UV that is no number": replace(MODELLER, footer="vt NaN NaN"),
}

# Those that are refused, and why.
REFUSED = {
    "as a program with commas as points": (replace(SCRIPT, number=lambda x: f"{x:.6f}".replace(".", ",")), 'found "-2,000000" as a coordinate'),
    "as a scanning program with holes in its data": (replace(SCANNER, footer="v nan nan nan"), 'found "nan" as a coordinate'),
}

# Those whose encoding changes.
TRANSCODED = {
    "as a program with 16-bit letters": replace(MODELLER, codec="utf-16"),
    "as a program with 16-bit letters without mark": replace(MODELLER, codec="utf-16-le"),
    "as a program with 16-bit letters of a large machine": replace(MODELLER, codec="utf-16-be"),
}
