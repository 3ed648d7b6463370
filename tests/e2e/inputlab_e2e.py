#!/usr/bin/env python3
# SPDX-License-Identifier: Zlib
"""End-to-end test of the input lab: the real program, a real X server, real input.

Each case starts the lab under an X server of its own (a private Xvfb when the Xvfb program is
there, else the DISPLAY it was given), drives it with xdotool or an input script, and checks what
it printed, the screenshot it wrote and the configuration file it left behind.

The Windows build runs the same cases under Wine (--wine PATH runs the lab and the PNG probe):
then on the DISPLAY it was given, which must be the run's own, since Wine's server and its
desktop process serve one display.

With --wayland the lab runs on SDL's wayland driver, under a Weston of each case's own that runs
inside the case's Xvfb: Weston's X window takes the X server's keyboard and pointer for its seat,
so xdotool drives the lab through it.

    inputlab_e2e.py --lab PATH --png-probe PATH --park-pointer PATH --x-close PATH
                    [--wine PATH | --wayland] [Errors|Script|RealInput|RecordReplay]

Every case on a display starts from the same state of it, whatever ran before: the pointer parked
where no window is, as both the X server and (under Wine) Wine's own server see it, and no button
held; the lab's window mapped, moved to a set place and focused before real input is sent. Each
is waited for by asking the X server, never by sleeping.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import tomllib
import unittest

TOOLS = None  # the paths given on the command line

WAIT = 20  # seconds for anything the lab should do promptly; no case relies on it for timing
# Seconds for a whole run to end. A scripted run counts frames, and a frame takes what a loaded
# machine gives it (software Vulkan, and under Wayland a software compositor too): the bound only
# turns a lab that never ends into a failure, so it is generous.
WAIT_END = 90

VIDEO_DRIVER = "x11"  # SDL's; named, so that a lost X connection fails as such
WAYLAND = False  # --wayland

SCREEN = (1920, 1080)  # every server's, as ./dev and XServer start them
PARKED = (1915, 1075)  # where the pointer waits: outside every window but a full-screen one
PLACE = (100, 40)  # where each case puts the lab's window before it sends real input

SOURCE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
TOUR = os.path.join(SOURCE, "examples", "inputlab", "scripts", "tour.txt")
TOUR_PICTURE = os.path.join(SOURCE, "docs", "inputlab.png")  # the README's, taken on Linux

# Colours of the lab's scene (Scene.cpp): what the screenshot must show.
START_BACKGROUND = (32, 36, 44)
DIGIT2_BACKGROUND = (24, 96, 48)
DIGIT3_BACKGROUND = (112, 32, 32)
SQUARE = (240, 240, 240)


class XServer:
    """A private Xvfb, so that input from one case can never reach another's window; with
    --wayland, a Weston of its own inside it (see Weston)."""

    def __init__(self, shell=None, size=(1920, 1080)):
        self.process = None
        self.compositor = None
        self.display = os.environ.get("DISPLAY", "")
        self.own = TOOLS.wine is not None  # a display whose keymap the case may change
        if TOOLS.wine is not None or shutil.which("Xvfb") is None:
            if not self.display:
                raise unittest.SkipTest("neither Xvfb nor a DISPLAY is available")
            return
        read, write = os.pipe()
        self.process = subprocess.Popen(
            # -noreset: a server that regenerates when its last client leaves drops the
            # connection of whoever connects at that moment.
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1920x1080x24", "-nolisten", "tcp",
             "-noreset"],
            pass_fds=(write,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        if not number:
            self.process.kill()
            raise RuntimeError("Xvfb did not start")
        self.display = ":" + number
        self.own = True
        if WAYLAND:
            try:
                self.compositor = Weston(self.display, shell, size)
            except BaseException:
                self.stop()
                raise

    def environment(self):
        """What a program needs to reach this display, and SDL to use its driver."""
        environment = dict(os.environ, DISPLAY=self.display, SDL_VIDEODRIVER=VIDEO_DRIVER)
        if self.compositor is not None:
            environment.update(self.compositor.environment())
        return environment

    def stop(self):
        if self.compositor is not None:
            self.compositor.stop()
            self.compositor = None
        if self.process is not None:
            self.process.terminate()
            self.process.wait(timeout=WAIT)
            self.process = None


class Weston:
    """Weston on an X server: its whole output is one X window, and its x11 backend takes the
    X server's keyboard and pointer as its seat (its headless backend has no seat, and SDL cannot
    start without one).

    Two shells: the desktop shell, where a window keeps the size that it asks for but lands where
    Weston chooses; and the kiosk shell, where every window fills the output (which is then made
    the size of the lab's window), so that a point of Weston's X window is the same point of the
    lab's window, as real input needs."""

    DESKTOP = None
    KIOSK = "kiosk-shell.so"
    SOCKET = "inputlab-e2e"

    def __init__(self, display, shell, size=(1920, 1080)):
        self.runtime = tempfile.mkdtemp(prefix="inputlab_e2e_wayland_")  # private (0700)
        x_environment = dict(os.environ, DISPLAY=display)
        # Weston compiles its keymap from the layout that the X server names, once: a layout with
        # é (AltGr+e, ASCII as in "us") before it starts; xmodmap's changes it never sees.
        subprocess.run(["setxkbmap", "-layout", "us", "-variant", "altgr-intl"],
                       env=x_environment, check=True, timeout=WAIT)
        command = ["weston", "--backend=x11-backend.so", "--socket=" + self.SOCKET,
                   "--width=%d" % size[0], "--height=%d" % size[1], "--idle-time=0"]
        if shell is not None:
            command.append("--shell=" + shell)
        self.log = os.path.join(self.runtime, "weston.log")
        with open(self.log, "w", encoding="utf-8") as log:
            self.process = subprocess.Popen(command, stdout=log, stderr=subprocess.STDOUT,
                                            env=dict(x_environment, XDG_RUNTIME_DIR=self.runtime))
        # Serving once its socket exists and its output window is shown.
        deadline = time.monotonic() + WAIT
        self.window = None
        while self.window is None:
            if self.process.poll() is not None or time.monotonic() > deadline:
                self.stop()
                raise RuntimeError("Weston did not start")
            if os.path.exists(os.path.join(self.runtime, self.SOCKET)):
                self.window = self._shown_output(x_environment)
            time.sleep(0.02)  # between two questions, not instead of one

    @staticmethod
    def _shown_output(environment):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--class",
                                "Weston Compositor"], env=environment, capture_output=True,
                               text=True, timeout=WAIT).stdout.split()
        return found[0] if found else None

    def environment(self):
        return {"WAYLAND_DISPLAY": self.SOCKET, "XDG_RUNTIME_DIR": self.runtime}

    def stop(self):
        if self.process.poll() is None:
            self.process.terminate()
            self.process.wait(timeout=WAIT)
        shutil.rmtree(self.runtime, ignore_errors=True)


