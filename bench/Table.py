# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs the benchmark programs named in the arguments and prints one table: every row at its sizes with its baseline, the ratio of
the two, the bar, and how cost grows with size: 0 not at all, 1 in line, 2 with the square."""
import json
import math
import os
import subprocess
import sys
import tempfile


def measure(program):
    with tempfile.NamedTemporaryFile(suffix=".json") as output:
        subprocess.run([program, "--benchmark_out=" + output.name, "--benchmark_out_format=json"],
                       check=True, stdout=subprocess.DEVNULL)
        return json.load(output)["benchmarks"]


def growth(points):
    """Slope of the straight line through the logarithms of (size, milliseconds)."""
    if len(points) < 2:
        return None
    logs = [(math.log(size), math.log(time)) for size, time in points]
    mean_size = sum(x for x, _ in logs) / len(logs)
    mean_time = sum(y for _, y in logs) / len(logs)
    return (sum((x - mean_size) * (y - mean_time) for x, y in logs)
            / sum((x - mean_size) ** 2 for x, _ in logs))


def main():
    load = os.getloadavg()[0]
    rows = {}
    for program in sys.argv[1:]:
        for run in measure(program):
            name, size = run["name"].split("/")[:2]
            rows.setdefault(name, []).append((int(size), run))
    print(f"{'work':44}{'size':>20}{'ours ms':>11}{'baseline ms':>11}{'ratio':>8}{'bar':>6}{'growth':>8}  extra")
    failed = False
    for name, runs in rows.items():
        exponent = growth([(size, run["ours_ms"]) for size, run in runs if "ours_ms" in run])
        for index, (size, run) in enumerate(runs):
            if run.get("error_occurred"):
                failed = True
                print(f"{name:44}{size:>20}  {run['error_message']}")
                continue
            last = index == len(runs) - 1
            bar = f"{run['bar']:g}" if run["bar"] else ""
            grown = f"{exponent:.2f}" if last and exponent is not None else ""
            extra = ", ".join(f"{key} {run[key]:.4g}" for key in
                               ("own_ms", "over_ms", "queries_ms", "rows", "peak_MB", "baseline_peak_MB") if key in run)
            over = " OVER" if run["bar"] and run["ratio"] > run["bar"] else ""
            print(f"{name if index == 0 else '':44}{str(size) + ' ' + run.get('label', ''):>20}{run['ours_ms']:>11.3f}"
                  f"{run['baseline_ms']:>11.3f}{run['ratio']:>8.2f}{bar:>6}{grown:>8}  {extra}{over}")
    print(f"load before and after: {load:.1f}, {os.getloadavg()[0]:.1f}")
    return 1 if failed else 0


sys.exit(main())
