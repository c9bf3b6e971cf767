#!/usr/bin/python3
"""Tests what Scripts/performance-page generates from results: medians, ratios of pairs, and targets."""
import json
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "Scripts" / "performance-page"


def repetitions(name, times, key="cpu_time", **more):
    return [{"name": name, "run_name": name, "run_type": "iteration", "repetition_index": i, "cpu_time": 1.0,
             "real_time": 1.0, key: time, **more} for i, time in enumerate(times)]


class PerformancePage(unittest.TestCase):
    def page_of(self, *runs):
        with tempfile.TemporaryDirectory() as folder:
            cache = "CMAKE_CXX_COMPILER:FILEPATH=/bin/true\nCMAKE_CXX_FLAGS_RELEASE:STRING=-O3\n"
            pathlib.Path(folder, "CMakeCache.txt").write_text(cache, encoding="utf-8")
            results = pathlib.Path(folder, "results.json")
            context = {"date": "2026-11-21T12:00:00+00:00", "num_cpus": 2, "load_avg": [0.5]}
            results.write_text(json.dumps({"context": context, "benchmarks": sum(runs, [])}), encoding="utf-8")
            return subprocess.run([SCRIPT, folder, results], capture_output=True, text=True, check=False)

    def row_of(self, start, *runs):
        lines = self.page_of(*runs).stdout.splitlines()
        rows = [line for line in lines if line.startswith(f"| {start} |")]
        self.assertEqual(len(rows), 1, lines)
        return [cell.strip() for cell in rows[0].strip("|").split("|")]

    def test_the_ratio_is_the_median_of_the_ratios_of_the_pairs(self):
        row = self.row_of("boundary", repetitions("boundary/dome/1000000/in-order/library", [10.0, 20.0, 60.0]),
                          repetitions("boundary/dome/1000000/in-order/reference", [100.0, 100.0, 200.0]))
        self.assertEqual(row[:6], ["boundary", "dome", "20 ns", "reference", "100 ns", "0.20 (0.15 to 0.25)"])

    def test_a_target_that_is_met_is_marked_as_met(self):
        row = self.row_of("boundary", repetitions("boundary/wave/1000000/in-order/library", [20.0]),
                          repetitions("boundary/wave/1000000/in-order/reference", [100.0]))
        self.assertEqual(row[6], "at most 0.2: met")

    def test_a_missed_target_states_by_how_much(self):
        row = self.row_of("transform",
                          repetitions("transform/dome/1000000/in-order/library/manual_time", [78.0], "real_time"),
                          repetitions("transform/dome/1000000/in-order/reference/manual_time", [100.0], "real_time"))
        self.assertEqual(row[5:], ["0.78 (0.78 to 0.78)", "at most 0.65: **missed by 20 %**"])

    def test_threads_are_compared_by_their_throughput(self):
        row = self.row_of("positions of new UVs on two threads",
                          repetitions("map-on-threads/dome/1000000/in-order/two-threads/real_time/threads:2", [50.0],
                                      "real_time"),
                          repetitions("map-on-threads/dome/1000000/in-order/one-thread/real_time/threads:1", [90.0],
                                      "real_time"))
        self.assertEqual(row[5:], ["1.80 (1.80 to 1.80)", "at least 1.7: met"])

    def test_the_tool_is_compared_with_the_library(self):
        row = self.row_of("the tool's results for a million new UVs",
                          repetitions("map-rows/dome/1000000/in-order/tool/real_time", [100.0], "real_time"),
                          repetitions("map-rows/dome/1000000/in-order/library/real_time", [40.0], "real_time"))
        self.assertEqual(row[3:], ["library", "40 ns", "0.40 (0.40 to 0.40)", "at least 0.5: **missed by 20 %**"])

    def test_memory_has_a_separate_table(self):
        name = "boundary-memory/dome/1000000/shuffled/{}/iterations:1"
        row = self.row_of("1,000,000", repetitions(name.format("library"), [1.0], bytes_per_triangle=60.0),
                          repetitions(name.format("reference"), [1.0], bytes_per_triangle=250.0))
        self.assertEqual(row[3:], ["60.0", "250.0", "at most 50: **missed by 20 %**"])

    def test_memory_of_a_load_lists_its_parts(self):
        name = "obj-memory/dome/1000000/in-order/shared/library/iterations:1"
        row = self.row_of("1,000,000", repetitions(name, [1.0], bytes_per_triangle=800.0, text_bytes_per_triangle=100.0,
                                                   list_bytes_per_triangle=344.0, index_bytes_per_triangle=150.0,
                                                   temporary_bytes_per_text_byte=1.8))
        self.assertEqual(row[1:], ["OBJ, shared vertices", "800", "100", "344", "150", "206", "1.80",
                                   "at most 1.5: **missed by 20 %**"])

    def test_base64_has_a_table_with_targets(self):
        row = self.row_of("decode", repetitions("base64/decode/library", [20.0]),
                          repetitions("base64/decode/reference", [100.0]))
        self.assertEqual(row[1:], ["20 ns", "100 ns", "0.20 (0.20 to 0.20)", "at most 0.25: met"])

    def test_loads_are_compared_by_the_wall_clock(self):
        name = "obj-load/dome/1000000/in-order/shared/{}/manual_time"
        row = self.row_of("OBJ screen from a file, shared vertices",
                          repetitions(name.format("library"), [60.0], "real_time"),
                          repetitions(name.format("reference"), [100.0], "real_time"))
        self.assertEqual(row[1:], ["dome", "60 ns", "reference", "100 ns", "0.60 (0.60 to 0.60)", "at most 0.65: met"])

    def test_other_screens_are_listed_with_the_implementation_that_they_are_compared_with(self):
        row = self.row_of("FlatScreen/intersect", repetitions("FlatScreen/intersect/library", [3.0]),
                          repetitions("FlatScreen/intersect/inline", [2.0]))
        self.assertEqual(row[1:], ["3 ns", "inline", "2 ns", "1.50 (1.50 to 1.50)"])

    def test_a_benchmark_that_failed_fails_the_page(self):
        failed = {"name": "grid/x", "run_name": "grid/x", "run_type": "iteration", "error_occurred": True,
                  "error_message": "another grid"}
        result = self.page_of([failed])
        self.assertEqual((result.returncode, result.stderr), (1, "grid/x: another grid\n"))


if __name__ == "__main__":
    unittest.main()
