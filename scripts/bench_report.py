#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs a benchmark program in interleaved rounds and tells the shortest time of each row, with the peers' ratios.

    scripts/bench_report.py build/release/bench/INIBench [--rounds 5] [--filter REGEX] [--plot FOLDER]

Rows that differ only in <Vlgs> and another name in its place are peers. With --plot, look-ups and loads that were
measured at several sizes become SVG plots (gnuplot).
"""
import argparse
import collections
import json
import pathlib
import re
import subprocess


def shortest(program, rounds, selected):
    """The shortest time of one key in nanoseconds, and the bytes of one key, by row."""
    output = subprocess.run(
        [program, f"--benchmark_repetitions={rounds}", "--benchmark_enable_random_interleaving=true",
         "--benchmark_min_time=0.05", f"--benchmark_filter={selected}", "--benchmark_format=json"], check=True, capture_output=True, text=True).stdout
    rows = {}
    for row in json.loads(output)["benchmarks"]:
        if row["run_type"] == "iteration":
            name = re.sub(r"/(iterations|repeats):\d+", "", row["name"])
            key = (row["per_key"] * 1e9, row["bytes_per_key"])
            rows[name] = min(rows.get(name, key), key)
    return rows


def print_table(rows):
    for name, (time, size) in sorted(rows.items()):
        figure = f"{size:8.1f} bytes" if size else f"{time:8.1f} ns   "
        ours = rows.get(re.sub("<[A-Z]\\w+>", "<Vlgs>", name))
        peer = "<Vlgs>" not in name and ours
        ratio = f"  {(size / ours[1] if size else time / ours[0]):6.2f} x ours" if peer else ""
        print(f"{figure}  {name}{ratio}")


def plot(rows, folder):
    lines = collections.defaultdict(lambda: collections.defaultdict(list))
    for name, (time, size) in rows.items():
        match = re.fullmatch(r"(?:Growth/)?(LookUp|Load)<(\w+)>/keys:(\d+)/of_a_section:200", name)
        if match and not size:
            lines[match[1]][match[2]].append((int(match[3]), time))
    for work, libraries in lines.items():
        script = [f'set terminal svg size 640,400; set output "{folder / f"{work.lower()}.svg"}"',
                  'set logscale x; set xlabel "keys"; set ylabel "ns for a key"; set yrange [0:*]; set key left top']
        script.append("plot " + ", ".join(f"'-' title '{library}' with linespoints" for library in libraries))
        for points in libraries.values():
            script += [f"{keys} {time}" for keys, time in sorted(points)] + ["e"]
        subprocess.run(["gnuplot"], input="\n".join(script) + "\n", check=True, text=True)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--filter", default="all")
    parser.add_argument("--plot", type=pathlib.Path)
    arguments = parser.parse_args()
    measured = shortest(arguments.program, arguments.rounds, arguments.filter)
    print_table(measured)
    if arguments.plot:
        arguments.plot.mkdir(parents=True, exist_ok=True)
        plot(measured, arguments.plot)
