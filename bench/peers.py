# SPDX-License-Identifier: GPL-3.0-or-later
"""The workbench beside other alignment programs, on the same files in one run.

Each program opens each file several times, in turns with the others. Opened: from the start of the
process to the last large change of the screen. Memory: the peak of the largest process when all is
drawn. Gap: from the event that puts a gap into a row to the last change of the screen, and the
processor time of it. Files are synthetic proteins, three cells in ten gaps.
"""
import argparse
import datetime
import os
import pathlib
import platform
import shutil
import subprocess
import sys
import tempfile

from onscreen import Failed, Program, median

# The file in the folder in which a program is started.
LINK = "made.fasta"
SIZES = "100x500 1000x2000 5000x5000 20000x2000 10000x10000 100000x1000 1000000x200"


class Peer:
    """How a program is started, and what its user does for a gap in a row."""

    def __init__(self, name, command, title="", gap=None, first=None, undo=None, version=None):
        self.name, self.command, self.title = name, command, title
        self.gap, self.first, self.undo = gap, first, undo
        self.version = version


def peers(build):
    def debian(package):
        found = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], capture_output=True,
                               text=True)
        return found.stdout.split("-")[0].split(":")[-1].split("+")[0]

    yield Peer("empty window", [f"{build}/bin/empty_window", "--stay"])
    yield Peer("tambo", [f"{build}/bin/tambo", "{file}"], title="Alignment Editor",
               gap="middle 600,400", undo="ctrl+z")
    if shutil.which("seaview"):
        yield Peer("SeaView", ["seaview", "{file}"], first="click 600,400", gap="space",
                   version=debian("seaview"))
    if shutil.which("belvu"):
        yield Peer("belvu", ["belvu", "{file}"], version=debian("belvu"))
    if shutil.which("clustalx"):
        # It takes a path from the root for an option.
        yield Peer("Clustal X", ["clustalx", LINK], version=debian("clustalx"))
    if shutil.which("jalview"):
        yield Peer("Jalview", ["jalview", "-open", "{file}", "-nosplash"], version=debian("jalview"))


class Measured:
    def __init__(self):
        self.opened, self.memory, self.gap, self.gap_processor = [], [], [], []
        self.undo, self.undo_processor = [], []
        self.failure = None


def run(peer, file, arguments, with_edits, measured):
    command = [word.replace("{file}", str(file)) for word in peer.command]
    settings = {"TAMBO_SYSTEM_PLUGIN_DIRS": ""}
    try:
        with Program(command, peer.title, settings) as program:
            os.symlink(file, pathlib.Path(program.folder.name, LINK))
            opened, peak = program.start(arguments.seconds, arguments.memory)
            measured.opened.append(opened)
            measured.memory.append(peak)
            if not with_edits or peer.gap is None:
                return
            if peer.first:
                program.screen.press(peer.first)
            for _ in range(arguments.edits):
                wall, processor = program.answer(peer.gap, arguments.seconds)
                measured.gap.append(wall)
                measured.gap_processor.append(processor)
                if peer.undo:
                    wall, processor = program.answer(peer.undo, arguments.seconds)
                    measured.undo.append(wall)
                    measured.undo_processor.append(processor)
    except Failed as failure:
        measured.failure = str(failure)
        print(f"{peer.name} {file.name}: {failure}\n{failure.seen}", file=sys.stderr)


def cell(measured):
    if measured.failure:
        return measured.failure
    text = f"{median(measured.opened):.2f} s, {median(measured.memory):.0f} MiB"
    if measured.gap:
        text += f"; {median(measured.gap):.1f} ms ({median(measured.gap_processor):.1f})"
    if measured.undo:
        text += f"; {median(measured.undo):.1f} ms ({median(measured.undo_processor):.1f})"
    return text


def processor_name():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.partition(":")[2].strip()
    return platform.machine()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", required=True, help="folder with the benchmarks' build")
    parser.add_argument("--sizes", default=SIZES, help=f"rows x columns; otherwise {SIZES}")
    parser.add_argument("--runs", type=int, default=5, help="times that each file is opened")
    parser.add_argument("--edits", type=int, default=7, help="gaps in the last of them")
    parser.add_argument("--seconds", type=int, default=120, help="longest time for one thing")
    parser.add_argument("--memory", type=int, default=12000, help="largest memory in MiB")
    parser.add_argument("--only", default="", help="names of programs, commas between them")
    arguments = parser.parse_args()
    arguments.build = os.path.abspath(arguments.build)

    programs = list(peers(arguments.build))
    if arguments.only:
        wanted = arguments.only.split(",")
        programs = [peer for peer in programs if peer.name in wanted]
        if len(programs) != len(wanted):
            sys.exit("peers: not all of these are installed: " + arguments.only)
    print(f"{datetime.date.today()}, {os.cpu_count()} x {processor_name()}")
    print("opened, peak of memory; a gap (its processor time); its undo (its processor time)\n")
    names = [peer.name + (f" {peer.version}" if peer.version else "") for peer in programs]
    print("| rows x columns | " + " | ".join(names) + " |")
    print("|---" * (len(names) + 1) + "|", flush=True)
    # What did not manage some number of cells is not asked for more.
    too_many = {}
    with tempfile.TemporaryDirectory() as folder:
        for size in arguments.sizes.split():
            rows, columns = (int(number) for number in size.split("x"))
            file = pathlib.Path(folder, f"{size}.fasta")
            subprocess.run([f"{arguments.build}/bin/make_fasta", str(rows), str(columns), file],
                           check=True)
            found = {peer.name: Measured() for peer in programs}
            for time in range(arguments.runs):
                for peer in programs:
                    measured = found[peer.name]
                    if rows * columns > too_many.get(peer.name, rows * columns):
                        measured.failure = "not tried"
                    if not measured.failure:
                        run(peer, file, arguments, time == arguments.runs - 1, measured)
                    if measured.failure and peer.name not in too_many:
                        too_many[peer.name] = rows * columns
            print(f"| {rows:,} x {columns:,} | " +
                  " | ".join(cell(found[peer.name]) for peer in programs) + " |", flush=True)
            file.unlink()


main()
