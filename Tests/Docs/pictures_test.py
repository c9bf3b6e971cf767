"""The pictures of the pages are what the script draws with today's tool, byte for byte, and each is shown on a page.

Usage: pictures_test.py SCRIPT TOOL FOLDER
"""
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

script, tool, stored = sys.argv[1:4]
with tempfile.TemporaryDirectory(prefix="quarnscreen-pictures-") as drawn:
    subprocess.run([sys.executable, "-B", script, tool, drawn], check=True)
    pictures = {path.name: path.read_bytes() for path in pathlib.Path(drawn).iterdir()}
pages = "".join(page.read_text(encoding="utf-8") for page in pathlib.Path(stored).parent.glob("*.md"))

if not pictures or sorted(pictures) != sorted(path.name for path in pathlib.Path(stored).iterdir()):
    sys.exit(f"{stored} does not hold {sorted(pictures)} alone: build the target pictures")
for name, picture in pictures.items():
    ElementTree.fromstring(picture)
    if pathlib.Path(stored, name).read_bytes() != picture:
        sys.exit(f"{name} is old: build the target pictures")
    if f"](pictures/{name})" not in pages:
        sys.exit(f"no page shows {name}")
