"""Extracts, checks and compiles the examples in the comments of the public headers.

Usage: header_examples_test.py              each public class has an example of three to six lines at the end of its comment
       header_examples_test.py extract FILE writes a program that runs all examples

The public headers are those that QuarnScreen.h includes. An example is a block between \\code{.cpp} and \\endcode. It is the
body of a function, so that a wrong result fails an assertion of the program.
"""

import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = {"QuarnScreen": ROOT / "Source/QuarnScreen", "Common": ROOT / "Framework/CXX/Common"}
LENGTHS = range(3, 7)

INCLUDE = re.compile(r"^#include <(QuarnScreen|Common)/(\w+\.h)>$", re.MULTILINE)
# A class at namespace scope, with its comment and its template parameters.
CLASS = re.compile(r"^((?:///.*\n)*)((?:template <.*>\n)*)(?:class|struct) (?:QUARNSCREEN_EXPORT )?([\w:<>, ]+?)"
                   r"(?: : [^;{]*)?( \{|;)", re.MULTILINE)
EXAMPLE = re.compile(r"^ *///? ?\\code\{\.cpp\}\n(.*?)^ *///? ?\\endcode$", re.MULTILINE | re.DOTALL)
EXAMPLE_AT_END = re.compile(r"^/// \\code\{\.cpp\}\n((?:(?!.*\\endcode).*\n)+)/// \\endcode\n\Z", re.MULTILINE)

PROGRAM_START = """// Generated from the examples in the public headers.
#undef NDEBUG
#include <QuarnScreen/QuarnScreen.h>

#include <cassert>
#include <cmath>
#include <memory>
#include <sstream>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace {
"""


def public_headers():
    """The headers that QuarnScreen.h includes, directly or not, in the order of their first inclusion."""
    found = [FOLDERS["QuarnScreen"] / "QuarnScreen.h"]
    for header in found:
        for folder, name in INCLUDE.findall(header.read_text(encoding="utf-8")):
            if FOLDERS[folder] / name not in found:
                found.append(FOLDERS[folder] / name)
    return found


def name_of(declarator):
    """The name of a class without template arguments."""
    while "<" in declarator:
        declarator = re.sub(r"<[^<>]*>", "", declarator)
    return declarator.removesuffix(" final").strip()


def classes(text):
    """Names of the documented classes of a header with their comments, and of all classes that it defines."""
    comments = {}
    defined = []
    for comment, _, declarator, end in CLASS.findall(text):
        name = name_of(declarator)
        if comment:
            comments[name] = comment
        if end == " {":
            defined.append(name)
    return comments, defined


def faults(text):
    """Defects in the class comments of a header, one line each."""
    comments, defined = classes(text)
    found = [f"{name} has no comment" for name in defined if name not in comments]
    for name, comment in comments.items():
        example = EXAMPLE_AT_END.search(comment)
        if example is None:
            found.append(f"the comment of {name} does not end with an example")
        elif example[1].count("\n") not in LENGTHS:
            found.append(f"the example of {name} has {example[1].count(chr(10))} lines, not {LENGTHS[0]} to {LENGTHS[-1]}")
    return found


def write_program(target):
    """Writes a program with one function for each example."""
    functions = []
    calls = []
    for header in public_headers():
        text = header.read_text(encoding="utf-8")
        for example in EXAMPLE.finditer(text):
            name = f"example{len(calls)}"
            line = text.count("\n", 0, example.start(1)) + 1
            body = re.sub(r"^ *///? ?", "    ", example[1], flags=re.MULTILINE)
            functions.append(f'\nvoid {name}() {{\n#line {line} "{header}"\n{body}}}\n')
            calls.append(f"    {name}();\n")
    if not calls:
        sys.exit("the public headers have no examples")
    target.write_text(PROGRAM_START + "".join(functions) + "\n}  // namespace\n\nint main() {\n"
                      "    xercesc::XMLPlatformUtils::Initialize();\n" + "".join(calls) +
                      "    xercesc::XMLPlatformUtils::Terminate();\n}\n", encoding="utf-8")


EXAMPLE_LINES = "/// \\code{.cpp}\n/// int a = 1;\n/// ++a;\n/// assert(a == 2);\n/// \\endcode\n"


class HeaderExamples(unittest.TestCase):
    def test_each_public_class_has_an_example(self):
        found = []
        count = 0
        for header in public_headers():
            text = header.read_text(encoding="utf-8")
            count += len(classes(text)[0])
            found += [f"{header.relative_to(ROOT)}: {fault}" for fault in faults(text)]
        self.assertEqual(found, [])
        self.assertGreater(count, 30)

    def test_a_class_with_an_example_is_accepted(self):
        self.assertEqual(faults(f"/// Text.\n///\n{EXAMPLE_LINES}class QUARNSCREEN_EXPORT A : public B {{\n"), [])
        self.assertEqual(faults(f"/// Text.\n{EXAMPLE_LINES}template <class T, int N>\nclass A;\n\ntemplate <class T>\n"
                                "class A<T, B<1>> {\n"), [])

    def test_a_class_without_an_example_is_a_fault(self):
        self.assertEqual(faults("/// Text.\nstruct A {\n"), ["the comment of A does not end with an example"])
        self.assertEqual(faults(f"/// Text.\n{EXAMPLE_LINES}/// More text.\nclass A final : public B {{\n"),
                         ["the comment of A does not end with an example"])

    def test_a_class_without_a_comment_is_a_fault(self):
        self.assertEqual(faults("class A;\n\nstruct B {\n"), ["B has no comment"])

    def test_an_example_of_a_wrong_length_is_a_fault(self):
        for size in (1, 2, 7):
            example = "/// \\code{.cpp}\n" + "/// f();\n" * size + "/// \\endcode\n"
            self.assertEqual(faults(f"/// Text.\n{example}class A {{\n"),
                             [f"the example of A has {size} lines, not 3 to 6"])


if __name__ == "__main__":
    if len(sys.argv) == 3 and sys.argv[1] == "extract":
        write_program(pathlib.Path(sys.argv[2]))
    else:
        unittest.main()
