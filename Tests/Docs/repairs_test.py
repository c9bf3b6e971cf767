"""The page about files lists every repair of an OBJ text, by the names and in the order of the code."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def main():
    page = (ROOT / "Docs/files.md").read_text(encoding="utf-8")
    table = page[page.index("### What `convert` repairs"):page.index("## STL")]
    listed = re.findall(r"^\| `([\w-]+)` \|", table, re.MULTILINE)
    file, = (ROOT / "Source/QuarnKit").rglob("ObjRepairs.cpp")
    code = re.findall(r'^ +\{"([\w-]+)", "', file.read_text(encoding="utf-8"), re.MULTILINE)
    if listed != code or not code:
        sys.exit(f"Docs/files.md lists {listed}\n{file.relative_to(ROOT)} has {code}")


if __name__ == "__main__":
    main()