class Lab:
    """One run of the lab, whose console lines are collected as they come."""

    def __init__(self, arguments, server, folder):
        self.environment = dict(server.environment(), LANG="C.UTF-8", XDG_CONFIG_HOME=folder)
        self.process = subprocess.Popen(program(TOOLS.lab) + arguments, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, env=self.environment, text=True,
                                        encoding="utf-8", errors="replace")
        self.lines = []
        self.changed = threading.Condition()
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()
        self.errors = ""

    def _read(self):
        for line in self.process.stdout:
            with self.changed:
                self.lines.append(line.rstrip("\n"))
                self.changed.notify_all()

    def wait_for(self, pattern, timeout=WAIT):
        """The first console line matching `pattern`; fails the case after `timeout`."""
        expression = re.compile(pattern)
        deadline = time.monotonic() + timeout
        with self.changed:
            while True:
                for line in self.lines:
                    if expression.search(line):
                        return line
                left = deadline - time.monotonic()
                if left <= 0 or self.process.poll() is not None and not self.reader.is_alive():
                    raise AssertionError("the lab never printed /%s/; it printed:\n%s" %
                                         (pattern, "\n".join(self.lines)))
                self.changed.wait(min(left, 0.5))

    def finish(self, timeout=WAIT_END):
        """Waits for the end; returns the exit code."""
        try:
            code = self.process.wait(timeout=timeout)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise AssertionError("the lab did not end; it printed:\n" + "\n".join(self.lines))
        self.reader.join(timeout=WAIT)
        self.errors = self.process.stderr.read()
        self.process.stdout.close()
        self.process.stderr.close()
        return code

    def printed(self, pattern):
        with self.changed:
            return [line for line in self.lines if re.search(pattern, line)]

    def tool(self, *command):
        return subprocess.run(list(command), env=self.environment, check=True, timeout=WAIT,
                              capture_output=True, text=True).stdout.strip()


