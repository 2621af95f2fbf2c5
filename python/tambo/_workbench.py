# SPDX-License-Identifier: GPL-3.0-or-later
"""Scripts and the console inside of the workbench, which calls this. Nothing of it is for scripts."""
import ast
import codeop
import gc
import importlib
import io
import linecache
import os
import re
import rlcompleter
import sys
import traceback
import types
import warnings

import tambo

_CONSOLE = "<console>"


# ---- Input and output

class _Raw(io.RawIOBase):
    """Hands bytes to the workbench."""

    def __init__(self, write):
        super().__init__()
        self._write = write

    def writable(self):
        return True

    def write(self, data):
        data = bytes(data)
        self._write(data)
        return len(data)


class _NoInput(io.TextIOBase):
    def readable(self):
        return True

    def read(self, size=-1):
        raise io.UnsupportedOperation(
            "a script in the workbench cannot ask at the keyboard: give it arguments")

    readline = read

    def __next__(self):
        self.read()


def _text(write, **how):
    return io.TextIOWrapper(_Raw(write), encoding="utf-8", errors="backslashreplace", newline="\n", **how)


def connect(write_output, write_error):
    """Where print() goes from now on. Gives what hands on the text that is kept back so far."""
    output = _text(write_output)

    def flush():
        if not output.closed:
            output.flush()

    def write_in_order(data):
        flush()
        write_error(data)

    sys.stdout, sys.stderr, sys.stdin = output, _text(write_in_order, write_through=True), _NoInput()
    return flush


# ---- Scripts

class Script:
    """One run: its names, and what is to be as before when it has ended."""

    def __init__(self, file):
        self._given = file
        self._file = os.path.abspath(file)
        self._folder = os.path.dirname(self._file)
        self._before = None
        self.names = {}

    def begin(self, arguments):
        """Its code."""
        with io.open_code(self._file) as source:
            text = source.read()
        linecache.checkcache()
        code = compile(text, self._file, "exec", dont_inherit=True)
        main = types.ModuleType("__main__")
        main.__file__ = self._file
        main.__builtins__ = __builtins__
        self.names = main.__dict__
        self._before = (sys.argv, list(sys.path), sys.modules.get("__main__"), set(sys.modules))
        sys.argv = [self._given, *arguments]
        sys.path.insert(0, self._folder)
        sys.modules["__main__"] = main
        importlib.invalidate_caches()
        return code

    def close(self):
        if self._before is None:
            return
        sys.argv, sys.path[:], main, modules = self._before
        sys.modules["__main__"] = main
        for name in set(sys.modules) - modules:
            if self._is_own(sys.modules[name]):
                del sys.modules[name]
        # What it has left open is complete, though the names that refer to each other go in any order.
        for left in self.names.values():
            if isinstance(left, io.IOBase) and not left.closed and left.writable():
                left.flush()
        self.names = {}
        gc.collect()

    def is_own_file(self, name):
        inner = os.path.relpath(name, self._folder).split(os.sep) if os.path.isabs(name) else [os.pardir]
        return inner[0] != os.pardir and not {"site-packages", "dist-packages"}.intersection(inner)

    def _is_own(self, module):
        # One that was found in the script's folder, and can be made anew: extensions cannot.
        places = [getattr(module, "__file__", None) or ""]
        if not places[0]:
            places = list(getattr(module, "__path__", ()))
        return any(self.is_own_file(place) and not place.endswith(".so") for place in places)


def _folder_in_use():
    try:
        return os.getcwd()
    except OSError:
        return None


# ---- The console

