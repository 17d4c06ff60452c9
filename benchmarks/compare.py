#!/usr/bin/env python3
"""Runs the programs of build/bench/benchmarks/peers against each other: same results first, then times, in turn.

    compare.py [--build DIR] [--data DIR] [--work DIR] [--repetitions N] [--case REGEX] [TOPIC...]

Each program is a process of its own. For each case the programs run one after the other, as often as repetitions are
asked for, so that a disturbance meets all of them; what counts is the median of processor time, or of elapsed time
where a topic waits for the system. A program whose result differs from the library's is shown and not compared.

Writes report.json and one plot a topic, as SVG, to the build folder.
"""

import argparse
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

import json_result
import plot

OURS = "vyx"
LIMIT = "limit"

# How a topic is measured: the kind of time, and what makes results of different libraries comparable.
TOPICS = {
    "json": {"time": "cpu_time", "normal": json_result.normal_form},
}


def quoted(case):
    """A pattern for the name of a case; Google Benchmark takes no backslash before an ordinary character."""
    return re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", case)


class Program:
    def __init__(self, path):
        self.topic, self.peer = path.name.split("_", 1)
        self.path = path

    def results(self, environment):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([self.path, f"--results={folder}"], check=True, env=environment)
            return {file.name: file.read_bytes() for file in pathlib.Path(folder).iterdir()}

    def cases(self, environment):
        listed = subprocess.run([self.path, "--benchmark_list_tests"], check=True, env=environment,
                                capture_output=True, text=True)
        return listed.stdout.splitlines()

    def measure(self, case, seconds, kind, environment):
        """Nanoseconds of one repetition."""
        run = subprocess.run(
            [self.path, f"--benchmark_filter=^{quoted(case)}$", f"--benchmark_min_time={seconds}",
             "--benchmark_format=json"], check=True, env=environment, capture_output=True, text=True)
        measured = json.loads(run.stdout)["benchmarks"][0]
        if measured.get("error_occurred"):
            raise RuntimeError(f"{self.path.name}: {case}: {measured['error_message']}")
        return measured[kind]


def differing(programs, topic, environment):
    """The cases in which a peer's result is not ours, as (peer, case)."""
    normal = TOPICS[topic]["normal"]
    results = {program.peer: program.results(environment) for program in programs}
    ours = {case: normal(result) for case, result in results[OURS].items()}
    found = set()
    for peer, cases in results.items():
        for case, result in cases.items():
            if case not in ours:
                raise RuntimeError(f"{topic}: {peer} has the case {case}, which {OURS} has not")
            if result != results[OURS][case] and normal(result) != ours[case]:
                found.add((peer, case))
    return found


def measure_case(case, programs, options, kind, environment):
    times = {program.peer: [] for program in programs}
    for _ in range(options.repetitions):
        for program in programs:
            times[program.peer].append(program.measure(case, options.seconds, kind, environment))
    return {peer: statistics.median(values) for peer, values in times.items()}


def summary(topic, case, times, wrong):
    """The row of report.json; wrong names the peers whose result differs."""
    peers = {peer: time for peer, time in times.items() if peer not in (OURS, LIMIT) and peer not in wrong}
    row = {"topic": topic, "case": case, "ours_ns": round(times[OURS], 1)}
    if peers:
        best = min(peers, key=peers.get)
        row.update(best_peer=best, best_peer_ns=round(peers[best], 1), ratio=round(times[OURS] / peers[best], 3))
    if LIMIT in times:
        row["limit_ns"] = round(times[LIMIT], 1)
    row["all_ns"] = {peer: round(time, 1) for peer, time in times.items()}
    row["different_result"] = sorted(wrong)
    return row


def run_topic(topic, programs, options, environment):
    wrong = differing(programs, topic, environment)
    have = {program.peer: program.cases(environment) for program in programs}
    rows = []
    for case in filter(re.compile(options.case).search, have[OURS]):
        able = [program for program in programs if case in have[program.peer]]
        times = measure_case(case, able, options, TOPICS[topic]["time"], environment)
        name = case.replace("/", ".")
        rows.append(summary(topic, case, times, {peer for peer, other in wrong if other == name}))
        print_row(rows[-1])
    return rows


def print_row(row):
    against = f"{row['best_peer']:>16} {plot.readable(row['best_peer_ns']):>9} {row['ratio']:6.2f}" if "ratio" in row \
        else f"{'no peer':>16} {'':9} {'':6}"
    limit = plot.readable(row["limit_ns"]) if "limit_ns" in row else ""
    others = ", ".join(f"{peer} {plot.readable(time)}{' (other result)' if peer in row['different_result'] else ''}"
                       for peer, time in sorted(row["all_ns"].items(), key=lambda item: item[1])
                       if peer not in (OURS, LIMIT, row.get("best_peer")))
    print(f"{row['case']:28} {plot.readable(row['ours_ns']):>9} {against} {limit:>9}  {others}", flush=True)


def find_programs(folder):
    topics = {}
    for path in sorted(folder.iterdir()):
        if path.is_file() and os.access(path, os.X_OK) and "_" in path.name:
            program = Program(path)
            if program.topic in TOPICS:
                topics.setdefault(program.topic, []).append(program)
    return topics


def parse_arguments():
    parser = argparse.ArgumentParser(description="Compares the library with its peers.")
    parser.add_argument("topics", nargs="*", metavar="TOPIC", help=f"of {', '.join(TOPICS)}; all without one")
    parser.add_argument("--build", type=pathlib.Path, default="build/bench")
    parser.add_argument("--data", type=pathlib.Path, required=True, help="folder of the documents that are read")
    parser.add_argument("--work", type=pathlib.Path, required=True, help="folder for files that cases create")
    parser.add_argument("--repetitions", type=int, default=7)
    parser.add_argument("--seconds", type=float, default=0.05, help="the least time of one repetition")
    parser.add_argument("--case", default="", help="only cases that this regular expression finds")
    options = parser.parse_args()
    unknown = set(options.topics) - set(TOPICS)
    if unknown:
        parser.error(f"unknown topic {', '.join(sorted(unknown))}; known are {', '.join(TOPICS)}")
    return options


def main():
    options = parse_arguments()
    environment = {**os.environ, "VYX_BENCH_DATA": str(options.data.resolve()),
                   "VYX_BENCH_WORK": str(options.work.resolve())}
    topics = find_programs(options.build / "benchmarks/peers")
    rows = []
    for topic in options.topics or topics:
        print(f"\n{topic}\n{'case':28} {'ours':>9} {'best peer':>16} {'':9} {'ratio':>6} {'limit':>9}  others")
        rows += run_topic(topic, topics[topic], options, environment)
        plot.write(options.build / f"{topic}.svg", topic, [row for row in rows if row["topic"] == topic])
    report = options.build / "report.json"
    report.write_text(json.dumps(rows, indent=1) + "\n")
    print(f"\n{report}")


if __name__ == "__main__":
    sys.exit(main())
