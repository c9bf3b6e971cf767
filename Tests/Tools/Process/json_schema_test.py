"""Each --json output follows its schema, and the schemas refuse everything else."""
import copy
import json
import pathlib
import unittest

import jsonschema

from obj_case import wall
from tool_case import FLAT, SAMPLES, SCREENS, WALL, ToolTest

SCHEMAS = pathlib.Path(__file__).resolve().parents[3] / "Docs" / "schemas"


def sample(name):
    return str(SAMPLES / f"flat-wall-{name}.csv")


# Command lines by the schema that their output follows.
RUNS = {
    "info": [["info", WALL], ["info", WALL, "--unit", "mm"], *(["info", screen] for screen in SCREENS),
             ["info", "bare.obj", "--repair"]],
    "info-objects": [["info", "good.obj", "--list-objects"]],
    "map": [["map", WALL, "--to", "3d", sample("uv")], ["map", WALL, "--to", "2d", sample("points")],
            ["map", WALL, "--to", "3d", sample("uv"), "--extrapolate"], ["map", WALL, "--to", "2d", sample("points"), "--extrapolate"],
            ["map", WALL, "--to", "3d", "passed.csv"]],
    "intersect": [["intersect", WALL, sample("rays")], ["intersect", WALL, "passed-rays.csv"], ["intersect", WALL, sample("rays"), "--extrapolate"]],
    "normal": [["normal", WALL, sample("points")]],
    "closest": [["closest", WALL, sample("points")]],
    "nearest": [["nearest", WALL, sample("lines")], ["nearest", WALL, sample("lines"), "--extrapolate"]],
    "grid": [["grid", screen, "--density", "3"] for screen in SCREENS],
    "check": [["check", "bad.obj"], ["check", "good.obj"]],
    "boundary": [["boundary", screen] for screen in SCREENS],
    "points": [["points", screen] for screen in SCREENS],
    "compare": [["compare", SCREENS[0], SCREENS[3]], ["compare", WALL, WALL, "--unit", "mm"], ["compare", WALL, str(SAMPLES / "measured-dome.obj")],
                ["compare", WALL, WALL, "--max", "1mm"]],
    "channel": [["channel", WALL, sample("rays")], ["channel", WALL, sample("rays"), "--extra", sample("rays")]],
}


PASSED = ("fromX", "fromY", "fromZ", "toX", "toY", "toZ", "dx", "dy", "dz")


def validator(name):
    schema = json.loads((SCHEMAS / f"{name}.schema.json").read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


def refuse_constant(name):
    raise ValueError(name)


def objects_in(value):
    """The objects of a document, that themselves may be changed."""
    if isinstance(value, dict):
        yield value
    for child in value.values() if isinstance(value, dict) else value if isinstance(value, list) else ():
        yield from objects_in(child)


class JsonSchema(ToolTest):
    def setUp(self):
        super().setUp()
        self.file("good.obj", wall())
        self.file("bare.obj", wall(corner="{0}/{0}"))
        self.file("passed.csv", "id,v,u,number\na 1,0.5,0.5,1.5\n007,,,-3\n,0.25,0.5,\n")
        self.file("passed-rays.csv", "id,fromX,fromY,fromZ,dX,dY,dZ\na,0,-5,0,0,1,0\nb,0,-5,0,0,-1,0\n,,,,,,\n")
        self.file("bad.obj", wall(corner="-{0}/{0}")[:-1] + "\nf 1/1 1/1 2/2")

    def document(self, arguments, **options):
        return json.loads(self.run_tool(*arguments, "--json", **options).stdout, parse_constant=refuse_constant)

    def test_every_output_follows_its_schema(self):
        self.assertEqual({path.name for path in SCHEMAS.iterdir()}, {f"{name}.schema.json" for name in RUNS})
        for name, runs in RUNS.items():
            for arguments in runs:
                with self.subTest(arguments):
                    validator(name).validate(self.document(arguments))

    def test_numbers_that_are_not_finite_are_null(self):
        flat = str(self.file("line.xml", FLAT.format(0, 0)))
        for name, arguments, stdin in (("info", ["info", flat], b""), ("intersect", ["intersect", flat], b"0,-1,0,0,0,0\n0,nan,0,0,0,0"),
                                       ("nearest", ["nearest", flat], b"0,-1,0,0,1,0\ninf,0,0,0,1,0"),
                                       ("map", ["map", flat, "--to", "3d"], b"nan,inf\n0,0"), ("grid", ["grid", flat], b""),
                                       ("boundary", ["boundary", flat], b""), ("points", ["points", flat], b""), ("channel", ["channel", flat, "-"], b"0,-1,0,0,1e300,0")):
            with self.subTest(name):
                validator(name).validate(self.document(arguments, stdin=stdin))

    def test_further_columns_are_text_numbers_or_null(self):
        rows = self.document(["map", WALL, "--to", "3d", "passed.csv"])["rows"]
        self.assertEqual([(row["id"], row["number"], row["status"]) for row in rows], [("a 1", 1.5, "on_screen"), ("007", -3, "empty"), (None, None, "on_screen")])
        ids = ['"12"', "12", "1234567890123456", "1.50", '"a,""b"""', "nan", "1e999", ".5", "-"]
        rows = self.document(["map", WALL, "--to", "3d"], stdin=("u,v,id\n" + "".join(f"0,0,{text}\n" for text in ids)).encode())["rows"]
        self.assertEqual([row["id"] for row in rows], ["12", 12, "1234567890123456", 1.5, 'a,"b"', None, "1e999", ".5", "-"])

    def test_schemas_refuse_members_that_are_new_or_missing(self):
        for name, runs in RUNS.items():
            document = self.document(runs[0])
            count = len(list(objects_in(document)))
            for index in range(count):
                for member in [None, *list(objects_in(document))[index]]:
                    changed = copy.deepcopy(document)
                    target = list(objects_in(changed))[index]
                    if member is None:
                        target["new"] = 1 if target is changed.get("parameters") else [1]  # rows may have further members with one value
                    elif member in PASSED:
                        continue  # a column of the input
                    elif target is changed.get("parameters"):
                        continue  # each type of screen has its own
                    else:
                        del target[member]
                    with self.subTest(name=name, index=index, member=member):
                        self.assertEqual(target is changed.get("parameters") and member is None, validator(name).is_valid(changed))

    def test_rows_are_the_rows_of_the_csv(self):
        for name, runs in RUNS.items():
            if name in ("info", "info-objects", "check"):
                continue
            for arguments in runs:
                header, *lines = self.text_of(*arguments).splitlines()
                columns = [column.split("[")[0] for column in header.split(",")]
                rows = self.document(arguments)["rows"]
                self.assertEqual([list(row) for row in rows], [columns] * len(lines))
                for row, line in zip(rows, lines):
                    for value, cell in zip(row.values(), line.split(",")):
                        self.assertEqual("" if value is None else str(value), cell if isinstance(value, str) or cell == "" else str(type(value)(cell)))


if __name__ == "__main__":
    unittest.main()