def program(path):
    """The command that runs one of the given programs."""
    return [path] if TOOLS.wine is None else [TOOLS.wine, path]


def run_lab(arguments, folder):
    """A run that needs no display, for the paths that fail before the window opens."""
    result = subprocess.run(program(TOOLS.lab) + arguments, capture_output=True, text=True,
                            timeout=WAIT, env=dict(os.environ, XDG_CONFIG_HOME=folder))
    return result.returncode, result.stdout, result.stderr


def shell_fields(text):
    """xdotool's --shell output ("X=100" a line) as numbers by name."""
    return {name: int(value) for name, value in (line.split("=") for line in text.split())}


def png_size(path):
    width, height = subprocess.run(program(TOOLS.png_probe) + [path], check=True,
                                   capture_output=True, text=True, timeout=WAIT).stdout.split()
    return int(width), int(height)


def png_pixel(path, x, y):
    values = subprocess.run(program(TOOLS.png_probe) + [path, str(x), str(y)], check=True,
                            capture_output=True, text=True, timeout=WAIT).stdout.split()
    return tuple(int(value) for value in values)


def png_differing(path, other):
    """How many pixels differ between two pictures of one size."""
    return int(subprocess.run(program(TOOLS.png_probe) + [path, other], check=True,
                              capture_output=True, text=True, timeout=WAIT).stdout)


def read_config(path):
    with open(path, "rb") as file:
        return tomllib.load(file)


class Case(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="inputlab_e2e_")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        # An empty configuration: every value is a default. A named file must exist.
        self.config = self.write("config.toml", "")
        self.screenshot = os.path.join(self.folder, "last.png")

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path(name)

    def assertOneMessage(self, errors, *parts):
        lines = [line for line in errors.splitlines() if line.strip()]
        self.assertEqual(len(lines), 1, "expected one message, got:\n" + errors)
        for part in parts:
            self.assertIn(part, lines[0])


class Errors(Case):
    """What the lab refuses: each gives one message, a non-zero exit, and writes nothing."""

    def test_help_describes_every_option(self):
        code, out, _ = run_lab(["--help"], self.folder)
        self.assertEqual(code, 0)
        for option in ("--config", "--frames", "--screenshot", "--script", "--record", "--log",
                       "--help"):
            self.assertIn(option, out)

    def test_unknown_option(self):
        code, out, errors = run_lab(["--fast"], self.folder)
        self.assertEqual(code, 2)
        self.assertEqual(out, "")
        self.assertOneMessage(errors, "--fast")

    def test_bad_frame_count(self):
        code, _, errors = run_lab(["--frames", "ten"], self.folder)
        self.assertEqual(code, 2)
        self.assertOneMessage(errors, "--frames", "ten")

    def test_corrupt_config_is_named_and_left_alone(self):
        corrupt = "[Window\nResolution = '{900,800}'\n"
        self.write("config.toml", corrupt)
        code, _, errors = run_lab(["--config", self.config, "--frames", "1"], self.folder)
        self.assertEqual(code, 4)
        self.assertOneMessage(errors, self.config, "line 1")
        with open(self.config, encoding="utf-8") as file:
            self.assertEqual(file.read(), corrupt)

    def test_bad_script_line_names_file_and_line(self):
        script = self.write("tour.txt", "# tour\nkey down a\nkey down nokey\n")
        code, _, errors = run_lab(["--config", self.config, "--script", script], self.folder)
        self.assertEqual(code, 3)
        self.assertOneMessage(errors, script, "line 3", "nokey")
        with open(self.config, encoding="utf-8") as file:
            self.assertEqual(file.read(), "")

    def test_missing_config_is_named(self):
        missing = self.path("missing.toml")
        code, _, errors = run_lab(["--config", missing, "--frames", "1"], self.folder)
        self.assertEqual(code, 4)
        self.assertOneMessage(errors, missing, "does not exist")
        self.assertFalse(os.path.exists(missing))

    def test_missing_script(self):
        missing = self.path("missing.txt")
        code, _, errors = run_lab(["--config", self.config, "--script", missing], self.folder)
        self.assertEqual(code, 3)
        self.assertOneMessage(errors, missing)


