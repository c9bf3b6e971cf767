"""A base class for tests of plots."""
import re
import subprocess
import xml.etree.ElementTree as ElementTree

from tool_case import ToolTest

SVG = "{http://www.w3.org/2000/svg}"


class PlotTest(ToolTest):
    def plot(self, *arguments, **options):
        return self.text_of("plot", *arguments, **options)

    def plot_mesh(self, text, *options, name="mesh.obj", **more):
        """The plot of such an OBJ text. The tool warns if a mesh has several boundaries."""
        self.file(name, text)
        result = self.run_tool("plot", name, *options, **more)
        self.assertEqual(result.returncode, 0)
        self.assertRegex(result.stderr.decode(), r"\A(warning: [^\n]*: (the mesh has several boundaries,|positions are rounded) [^\n]*\n)*\Z")
        return result.stdout.decode()

    def parsed(self, svg):
        """The document, after what must hold for each one."""
        subprocess.run(["xmllint", "--noout", "-"], input=svg.encode(), check=True)
        root = ElementTree.fromstring(svg.encode())
        self.assertEqual(root.tag, SVG + "svg")
        self.assertLessEqual({element.tag.removeprefix(SVG) for element in root.iter()},
                             {"svg", "title", "style", "defs", "pattern", "path", "circle", "rect", "text"})
        width, height = float(root.get("width")), float(root.get("height"))
        definitions = set(root.iterfind(f"{SVG}defs//"))
        for element in set(root.iter()) - definitions:
            self.assertFalse([name for name in element.attrib if "href" in name or name.startswith("on")])
            for name in set(element.attrib) - {"class", "text-anchor", "viewBox", "xmlns"}:
                numbers = re.sub(r"rotate\(|\)|[Mz]", " ", element.get(name)).split()
                for number in numbers:
                    self.assertRegex(number, r"\A-?[0-9]+(\.[0-9])?\Z")
        for element in root.iter(SVG + "path"):
            numbers = [float(number) for number in re.findall(r"-?[0-9.]+", element.get("d"))]
            self.assertTrue(all(0 <= x <= width for x in numbers[::2]) and all(0 <= y <= height for y in numbers[1::2]))
        style = root.find(SVG + "style").text
        self.assertNotRegex(style.replace("url(#", ""), r"url|import|@")
        self.assertEqual(set(re.findall(r"url\(#([^)]*)\)", style)), {element.get("id") for element in definitions} - {None})
        return root

    def texts(self, svg):
        return [element.text for element in self.parsed(svg).iter(SVG + "text") if element.text]

    def classes(self, svg):
        return {element.get("class") for element in self.parsed(svg).iter()}

    def points_of(self, svg, style_class):
        """How many corners and ends the paths of a class have."""
        return sum(len(re.findall(r"-?[0-9.]+", path.get("d"))) // 2 for path in self.parsed(svg).iter(SVG + "path") if path.get("class") == style_class)

    def assert_no_overlap(self, svg):
        """Labels and dimensions of a page, taken as boxes of a narrow font, leave each other free."""
        boxes = []
        for element in self.parsed(svg).iter(SVG + "text"):
            if element.get("class") not in ("label", "size") or element.get("transform") or not element.text:
                continue
            left, bottom, size = float(element.get("x")), float(element.get("y")), 6.0 * len(element.text)
            left -= {"middle": size / 2, "end": size}.get(element.get("text-anchor"), 0.0)
            boxes.append((left, left + size, bottom - 8, bottom, element.text))
        for i, a in enumerate(boxes):
            for b in boxes[:i]:
                self.assertFalse(a[0] < b[1] and b[0] < a[1] and a[2] < b[3] and b[2] < a[3], (a, b))
