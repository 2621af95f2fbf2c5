# SPDX-License-Identifier: GPL-3.0-or-later
"""Pictures of alignments and structures, made by the program tambo in a process of its own.

It gets a session of what is loaded, and so shows the colors, numbers and ties that there are.
"""
import os
import pathlib
import re
import shutil

from . import _programs, _tambo
from ._programs import ProgramError

PRINT_STYLES = ("fat", "slim", "bw")
KINDS = (".png", ".svg", ".pdf", ".ps")
STYLES = ("cartoon", "trace", "sticks", "balls", "spheres")
COLORS = ("alignment", "chain", "fold", "bfactor")
VIEWS = ("front", "back", "left", "right", "top", "bottom")
GROUNDS = ("white", "dark", "none")
MOST_PIXELS = 20000


def alignment_picture(self, path=None, style="fat", rows=None, columns=None, font=None,
                      secondary_structure=False, page=0):
    """Prints the alignment on A4 pages as the editor does, and gives the list of files.

    path ends in .png (150 dots per inch), .svg, .pdf or .ps. PNG and SVG have a file for each page, with
    its number in the name when there are several: family-1.png. Without a path the result is a page
    as the bytes of a PNG, the first one or the one that page says.

    style: "fat" has letters on cells of their color, "slim" letters in their color, "bw" black ones.
    rows and columns: a place, a slice, places or truth values; all without them, in the order of the
    alignment. font: a name and a size in points, as ("DejaVu Sans Mono", 8). secondary_structure
    adds a line of helices, strands and turns to each row.

    More rows than a page has lines, and a program that is missing, raise ProgramError.
    """
    _one_of("style", style, PRINT_STYLES)
    ending = ".png" if path is None else pathlib.Path(path).suffix.lower()
    if ending not in KINDS:
        raise ValueError(f"{os.fspath(path)} does not end in {', '.join(KINDS[:-1])} or {KINDS[-1]}")
    height, width = self.shape
    words = ["--style", style, "--alignment", str(_tambo.alignments().index(self) + 1)]
    for option, named, count in (("row", rows, height), ("column", columns, width)):
        if named is not None:
            words += [f"--{option}s", _places(named, count, option)]
    if font is not None:
        words += ["--font", _font(font)]
    if secondary_structure:
        words.append("--sse")
    with _programs.work_folder() as folder:
        output = folder / "pages" / f"page{ending}"
        output.parent.mkdir()
        _draw("print", f"alignment {self.name}", folder, [*words, "--output", str(output)])
        made = sorted(output.parent.iterdir(), key=_number)
        if path is None:
            if not 0 <= page < len(made):
                raise IndexError(f"there is no page {page}: the alignment has {len(made)}, from 0 on")
            return made[page].read_bytes()
        path = pathlib.Path(path)
        names = [path] if len(made) == 1 else [
            path.with_name(f"{path.stem}-{number}{path.suffix}") for number in range(1, len(made) + 1)]
        for file, name in zip(made, names):
            _place(file, name)
        return names


def structure_picture(self, path=None, size=(1600, 1200), style=None, color="alignment", view="front",
                      ground="white", transparent=False, perspective=False):
    """Draws the structure alone, as tambo.picture() does, and takes what that takes."""
    return picture(path, [self], size, style, color, view, ground, transparent, perspective)