class OnDisplay(Case):
    # Under --wayland: the compositor's shell, and the size of its output.
    SHELL = Weston.DESKTOP
    OUTPUT = SCREEN

    def setUp(self):
        super().setUp()
        self.server = XServer(self.SHELL, self.OUTPUT)
        self.addCleanup(self.server.stop)
        self.park_pointer()

    def start(self, *arguments):
        lab = Lab(["--config", self.config, "--screenshot", self.screenshot] + list(arguments),
                  self.server, self.folder)
        self.addCleanup(self.stop, lab)
        return lab

    @staticmethod
    def stop(lab):
        if lab.process.poll() is None:
            lab.process.kill()
            lab.finish()

    def bind_key(self, keysym):
        """Gives `keysym` a key code of its own before the lab starts. xdotool types a character
        that the keymap lacks by mapping it to a spare code for one press and unmapping it right
        after, so a lab that reads its X events late would find the code unmapped. Only on the
        run's own server: a shared display's keymap is its user's. Weston has its own keymap,
        with the key already there (see Weston)."""
        if not self.server.own or self.server.compositor is not None:
            return
        keymap = self.x_tool("xmodmap", "-pke")
        spare = next(line.split()[1] for line in keymap.splitlines()
                     if line.startswith("keycode") and len(line.split()) == 3)
        self.x_tool("xmodmap", "-e", "keycode %s = %s" % (spare, keysym))

    def x_tool(self, *command):
        """What an X client of this case's server prints."""
        return subprocess.run(list(command), check=True, timeout=WAIT, capture_output=True,
                              text=True, env=dict(os.environ, DISPLAY=self.server.display)).stdout

    def wait_until(self, done, failure):
        """Asks `done()` until it holds; fails the case with `failure()` after WAIT seconds."""
        deadline = time.monotonic() + WAIT
        while not done():
            self.assertLess(time.monotonic(), deadline, failure())

    def park_pointer(self):
        """Moves the real pointer where no window is, so that no real motion mixes in, and lets
        go of every button. Under Wine the cases share one display and one Wine server: the
        pointer is moved through Wine, which sees X motion only over its own windows and would
        otherwise keep the place where an earlier case left it (a later move to that place then
        reaches the lab as no motion at all); a button that an earlier case left held would turn
        the next click into a lone release, which SDL drops."""
        # Wine's error messages are kept, and shown only if the parking fails.
        parked = subprocess.run(program(TOOLS.park_pointer) + [str(PARKED[0]), str(PARKED[1])],
                                capture_output=True, text=True, timeout=WAIT,
                                env=dict(os.environ, DISPLAY=self.server.display,
                                         WINEDEBUG="err+all"))
        self.assertEqual(parked.returncode, 0, "park_pointer failed:\n" + parked.stdout +
                         parked.stderr)
        self.wait_until(lambda: self.pointer() == PARKED, lambda: "the pointer was not parked")
        for button in range(1, 6):
            self.x_tool("xdotool", "mouseup", str(button))

    def pointer(self):
        """Where the X server has the pointer."""
        where = shell_fields(self.x_tool("xdotool", "getmouselocation", "--shell"))
        return where["X"], where["Y"]

    def placed_window(self, lab, size=(1000, 1000)):
        """The lab's X window, mapped, moved to PLACE and focused. The place is set rather than
        left to the window system: SDL centres a window whose place is left open, but Wine and
        a window manager each have a say in where a centred window lands. Under Wayland the
        window that takes the input is Weston's output, which the lab fills (the kiosk shell)."""
        if self.server.compositor is not None:
            window = self.server.compositor.window
            lab.tool("xdotool", "windowfocus", "--sync", window)
            return window
        window = lab.tool("xdotool", "search", "--sync", "--onlyvisible", "--name",
                          "Tavrino").split()[0]
        lab.tool("xdotool", "windowmove", "--sync", window, *map(str, PLACE))
        self.wait_geometry(lab, window, *PLACE, *size)
        # Keys go to the focused window; a window manager (as under Wine) may give focus only
        # with the pointer.
        lab.tool("xdotool", "windowfocus", "--sync", window)
        return window

    def close_window(self, lab, window, keys_to_quit):
        """Ends the lab as its user would, and checks that it ended well. On X (and under Wine)
        with the request to close that a window manager sends. Under Wayland no other program can
        ask a window to close (the request comes from the compositor's own controls, and the
        kiosk shell has none), so the lab's menu quits: `keys_to_quit` reach its Quit item from
        the state that the case left."""
        if self.server.compositor is None:
            lab.tool(TOOLS.x_close, window)
            self.assertEqual(lab.finish(), 0, lab.errors)
            lab.wait_for(r"window Close")
        else:
            lab.tool("xdotool", "key", "--delay", "100", *keys_to_quit, "Return")
            self.assertEqual(lab.finish(), 0, lab.errors)
            lab.wait_for(r"quit chosen in the menu")

    def wait_geometry(self, lab, window, x, y, width, height):
        """Asks the X server until `window` is at `x`, `y` and `width` x `height`."""
        expected = {"X": x, "Y": y, "WIDTH": width, "HEIGHT": height}
        geometry = {}

        def there():
            geometry.update(shell_fields(lab.tool("xdotool", "getwindowgeometry", "--shell",
                                                  window)))
            return all(geometry[key] == value for key, value in expected.items())

        self.wait_until(there, lambda: "the lab's window is at %s, not %s" % (geometry, expected))


