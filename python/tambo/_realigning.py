# SPDX-License-Identifier: GPL-3.0-or-later
"""The columns of a range, aligned anew by another program."""
import os
import re

from . import _programs, _settings, _tambo
from ._programs import ProgramError

# More columns than residues make no alignment: a program that prints more does so for ever.
LEAST, TIMES_INPUT = 1 << 24, 1000


def realign(self, columns=None, rows=None, program=None, arguments=None):
    """Aligns the columns of a slice anew, or all of them, and gives the slice in which they stand then.

    The residues of the rows, or of all rows, in these columns go to an aligner; of its answer nothing
    is believed but a new place for each of these very residues. Rows that are not named keep their
    cells. Columns without a residue are left out. It is one step of undo. With fewer than two rows
    that have residues there, nothing happens.

    program is the name of an aligner in the settings, as "MAFFT" (Katoh & Standley, Mol Biol Evol
    2013, 30:772-780) or "Kalign", or a command such as "mafft --quiet {input}"; {input} and {output}
    stand for FASTA files, and without {output} the program prints the alignment. Without a program it
    is the one that the workbench takes. arguments, a list of words, is what the program gets instead.

    A program that is missing, that fails, or whose answer is not to be trusted raises ProgramError, and
    Ctrl+C ends the program; the alignment is as it was then.
    """
    words = command(program, arguments)
    realigning = _tambo._Realigning(self, columns, rows)
    if realigning.count < 2:
        return realigning.range
    answer = _answer(words, realigning.fasta, self.name)
    # Of every letter one byte, whatever the program has printed.
    problem = realigning.take(answer)
    if problem:
        raise ProgramError(f"The columns of {self.name} were not realigned: the answer of {words[0]} is not "
                           f"to be trusted; {problem}.", words[0], 0)
    return realigning.range


def command(program=None, arguments=None):
    """The words of a call; ValueError when there is no {input} among them."""
    if program is None:
        program = _settings.value("Realign", "Aligner") or ""
    told = os.fspath(program)
    line = _settings.value("Realign", told)
    if line is None and arguments is not None:
        words = [told]
    else:
        words = split(told if line is None else line)
    if not words or not words[0]:
        raise ValueError("the command of the aligner is empty")
    if arguments is not None:
        words[1:] = [os.fspath(word) for word in arguments]
    if not any("{input}" in word for word in words[1:]):
        raise ValueError(f'the command of the aligner, "{" ".join(words)}", has no {{input}}')
    return words


def split(line):
    """The words of a command, parted by blanks. Quotes hold a word together; three are one in the word."""
    words, word, is_quoted = [], None, False
    for part in re.findall(r'"""|"|\s|[^\s"]+', line):
        if part.isspace() and not is_quoted:
            if word is not None:
                words.append(word)
            word = None
        elif part == '"':
            is_quoted = not is_quoted
            word = word or ""
        else:
            word = (word or "") + ('"' if part == '"""' else part)
    return words if word is None else [*words, word]


def _answer(words, fasta, name):
    with _programs.work_folder() as folder:
        work, temporary = folder / "work", folder / "tmp"
        work.mkdir()
        temporary.mkdir()
        (work / "input.fasta").write_bytes(fasta)
        # What is ended has no time to tidy up. MAFFT's own variable would come first.
        environment = dict(os.environ, TMPDIR=str(temporary))
        environment.pop("MAFFT_TMPDIR", None)
        program = os.path.abspath(words[0]) if os.sep in words[0] else words[0]
        call = [program] + [word.replace("{input}", "input.fasta").replace("{output}", "output.fasta")
                            for word in words[1:]]
        prefix = f"The columns of {name} were not realigned: {words[0]}"
        try:
            ended = _programs.run(call, work, environment, most=LEAST + TIMES_INPUT * len(fasta))
        except _programs.PrintsForEver:
            raise ProgramError(f"{prefix} printed more than any alignment needs.", words[0]) from None
        if ended.status in (None, _programs.SHELL_FOUND_NOTHING):
            why = f"failed: {ended.last_line}" if ended.last_line else "was not found or cannot be started"
            raise ProgramError(f"{prefix} {why}. Install it, or choose another aligner.", words[0], ended.status)
        if ended.status < 0:
            raise ProgramError(f"{prefix} crashed.", words[0], ended.status)
        if ended.status > 0:
            why = f"failed: {ended.last_line}" if ended.last_line else f"failed with status {ended.status}"
            raise ProgramError(f"{prefix} {why}.", words[0], ended.status)
        if not any("{output}" in word for word in words[1:]):
            return ended.output
        output = work / "output.fasta"
        return output.read_bytes() if output.is_file() else b""
