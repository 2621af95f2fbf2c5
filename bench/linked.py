#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""From a click in one window to the pixels of another: grid, object tree and structure view.

bench/linked.py TAMBO opens the example, and 135 copies of one of its structures beside each other
(29,430 residues), with the structure view, clicks, and prints medians and maxima in milliseconds. Needs
Xvfb, openbox, python3-xlib and python3-numpy. A click that changes nothing in the other window, as when
the residue is not among the columns that are shown, does not count.
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import time

from Xlib import X
from Xlib.ext import xtest

import onscreen

# Windows stand where the workbench has put them.
onscreen.WIDTH, onscreen.HEIGHT = 1600, 1000
onscreen.RULES = '<openbox_config xmlns="http://openbox.org/3.4/rc"></openbox_config>'
EXAMPLES = pathlib.Path(__file__).resolve().parent.parent / "examples"
COPIES, APART = 135, 48
# Of the grid and of the tree, in pixels from the corner of their window.
FIRST_CELL, CELL = (125, 151), (14, 18)
FIRST_LINE, LINE = (100, 100), 23


def write_copies(folder):
    """Structures beside each other and the alignment of them."""
    atoms = (EXAMPLES / "1PPF_E_superposed.pdb").read_text().splitlines()
    alignment = (EXAMPLES / "serine_proteases.ali").read_text()
    head, letters = re.search(r">P1;1PPF_E\n(structure[^\n]*)\n(.*?\*)", alignment, re.S).groups()
    rows = []
    for i in range(COPIES):
        shift = (APART * (i % 12), APART * (i // 12), 0)
        lines = []
        for line in atoms:
            if line.startswith(("ATOM", "HETATM")):
                place = (float(line[30 + 8 * k:38 + 8 * k]) + shift[k] for k in range(3))
                line = line[:30] + "".join(f"{x:8.3f}" for x in place) + line[54:]
            lines.append(line)
        name = f"N{i:03d}"
        (folder / f"{name}_superposed.pdb").write_text("\n".join(lines) + "\n")
        rows.append(f">P1;{name}\n{head.replace('1PPF_E', name)}\n{letters.replace('-', '')}\n")
    file = folder / "copies.ali"
    file.write_text("\n".join(rows))
    return file


def place_of(screen, window):
    size = window.get_geometry()
    corner = window.translate_coords(screen.display.screen().root, 0, 0)
    return -corner.x, -corner.y, size.width, size.height


def answer(program, place, region):
    """Milliseconds from a click until the region changes, or None."""
    screen = program.screen
    left, top, right, bottom = region
    xtest.fake_input(screen.display, X.MotionNotify, x=place[0], y=place[1])
    screen.display.sync()
    program.rest(60)
    before = screen.pixels[top:bottom, left:right].copy()
    start = time.perf_counter()
    xtest.fake_input(screen.display, X.ButtonPress, 1)
    xtest.fake_input(screen.display, X.ButtonRelease, 1)
    screen.display.sync()
    while time.perf_counter() - start < 1:
        if (screen.pixels[top:bottom, left:right] != before).any():
            return 1000 * (time.perf_counter() - start)
        time.sleep(onscreen.ANSWERING)
    return None


def measure(tambo, file):
    titles = ("Tambo", "Alignment Editor", "Structure View")
    with onscreen.Program([tambo, "--tool", "Structure View", file]) as program:
        program.environment["TAMBO_USER_DIR"] = f"{program.folder.name}/user"
        with open(program.output, "w", encoding="utf-8") as output:
            program.process = subprocess.Popen(program.command, env=program.environment,
                                               stdout=output, stderr=subprocess.STDOUT)
        windows = {}
        while not all(windows.get(title) for title in titles):
            windows = {title: program.screen.window(title) for title in titles}
            time.sleep(0.1)
        program.rest(120, rest=1.5)
        tree, editor, view = (place_of(program.screen, windows[title]) for title in titles)
        picture = (view[0] + 190, view[1] + 100, view[0] + view[2] - 10, view[1] + view[3] - 50)
        grid = (editor[0] + 120, editor[1] + 130, editor[0] + editor[2] - 40,
                editor[1] + editor[3] - 60)
        middle = (picture[0] + picture[2]) // 2
        cells = [(editor[0] + FIRST_CELL[0] + CELL[0] * (3 * i % 40),
                  editor[1] + FIRST_CELL[1] + CELL[1] * (i % 6)) for i in range(15)]
        lines = [(tree[0] + FIRST_LINE[0], tree[1] + FIRST_LINE[1] + LINE * (i % 6))
                 for i in range(15)]
        # The example is in the middle; of the copies, the first rows are the lowest structures.
        places = [(middle - 140 + 23 * (i % 12), bottom - 6 * (i % 13))
                  for bottom in ((picture[1] + picture[3]) // 2 + 40, picture[3] - 22)
                  for i in range(20)]
        for name, clicks, region in (("grid to picture", cells, picture),
                                     ("tree to picture", lines, picture),
                                     ("picture to grid", places, grid),
                                     ("picture to picture", places[::-1], picture)):
            times = [found for place in clicks if (found := answer(program, place, region))]
            print(f"{pathlib.Path(file).name}, {name}: "
                  + (f"{onscreen.median(times):.1f} ms, at most {max(times):.1f} ms, "
                     if times else "") + f"{len(times)} of {len(clicks)} clicks", flush=True)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: bench/linked.py TAMBO")
    measure(sys.argv[1], str(EXAMPLES / "serine_proteases.ali"))
    with tempfile.TemporaryDirectory() as made:
        measure(sys.argv[1], str(write_copies(pathlib.Path(made))))
