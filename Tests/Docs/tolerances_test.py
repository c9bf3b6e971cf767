"""The page about tolerances names constants of the code with their values, and leaves none out."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = [ROOT / folder for folder in ("Framework/CXX/Common", "Source/QuarnScreen", "Source/QuarnKit", "Tools")]
ROW = re.compile(r"^\| `(k\w+)` \| ([^|]+) \| [^|]+ \| `([^`]+)` \| [^|]+ \|$", re.MULTILINE)
CONSTANT = re.compile(r"\bconstexpr ((?:long )?(?:\w|::|<double, 2>)+) (k[A-Z]\w*)\s*(?:= ([^;]+)|(\([^;]+\)));")

# Limits are recognized by their names, and numbers that may be tolerances by their type.
LIMIT = re.compile(r"k(Max|Min)[A-Z]|k\w*(MemoryPer|Capacity|Limit|NoUV)")
# Measures of a drawing.
DRAWINGS = re.compile(r"Source/QuarnKit/Plot/(?:Mesh/Plot(?:Mesh|MeshUv)|Page/Plot(?:EyePanel|Labels|Legend|Panel|Sheet|Style|Uv))\.(cpp|h)")
# Constants that describe a type's range or are no number.
NO_LIMITS = {"kNaN", "kInfinity", "kEpsilon", "kMaxDouble"}


def value_of(text):
    """A number where the text is one, else the text without what differs by layout alone."""
    text = " ".join(text.split())
    try:
        return float(re.sub(r"[FLU]$", "", text))
    except ValueError:
        return text


def constants():
    """All constants of the code: (file, name) to (type, value)."""
    found = {}
    for folder in FOLDERS:
        for file in sorted([*folder.rglob("*.h"), *folder.rglob("*.cpp")]):
            for kind, name, value, arguments in CONSTANT.findall(file.read_text(encoding="utf-8")):
                found[file, name] = (kind, value_of(value or arguments))
    return found


def is_limit(file, name, kind):
    if name in NO_LIMITS or DRAWINGS.fullmatch(str(file.relative_to(ROOT))):
        return False
    return kind in ("double", "float", "long double") or LIMIT.match(name) is not None


def main():
    page = (ROOT / "Docs/tolerances.md").read_text(encoding="utf-8")
    code = constants()
    stated = {}
    faults = []
    for name, value, where in ROW.findall(page):
        file = next((folder / where for folder in FOLDERS if (folder / where).exists()), None)
        stated[file, name] = value
        if (file, name) not in code:
            faults.append(f"{name}: not in {where}")
        elif code[file, name][1] != value_of(value):
            faults.append(f"{name}: the page states {value}, {where} has {code[file, name][1]}")
    faults += [f"{name} of {file.relative_to(ROOT)} is missing: add a row with its value, unit and reason"
               for (file, name), (kind, _) in code.items() if is_limit(file, name, kind) and (file, name) not in stated]
    if len(ROW.findall(page)) != len(re.findall(r"^\| `", page, re.MULTILINE)):
        faults.append("a row that begins with a name has not five cells")
    if faults or not stated:
        sys.exit("Docs/tolerances.md\n" + "\n".join(faults))


if __name__ == "__main__":
    main()
