"""Measures the server from outside, over its pipes, beside programs that do less.

Prints the figures beside their goals. `script/bench` builds the programs and runs this.
"""

import argparse
import gc
import sys
import time
from itertools import chain
from pathlib import Path

import measure_cold
import measure_counts
import measure_process
import measure_search
from journals import Journals
from measurement import Run
from report import Report

BUILD = Path(__file__).resolve().parents[2] / "build/bench"


def options():
    parser = argparse.ArgumentParser(prog="script/bench", description="Measures what the server costs.")
    parser.add_argument("--quick", action="store_true", help="fewer rounds, and only the main figures")
    parser.add_argument(
        "--gate", action="store_true",
        help="only the counts that are the same on every machine; fails when a goal is missed",
    )  # fmt: skip
    parser.add_argument("--only", action="append", metavar="NAME", help="only what begins with NAME; may come again")
    parser.add_argument("--rounds", type=int, metavar="NUMBER", help="how many rounds the programs take turns")
    parser.add_argument(
        "--server", type=Path, default=BUILD / "server/halvane_mcp", metavar="PATH",
        help="the program under test instead of this build's",
    )  # fmt: skip
    parser.add_argument(
        "--cache", type=Path, default=BUILD / "journals", metavar="FOLDER",
        help="where the journals are written and found again",
    )  # fmt: skip
    parser.add_argument("--list", action="store_true", help="the names of the measurements")
    return parser.parse_args()


def chosen_measurements(wanted):
    if wanted.gate:
        measurements = measure_counts.measurements()
    else:
        measurements = chain(
            measure_search.measurements(),
            measure_cold.measurements(),
            measure_search.hostile_measurements(),
            measure_process.start_measurements(),
            measure_process.memory_measurements(),
            measure_counts.measurements(),
            measure_process.line_measurements(),
        )
    return [
        measurement
        for measurement in measurements
        if (measurement.quick or not wanted.quick) and measurement.name.startswith(tuple(wanted.only or [""]))
    ]


def main():
    wanted = options()
    measurements = chosen_measurements(wanted)
    if wanted.list:
        print(*(measurement.name for measurement in measurements), sep="\n")
        return 0
    wanted.cache.mkdir(parents=True, exist_ok=True)
    today = int(time.time()) // 86400
    rounds = wanted.rounds or (9 if wanted.quick else 15)
    run = Run(wanted.server.resolve(), BUILD / "tests/bench", Journals(wanted.cache.resolve(), today), rounds, Report())
    gc.disable()  # a collection would fall into some contestant's time
    for number, measurement in enumerate(measurements, start=1):
        print(f"[{number}/{len(measurements)}] {measurement.name}", file=sys.stderr)
        measurement.measure(run)
    print(run.report.text(), end="")
    return 0 if not wanted.gate or run.report.meets_all_goals() else 1


if __name__ == "__main__":
    sys.exit(main())
