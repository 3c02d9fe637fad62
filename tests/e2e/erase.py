#!/usr/bin/python3
"""Whole erasures through the window, on a desktop of the tests' own.

    erase.py VANTOREL [TEST...]

Each test looks at three things: what is left on the disk, what the window says, and that the files
beside the dropped ones are what they were, byte for byte.
"""

import os
import stat
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from desktop import drag, end_process, key, mouse, place, wait_until  # noqa: E402
from scenes import Scene, contents, main  # noqa: E402


def near(frame, corner):
    return all(abs(there - wanted) <= 16 for there, wanted in zip(frame, corner))


class Erase(Scene):
    # Ways in

    def test_a_drop_on_the_window_is_queued_and_erased_after_start(self):
        folder = self.files("dropped")
        with self.program() as window:
            window.says("Drag your files and folders here")
            x, y, width, height = window.frame()
            self.assertEqual(drag([folder], x + 60, y + height - 120), "dropped")
            window.says("7 files")
            window.says("2 folders, removed once they are empty")
            self.assertEqual(len(contents(folder)), 8, "nothing is erased before Start")
            self.start_and_finish(window, "in 7 files")
            window.says("overwritten and removed")
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    def test_a_drop_on_the_drawing_is_queued_as_well(self):
        folder = self.files("dropped")
        with self.program() as window:
            window.says("Drag your files and folders here")
            x, y, width, height = window.frame()
            self.assertEqual(drag([folder], x + width // 2, y + 180), "dropped")
            window.says("7 files")
            self.start_and_finish(window, "in 7 files")
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    def test_several_locations_of_one_drop_are_one_batch(self):
        folder = self.files("dropped", 3)
        single = os.path.join(self.folder, "single file \u00e4%20.txt")
        with open(single, "wb") as file:
            file.write(b"x" * 10)
        odd = os.path.join(os.fsencode(self.folder), b"odd-\xff-name")
        with open(odd, "wb") as file:
            file.write(b"y" * 10)
        with self.program() as window:
            window.says("Drag your files and folders here")
            x, y, width, height = window.frame()
            drag([folder, single, odd], x + 60, y + height - 120)
            window.says("5 files")
            self.start_and_finish(window, "in 5 files")
        for gone in (folder, single, odd):
            self.assertFalse(os.path.exists(gone))
        self.check_kept()

    def test_the_files_of_the_command_line_are_queued(self):
        folder = self.files("given")
        with self.program(folder) as window:
            window.says("7 files")
            window.says("Ready to start erasing")
            self.start_and_finish(window, "in 7 files")
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    # Runs

    def test_keyboard_alone_gets_from_the_panel_to_the_summary(self):
        folder = self.files("typed")
        with self.program() as window:
            window.says("Drag your files and folders here")
            window.activate()
            key("ctrl+o")
            window.says("Choose files and/or folders to secure delete")
            mouse("type", folder)
            key("Return")
            window.says("5 items")
            # Up again, where the folder is then chosen.
            key("BackSpace")
            window.says("1 chosen")
            wait_until(lambda: window.focused() == "OK" or key("Tab"), "the focus on OK")
            key("Return")
            window.says("7 files")
            self.start_and_finish(window, "in 7 files")
            key("Return")
            window.says("Drag your files and folders here")
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    def test_items_dropped_on_the_ready_view_join_the_queue(self):
        first, second = self.files("first", 3), self.files("second", 4)
        with self.program(first) as window:
            window.says("3 files")
            x, y, width, height = window.frame()
            drag([second], x + 60, y + height - 120)
            window.says("7 files")
            window.says("4 folders, removed once they are empty")
            self.start_and_finish(window, "in 7 files")
        self.assertFalse(os.path.exists(first) or os.path.exists(second))
        self.check_kept()

    def test_items_dropped_during_a_run_are_erased_by_it(self):
        first, second = self.files("first", 60, 3000000), self.files("second", 4)
        with self.program(first, settings={"WipeMethod": 10}) as window:
            window.says("60 files")
            time.sleep(0.6)
            key("ctrl+Return")
            window.says("Securely erasing files")
            x, y, width, height = window.frame()
            drag([second], x + 60, y + height - 120, steps=6)
            window.says("Finished", 6)
            window.says("in 64 files")
        self.assertFalse(os.path.exists(first) or os.path.exists(second))
        self.check_kept()

    def test_a_second_run_starts_from_nothing(self):
        first, second = self.files("first", 3), self.files("second", 4)
        with self.program(first) as window:
            window.says("3 files")
            self.start_and_finish(window, "in 3 files")
            x, y, width, height = window.frame()
            drag([second], x + 60, y + height - 120)
            window.says("4 files")
            self.start_and_finish(window, "in 4 files")
        self.assertFalse(os.path.exists(first) or os.path.exists(second))
        self.check_kept()

    def test_what_cannot_be_erased_is_said_and_stays(self):
        folder = self.files("dropped", 3)
        device = os.path.join(folder, "device")
        os.symlink("/dev/null", device)
        with self.program(folder) as window:
            window.says("4 files")
            window.says("1 symbolic link")
            self.start_and_finish(window, "in 3 files")
            window.says("1 file could not be erased.")
        self.assertTrue(os.path.islink(device))
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))
        self.assertEqual(list(contents(folder)), [os.fsencode(device)])
        self.check_kept()

    def test_nothing_found_is_said_and_cannot_be_started(self):
        with self.program("/proc") as window:
            window.says("0 files")
            window.says("No folders")
            window.says("Nothing to write")
            time.sleep(0.6)
            key("ctrl+Return")
            # An empty run would be over by then.
            time.sleep(1.5)
            self.assertFalse(window.shows("Finished"))
            self.assertTrue(window.shows("Ready to start erasing"))
        self.check_kept()

    def test_a_stopped_scan_keeps_what_was_found(self):
        folder = os.path.join(self.folder, "many")
        for number in range(2500):
            part = os.path.join(folder, f"{number}")
            os.makedirs(part)
            for name in range(100):
                os.close(os.open(os.path.join(part, f"{name}"), os.O_CREAT | os.O_WRONLY))
        with self.program() as window:
            window.says("Drag your files and folders here")
            window.activate()
            x, y, width, height = window.frame()
            held = drag([folder], x + 60, y + height - 120, release=False)
            window.activate()
            mouse("mouseup", 1, "sleep", 0.1, "key", "Escape")
            end_process(held)
            window.says("Ready to start erasing")
            counted = [text for text in window.texts() if text.endswith(" files")][0]
            found = int(counted.split()[0].replace(",", ""))
            self.assertLess(0, found)
            self.assertLess(found, 250000)
        self.assertEqual(sum(len(files) for _, _, files in os.walk(folder)), 250000)
        self.check_kept()

    def test_escape_stops_no_run_and_quits_nothing(self):
        folder = self.files("dropped", 60, 3000000)
        with self.program(folder, settings={"WipeMethod": 10}) as window:
            window.says("60 files")
            time.sleep(0.6)
            key("ctrl+Return")
            window.says("Securely erasing files")
            key("Escape")
            window.says("Finished", 6)
            window.says("in 60 files")
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    # Preferences

    def test_links_are_removed_and_their_targets_stay_where_the_preference_says_so(self):
        folder = self.files("dropped", 3)
        os.symlink(os.path.join(self.beside, "keep-0"), os.path.join(folder, "link"))
        with self.program(folder, settings={"skipLinkTargets": "true"}) as window:
            window.says("4 files")
            window.says("1 symbolic link will be removed; the file it points to stays")
            self.start_and_finish(window, "in 4 files")
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    def test_it_quits_by_itself_after_a_clean_run_where_the_preference_says_so(self):
        folder = self.files("dropped", 3)
        with self.program(folder, settings={"AutoExit": "true"}) as window:
            window.says("3 files")
            time.sleep(0.6)
            key("ctrl+Return")
            wait_until(lambda: window.process.poll() is not None, "the end of the program")
            self.assertEqual(window.process.returncode, 0)
        self.assertFalse(os.path.exists(folder))
        self.check_kept()

    def test_preferences_act_at_once_and_outlive_the_program(self):
        with self.program() as window:
            window.says("Drag your files and folders here")
            window.activate()
            key("ctrl+comma")
            window.says("Preferences")
            window.click("Light")
            window.click("Quit after a finished run")
            key("Escape")
            window.says("Drag your files and folders here")
            key("ctrl+q")
            wait_until(lambda: window.process.poll() is not None, "the end of the program")
        with open(window.settings_path) as file:
            text = file.read()
        self.assertIn("UserDefinedSystemColorTheme=0", text)
        self.assertIn("AutoExit=true", text)

    # The window

    def test_the_frame_is_remembered(self):
        with self.program() as window:
            window.says("Drag your files and folders here")
            mouse("windowmove", "--sync", window.window(), 150, 120)
            mouse("windowsize", "--sync", window.window(), 800, 620)
            frame = wait_until(lambda: window.frame() if window.frame()[2:] == (800, 620) else None, "the new size")
            window.activate()
            key("ctrl+q")
            wait_until(lambda: window.process.poll() is not None, "the end of the program")
        with self.program() as window:
            window.says("Drag your files and folders here")
            wait_until(lambda: window.frame() == frame, f"frame {frame}, not {window.frame()}")

    def test_the_header_moves_the_window(self):
        with self.program() as window:
            window.says("Drag your files and folders here")
            x, y, width, height = window.frame()
            mouse("mousemove", x + 200, y + 18, "mousedown", 1)
            for step in range(1, 11):
                mouse("mousemove", x + 200 + 6 * step, y + 18 + 4 * step)
                time.sleep(0.02)
            mouse("mouseup", 1)
            # The window manager takes over some pixels after the press.
            moved = wait_until(lambda: near(window.frame(), (x + 60, y + 40)) and window.frame(), f"the window near {x + 60, y + 40}")
            self.assertEqual(moved[2:], (width, height))

    def test_an_edge_resizes_the_window(self):
        with self.program() as window:
            window.says("Drag your files and folders here")
            x, y, width, height = window.frame()
            mouse("mousemove", x + width - 3, y + height - 3, "mousedown", 1)
            for step in range(1, 11):
                mouse("mousemove", x + width - 3 + 6 * step, y + height - 3 + 4 * step)
                time.sleep(0.02)
            mouse("mouseup", 1)
            wait_until(lambda: window.frame()[2:] == (width + 60, height + 40), f"the new size, {window.frame()}")

    def test_every_element_that_takes_the_focus_has_a_name(self):
        import pyatspi

        folder = self.files("dropped", 3)
        with self.program(folder) as window:
            for text in ("Ready to start erasing", "Finished"):
                window.says(text)
                nameless = [
                    node.getRoleName()
                    for node in window.all()
                    if node.getState().contains(pyatspi.STATE_FOCUSABLE) and not node.name
                ]
                self.assertEqual(nameless, [])
                if text.startswith("Ready"):
                    self.start_and_finish(window, "in 3 files")


if __name__ == "__main__":
    sys.exit(main(Erase))