def picture(path=None, structures=None, size=(1600, 1200), style=None, color="alignment", view="front",
            ground="white", transparent=False, perspective=False):
    """Draws structures, all without them, as the structure view does; bytes of a PNG, or a file with a path.

    size: width and height in pixels, up to 20000 each. style: "cartoon", "trace", "sticks", "balls" or
    "spheres", or else for each part what it is mostly shown as. color: "alignment" has the colors of the
    residues, "chain", "fold" (secondary structure) or "bfactor". view: "front", "back", "left", "right",
    "top" or "bottom". ground: "white", "dark" or "none", which is transparent.

    A program that is missing or draws nothing raises ProgramError.
    """
    if path is not None and pathlib.Path(path).suffix.lower() != ".png":
        raise ValueError(f"{os.fspath(path)} does not end in .png")
    words = ["--size", _size(size)]
    for option, value, known in (("color", color, COLORS), ("view", view, VIEWS), ("ground", ground, GROUNDS)):
        _one_of(option, value, known)
        words += [f"--{option}", value]
    if style is not None:
        _one_of("style", style, STYLES)
        words += ["--style", style]
    words += [f"--{name}" for name, wanted in (("transparent", transparent), ("perspective", perspective)) if wanted]
    loaded = _tambo.structures()
    shown = loaded if structures is None else list(structures)
    if not shown:
        raise ValueError("there is no structure to be drawn")
    if structures is not None:
        words += ["--structures", ",".join(str(_place_of(each, loaded) + 1) for each in shown)]
    what = f"structure {shown[0].name}" if len(shown) == 1 else f"{len(shown)} structures"
    with _programs.work_folder() as folder:
        output = folder / "picture.png"
        _draw("picture", what, folder, [*words, "--output", str(output)])
        if path is None:
            return output.read_bytes()
        _place(output, pathlib.Path(path))
        return [pathlib.Path(path)]


def _draw(command, what, folder, words):
    failed = f"No picture of the {what} was made: " if not what[0].isdigit() else f"No picture of {what} was made: "
    tambo = _programs.own_program("tambo")
    if tambo is None:
        raise ProgramError(f"{failed}there is no program tambo. It comes with the package tambo.", "tambo")
    session = folder / "objects.tambo"
    _tambo._write_objects(session)
    # It needs no screen, and shall not look for one.
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
    ended = _programs.run([tambo, command, str(session), *words], folder, environment, patience=2.0)
    if ended.status != 0:
        prefix = "tambo: "
        told = [line[len(prefix):] for line in ended.errors if line.startswith(prefix)]
        why = told[-1].removeprefix(f"{session}: ").removeprefix(f"{session.name}: ") if told else (
            "tambo cannot be started" if ended.status is None
            else ended.last_line or f"tambo ended with status {ended.status}")
        raise ProgramError(failed + why, "tambo", ended.status)


def _place(made, path):
    """What is there already stays until the new file is complete."""
    beside = path.with_name(f".{path.name}.new")
    try:
        shutil.copyfile(made, beside)
        os.replace(beside, path)
    finally:
        beside.unlink(missing_ok=True)


def _number(file):
    found = re.search(r"-(\d+)\.\w+$", file.name)
    return int(found.group(1)) if found else 0


def _one_of(option, value, known):
    if value not in known:
        raise ValueError(f"{option} is one of {', '.join(known)}, and not {value!r}")


def _places(named, count, what):
    runs = _tambo._runs(named, count, what)
    if not runs:
        raise ValueError(f"there is no {what} to be drawn")
    return ",".join(f"{begin + 1}-{end}" for begin, end in runs)


def _place_of(structure, loaded):
    if structure not in loaded:
        # An object that is gone says so.
        raise ValueError(f"{structure.name} is not loaded")
    return loaded.index(structure)


def _font(font):
    try:
        name, size = font
        size = float(size)
    except (TypeError, ValueError):
        raise ValueError(f"font is a name and a size, as ('DejaVu Sans Mono', 8), and not {font!r}") from None
    if not isinstance(name, str) or not name or "," in name or not 0 < size <= 200:
        raise ValueError(f"font is a name and a size, as ('DejaVu Sans Mono', 8), and not {font!r}")
    return f"{name},{size:g}"


def _size(size):
    try:
        width, height = (int(pixels) for pixels in size)
    except (TypeError, ValueError):
        raise ValueError(f"size is a width and a height in pixels, and not {size!r}") from None
    if not (1 <= width <= MOST_PIXELS and 1 <= height <= MOST_PIXELS):
        raise ValueError(f"a picture is 1 to {MOST_PIXELS} pixels wide and high, and not {width} x {height}")
    return f"{width}x{height}"


def structure_png(self):
    """What a notebook shows of a structure; nothing when there is no program to draw it."""
    try:
        return picture(None, [self], size=(640, 480))
    except (ProgramError, ReferenceError):
        return None
