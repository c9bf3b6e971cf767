"""Runs what the README shows, and compares it with what the README says.

Usage: readme_test.py README program PROGRAM   the first program, already built, against its output
       readme_test.py README commands TOOL     each command of the tool against its output
       readme_test.py README extract FILE      writes the first program to a file
"""

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


def expect(shown, printed, subject):
    """Ends the test where the README shows something else than what is printed."""
    if shown != printed:
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
