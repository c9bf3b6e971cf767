"""Signals that end the tool leave no unfinished file, and the exit status is that of the signal."""
import os
import random
import resource
import signal
import subprocess
import time
import unittest

from obj_case import ObjTest, wall
from tool_case import TOOL, WALL

SIGNALS = (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM, signal.SIGALRM, signal.SIGUSR1, signal.SIGXCPU)
RUNS = 40


def prepare():
    """No core file of SIGQUIT, and the usual actions, which the test's own caller may have changed."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    for number in SIGNALS:
        signal.signal(number, signal.SIG_DFL)


class Termination(ObjTest):
    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def start(self, *arguments, preexec_fn=prepare):
        return subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                cwd=self.folder, preexec_fn=preexec_fn)

    def start_with_unfinished_output(self, **options):
        """Starts a run that waits for rows after it has opened its output."""
        process = self.start("intersect", WALL, "-o", "out.csv", **options)
        process.stdin.write(b"0,-5,0,0,0,0\n")
        process.stdin.flush()
        deadline = time.monotonic() + 60
        while not any(".tmp" in name for name in self.names()):
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.001)
        return process

    def test_a_signal_removes_the_unfinished_output(self):
        self.file("out.csv", "old")
        for number in SIGNALS:
            with self.subTest(number), self.start_with_unfinished_output() as process:
                process.send_signal(number)
                self.assertEqual(process.wait(60), -number)
                self.assertEqual(self.names(), ["out.csv"])
                self.assertEqual((self.folder / "out.csv").read_text(), "old")

    def test_an_ignored_signal_stays_ignored(self):
        with self.start_with_unfinished_output(preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN)) as process:
            process.send_signal(signal.SIGHUP)
            process.stdin.close()
            self.assertEqual(process.wait(60), 0)
        self.assertEqual(self.names(), ["out.csv"])

    def test_a_file_that_exceeds_the_limit_of_its_size_is_removed(self):
        self.file("a.obj", wall(40, 40))
        def limit():
            prepare()
            signal.signal(signal.SIGXFSZ, signal.SIG_DFL)
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))
        with self.start("convert", "a.obj", "-o", "b.obj", preexec_fn=limit) as process:
            self.assertEqual(process.wait(60), -signal.SIGXFSZ)
        self.assertEqual(self.names(), ["a.obj"])

    def test_runs_that_end_at_random_moments_leave_nothing(self):
        self.file("a.obj", wall(60, 60, "{0}/{0}"))
        self.file("b.obj", wall(2, 2))
        commands = {"convert": ["convert", "a.obj", "-o", "out.obj"], "check": ["check", "a.obj", "--fix", "-o", "out.obj"],
                    "transform": ["transform", "b.obj", "--scale", "2", "-o", "out.obj"], "make": ["make", "flat", "--width", "1m", "--height", "1m", "-o", "out.xml"]}
        rng = random.Random(0)
        for command, arguments in commands.items():
            output = self.folder / arguments[-1]
            start = time.monotonic()
            whole = self.run_tool(*arguments)
            duration = time.monotonic() - start
            self.assertIn(whole.returncode, (0, 1))
            expected = output.read_bytes()
            for _ in range(RUNS // len(commands)):
                output.unlink(missing_ok=True)
                number = rng.choice(SIGNALS)
                with self.subTest(command, number=number), self.start(*arguments) as process:
                    time.sleep(rng.uniform(0, 1.2) * duration)
                    process.send_signal(number)
                    self.assertIn(process.wait(60), (whole.returncode, -number))
                    self.assertEqual([name for name in self.names() if ".tmp" in name], [])
                    if output.exists():
                        self.assertEqual(output.read_bytes(), expected)
            output.unlink(missing_ok=True)

    def test_inputs_are_read_before_the_output_is_opened(self):
        os.mkfifo(self.folder / "in.obj")
        for arguments in (["convert", "in.obj", "-o", "out.obj"], ["check", "in.obj", "--fix", "-o", "out.obj"], ["compare", "in.obj", WALL, "-o", "out.csv"],
                          ["refine", "in.obj", "--max-edge", "1", "-o", "out.obj"], ["plot", "in.obj", "-o", "out.svg"]):
            with self.subTest(arguments), self.start(*arguments) as process:
                with open(self.folder / "in.obj", "wb") as pipe:
                    pipe.write(wall().encode())
                    pipe.flush()
                    time.sleep(0.05)
                    self.assertEqual(self.names(), ["in.obj"])
                self.assertIn(process.wait(60), (0, 1))
            (self.folder / arguments[-1]).unlink()


if __name__ == "__main__":
    unittest.main()
