"""Runs benchmarks, each in a process of its own, so that none finds what another left: windows, memory, registers."""
import json
import os
import re
import subprocess

MIN_SECONDS = 0.07  # of a measurement; the library repeats what is shorter
MEASUREMENTS = 3  # in one process
UNIT_NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


class Figures:
    """Nanoseconds, one a process, and counters by benchmark."""

    def __init__(self):
        self.times = {}
        self.counters = {}
        self.errors = {}

    def add(self, name, runs):
        """What one process reported: the least time counts, since whatever disturbs a measurement only adds."""
        times = []
        for run in runs:
            if run.get("error_occurred"):
                self.errors[name] = run.get("error_message", "")
                return
            # Processor time, so that other programs count less, but for what waits for the disk or times itself.
            waits = "manual_time" in run["name"] or "real_time" in run["name"]
            times.append(run["real_time" if waits else "cpu_time"] * UNIT_NANOSECONDS[run["time_unit"]])
            if "bytes_per_key" in run:
                self.counters.setdefault(name, []).append(run["bytes_per_key"])
        if times:
            self.times.setdefault(name, []).append(min(times))

    def is_measured(self, name):
        return name not in self.errors and name in self.times

    def time(self, name):
        """The least nanoseconds of all processes; None if the benchmark failed or does not exist."""
        return min(self.times[name]) if self.is_measured(name) else None

    def ratios(self, name, against):
        """One a repetition: both sides are measured soon after one another. Empty without figures."""
        if not self.is_measured(name) or not self.is_measured(against):
            return []
        return [a / b for a, b in zip(self.times[name], self.times[against])]


# A benchmark's name may go on with the number of iterations and the like.
SUFFIXES = "(/iterations:.*|/min_time:.*|/manual_time|/real_time|/process_time)*$"


def registered(program):
    """The names of all benchmarks."""
    done = subprocess.run([program, "--benchmark_list_tests"], stdout=subprocess.PIPE, check=True, text=True)
    return {re.sub(SUFFIXES, "", line) for line in done.stdout.splitlines()}


def run_alone(program, name):
    """What one process reports of the benchmark."""
    done = subprocess.run(
        [program, f"--benchmark_filter=^{name}{SUFFIXES}", f"--benchmark_min_time={MIN_SECONDS}",
         f"--benchmark_repetitions={MEASUREMENTS}", "--benchmark_format=json"],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False,
        env={**os.environ, "QT_QPA_PLATFORM": os.environ.get("QT_QPA_PLATFORM", "offscreen")})
    if done.returncode != 0 or not done.stdout:
        return []
    return [run for run in json.loads(done.stdout)["benchmarks"] if run.get("run_type") == "iteration"]


def measure(program, names, repetitions):
    """Goes through all names so many times, to and fro: what a ratio compares runs close together, and neither side
    is always the first."""
    figures = Figures()
    for repetition in range(repetitions):
        for name in names if repetition % 2 == 0 else reversed(names):
            figures.add(name, run_alone(program, name))
    return figures
