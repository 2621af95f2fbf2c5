# SPDX-License-Identifier: GPL-3.0-or-later
# Run by the engine's own interpreter: builds the model as the engine's command does that it is named after, and
# leaves in "report.txt" what else is known of it, a word and its value to a line:
#   engine   name and version
#   failure  why there is no model, or no score; the last one counts
#   score    of the model's backbone, the engine's own
#   residue  number of a residue in the target, and its share of the score
import ctypes
import os
import runpy
import signal
import sys

COMMAND = "build-model"


def end_with_parent():
    """The engine's command is a script of the shell: whatever ends that, ends this."""
    set_death_signal = 1
    ctypes.CDLL(None).prctl(set_death_signal, signal.SIGKILL)


def report(*lines):
    with open("report.txt", "a", encoding="utf-8") as file:
        file.writelines(" ".join(line.split()) + "\n" for line in lines)


def report_engine():
    import ost
    import promod3

    report(f"engine ProMod3 {promod3.__version__}, OpenStructure {ost.VERSION}")


def build():
    from promod3.core import helper

    complain = helper.MsgErrorAndExit

    def complain_and_report(message, status):
        report(f"failure {message}")
        complain(message, status)

    helper.MsgErrorAndExit = complain_and_report
    program = os.path.join(os.environ["PROMOD3_ROOT"], "libexec", "promod3", "pm-" + COMMAND)
    sys.argv[0] = program
    return runpy.run_path(program, run_name="__main__")


def stretches(residues):
    """Of residues whose numbers follow each other: first numbers, and counts."""
    starts, counts = [], []
    for residue in residues:
        number = residue.number.num
        if starts and starts[-1] + counts[-1] == number:
            counts[-1] += 1
        else:
            starts.append(number)
            counts.append(1)
    return starts, counts


def report_score(model, target):
    from promod3 import modelling, scoring

    environment = scoring.BackboneScoreEnv(target)
    environment.SetInitialEnvironment(model)
    scorer = scoring.LoadDefaultBackboneOverallScorer()
    scorer.AttachEnvironment(environment)
    # Pairs are for those who have set up what they know of them.
    weights = {
        name: weight
        for name, weight in modelling.ScoringWeights.GetWeights().items()
        if scorer.Contains(name)
    }
    starts, counts = stretches(model.residues)
    chains = [0] * len(starts)
    total = scorer.CalculateLinearCombination(weights, starts, counts, chains)
    shares = [0.0] * sum(counts)
    for name, weight in weights.items():
        profiles = scorer.Get(name).CalculateScoreProfile(starts, counts, chains)
        for index, value in enumerate(value for profile in profiles for value in profile):
            shares[index] += weight * value
    numbers = [start + i for start, count in zip(starts, counts) for i in range(count)]
    report(
        *(f"residue {number} {share:.4f}" for number, share in zip(numbers, shares)),
        f"score {total:.4f}",
    )


end_with_parent()
try:
    report_engine()
except Exception as error:
    report(f"failure {type(error).__name__}: {error}")
try:
    made = build()
except Exception as error:
    report(f"failure {type(error).__name__}: {error}")
    raise
try:
    from ost import io

    gapless = made["opts"].alignments[0].GetSequence(0).GetGaplessString()
    report_score(io.LoadPDB("model.pdb"), gapless)
except Exception as error:
    report(f"failure {type(error).__name__}: {error}")
