"""The page about quality states correct figures, and existing lines and programs."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
TESTS = ROOT / "Tests"

CASE = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\(", re.MULTILINE)
TOOL_CASE = re.compile(r"^ +def test_\w+\(self\):", re.MULTILINE)
# Random cases are seeded by their index.
LOOP = re.compile(r"for \(int (\w+) = 0; \1 < seedCount\(([\w']+)\); \+\+\1\) \{\s*(?:SCOPED_TRACE\(\1\);\s*)?Rng \w+\(\1\b")
CONSTANT = re.compile(r"constexpr int (k\w+) = ([\d']+);")

FIGURE = re.compile(r"^\| ([^|]+) \| ([\d,]+) \| [^|]+ \|$", re.MULTILINE)
LINE = re.compile(r"^\| `([\w/]+\.(?:h|cpp))` \| `` ?(.+?) ?`` \| [^|]+ \|$", re.MULTILINE)
PRESET = re.compile(r"--preset (\w+)")
SELECTION = re.compile(r"ctest --preset dev -R '([^']+)'")
# How far a figure may lag behind.
MAX_LAG = 1.3


def texts(pattern):
    return [file.read_text(encoding="utf-8") for file in sorted(TESTS.rglob(pattern))]


def random_cases(text):
    constants = dict(CONSTANT.findall(text))
    bounds = (constants.get(bound, bound).replace("'", "") for _, bound in LOOP.findall(text))
    return sum(int(bound) for bound in bounds if bound.isdigit())


def counts():
    """Counts of what the page lists, by the names of its rows."""
    sources = texts("*.cpp")
    return {
        "tests in C++": sum(len(CASE.findall(text)) for text in sources),
        "cases that run the tool": sum(len(TOOL_CASE.findall(text)) for text in texts("Tools/**/*_test.py")),
        "random cases": sum(random_cases(text) for text in sources),
    }


def figure_faults(page):
    stated = {name.strip(): int(count.replace(",", "")) for name, count in FIGURE.findall(page)}
    for name, count in counts().items():
        if name not in stated:
            yield f"no row states the number of {name}"
        elif not stated[name] <= count <= stated[name] * MAX_LAG:
            yield f"{name}: the page states at least {stated[name]}, there are {count}"


def line_faults(page):
    for file, line in LINE.findall(page):
        path = ROOT / file
        if not path.exists() or line not in (text.strip() for text in path.read_text(encoding="utf-8").splitlines()):
            yield f"{file} has no line {line}"


def command_faults(page):
    presets = (ROOT / "CMakePresets.json").read_text(encoding="utf-8")
    yield from (f"no preset {name}" for name in PRESET.findall(page) if f'"name": "{name}"' not in presets)
    # A word of a selection occurs in the name of a folder, a file or a suite of tests.
    names = "\n".join([str(file.relative_to(TESTS)) for file in TESTS.rglob("*")] + texts("*.cpp") + texts("CMakeLists.txt"))
    for selection in SELECTION.findall(page):
        yield from (f"no test is called {word}" for word in re.findall(r"\w+", selection) if word not in names)


def main():
    page = (ROOT / "Docs/quality.md").read_text(encoding="utf-8")
    faults = [*figure_faults(page), *line_faults(page), *command_faults(page)]
    if faults:
        sys.exit("Docs/quality.md\n" + "\n".join(faults))


if __name__ == "__main__":
    main()
