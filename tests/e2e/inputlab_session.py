# SPDX-License-Identifier: Zlib
"""What the input lab's end-to-end cases stand on: each case's X server (and Weston), the lab's
process and console, the PNG probe, and the cases' base classes, whose set-up brings every display
to the same state. `configure` takes the command line's paths and mode before any case runs."""

import os
import re
import shutil
import subprocess
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



def configure(tools):
    """Takes the command line's paths and mode (--wine, --wayland) for every case."""
    global TOOLS, VIDEO_DRIVER, WAYLAND
    TOOLS = tools
    if tools.wine is not None:
        VIDEO_DRIVER = "windows"
    if tools.wayland:
        VIDEO_DRIVER = "wayland"
        WAYLAND = True