class Script(OnDisplay):
    """Scripted runs: the same input every time, checked in the picture and the config."""

    def test_scripted_tour(self):
        script = self.write("tour.txt", "\n".join([
            "wait 3",
            "key down 2", "key up 2",          # game level: the background turns green
            "motion 300 400", "wait 3",        # the square follows
            "key down Escape", "key up Escape", "wait 3",
            "key down 3", "key up 3",          # menu level: the game's digits are silent
            "key down Down", "key up Down", "wait 3",
            "key down Escape", "key up Escape", "wait 3",
            "key down F2", "key up F2", "wait 3",
            "text é", "wait 3",
            "window close",
        ]) + "\n")
        lab = self.start("--script", script, "--frames", "600")
        self.assertEqual(lab.finish(), 0, lab.errors)
        lab.wait_for(r"key press Digit2 \(priority 0, level 0\)")
        lab.wait_for(r"key press Down \(priority 10, level 1\)")
        self.assertEqual(lab.printed("Digit3"), [])
        lab.wait_for(r'text "é" U\+00E9 \(level 0\)')
        lab.wait_for(r"window Close")
        self.assertIn("Typed: é", lab.errors)  # the message log
        self.assertEqual(png_size(self.screenshot), (1000, 1000))
        self.assertEqual(png_pixel(self.screenshot, 700, 300), DIGIT2_BACKGROUND)
        self.assertEqual(png_pixel(self.screenshot, 300, 400), SQUARE)
        self.assertEqual(png_pixel(self.screenshot, 500, 500), DIGIT2_BACKGROUND)
        window = read_config(self.config)["Window"]
        self.assertEqual(window["Resolution"], "{1000,1000}")
        self.assertEqual(window["FullScreen"], "0")

    def test_tour_draws_the_readme_picture(self):
        # The same input draws the same scene on every platform, pixel for pixel. The picture was
        # taken with the window focused (its frame lit), so the case gives it the focus.
        lab = self.start("--script", TOUR, "--frames", "300")
        self.placed_window(lab)
        self.assertEqual(lab.finish(), 0, lab.errors)
        self.assertEqual(png_differing(self.screenshot, TOUR_PICTURE), 0)

    def test_size_comes_from_the_config_and_goes_back(self):
        self.write("config.toml", "[Window]\nResolution = '{900,800}'\n")
        lab = self.start("--frames", "5")
        self.assertEqual(lab.finish(), 0, lab.errors)
        self.assertEqual(png_size(self.screenshot), (900, 800))
        self.assertEqual(png_pixel(self.screenshot, 700, 300), START_BACKGROUND)
        self.assertEqual(read_config(self.config)["Window"]["Resolution"], "{900,800}")

    def test_resize_rebuilds_the_swapchain_and_is_saved(self):
        script = self.write("resize.txt", "wait 3\nkey down F3\nkey up F3\nwait 20\n"
                                          "key down 3\nkey up 3\nwait 5\nwindow close\n")
        lab = self.start("--script", script, "--frames", "600")
        self.assertEqual(lab.finish(), 0, lab.errors)
        lab.wait_for("-- drawable 1280x800")
        self.assertEqual(png_size(self.screenshot), (1280, 800))
        self.assertEqual(png_pixel(self.screenshot, 1200, 300), DIGIT3_BACKGROUND)
        self.assertEqual(read_config(self.config)["Window"]["Resolution"], "{1280,800}")

    def test_full_screen_is_saved(self):
        # Without a window manager the X window keeps its size, so only the saved state and a
        # lab that goes on drawing are checked here.
        script = self.write("full.txt", "wait 3\nkey down Return\nkey up Return\nwait 20\n"
                                        "key down 3\nkey up 3\nwait 5\nwindow close\n")
        lab = self.start("--script", script, "--frames", "600")
        self.assertEqual(lab.finish(), 0, lab.errors)
        lab.wait_for("full screen on")
        self.assertEqual(png_pixel(self.screenshot, 700, 300), DIGIT3_BACKGROUND)
        window = read_config(self.config)["Window"]
        self.assertEqual(window["FullScreen"], "1")
        self.assertRegex(window["Resolution"], r"^\{\d+,\d+\}$")


