# SPDX-License-Identifier: GPL-3.0-or-later
"""Programs with windows, timed by what stands on their screen.

The program runs on a virtual screen of its own, whose pixels are a file in memory: each change is seen
by comparing memory, without a request to the program or to the X server. Keys and clicks go in by the
XTEST extension, and the clock starts just before one is sent. So all programs are measured alike,
whatever they are made with.
"""
import mmap
import os
import pathlib
import re
import shutil
import signal
import statistics
import struct
import subprocess
import sys
import tempfile
import time

import numpy
from Xlib import X, XK, display
from Xlib.ext import xtest
from Xlib.protocol import event

WIDTH, HEIGHT = 1280, 1024
# How often the screen is looked at, in seconds: while a program starts, and while it answers.
STARTING, ANSWERING = 0.004, 0.0005
# A program is at rest when for so long no pixel changes and less than a tenth of a processor is used.
REST = 0.4
RULES = ('<openbox_config xmlns="http://openbox.org/3.4/rc"><applications>'
         '<application type="normal"><maximized>yes</maximized></application>'
         '</applications></openbox_config>')


class Failed(Exception):
    """The program ended, or took longer or more memory than it was given.

    seen: what there was to be seen of it then, in lines.
    """

    def __init__(self, cause, seen=""):
        super().__init__(cause)
        self.seen = seen


def family(process):
    """The process and all that it has started."""
    children = {}
    for folder in os.listdir("/proc"):
        if folder.isdigit():
            try:
                status = pathlib.Path(f"/proc/{folder}/stat").read_text()
            except OSError:
                continue
            parent = int(status[status.rindex(")") + 2:].split()[1])
            children.setdefault(parent, []).append(int(folder))
    found, waiting = [], [process]
    while waiting:
        found.append(waiting.pop())
        waiting += children.get(found[-1], [])
    return found


def processor_time(processes):
    """Seconds of processor that they have used, all their threads together."""
    used = 0.0
    for process in processes:
        try:
            # The kernel's number of a process' own clock.
            used += time.clock_gettime((~process << 3) | 2)
        except OSError:
            pass
    return used


def memory(processes, entry):
    """MiB of the largest of them: VmRSS now, or VmHWM at its peak."""
    largest = 0.0
    for process in processes:
        try:
            status = pathlib.Path(f"/proc/{process}/status").read_text()
        except OSError:
            continue
        found = re.search(entry + r":\s+(\d+) kB", status)
        largest = max(largest, int(found.group(1)) / 1024 if found else 0)
    return largest


def stacks(process):
    """Where each thread of a process is, if there is a debugger that can tell."""
    if shutil.which("gdb") is None:
        return "no gdb to tell where it is"
    try:
        found = subprocess.run(["gdb", "-p", str(process), "-batch", "-ex",
                                "thread apply all bt 25"],
                               capture_output=True, text=True, timeout=60)
    except (OSError, subprocess.TimeoutExpired):
        return "gdb does not tell where it is"
    return "\n".join(line[:160] for line in found.stdout.splitlines()
                     if line.startswith(("#", "Thread ")))


