"""Many rows on several threads: the same results, errors and exit code for every value of --threads."""
import random
import pathlib
import resource
import subprocess
import unittest

from obj_case import ObjTest, dome
from tool_case import SCREENS, TOOL, WALL, Case, add_cases

SANITIZED = b"__asan_init" in pathlib.Path(TOOL).read_bytes()
# A sanitized tool is slow, and looks for faults of memory alone.
COUNTS = ("1", "7") if SANITIZED else ("1", "2", "7")
ROW_COUNT = 12000  # several blocks' worth of parts


def text_of_rows(rows):
    return "".join(",".join(str(number) for number in row) + "\n" for row in rows).encode()


def uvs(seed):
    """UVs on the screen and around it, each of them a few times, with both zeros."""
    rng = random.Random(seed)
    pool = [(round(rng.uniform(-0.3, 1.3), 6), round(rng.uniform(-0.3, 1.3), 6)) for _ in range(ROW_COUNT // 3)]
    pool += [(0.0, 0.5), (-0.0, 0.5), (0.5, 0.0), (0.5, -0.0), ("nan", 0.5), (0.5, 0.5)] * 50
    return text_of_rows(rng.choice(pool) for _ in range(ROW_COUNT))


def positions(seed):
    rng = random.Random(seed)
    return text_of_rows([rng.uniform(-6, 6) for _ in range(3)] for _ in range(ROW_COUNT))


def rays(seed):
    rng = random.Random(seed)
    return text_of_rows([rng.uniform(-1, 1), -2, 0.5] + [rng.uniform(-6, 6) for _ in range(3)] for _ in range(ROW_COUNT))


class Threads(ObjTest):
    def assert_same(self, *arguments, stdin):
        """Runs on each count of threads and gives the one result."""
        results = [self.run_tool(*arguments, "--threads", count, stdin=stdin) for count in COUNTS]
        first = results[0]
        for result in results[1:]:
            self.assertEqual(result.returncode, first.returncode)
            self.assertTrue(result.stdout == first.stdout, f"other answers from {arguments}")
            self.assertTrue(result.stderr == first.stderr, f"other warnings from {arguments}")
        return first

    def check_all_commands(self, screen, seed):
        for extrapolate in ((), ("--extrapolate",)):
            for output in ((), ("--json",)):
                options = (*extrapolate, *output)
                with self.subTest(screen=screen, options=options):
                    for arguments, stdin in ((("map", screen, "--to", "3d"), uvs(seed)), (("map", screen, "--to", "2d"), positions(seed)),
                                             (("intersect", screen), rays(seed)), (("nearest", screen), rays(seed + 1))):
                        result = self.assert_same(*arguments, *options, stdin=stdin)
                        self.assertEqual(result.returncode, 0, result.stderr)
                        self.assertGreaterEqual(result.stdout.count(b"\n"), ROW_COUNT)
        for command in ("closest", "normal"):
            self.assertEqual(self.assert_same(command, screen, stdin=positions(seed)).returncode, 0)

    def test_answers_of_a_mesh(self):
        self.file("dome.obj", dome())
        self.check_all_commands("dome.obj", 1)

    def test_answers_of_the_other_screens(self):
        for seed, screen in enumerate(SCREENS[:1] if SANITIZED else SCREENS):
            self.check_all_commands(screen, seed)

    def test_answers_of_many_rows_are_those_of_each_alone(self):
        self.file("dome.obj", dome())
        rows = uvs(5).splitlines(keepends=True)
        answers = self.run_tool("map", "dome.obj", "--to", "3d", "--extrapolate", "--threads", "7", stdin=b"".join(rows)).stdout.splitlines()[1:]
        for i in range(0, ROW_COUNT, 997):
            alone = self.run_tool("map", "dome.obj", "--to", "3d", "--extrapolate", stdin=rows[i]).stdout.splitlines()[1:]
            self.assertEqual(alone, answers[i:i + 1])

    def test_a_bad_row_stops_behind_the_answers_before_it(self):
        good = positions(7).splitlines(keepends=True)
        for place in (0, 1, 5000, ROW_COUNT - 1):
            result = self.assert_same("normal", WALL, stdin=b"".join(good[:place]) + b"1,2\n" + b"".join(good[place:]))
            self.assertEqual(result.returncode, 2)
            self.assertEqual(result.stdout.count(b"\n"), place + 1)
            self.assertEqual(result.stderr.decode(), f"error: standard input:{place + 1}: found 2 numbers, expected 3 (x,y,z)\n")

    def test_rows_without_an_answer_are_counted(self):
        result = self.assert_same("map", WALL, "--to", "3d", "--require", stdin=b"0.5,0.5\n2,2\n" * 4000)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr.decode(), "error: 4000 of 8000 rows have no result, expected a result in each\n")

    @unittest.skipIf(SANITIZED, "the address sanitizer needs more addresses than there are left here")
    def test_threads_that_cannot_start_are_done_without(self):
        # The stacks of so many threads do not fit into this much memory.
        limit = 1 << 30
        stdin = positions(8)
        expected = self.run_tool("normal", WALL, "--threads", "1", stdin=stdin)
        result = subprocess.run([TOOL, "normal", WALL, "--threads", "256"], input=stdin, capture_output=True, timeout=120, check=False,
                                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertTrue(result.stdout == expected.stdout)


add_cases(Threads, [
    Case("refused_" + name, ["map", WALL, "--to", "3d", "--threads", text], "", rf'error: found --threads "{text}", expected a whole number from 1 to 256\n', 2)
    for name, text in (("none", "0"), ("negative", "-1"), ("too_many", "257"), ("no_whole_number", "1.5"), ("no_number", "x"), ("huge", "99999999999"))
])

if __name__ == "__main__":
    unittest.main()