class RealInput(OnDisplay):
    """Real X input through xdotool, as a person at the keyboard would give it."""

    SHELL = Weston.KIOSK
    OUTPUT = (1000, 1000)  # the lab's window

    def test_keyboard_mouse_menu_text_and_close(self):
        self.bind_key("eacute")
        lab = self.start()
        lab.wait_for(r"^-- ready")
        window = self.placed_window(lab)

        lab.tool("xdotool", "key", "2")
        lab.wait_for(r"key release Digit2 \(priority 0, level 0\)")
        self.assertEqual(lab.printed(r"Digit2 \(priority 1"), [])  # consumed by priority 0

        lab.tool("xdotool", "key", "w")  # not consumed: both layers hear it
        lab.wait_for(r"key press W \(priority 0, level 0\)")
        lab.wait_for(r"key press W \(priority 1, level 0\)")

        lab.tool("xdotool", "mousemove", "--sync", "--window", window, "200", "300")
        lab.wait_for(r"cursor 200,300 \(priority 0\)")
        lab.tool("xdotool", "click", "1")
        lab.wait_for(r"button release Left")
        lab.tool("xdotool", "click", "4")
        lab.wait_for(r"button press WheelUp")

        lab.tool("xdotool", "key", "Escape")
        lab.wait_for(r"menu opened: modal level 1")
        lab.tool("xdotool", "key", "3", "w", "Down")
        lab.wait_for(r"key press Down \(priority 10, level 1\)")
        self.assertEqual(lab.printed("Digit3"), [])
        self.assertEqual(len(lab.printed(r"key press W ")), 2)  # only the two from before
        lab.tool("xdotool", "click", "3")  # buttons answer at every level
        lab.wait_for(r"button press Right")
        lab.tool("xdotool", "key", "Escape")
        lab.wait_for(r"menu closed: modal level 0")

        lab.tool("xdotool", "key", "F2")
        lab.wait_for(r"text input on")
        lab.tool("xdotool", "type", "--delay", "100", "é")
        lab.wait_for(r'text "é" U\+00E9 \(level 0\)')
        lab.tool("xdotool", "key", "BackSpace")
        lab.tool("xdotool", "key", "BackSpace")
        lab.wait_for(r"text input off")

        self.close_window(lab, window, ["Escape", "Up"])  # the menu opens on its first item
        self.assertEqual(png_pixel(self.screenshot, 700, 300), DIGIT2_BACKGROUND)
        self.assertEqual(png_pixel(self.screenshot, 200, 300), SQUARE)
        window = read_config(self.config)["Window"]
        self.assertEqual(window["Resolution"], "{1000,1000}")
        self.assertEqual(window["FullScreen"], "0")


