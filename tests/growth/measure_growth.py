"""Counts the instructions of growth_work for doubled sizes; ends with 1 where one grows more than it may.

measure_growth.py PROGRAM [--full] [WORKLOAD...]
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import zipfile

MOST = 2.3  # times the instructions for twice the size

TREES = [f"{task}-{order}" for task in ("parse", "insert", "print", "copy", "destroy")
         for order in ("sorted", "shuffled", "reversed")]
TEXTS = ["wildcard", "wildcard-non-ascii", "replace", "replace-characters", "split", "join", "walk-non-ascii"]

# The greatest size of each workload, for every day and in full; the others are its half and its quarter.
GREATEST = {
    **{name: (40_000, 1_000_000) for name in TREES},
    **{name: (40_000, 1_000_000) for name in TEXTS},
    "zip-list": (20_000, 100_000),
    "enum-directories": (5_000, 20_000),
    "factory": (4_000, 10_000),
}
CONTROL = "quadratic"  # what must be found out
CONTROL_SIZE = 400


def make_archive(path, count):
    with zipfile.ZipFile(path, "w") as archive:
        for number in range(count):
            archive.writestr(f"folder {number % 100}/entry {number:06}", "")


def make_folder(path, count):
    for number in range(count):
        folder = path / f"folder {number % 100}"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"file {number:06}").touch()


def prepare(name, size, scratch):
    """What the work reads: a path, or nothing."""
    path = scratch / f"{name}-{size}"
    if name == "zip-list":
        make_archive(path, size)
        return [str(path)]
    if name == "enum-directories":
        make_folder(path, size)
        return [str(path)]
    return []


def count(program, name, size, scratch):
    """The number of instructions of the work itself."""
    command = ["valgrind", "--tool=callgrind", "--collect-atstart=no", "--toggle-collect=GrowthMeasured",
               "--callgrind-out-file=/dev/null", program, name, str(size)] + prepare(name, size, scratch)
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    found = re.search(r"Collected : (\d+)", run.stderr)
    if run.returncode != 0 or found is None or int(found.group(1)) == 0:
        sys.exit(f"measure_growth: {' '.join(command)} answers {run.returncode}:\n{run.stderr}")
    return int(found.group(1))


def sizes_of(name, is_full):
    greatest = CONTROL_SIZE if name == CONTROL else GREATEST[name][1 if is_full else 0]
    return [greatest // 4, greatest // 2, greatest]


def measure(program, names, is_full, scratch):
    """The counts of each workload, smallest size first."""
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {name: [pool.submit(count, program, name, size, scratch) for size in sizes_of(name, is_full)]
                for name in names}
        return {name: [job.result() for job in jobs[name]] for name in names}


def report(counts, is_full):
    """Prints the table; answers the workloads that grow too fast."""
    too_fast = []
    for name, numbers in counts.items():
        ratios = [later / earlier for earlier, later in zip(numbers, numbers[1:])]
        if max(ratios) > MOST:
            too_fast.append(name)
        print(f"{name:22} up to {sizes_of(name, is_full)[-1]:>9}: {numbers[-1]:>14} instructions, ratios "
              + " ".join(f"{ratio:.2f}" for ratio in ratios))
    return too_fast


def main():
    arguments = sys.argv[1:]
    is_full = "--full" in arguments
    program, *names = [argument for argument in arguments if argument != "--full"]
    with tempfile.TemporaryDirectory() as scratch:
        counts = measure(program, (names or list(GREATEST)) + [CONTROL], is_full, pathlib.Path(scratch))
    too_fast = report(counts, is_full)
    if CONTROL not in too_fast:
        sys.exit("measure_growth: work that is quadratic was not found out")
    too_fast.remove(CONTROL)
    if too_fast:
        sys.exit(f"measure_growth: more than {MOST} times the instructions for twice the size: {' '.join(too_fast)}")
    print(f"growth: at most {MOST} times the instructions for twice the size, in {len(counts) - 1} workloads")


if __name__ == "__main__":
    main()
