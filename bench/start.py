# SPDX-License-Identifier: GPL-3.0-or-later
"""The start of the workbench with small alignments, beside an empty window of the toolkit.

Both start in turns, on virtual screens of their own and with homes of their own, as often as asked.
Drawn: from the start of the process to the last large change of the screen, with the editor on top.
First: to the first one. Above: what is between the two programs of a pair. All are medians, in
milliseconds. With a second build its program takes part, too.
"""
import argparse
import pathlib
import subprocess
import sys
import tempfile

from onscreen import Failed, Program, median

SETTINGS = {"TAMBO_SYSTEM_PLUGIN_DIRS": ""}


def start(command, title, arguments):
    """Milliseconds to the first and to the last large change of the screen."""
    with Program(command, title, SETTINGS) as program:
        drawn, _ = program.start(arguments.seconds, 12000, still_for=0.4)
        return 1000 * program.changes[0], 1000 * drawn


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", required=True, help="folder with the benchmarks' build")
    parser.add_argument("--before", help="the same of another state of the sources")
    parser.add_argument("--sizes", default="100x500 1000x2000", help="rows x columns")
    parser.add_argument("--pairs", type=int, default=30, help="how often both start")
    parser.add_argument("--seconds", type=int, default=60, help="longest time for one start")
    arguments = parser.parse_args()

    builds = {"now": arguments.build}
    if arguments.before:
        builds = {"before": arguments.before, "now": arguments.build}
    print("| rows x columns | | first | drawn | empty window | above |\n|---|---|---|---|---|---|")
    with tempfile.TemporaryDirectory() as folder:
        for size in arguments.sizes.split():
            rows, columns = size.split("x")
            file = pathlib.Path(folder, f"{size}.fasta")
            subprocess.run([f"{arguments.build}/bin/make_fasta", rows, columns, file], check=True)
            found = {name: [] for name in builds}
            try:
                for _ in range(arguments.pairs):
                    window = [f"{arguments.build}/bin/empty_window", "--stay"]
                    _, empty = start(window, "", arguments)
                    for name, build in builds.items():
                        first, drawn = start([f"{build}/bin/tambo", file], "Alignment Editor",
                                             arguments)
                        found[name].append((first, drawn, empty, drawn - empty))
            except Failed as failure:
                sys.exit(f"start: {failure}\n{failure.seen}")
            for name, values in found.items():
                print(f"| {int(rows):,} x {int(columns):,} | {name} | " +
                      " | ".join(f"{median(list(column)):.0f} ms" for column in zip(*values)) +
                      " |", flush=True)


main()
