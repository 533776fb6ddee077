#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs every test function by itself, then all functions and data rows of each program in a random order. A function that needs another one, or
that leaves something behind, fails here.

Usage: run_each.py BUILD_FOLDER [-R PATTERN] [--seed NUMBER] [--jobs NUMBER]
"""
import argparse
import concurrent.futures
import json
import os
import random
import re
import subprocess
import sys
import time

TIMEOUT_SECONDS = 600


def programs(build, pattern):
    """Name, command and environment of the tests that are programs of QTest, as ctest runs them."""
    listing = subprocess.run(["ctest", "--test-dir", build, "--show-only=json-v1"], check=True, capture_output=True, text=True).stdout
    for test in json.loads(listing)["tests"]:
        command = test["command"]
        properties = {one["name"]: one["value"] for one in test["properties"]}
        if len(command) == 1 and re.search(pattern, test["name"]):
            environment = os.environ | dict(pair.split("=", 1) for pair in properties.get("ENVIRONMENT", []))
            yield test["name"], command[0], environment


def listed(program, environment, option):
    result = subprocess.run([program, option], check=True, capture_output=True, text=True, env=environment)
    return result.stdout.splitlines()


def run(name, program, environment, functions):
    result = subprocess.run(
        [program, "-silent", *functions], capture_output=True, text=True, env=environment, timeout=TIMEOUT_SECONDS, errors="replace"
    )
    return "" if result.returncode == 0 else f"{name} {' '.join(functions)}: status {result.returncode}\n{result.stdout}{result.stderr}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build")
    parser.add_argument("-R", dest="pattern", default="")
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    options = parser.parse_args()
    shuffle = random.Random(options.seed).shuffle
    runs = []
    functions = 0
    for name, program, environment in programs(options.build, options.pattern):
        names = [line.removesuffix("()") for line in listed(program, environment, "-functions")]
        functions += len(names)
        runs += [(name, program, environment, [one]) for one in names]
        # "Class function row"; without rows the third word is missing. A row that begins with a colon cannot be named.
        rows = [":".join(line.split(" ", 2)[1:]) for line in listed(program, environment, "-datatags")]
        rows = [row for row in rows if "::" not in row]
        shuffle(rows)
        runs.append((name, program, environment, rows))
    print(f"{functions} functions, seed {options.seed}", flush=True)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        failures = [failure for failure in pool.map(lambda one: run(*one), runs) if failure]
    print("\n".join(failures) if failures else "each passes by itself, and all in a random order")
    sys.exit(1 if failures or not functions else 0)


main()
