#!/usr/bin/python3
"""Shows what Scripts/packages does with and without missing packages, root and sudo, on stand-ins for them."""
import os
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "Scripts" / "packages"
# All packages are installed except those in $MISSING.
DPKG_QUERY = 'for last; do :; done; case " $MISSING " in *" $last "*) exit 1 ;; *) echo installed ;; esac'


class Packages(unittest.TestCase):
    def run_script(self, *arguments, missing="", user=1000, may_sudo=False):
        with tempfile.TemporaryDirectory() as folder:
            stands_in = {"dpkg-query": DPKG_QUERY, "id": f"echo {user}", "apt-get": 'echo "apt-get $*"',
                         "sudo": 'echo "sudo $*"' if may_sudo else "exit 1"}
            for name, body in stands_in.items():
                path = pathlib.Path(folder) / name
                path.write_text(f"#!/bin/sh\n{body}\n", encoding="utf-8")
                path.chmod(0o755)
            environment = {**os.environ, "PATH": f"{folder}:{os.environ['PATH']}", "MISSING": missing}
            return subprocess.run([SCRIPT, *arguments], env=environment, stdin=subprocess.DEVNULL,
                                  capture_output=True, text=True, check=False)

    def test_no_root_is_needed_where_nothing_is_missing(self):
        result = self.run_script("install", "build", "test", "bench")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))

    def test_without_root_the_missing_ones_are_listed_and_nothing_is_installed(self):
        result = self.run_script("install", "build", "test", missing="g++ doxygen libbenchmark-dev")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, "")
        self.assertIn("\n    g++ doxygen\n", result.stderr)

    def test_root_installs_the_missing_ones_alone(self):
        result = self.run_script("install", "build", missing="cmake g++", user=0)
        self.assertEqual(result.returncode, 0)
        self.assertIn("apt-get update", result.stdout)
        self.assertRegex(result.stdout, r"apt-get install .*-recommends g\+\+ cmake\n")

    def test_sudo_is_used_where_it_needs_no_password(self):
        result = self.run_script("install", "build", missing="cmake", may_sudo=True)
        self.assertRegex(result.stdout, r"sudo env DEBIAN_FRONTEND=noninteractive apt-get install .* cmake\n")

    def test_groups_are_listed_one_package_a_line(self):
        self.assertIn("\nlibxerces-c-dev\n", self.run_script("list", "build").stdout)
        self.assertEqual(self.run_script("list", "bench").stdout,
                         "libbenchmark-dev\nlibnanoflann-dev\nlibcgal-dev\nlibtinyobjloader-dev\n")

    def test_an_unknown_group_is_refused(self):
        result = self.run_script("list", "games")
        self.assertEqual(result.returncode, 2)
        self.assertIn("usage", result.stderr)


if __name__ == "__main__":
    unittest.main()