class Console:
    def __init__(self):
        self._inputs = 0
        self._main = None
        self._folder = self._entered = None
        self.forget()

    @property
    def names(self):
        return self._main.__dict__

    def forget(self):
        self._main = types.ModuleType("__main__")
        self._main.__builtins__ = __builtins__
        self._main.__doc__ = None
        self._main.tambo = tambo
        self._folder = None
        sys.modules["__main__"] = self._main
        gc.collect()

    def enter_folder(self):
        """The one that was chosen before; what runs has a folder of its own."""
        if self._folder is not None:
            try:
                os.chdir(self._folder)
            except OSError:
                self._folder = None
        self._entered = _folder_in_use()

    def keep_folder(self):
        folder = _folder_in_use()
        if folder != self._entered:
            self._folder = folder

    def compiled(self, source):
        """Code for all but the last value, and for that: one of them may be None."""
        self._inputs += 1
        # Of its own, so that functions of former inputs show their own lines.
        name = f"<console {self._inputs}>"
        linecache.cache[name] = (len(source), None, source.splitlines(True), name)
        tree = ast.parse(source, name)
        last = tree.body.pop() if tree.body and isinstance(tree.body[-1], ast.Expr) else None
        return (compile(tree, name, "exec", dont_inherit=True) if tree.body else None,
                compile(ast.Interactive([last]), name, "single", dont_inherit=True) if last else None)

    @staticmethod
    def is_own_file(name):
        return name.startswith("<console")

    @staticmethod
    def is_complete(source):
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            try:
                if codeop.compile_command(source, _CONSOLE, "exec") is None:
                    return False
                body = ast.parse(source, _CONSOLE).body
            except (SyntaxError, ValueError, OverflowError, MemoryError, RecursionError):
                return True
        # A block may go on until a line is empty.
        is_block = body and (hasattr(body[-1], "body") or hasattr(body[-1], "cases"))
        return not is_block or source.endswith("\n")

    def complete(self, text):
        """Where what is completed begins, and the words for it."""
        word = re.search(r"[\w.]*$", text).group()
        start = len(text) - len(word)
        completer = rlcompleter.Completer(self.names)
        try:
            found = completer.attr_matches(word) if "." in word else completer.global_matches(word) if word else []
        except Exception:  # What an object does when it is asked for its attributes is its own affair.
            found = []
        return start, list(dict.fromkeys(found))


# ---- What has come of it

DONE, FAILED, STOPPED = range(3)


def outcome(error, runner, is_stopped):
    """End, message, file, line, text, trace and exit status."""
    if error is None:
        return DONE, "", "", 0, "", "", 0
    end = STOPPED if is_stopped else FAILED
    if isinstance(error, SystemExit):
        return _exited(error.code, end)
    told = traceback.TracebackException(type(error), error, error.__traceback__, compact=True)
    _leave_out_ours(told)
    file, line, text = _place(told, runner)
    return end, _plain(_message(told)), _plain(file), line, _plain(text), _plain("".join(told.format())), 1


def _plain(text):
    """What can be shown: no halves of characters."""
    return text.encode("utf-8", "backslashreplace").decode()


def _exited(code, end):
    if code is None or code == 0:
        return DONE, "", "", 0, "", "", 0
    if isinstance(code, int):
        return end, f"The script has ended with status {code}.", "", 0, "", "", code & 0xff
    return end, _plain(str(code)), "", 0, "", "", 1


def _leave_out_ours(told):
    if told is None:
        return
    told.stack[:] = [frame for frame in told.stack if frame.filename != __file__]
    _leave_out_ours(told.__cause__)
    _leave_out_ours(told.__context__)


def _message(told):
    if issubclass(told.exc_type, SyntaxError):
        return f"{told.exc_type.__name__}: {told.msg}"
    return next(told.format_exception_only()).strip()


def _place(told, runner):
    if issubclass(told.exc_type, SyntaxError) and runner is not None and runner.is_own_file(told.filename or ""):
        return _shown(told.filename), int(told.lineno or 0), (told.text or "").strip()
    for frame in reversed(told.stack if runner is not None else []):
        if runner.is_own_file(frame.filename):
            return _shown(frame.filename), frame.lineno or 0, frame.line or ""
    return "", 0, ""


def _shown(file):
    return _CONSOLE if file.startswith("<console") else file
