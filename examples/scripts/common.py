# SPDX-License-Identifier: GPL-3.0-or-later
"""What the example scripts share: one message for bad input, and results that replace nothing unasked.

Who takes a script elsewhere takes this file along.
"""
import argparse
import contextlib
import csv
import os
import pathlib
import sys

# Scripts import this file before the package, so that who has none reads one line.
try:
    import tambo
except ImportError as error:
    sys.exit(f"the Python package tambo cannot be loaded: {error}")


class BadInput(Exception):
    """What a user has to mend; its text names the file, the line if there is one, and the cause."""


def parser(doc):
    """A parser of arguments that explains the script by its docstring."""
    return argparse.ArgumentParser(description=doc, formatter_class=argparse.RawDescriptionHelpFormatter)


def add_output(parser, help):
    parser.add_argument("output", type=pathlib.Path, help=help)
    parser.add_argument("--force", action="store_true", help="replace what is there already")


def run(main):
    """Calls main, and ends the script with status 1 and one line when the input is bad."""
    try:
        main()
        sys.stdout.flush()
    except BadInput as error:
        end(error)
    except BrokenPipeError:
        # Who read the output has seen enough.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        sys.exit(1)
    except OSError as error:
        end(f"{error.filename}: {error.strerror}" if error.filename else error)
    except (tambo.FormatError, tambo.RefusedError) as error:
        end(error)
    except KeyboardInterrupt:
        sys.exit(130)


def end(message):
    sys.exit(f"{pathlib.Path(sys.argv[0]).stem}: {message}")


def tell(message):
    """What is worth knowing, and no error."""
    print(message, file=sys.stderr)


def check_output(path, force):
    """Refuses a result that would replace a file, before any work is done."""
    if str(path) == "-":
        return
    if path.is_dir():
        raise BadInput(f"{path}: is a folder")
    if path.exists() and not path.is_file():
        raise BadInput(f"{path}: is no file")
    if path.exists() and not force:
        raise BadInput(f"{path}: is there already; --force replaces it")
    if not path.parent.is_dir():
        raise BadInput(f"{path}: there is no folder {path.parent}")


def open_family(path):
    """The one alignment of a file."""
    opened = tambo.open(path)
    if len(opened.alignments) != 1:
        why = "".join(f" ({remark})" for remark in opened.remarks[:1])
        raise BadInput(f"{path}: has {len(opened.alignments) or 'no'} alignments, and one is needed{why}")
    for remark in opened.remarks:
        tell(remark)
    return opened.alignment


def row_named(family, name, path):
    """The row of a name that only one row has."""
    found = family.names.count(name)
    if found == 0:
        raise BadInput(f"{path}: no row is called {name}")
    if found > 1:
        raise BadInput(f"{path}: {found} rows are called {name}")
    return family[name]


def residue_of(row, number, path):
    """The place of a residue, from 0, by its number as the structure has it."""
    numbers = row.chain.numbers
    found = numbers.count(number)
    if found == 0:
        raise BadInput(f"{path}: row {row.name} has no residue {number}; they go from {numbers[0]} to {numbers[-1]}"
                       if numbers else f"{path}: row {row.name} has no residues")
    if found > 1:
        raise BadInput(f"{path}: row {row.name} has {found} residues of number {number}")
    return numbers.index(number)


def structure_of(row):
    """The structure of a row and its chain there, or None and None."""
    for chain in [row.chain, *row.chain.tied_to]:
        for structure in tambo.structures():
            if chain in structure.chains:
                return structure, chain
    return None, None


def add_row(family, chain, text):
    """Adds a row of the residues of a chain, with the gaps of text."""
    family.add_rows([chain])
    row = len(family) - 1
    begin = None
    for column, letter in enumerate(text + "."):
        if letter == "-":
            begin = column if begin is None else begin
        elif begin is not None:
            # Gaps at the end are there already, and more of them would make the alignment wider.
            if letter != ".":
                family.insert_gaps(row, begin, column - begin)
            begin = None


def save(what, path):
    """Saves an alignment or a structure by the ending of the name, and tells what the file has lost."""
    try:
        losses = what.save(path)
    except tambo.FormatError:
        raise
    except ValueError as error:
        raise BadInput(error if str(path) in str(error) else f"{path}: {error}") from None
    for loss in losses:
        tell(f"{path}: {loss}")


def write_text(path, text):
    """Writes a whole file or nothing; "-" is the standard output."""
    if str(path) == "-":
        sys.stdout.write(text)
        return
    whole = os.path.realpath(path)
    part = f"{whole}.part{os.getpid()}"
    try:
        with open(part, "x", encoding="utf-8", newline="") as file:
            file.write(text)
        os.replace(part, whole)
    except OSError as error:
        raise BadInput(f"{path}: cannot be written: {error.strerror}") from None
    finally:
        with contextlib.suppress(FileNotFoundError):
            os.unlink(part)


def lines_of(path):
    """The lines of a text file, as the csv module wants them."""
    try:
        return path.read_text(encoding="utf-8-sig").splitlines(keepends=True)
    except UnicodeDecodeError as error:
        raise BadInput(f"{path}: is no text in UTF-8: {error.reason} at byte {error.start}") from None


def table(path, columns):
    """The lines of a CSV file with a head, as pairs of a line's number and the values of these columns.

    The delimiter is the one of tab, semicolon and comma that the head has most of.
    """
    lines = lines_of(path)
    if not lines:
        raise BadInput(f"{path}: is empty")
    delimiter = max("\t;,", key=lines[0].count)
    reader = csv.reader(lines, delimiter=delimiter, strict=True)
    try:
        head = [name.strip() for name in next(reader)]
        for name in columns:
            if head.count(name) != 1:
                raise BadInput(f"{path}:1: has {head.count(name)} columns called {name}, and one is needed; "
                               f"there are {', '.join(head)}")
        places = [head.index(name) for name in columns]
        values = []
        for line in reader:
            if not any(line):
                continue
            if len(line) <= max(places):
                raise BadInput(f"{path}:{reader.line_num}: has {len(line)} values, and the head has {len(head)}")
            values.append((reader.line_num, [line[place].strip() for place in places]))
        return values
    except csv.Error as error:
        raise BadInput(f"{path}:{reader.line_num}: {error}") from None
