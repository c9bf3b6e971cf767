"""Errors in files of curved screens, and queries that do not terminate."""
import re
import unittest

from tool_case import ToolTest

CENTER = "<Center_Point>{}</Center_Point>"
ROUND = "<Screen_Radius>{1}</Screen_Radius><Screen_MinTheta>{2}</Screen_MinTheta><Screen_MaxTheta>{3}</Screen_MaxTheta>"
PHI = "<Screen_MinPhi>{4}</Screen_MinPhi><Screen_MaxPhi>{5}</Screen_MaxPhi>"


def document(type_name, body):
    return f'<ScreenGeometry ClassType="class {type_name}">\n{body}</ScreenGeometry>\n'


def cylinder(center="0, 0, 0", radius="3", low="-1", high="1", height="2"):
    return document("CylinderScreen", CENTER.format(center) + ROUND.format(0, radius, low, high) + f"<Screen_Height>{height}</Screen_Height>")


def sphere(center="0, 0, 0", radius="3", low="-1", high="1", bottom="-1", top="1"):
    return document("SphericalScreen", CENTER.format(center) + (ROUND + PHI).format(0, radius, low, high, bottom, top))


def ruled(width="3", height="2", low="-1", high="1", bottom="-1", top="1"):
    return document("RuledSurfaceScreen", f"<Screen_Width>{width}</Screen_Width><Screen_Height>{height}</Screen_Height>"
                    "<Screen_MinTheta>{}</Screen_MinTheta><Screen_MaxTheta>{}</Screen_MaxTheta>".format(low, high) + PHI.format(0, 0, 0, 0, bottom, top))


RIGHT = {"cylinder": cylinder(), "sphere": sphere(), "ruled": ruled()}
LENGTH = r"expected a number from 0 to 1e\+150"
POSITION = r"expected a number from -1e\+150 to 1e\+150"
ANGLE = r"expected a number from -1000 to 1000 \(radians\)"
ARC = "expected a number from 1e-09 to 6.283185306179586"
THREE = 'expected three numbers such as "0, 1.5, -2"'

# name: content of the file, and what follows "error: a.xml:" in the line.
REFUSED = {
    "negative_radius": (cylinder(radius="-1"), '2: found "-1" in Screen_Radius, ' + LENGTH),
    "radius_nan": (sphere(radius="nan"), '2: found "nan" in Screen_Radius, ' + LENGTH),
    "infinite_radius": (sphere(radius="inf"), '2: found "inf" in Screen_Radius, ' + LENGTH),
    "huge_radius": (sphere(radius="2e150"), '2: found "2e150" in Screen_Radius, ' + LENGTH),
    "negative_height": (cylinder(height="-0.1"), '2: found "-0.1" in Screen_Height, ' + LENGTH),
    "negative_width": (ruled(width="-0.1"), '2: found "-0.1" in Screen_Width, ' + LENGTH),
    "angle_in_degrees": (cylinder(low="-100deg"), '2: found "-100deg" in Screen_MinTheta, expected a number'),
    "angle_nan": (cylinder(high="nan"), '2: found "nan" in Screen_MaxTheta, ' + ANGLE),
    "infinite_angle": (sphere(bottom="-inf"), '2: found "-inf" in Screen_MinPhi, ' + ANGLE),
    "endless_low_limit": (cylinder(low="-1e9"), '2: found "-1e9" in Screen_MinTheta, ' + ANGLE),
    "endless_high_limit": (cylinder(high="1e9"), '2: found "1e9" in Screen_MaxTheta, ' + ANGLE),
    "endless_limits": (cylinder(low="1e300", high="1e300"), '2: found "1e300" in Screen_MinTheta, ' + ANGLE),
    "endless_outline": (sphere(top="1e9"), '2: found "1e9" in Screen_MaxPhi, ' + ANGLE),
    "angle_just_too_large": (sphere(high="1000.0000000000001"), '2: found "1000.0000000000001" in Screen_MaxTheta, ' + ANGLE),
    "centre_of_two": (cylinder("0, 0"), '2: found "0, 0" in Center_Point, ' + THREE),
    "centre_of_four": (cylinder("0, 0, 0, 0"), '2: found "0, 0, 0, 0" in Center_Point, ' + THREE),
    "centre_without_blanks": (sphere("0,1,2"), '2: found "0,1,2" in Center_Point, ' + THREE),
    "centre_without_commas": (sphere("0 1 2"), '2: found "0 1 2" in Center_Point, ' + THREE),
    "centre_in_words": (sphere("0, 1, up"), '2: found "0, 1, up" in Center_Point, ' + THREE),
    "empty_centre": (sphere(""), '2: found "" in Center_Point, ' + THREE),
    "centre_nan": (sphere("0, nan, 0"), '2: found "0, nan, 0" in Center_Point, ' + POSITION),
    "huge_centre": (cylinder("0, 0, -2e150"), '2: found "0, 0, -2e150" in Center_Point, ' + POSITION),
    "arc_of_0": (ruled(low="1", high="1"), "1: found a top arc of 0 radians, " + ARC),
    "endless_arc": (ruled(low="0", high="9.9e-10"), "1: found a top arc of 9.9e-10 radians, " + ARC),
    "negative_arc": (ruled(bottom="1", top="-1"), "1: found a bottom arc of -2 radians, " + ARC),
    "endless_negative_arc": (ruled(low="1e-10", high="0"), "1: found a top arc of -1e-10 radians, " + ARC),
    "arc_of_a_full_circle": (ruled(low="-3.141592653589793", high="3.141592653589793"), "1: found a top arc of 6.283185307179586 radians, " + ARC),
    "arc_beyond_a_full_circle": (ruled(bottom="0", top="7"), "1: found a bottom arc of 7 radians, " + ARC),
}

