"""Runs what a page of the documentation shows, and compares it with what the page says.

Usage: pages_test.py PAGE program PROGRAM   the page's program, already built, against its output
       pages_test.py PAGE commands TOOL     each command line against its output
       pages_test.py PAGE extract FILE      writes the program to a file

A page has at most one program, a block of C++; the next block of plain text is its output. Command lines stand in
console blocks behind a dollar sign, with what they print below them. They run in one folder for each page, in which the
samples are found, so that a later line can use what an earlier one wrote.
"""

import math
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]


def blocks(page, language):
    """Texts of the fenced blocks of a language, in order."""
    return re.findall(rf"^```{language}\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)


NUMBER = re.compile(r"(?<![\w.])-?\d+(?:\.\d+)?(?:e[+-]?\d+)?(?![\w.])")
# The last digits of a sine differ between processors; the pages show those of one.
TOLERANCE = 1e-9


def is_same(shown, printed):
    """Whether two texts agree, their numbers up to the tolerance."""
    if NUMBER.split(shown) != NUMBER.split(printed):
        return False
    numbers = zip(NUMBER.findall(shown), NUMBER.findall(printed))
    return all(math.isclose(float(a), float(b), rel_tol=TOLERANCE, abs_tol=TOLERANCE) for a, b in numbers)


def expect(shown, printed, subject):
    """Ends the test where the page shows something else than what is printed."""
    if not is_same(shown, printed):
        sys.exit(f"{subject}\nThe page shows:\n{shown}\nBut this is printed:\n{printed}")


def run(line, folder, tool):
    """What a terminal shows of a command line, which has to succeed."""
    environment = dict(os.environ, PATH=f"{pathlib.Path(tool).resolve().parent}:{os.environ['PATH']}")
    result = subprocess.run(["bash", "-c", line], cwd=folder, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                            text=True, check=False, timeout=120)
    if result.returncode != 0:
        sys.exit(f"{line}: exit code {result.returncode}\n{result.stdout}")
    return result.stdout


def check_commands(page, tool):
    """Runs each line that begins with a dollar sign; the lines below it are its output."""
    sessions = blocks(page, "console")
    if not sessions:
        sys.exit("the page shows no command")
    with tempfile.TemporaryDirectory(prefix="quarnscreen-docs-") as folder:
        os.symlink(ROOT / "Samples", pathlib.Path(folder, "Samples"))
        for session in sessions:
            for entry in re.split(r"^\$ ", session, flags=re.MULTILINE)[1:]:
                line, _, shown = entry.partition("\n")
                expect(shown, run(line, folder, tool), line)


def main():
    page = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    what, argument = sys.argv[2:4]
    if what == "extract":
        program, = blocks(page, "cpp")
        pathlib.Path(argument).write_text(program, encoding="utf-8")
    elif what == "program":
        shown, *_ = blocks(page[page.index("```cpp\n"):], "text")
        result = subprocess.run([argument], cwd=ROOT, stdout=subprocess.PIPE, text=True, check=True)
        expect(shown, result.stdout, argument)
    else:
        check_commands(page, argument)


if __name__ == "__main__":
    main()
