# SPDX-License-Identifier: GPL-3.0-or-later
"""Other programs: where they are, and runs of them that end with the call."""
import contextlib
import os
import pathlib
import selectors
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import typing

# How long a look at what a program has said takes at most, so that Ctrl+C is heard, in seconds.
LOOK = 0.1
# What shells end with when a program that a script calls is not there.
SHELL_FOUND_NOTHING = 127


class ProgramError(RuntimeError):
    """A program that is needed is not there, has failed, or gave an answer that is not to be trusted.

    program is its name, status what it ended with: below 0 a signal, and None when it did not run.
    """

    def __init__(self, message, program, status=None):
        super().__init__(message)
        self.program = program
        self.status = status


ProgramError.__module__ = "tambo"

class Ended(typing.NamedTuple):
    """How a program has ended: status is None when it could not be started."""

    status: typing.Optional[int]
    output: bytes
    # The end of what it has told of itself.
    errors: list[str]

    @property
    def last_line(self):
        return self.errors[-1] if self.errors else ""


def installation():
    """The folder with bin, lib and share of which this package is a part."""
    return pathlib.Path(os.path.abspath(__file__)).parents[4]


def own_program(name):
    """One that belongs to the workbench: of the same installation, else whichever is on the search path."""
    beside = installation() / "bin" / name
    if os.access(beside, os.X_OK):
        return str(beside)
    return shutil.which(name)


@contextlib.contextmanager
def work_folder():
    """A folder that is gone afterwards, also when a program that was just ended still makes files."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="tambo-"))
    try:
        yield folder
    finally:
        for attempt in range(100):
            shutil.rmtree(folder, ignore_errors=True)
            if not folder.exists():
                break
            time.sleep(0.01)


def _lines(text):
    return [line.strip() for line in text.decode(errors="replace").splitlines() if line.strip()]


def run(words, folder, environment=None, patience=0.0, most=None):
    """Runs a program until it ends; other processes and threads go on.

    What ends the call, as Ctrl+C does, ends the program with all that it has started: it is asked to
    end, and ended after patience seconds. A program that prints more than most bytes is ended, too.
    """
    start = _Start(words, folder, environment)
    try:
        start.start()
        start.join()
        if isinstance(start.error, OSError):
            return Ended(None, b"", [])
        if start.error is not None:
            raise start.error
        said = _listen(start.process, most)
        return Ended(start.process.returncode, *said)
    except BaseException:
        start.give_up()
        if start.process is not None:
            _end(start.process, patience)
        raise
    finally:
        if start.process is not None:
            start.process.stdout.close()
            start.process.stderr.close()


class _Start(threading.Thread):
    """Starts a program where no signal is heard: one in the middle of it would leave the program running."""

    def __init__(self, words, folder, environment):
        super().__init__(daemon=True)
        self._words, self._folder, self._environment = words, folder, environment
        self._lock = threading.Lock()
        self._is_given_up = False
        self.process = None
        self.error = None

    def run(self):
        with self._lock:
            if self._is_given_up:
                return
            try:
                self.process = subprocess.Popen(self._words, cwd=self._folder, env=self._environment,
                                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                                stderr=subprocess.PIPE, bufsize=0, process_group=0)
            except Exception as error:
                self.error = error

    def give_up(self):
        """From now on there is the process, or none will be started."""
        with self._lock:
            self._is_given_up = True


def _listen(process, most):
    output, errors = bytearray(), bytearray()
    with selectors.DefaultSelector() as waiting:
        for pipe, text in ((process.stdout, output), (process.stderr, errors)):
            os.set_blocking(pipe.fileno(), False)
            waiting.register(pipe, selectors.EVENT_READ, text)
        while True:
            if waiting.get_map() or process.poll() is not None:
                # What is said before the end is there by then; others may hold the pipes open for longer.
                has_ended = process.poll() is not None
                ready = waiting.select(0 if has_ended else LOOK)
                if has_ended and not ready:
                    return bytes(output), _lines(errors)
            else:
                ready = []
                with contextlib.suppress(subprocess.TimeoutExpired):
                    process.wait(LOOK)
            for key, _ in ready:
                part = key.fileobj.read(1 << 16)
                if part:
                    key.data.extend(part)
                elif part is not None:
                    waiting.unregister(key.fileobj)
            # Of what it tells, the end is wanted.
            del errors[:-(1 << 16)]
            if most is not None and len(output) > most:
                raise PrintsForEver


class PrintsForEver(Exception):
    pass


def _end(process, patience):
    try:
        if patience > 0 and process.poll() is None:
            process.send_signal(signal.SIGTERM)
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(patience)
    finally:
        if process.poll() is None:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)
            process.wait()