class RecordReplay(OnDisplay):
    """A session of real X input, recorded, then replayed on a screen of its own with no input
    but the recording: the same callbacks, line for line, and the same picture, pixel for
    pixel."""

    SHELL = Weston.KIOSK
    OUTPUT = (1000, 1000)  # the lab's window

    # Lines about the run rather than its input: where the picture went, and how many frames
    # were presented (a frame is skipped when the swapchain must be rebuilt, which depends on
    # the X server's timing).
    RUN_NOTES = re.compile(r"^-- (screenshot .* written to|ended after) ")

    def echo(self, lab):
        return [line for line in lab.lines if not self.RUN_NOTES.match(line)]

    def test_replay_gives_the_same_echo_and_pixels(self):
        self.bind_key("eacute")
        recording = self.path("recording.txt")
        lab = self.start("--record", recording)
        lab.wait_for(r"^-- ready")
        window = self.placed_window(lab)
        lab.tool("xdotool", "key", "2")
        lab.wait_for(r"key release Digit2")
        lab.tool("xdotool", "keydown", "w")
        lab.wait_for(r"key hold W .* x1$")
        lab.tool("xdotool", "keyup", "w")
        lab.wait_for(r"key release W \(priority 1")
        lab.tool("xdotool", "mousemove", "--sync", "--window", window, "200", "300")
        lab.wait_for(r"cursor 200,300 ")
        lab.tool("xdotool", "click", "4")
        lab.wait_for(r"button press WheelUp")
        lab.tool("xdotool", "key", "F2")
        lab.wait_for(r"text input on")
        lab.tool("xdotool", "type", "--delay", "100", "hé")
        lab.wait_for(r'text "é"')
        lab.tool("xdotool", "key", "Return")  # a key, but text input takes the keyboard
        lab.tool("xdotool", "key", "BackSpace")
        lab.wait_for(r"key release Backspace \(priority 0")
        lab.tool("xdotool", "key", "--delay", "100", "BackSpace", "BackSpace")
        lab.wait_for(r"text input off")
        lab.tool("xdotool", "key", "Return")
        lab.wait_for(r"full screen on")
        if self.server.compositor is None:
            # Under Wayland's kiosk shell the window already fills the output.
            lab.wait_for(r"-- drawable 1920x1080")
        if TOOLS.wine is not None:
            # Wine makes the X window itself cover the screen (with no window manager, as on
            # Linux here, SDL leaves the X window as it was): the X server agrees before more
            # input is sent.
            self.wait_geometry(lab, window, 0, 0, *SCREEN)
        lab.tool("xdotool", "key", "Escape")
        lab.wait_for(r"menu opened: modal level 1")
        lab.tool("xdotool", "key", "--delay", "100", "3", "Down", "Down", "Up")
        lab.wait_for(r"key release Up \(priority 10, level 1\)")
        lab.tool("xdotool", "mousedown", "1")
        lab.wait_for(r"button hold Left .* x1$")
        self.close_window(lab, window, ["Down"])  # from "Full screen" to "Quit"
        with open(recording, encoding="utf-8") as file:
            recorded = file.read()
        ending = "window close" if self.server.compositor is None else "key down Return"
        for line in ("key down 2", "key up W", "motion 200 300", "wheel 1", "text é",
                     "key down Escape", "button down left", ending):
            self.assertIn("\n" + line + "\n", recorded)
        live = self.path("live.png")
        os.replace(self.screenshot, live)

        # The replay: a screen of its own, the configuration the session started with.
        self.server = XServer(self.SHELL, self.OUTPUT)
        self.addCleanup(self.server.stop)
        self.write("config.toml", "")
        self.park_pointer()
        replay = self.start("--script", recording)
        self.assertEqual(replay.finish(), 0, replay.errors)
        self.assertEqual(self.echo(replay), self.echo(lab))
        self.assertEqual(png_differing(self.screenshot, live), 0)


def main():
    global TOOLS, VIDEO_DRIVER, WAYLAND
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--lab", required=True)
    parser.add_argument("--png-probe", required=True)
    parser.add_argument("--park-pointer", required=True)
    parser.add_argument("--x-close", required=True)
    parser.add_argument("--wine", help="runs the lab and the PNG probe, Windows programs")
    parser.add_argument("--wayland", action="store_true",
                        help="the lab on SDL's wayland driver, under Weston in each case's Xvfb")
    parser.add_argument("cases", nargs="*", help="test classes or Class.test_name")
    TOOLS, rest = parser.parse_known_args()
    if TOOLS.wine is not None:
        VIDEO_DRIVER = "windows"
    if TOOLS.wayland:
        VIDEO_DRIVER = "wayland"
        WAYLAND = True
    argv = [sys.argv[0], "-v"] + TOOLS.cases + rest
    unittest.main(module=__name__, argv=argv)


if __name__ == "__main__":
    main()