ACCEPTED = {
    "reversed_limits": cylinder(low="1", high="-1"),
    "limits_beyond_a_circle": cylinder(low="-4", high="4"),
    "greatest_limits": cylinder(low="-1000", high="1000"),
    "greatest_outline": sphere(low="-1000", high="1000", bottom="-1000", top="1000"),
    "limits_on_one_side": cylinder(low="999", high="1000"),
    "least_arcs": ruled(low="0", high="1e-9", bottom="0", top="1e-9"),
    "greatest_arcs": ruled(low="0", high="6.2831853061", bottom="0", top="6.2831853061"),
    "very_different_arcs": ruled(low="0", high="1e-9", bottom="0", top="6"),
    "largest": sphere(radius="1e150", center="1e150, -1e150, 1e150"),
    "centre_with_more_blanks": cylinder(" 1 , 2 ,\t3\n"),
}


class ShapeErrors(ToolTest):
    def test_a_file_that_is_no_usable_screen_is_refused(self):
        for name, (content, message) in REFUSED.items():
            with self.subTest(name):
                self.file("a.xml", content)
                result = self.run_tool("info", "a.xml")
                self.assertRegex(result.stderr.decode(), r"\Aerror: a\.xml:" + message + r"\n\Z")
                self.assertEqual((result.returncode, result.stdout), (2, b""))

    def test_every_query_of_what_is_accepted_ends(self):
        queries = (["info"], ["grid"], ["boundary"], ["points"], ["map", "--to", "3d"], ["map", "--to", "2d"], ["intersect"], ["nearest"], ["channel", "-"])
        inputs = {"3d": b"0.5,0.5\n0,0\n", "2d": b"0,3,0\n1,1,1\n", "intersect": b"0,0,0,0,1,0\n0,0,0,1,1,0.1\n"}
        for name, content in ACCEPTED.items():
            self.file("a.xml", content)
            for query in queries:
                with self.subTest(name=name, query=query):
                    result = self.run_tool(query[0], "a.xml", *query[1:], stdin=inputs.get(query[-1], inputs["intersect"]))
                    self.assertEqual(result.returncode, 0, result.stderr)

    def test_each_tag_has_to_be_there_once_and_right(self):
        for shape, content in RIGHT.items():
            self.file("a.xml", content)
            self.assertIn("is valid:", self.text_of("info", "a.xml"))
            for tag in re.findall(r"</(\w+)>", content)[:-1]:
                element = re.search(f"<{tag}>.*?</{tag}>", content)[0]
                for what, changed, message in (("missing", "", f"1: found no {tag} in the ScreenGeometry element, expected <{tag}>"),
                                               ("empty", f"<{tag}></{tag}>", f'2: found "" in {tag}, expected .*'),
                                               ("long", f"<{tag}>{'9' * 10000}</{tag}>", f'2: found "9{{40}}..." in {tag}, expected .*'),
                                               ("wrong", f"<{tag}>wide</{tag}>", f'2: found "wide" in {tag}, expected .*'),
                                               ("once_wrong", f"<{tag}>wide</{tag}>" + element, f'2: found "wide" in {tag}, expected .*')):
                    with self.subTest(shape=shape, tag=tag, what=what):
                        self.file("a.xml", content.replace(element, changed))
                        self.assertRegex(self.run_tool("info", "a.xml").stderr.decode(), rf"\Aerror: a\.xml:{message}\n\Z")

    def test_the_last_of_repeated_tags_holds(self):
        self.file("a.xml", cylinder("9, 9, 9").replace("</ScreenGeometry>", "<Center_Point>1, 2, 3</Center_Point></ScreenGeometry>"))
        self.assertRegex(self.text_of("info", "a.xml"), r"center: +\(1, 2, 3\) m\n")

    def test_zeros_are_warned_of(self):
        for content, what in ((cylinder(radius="0"), "radius"), (cylinder(height="0"), "height"), (cylinder(high="-1"), "range of theta"),
                              (sphere(high="-1"), "range of theta"), (sphere(top="-1"), "range of phi"), (ruled(width="0"), "width"), (ruled(height="0"), "height")):
            self.file("a.xml", content)
            with self.subTest(content):
                line = 1 if "range" in what else 2
                result = self.run_tool("points", "a.xml")
                self.assertEqual((result.returncode, result.stderr.decode()), (0, f"warning: a.xml:{line}: the {what} is 0: UV cannot be computed\n"))

    def test_a_warning_is_not_repeated(self):
        self.file("a.xml", ruled(low="-2", high="2"))
        rows = b"0,0,0,0,1,0\n" * 20
        self.assertEqual(self.run_tool("intersect", "a.xml", stdin=rows).stderr.decode().count("warning: "), 1)


if __name__ == "__main__":
    unittest.main()
