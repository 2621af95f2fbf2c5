#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Opening an alignment file, whole process: from its start to the first painted cells, and memory.

Beside it stand what it is judged by: an empty window of the toolkit, and reading the file's bytes.
The bar of the time is an empty window, 0.15 s and three times the reading; that of the memory, above
a workbench whose editor shows next to nothing, is 1.5 bytes a cell.
"""
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

SIZES = ((100, 500), (1000, 2000), (5000, 5000), (10000, 10000))
REPEATS = 5


class Screen:
    """A virtual screen that nobody else draws on."""

    def __enter__(self):
        reader, writer = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1920x1080x24", "-dpi", "96",
             "-nolisten", "tcp"], pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as numbers:
            return f":{numbers.readline().strip()}"

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


def measure(command, environment):
    """Median seconds and largest resident memory in bytes of several runs."""
    seconds, memory = [], 0
    for _ in range(REPEATS):
        start = time.perf_counter()
        process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        seconds.append(time.perf_counter() - start)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode:
            sys.exit(f"{command[0]} ended with status {process.returncode}")
        memory = max(memory, usage.ru_maxrss * 1024)
    return statistics.median(seconds), memory


def main():
    programs = pathlib.Path(sys.argv[1]).resolve() / "bin"
    with Screen() as display, tempfile.TemporaryDirectory() as folder:
        # Settings and caches of its own, so that a user's are neither used nor changed.
        environment = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", HOME=folder,
                           XDG_RUNTIME_DIR=folder, TAMBO_EXIT_WHEN_PAINTED="1")
        def make(rows, columns):
            file = f"{folder}/{rows}x{columns}.fasta"
            subprocess.run([programs / "make_fasta", str(rows), str(columns), file], check=True)
            return file

        window, window_memory = measure([programs / "empty_window"], environment)
        workbench, workbench_memory = measure([programs / "tambo"], environment)
        editor, editor_memory = measure([programs / "tambo", make(2, 10)], environment)
        print(f"empty window {window:.3f} s, {window_memory / 1e6:.0f} MB; "
              f"workbench {workbench:.3f} s, {workbench_memory / 1e6:.0f} MB; "
              f"workbench and editor {editor:.3f} s, {editor_memory / 1e6:.0f} MB")
        print(f"{'rows x columns':>16} {'opened':>9} {'reading':>9} {'bar':>9} {'of bar':>7} "
              f"{'memory':>9} {'bytes a cell':>13}")
        for rows, columns in SIZES:
            file = make(rows, columns)
            reading, _ = measure(["cat", file], environment)
            opening, memory = measure([programs / "tambo", file], environment)
            bar = window + 0.15 + 3 * reading
            cell = (memory - editor_memory) / (rows * columns)
            print(f"{rows:>8} x{columns:>6} {opening:>7.3f} s {reading:>7.3f} s {bar:>7.3f} s "
                  f"{opening / bar:>7.2f} {memory / 1e6:>6.0f} MB {cell:>13.2f}", flush=True)
            os.unlink(file)


main()