class Screen:
    """A virtual screen with a window manager that makes each window as large as the screen."""

    def __init__(self, folder):
        reader, writer = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-dpi", "96",
             "-fbdir", folder, "-nocursor", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as numbers:
            self.name = f":{numbers.readline().strip()}"
        with open(f"{folder}/Xvfb_screen0", "rb") as file:
            pixels = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header, = struct.unpack(">I", pixels[:4])
        colors, = struct.unpack(">I", pixels[76:80])
        self.pixels = numpy.frombuffer(pixels, numpy.uint32, WIDTH * HEIGHT,
                                       header + colors * 12).reshape(HEIGHT, WIDTH)
        self.seen = self.pixels.copy()
        rules = pathlib.Path(folder, "rules.xml")
        rules.write_text(RULES)
        # It says that it is there before it has read its settings, and a window that is to be shown
        # in between is forgotten for ever. This comes when it waits for windows.
        ready = pathlib.Path(folder, "ready")
        self.manager = subprocess.Popen(
            ["openbox", "--sm-disable", "--config-file", rules, "--startup", f"touch '{ready}'"],
            env=dict(os.environ, DISPLAY=self.name), stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        self.display = display.Display(self.name)
        try:
            self._wait_until(ready.exists, "no window manager")
        except Failed:
            self.close()
            raise

    def _wait_until(self, is_over, otherwise):
        deadline = time.monotonic() + 60
        while not is_over():
            if self.manager.poll() is not None:
                raise Failed(f"the window manager ended with {self.manager.returncode}")
            if time.monotonic() > deadline:
                raise Failed(otherwise)
            time.sleep(0.005)

    def close(self):
        self.display.close()
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()

    def changed(self):
        """How many pixels have changed since the last look."""
        if numpy.array_equal(self.pixels.view(numpy.uint64), self.seen.view(numpy.uint64)):
            return 0
        now = self.pixels.copy()
        count = int((now != self.seen).sum())
        self.seen = now
        return count

    def _property(self, name):
        found = self.display.screen().root.get_full_property(self.display.intern_atom(name),
                                                             X.AnyPropertyType)
        return list(found.value) if found else []

    def window(self, title):
        """A managed window of some size with this in its title, or None."""
        for number in self._property("_NET_CLIENT_LIST"):
            window = self.display.create_resource_object("window", number)
            try:
                size = window.get_geometry()
                if size.width >= 400 and size.height >= 300 and title in (window.get_wm_name() or ""):
                    return window
            except Exception:  # It has gone meanwhile.
                continue
        return None

    def windows(self):
        """All windows that stand on the screen, in lines, and which of them are managed."""
        managed = self._property("_NET_CLIENT_LIST")
        lines = []
        for window in self.display.screen().root.query_tree().children:
            try:
                if window.get_attributes().map_state != X.IsUnmapped:
                    lines.append(self._described(window, managed))
                    lines += ["  in it " + self._described(inner, managed)
                              for inner in window.query_tree().children if inner.id in managed]
            except Exception:  # It has gone meanwhile.
                continue
        return [f"{len(managed)} managed windows; from the lowest to the highest:"] + lines

    @staticmethod
    def _described(window, managed):
        size = window.get_geometry()
        return (f"{window.id:#x} {size.width} x {size.height} + {size.x},{size.y}, "
                f"{'managed' if window.id in managed else 'not managed'}, "
                f"{window.get_wm_name()!r}")

    def activate(self, window):
        atom = self.display.intern_atom("_NET_ACTIVE_WINDOW")
        message = event.ClientMessage(window=window, client_type=atom,
                                      data=(32, [2, X.CurrentTime, 0, 0, 0]))
        self.display.screen().root.send_event(
            message, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def press(self, what):
        """"ctrl+z", "space": a key; "click 600,400", "middle 600,400": a button of the mouse."""
        word, _, place = what.partition(" ")
        if word in ("click", "middle"):
            x, y = (int(number) for number in place.split(","))
            button = 1 if word == "click" else 2
            xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
            xtest.fake_input(self.display, X.ButtonPress, button)
            xtest.fake_input(self.display, X.ButtonRelease, button)
        else:
            names = [{"ctrl": "Control_L", "shift": "Shift_L"}.get(name, name)
                     for name in what.split("+")]
            codes = [self.display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
            for code in codes:
                xtest.fake_input(self.display, X.KeyPress, code)
            for code in reversed(codes):
                xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()


class Program:
    """A program on a screen of its own, with a home of its own."""

    def __init__(self, command, title="", settings=None):
        self.folder = tempfile.TemporaryDirectory()
        self.command, self.title = command, title
        # When the screen changed by much, in seconds from the start.
        self.changes = []
        self.screen = Screen(self.folder.name)
        self.process = None
        # What the program has to say.
        self.output = pathlib.Path(self.folder.name, "output.txt")
        self.environment = dict(os.environ, DISPLAY=self.screen.name, HOME=self.folder.name,
                                XDG_RUNTIME_DIR=self.folder.name, QT_QPA_PLATFORM="xcb",
                                **(settings or {}))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process is not None:
            for number in reversed(family(self.process.pid)):
                try:
                    os.kill(number, signal.SIGKILL)
                except OSError:
                    pass
            self.process.wait()
        self.screen.close()
        self.folder.cleanup()

    def seen(self, waited):
        """What there is to be seen of the program, in lines, of use when it does not come."""
        lines = [" ".join(map(str, self.command)), f"waited {waited}"]
        lines += ["large changes of the screen after "
                  f"{[round(change, 3) for change in self.changes]} s"]
        for name, process in (("X server", self.screen.server),
                              ("window manager", self.screen.manager)):
            if process.poll() is not None:
                lines.append(f"the {name} ended with {process.returncode}")
        processes = family(self.process.pid)
        used = processor_time(processes)
        time.sleep(1)
        lines.append(f"used {used:.2f} s of processor, {processor_time(processes) - used:.2f} s of "
                     f"it in the last second; {self.screen.changed()} pixels changed in it")
        if self.screen.server.poll() is None:
            lines += self.screen.windows()
        for process in processes:
            lines += [f"process {process}:", stacks(process)]
        lines += ["its last words:"] + self.output.read_text(errors="replace").splitlines()[-20:]
        return "\n".join(lines)

    def rest(self, seconds, look=None, rest=REST):
        """Waits until the program is at rest; calls look() at each change of the screen."""
        deadline = time.perf_counter() + seconds
        began, used = time.perf_counter(), None
        while True:
            now = time.perf_counter()
            if self.screen.changed():
                began, used = now, None
                if look is not None:
                    look()
            processes = family(self.process.pid) if used is None else processes
            if used is None:
                used = processor_time(processes)
            elif now - began >= rest:
                processes = family(self.process.pid)
                spent = processor_time(processes) - used
                if spent < 0.1 * (now - began):
                    return
                began, used = now, None
            if now > deadline:
                raise Failed(f"not at rest in {seconds} s", self.seen("until it is at rest"))
            if self.process.poll() is not None:
                raise Failed(f"ended with {self.process.returncode}")
            time.sleep(ANSWERING)

    def start(self, seconds, most_memory, still_for=1.5):
        """Seconds from the start to the last large change of the screen, and the peak in MiB.

        It is the last one when for still_for seconds nothing changes and little is done.
        """
        self.screen.changed()
        start = time.perf_counter()
        with open(self.output, "wb") as output:
            self.process = subprocess.Popen(self.command, env=self.environment,
                                            cwd=self.folder.name, stdout=output, stderr=output,
                                            start_new_session=True)
        drawn, window = None, None
        still, used, looked = start, 0.0, start
        while True:
            now = time.perf_counter()
            pixels = self.screen.changed()
            if pixels:
                still, used = now, None
                # Less than this is a cursor or a status line.
                if pixels >= 0.005 * WIDTH * HEIGHT:
                    drawn = now - start
                    self.changes.append(drawn)
            if now - looked > 0.02:
                looked = now
                processes = family(self.process.pid)
                if window is None:
                    window = self.screen.window(self.title)
                if self.process.poll() is not None:
                    raise Failed(f"ended with {self.process.returncode}",
                                 self.output.read_text(errors="replace"))
                if self.screen.manager.poll() is not None:
                    raise Failed("the window manager ended", self.seen("for the first window"))
                if memory(processes, "VmRSS") > most_memory:
                    raise Failed(f"over {most_memory} MiB")
                if used is None:
                    used = processor_time(processes)
                elif now - still > still_for:
                    spent = processor_time(processes)
                    if spent - used < 0.1 * (now - still) and window is not None and drawn:
                        break
                    still, used = now, spent
            if now - start > seconds:
                lacking = ("something on the screen" if not drawn else
                           f"a window named {self.title!r}" if window is None else
                           f"a rest of {still_for} s")
                raise Failed(f"not in {seconds} s", self.seen(f"for {lacking}"))
            time.sleep(STARTING)
        self.screen.activate(window)
        self.rest(seconds)
        return drawn, memory(family(self.process.pid), "VmHWM")

    def answer(self, what, seconds):
        """Milliseconds from an event to the last change of the screen, and of processor time."""
        self.rest(seconds, rest=0.1)
        processes = family(self.process.pid)
        used = processor_time(processes)
        changes = []
        start = time.perf_counter()
        self.screen.press(what)
        self.rest(seconds, lambda: changes.append(time.perf_counter() - start))
        spent = processor_time(processes) - used
        if not changes:
            raise Failed(f"no answer to {what}")
        return 1000 * changes[-1], 1000 * spent


def median(values):
    return statistics.median(values) if values else None


if __name__ == "__main__":
    sys.exit("a module of bench/peers")
