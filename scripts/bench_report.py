#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs a benchmark program in interleaved rounds and tells the shortest time of each row, with the peers' ratios.

    scripts/bench_report.py build/release/bench/INIBench [--rounds 5] [--filter REGEX] [--plot FOLDER]

A row's time is that of one key or one item where the row counts them. Rows that differ only in <Vlgs> and another
name in its place are peers. With --plot, what was measured at three sizes or more becomes an SVG plot (gnuplot).
"""
import argparse
import collections
import json
import pathlib
import re
import subprocess
import sys


def time_of(row):
    """Of one key, one item or one iteration, in nanoseconds."""
    if "per_key" in row:
        return row["per_key"] * 1e9
    if "items_per_second" in row:
        return 1e9 / row["items_per_second"]
    return row["cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[row["time_unit"]]


def run(program, *options):
    return subprocess.run([program, *options], check=True, capture_output=True, text=True).stdout


def shortest(program, rounds, selected):
    """The shortest time in nanoseconds, and the bytes of one key, by row. Each measure has a process of its own."""
    names = run(program, "--benchmark_list_tests", f"--benchmark_filter={selected}").split()
    rows = {}
    for name in names * rounds:
        output = run(program, f"--benchmark_filter=^{re.escape(name)}$", "--benchmark_min_time=0.05",
                     "--benchmark_format=json")
        row = json.loads(output)["benchmarks"][0]
        name = re.sub(r"/(iterations|repeats|real_time)(:\d+)?", "", name)
        figures = (time_of(row), row.get("bytes_per_key", 0))
        rows[name] = min(rows.get(name, figures), figures)
        print(f"{figures[0]:10.1f} ns  {name}", file=sys.stderr)
    return rows


def print_table(rows):
    for name, (time, size) in sorted(rows.items()):
        figure = f"{size:8.1f} bytes" if size else f"{time:8.1f} ns   "
        ours = rows.get(re.sub("<[A-Z]\\w+>", "<Vlgs>", name))
        peer = ours if "<" in name and "<Vlgs>" not in name else None
        ratio = f"  {(size / ours[1] if size else time / ours[0]):6.2f} x ours" if peer else ""
        print(f"{figure}  {name}{ratio}")


def point_of(name, program):
    """In which plot a row stands, on which line, and at which size."""
    if match := re.fullmatch(r"(?:Growth/)?(LookUp|Load)<(\w+)>/keys:(\d+)/of_a_section:200", name):
        return match[1].lower(), match[2], int(match[3])
    if match := re.fullmatch(r"([\w<>]+)/(?:members:)?(\d+)(/scattered:1)?", name):
        line = match[1] + (", scattered" if match[3] else "")
        return program.name.removesuffix("Bench").lower(), line, int(match[2])
    return None


def plot(rows, program, folder):
    plots = collections.defaultdict(lambda: collections.defaultdict(list))
    for name, (time, size) in rows.items():
        if not size and (point := point_of(name, program)):
            plots[point[0]][point[1]].append((point[2], time))
    for work, lines in plots.items():
        lines = {line: sorted(points) for line, points in lines.items() if len(points) >= 3}
        if not lines:
            continue
        times = [time for points in lines.values() for _, time in points]
        far_apart = max(times) > 50 * min(times)
        script = [f'set terminal svg size 720,480; set output "{folder / f"{work}.svg"}"',
                  "set logscale xy" if far_apart else "set logscale x; set yrange [0:*]",
                  "set key below; set autoscale xfix",
                  'set xlabel "keys or members"; set ylabel "ns for each"',
                  "plot " + ", ".join(f"'-' title '{line}' noenhanced with linespoints" for line in lines)]
        for points in lines.values():
            script += [f"{size} {time}" for size, time in points] + ["e"]
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
        plot(measured, pathlib.Path(arguments.program), arguments.plot)
