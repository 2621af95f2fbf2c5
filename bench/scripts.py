#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What scripts in Python take, beside what the same takes without Python.

bench/scripts.py BUILD, where BUILD was configured with TAMBO_PYTHON and TAMBO_BENCH. All figures are medians
of rounds in turns, in processor time, which other programs leave alone for the most part.
"""
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile
import threading
import time

EDITS, ROUNDS = 100_000, 7


def longest_wait(work):
    """How long another thread, which asks for the interpreter again and again, waits for it while work is done."""
    waits, has_ended = [0], threading.Event()

    def ask():
        last = time.perf_counter()
        while not has_ended.is_set():
            time.sleep(0)
            now = time.perf_counter()
            waits[0] = max(waits[0], now - last)
            last = now

    thread = threading.Thread(target=ask)
    thread.start()
    work()
    has_ended.set()
    thread.join()
    return waits[0]


def letters(tambo, numpy):
    """The array of all cells, and a copy of it, each in memory that is new; and how long another thread waits."""
    random = numpy.random.default_rng(1)
    cells = random.choice(numpy.frombuffer(b"ACDEFGHIKLMNPQRSTVWY", dtype=numpy.uint8), size=(10_000, 10_000))
    cells[random.random(cells.shape) < 0.3] = ord("-")
    alignment = tambo.new_alignment("large", [(f"r{i}", bytes(row).decode()) for i, row in enumerate(cells)])
    made, copied = [], []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        found = alignment.letters()
        middle = time.perf_counter()
        copy = found.copy()
        end = time.perf_counter()
        assert copy.shape == cells.shape
        made.append(1e3 * (middle - start))
        copied.append(1e3 * (end - middle))
        del found, copy
    assert (alignment.letters() == cells).all()
    waited = statistics.median(1e3 * longest_wait(alignment.letters) for _ in range(ROUNDS))
    tambo.clear()
    return statistics.median(made), statistics.median(copied), waited


def edits(tambo, file):
    """Microseconds for an edit, with the loop around it."""
    alignment = tambo.open(file).alignment
    text = str(alignment[0])
    gap = next(i for i in range(len(text)) if text[i] == "-" and text[i + 1] != "-")
    places = [(gap, gap + 1), (gap + 1, gap)] * (EDITS // 2)
    drag = alignment.drag
    start = time.process_time()
    for begin, end in places:
        drag(0, begin, end, True)
    took = time.process_time() - start
    tambo.clear()
    return 1e6 * took / EDITS


def seconds_of(command, environment=None):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, env=environment)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: bench/scripts.py BUILD")
    build = pathlib.Path(sys.argv[1]).resolve()
    package = str(build / "lib/python3/dist-packages")
    sys.path.insert(0, package)
    import numpy
    import tambo

    made, copied, waited = letters(tambo, numpy)
    print(f"letters() of 10,000 x 10,000: {made:.1f} ms, a copy of it {copied:.1f} ms: {made / copied:.2f} times; "
          f"another thread waits {waited:.1f} ms at most")

    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "made.fasta")
        subprocess.run([build / "bin/make_fasta", "100", "500", file], check=True)
        from_python, from_cpp = [], []
        for _ in range(ROUNDS):
            from_python.append(edits(tambo, file))
            said = subprocess.run([build / "bin/bench_script", file, str(EDITS)], check=True, text=True,
                                  capture_output=True)
            from_cpp.append(float(said.stdout))
        python, cpp = statistics.median(from_python), statistics.median(from_cpp)
        print(f"an edit of a gap: {python:.2f} us, in C++ {cpp:.2f} us: {python - cpp:.2f} us above")

        subprocess.run([build / "bin/make_fasta", "1000", "1000", file], check=True)
        script = f"import tambo; tambo.open({file!r}).alignment.identity_matrix()"
        environment = dict(os.environ, PYTHONPATH=package)
        scripts, commands = [], []
        for _ in range(ROUNDS):
            scripts.append(seconds_of([sys.executable, "-c", script], environment))
            commands.append(seconds_of([build / "bin/tambo", "identity", file]))
        print(f"identity matrix of 1,000 x 1,000: {1e3 * statistics.median(scripts):.0f} ms, "
              f"tambo identity {1e3 * statistics.median(commands):.0f} ms")


main()
