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
import sys
import unittest

import inputlab_session as session
from inputlab_session import (DIGIT2_BACKGROUND, DIGIT3_BACKGROUND, SCREEN, SQUARE,
                              START_BACKGROUND, TOUR, TOUR_PICTURE, Case, OnDisplay, Weston,
                              XServer, png_differing, png_pixel, png_size, read_config, run_lab)


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
        if session.TOOLS.wine is not None:
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
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--lab", required=True)
    parser.add_argument("--png-probe", required=True)
    parser.add_argument("--park-pointer", required=True)
    parser.add_argument("--x-close", required=True)
    parser.add_argument("--wine", help="runs the lab and the PNG probe, Windows programs")
    parser.add_argument("--wayland", action="store_true",
                        help="the lab on SDL's wayland driver, under Weston in each case's Xvfb")
    parser.add_argument("cases", nargs="*", help="test classes or Class.test_name")
    tools, rest = parser.parse_known_args()
    session.configure(tools)
    argv = [sys.argv[0], "-v"] + tools.cases + rest
    unittest.main(module=__name__, argv=argv)


if __name__ == "__main__":
    main()
