"""Runs what the README shows, and compares it with what the README says.

Usage: readme_test.py README program PROGRAM   the first program, already built, against its output
       readme_test.py README commands TOOL     each command of the tool against its output
       readme_test.py README extract FILE      writes the first program to a file
"""

import math
import pathlib
import re
import subprocess
import sys


def blocks(readme, language):
    """Texts of the fenced blocks of a language, in order."""
    return re.findall(rf"^```{language}\n(.*?)^```$", readme, re.MULTILINE | re.DOTALL)


def run(command, folder):
    """Standard output of a command that has to succeed."""
    result = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"{command}: exit code {result.returncode}\n{result.stderr}")
    return result.stdout


NUMBER = re.compile(r"(?<![\w.])-?\d+(?:\.\d+)?(?:e[+-]?\d+)?(?![\w.])")
# The last digits of a sine differ between processors; the README shows those of one.
TOLERANCE = 1e-9


def is_same(shown, printed):
    """Whether two texts agree, their numbers up to the tolerance."""
    if NUMBER.split(shown) != NUMBER.split(printed):
        return False
    numbers = zip(NUMBER.findall(shown), NUMBER.findall(printed))
    return all(math.isclose(float(a), float(b), rel_tol=TOLERANCE, abs_tol=TOLERANCE) for a, b in numbers)


def expect(shown, printed, subject):
    """Ends the test where the README shows something else than what is printed."""
    if not is_same(shown, printed):
        sys.exit(f"{subject}\nThe README shows:\n{shown}\nBut this is printed:\n{printed}")


def check_commands(readme, folder, tool):
    """Runs each line that begins with a dollar sign; the lines below it are its output."""
    sessions = blocks(readme, "console")
    if not sessions:
        sys.exit("the README shows no command")
    for session in sessions:
        for entry in re.split(r"^\$ ", session, flags=re.MULTILINE)[1:]:
            line, _, shown = entry.partition("\n")
            words = line.split()
            if words[0] != "quarnscreen":
                sys.exit(f"not a command of the tool: {line}")
            expect(shown, run([tool, *words[1:]], folder), line)


def main():
    path = pathlib.Path(sys.argv[1])
    readme = path.read_text(encoding="utf-8")
    what, argument = sys.argv[2:4]
    if what == "extract":
        pathlib.Path(argument).write_text(blocks(readme, "cpp")[0], encoding="utf-8")
    elif what == "program":
        expect(blocks(readme, "text")[0], run([argument], path.parent), "the first program")
    else:
        check_commands(readme, path.parent, argument)


if __name__ == "__main__":
    main()
