#!/usr/bin/python3
"""The program among the others of a desktop: dialogs, later starts, its end, the error log, the
desktop's services.

    citizen.py VANTOREL [TEST...]
"""

import json
import os
import signal
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from desktop import end_process, key, wait_until  # noqa: E402
from scenes import Scene, contents, main  # noqa: E402

SERVICES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "desktop-services")
LARGE = 1 << 30  # bytes; 35 passes over it outlast every test


class Services:
    """File manager, notifications and login manager, which note down what they are asked."""

    def __init__(self, folder):
        self.path = os.path.join(folder, "calls")
        self.process = subprocess.Popen([SERVICES, self.path], stdout=subprocess.PIPE, start_new_session=True)

    def __enter__(self):
        if self.process.stdout.readline().strip() != b"ready":
            raise AssertionError("the services did not start")
        return self

    def __exit__(self, *_):
        end_process(self.process)

    def calls(self, member):
        with open(self.path) as file:
            return [call[1:] for call in map(json.loads, file) if call[0] == member]

    def called(self, member):
        """The arguments of its one call."""
        wait_until(lambda: self.calls(member), f"a call of {member}")
        time.sleep(0.3)
        calls = self.calls(member)
        if len(calls) != 1:
            raise AssertionError(f"{member} was called {len(calls)} times")
        return calls[0]


class Citizen(Scene):
    def later_start(self, *arguments):
        """A second start ends with success once the first one has what it was given."""
        window = self.program(*arguments)
        self.assertEqual(window.process.wait(60), 0)
        window.errors.close()

    def large_file(self):
        """Takes no space until it is overwritten, which then takes long."""
        path = os.path.join(self.folder, "large")
        with open(path, "wb") as file:
            file.truncate(LARGE)
        return path

    def press_start(self, window):
        time.sleep(0.6)
        key("ctrl+Return")
        window.says("Securely erasing files")

    # Later starts

    def test_a_later_start_leaves_its_files_to_the_first(self):
        first, second = self.files("first", 3), self.files("second", 4)
        with self.program(first) as window:
            window.says("3 files")
            self.later_start(second)
            window.says("7 files")
            window.says("4 folders, removed once they are empty")
            self.assertEqual(len(contents(first)) + len(contents(second)), 9, "nothing is erased before Start")
            self.start_and_finish(window, "in 7 files")
        self.check_kept()

    def test_two_hundred_files_of_any_name_come_in_one_batch(self):
        folder = os.fsencode(self.folder)
        paths = [os.path.join(folder, b"name %d \xff\n%%41" % number) for number in range(200)]
        for path in paths:
            with open(path, "wb") as file:
                file.write(b"x" * 10)
        with self.program() as window:
            window.says("Drag your files and folders here")
            self.later_start(*map(os.fsdecode, paths))
            window.says("200 files")
            self.start_and_finish(window, "in 200 files")
        self.assertFalse(any(map(os.path.exists, paths)))
        self.check_kept()

    def test_a_closed_window_comes_back_by_a_later_start(self):
        with self.program() as window:
            window.says("Drag your files and folders here")
            place = window.frame()
            key("ctrl+w")
            wait_until(lambda: not window.is_visible(), "the window to hide")
            self.assertIsNone(window.process.poll())
            self.later_start()
            wait_until(lambda: window.frame() == place, "the window in its place")
            window.says("Drag your files and folders here")

    def test_a_later_start_in_a_run_erases_nothing_unasked(self):
        large, beside = self.large_file(), os.path.join(self.beside, "keep-0")
        with self.program(large, settings={"WipeMethod": 10}) as window:
            window.says("1 file")
            self.press_start(window)
            self.later_start(beside)
            window.says("Erase these with the others?")
            window.says("1 item came from another program while files are being erased.")
            key("Return")
            wait_until(lambda: not window.shows("Erase these with the others?"), "the question to go")
            time.sleep(0.5)
            self.assertTrue(window.shows("Securely erasing files"))
            self.check_kept()
            self.later_start(beside)
            window.says("Erase these with the others?")
            window.process.send_signal(signal.SIGKILL)
            window.ends_with(-signal.SIGKILL)
        self.check_kept()

    # Its end

    def test_quitting_in_a_run_asks_first(self):
        large, beside = self.large_file(), os.path.join(self.beside, "keep-0")
        with self.program(large, beside, settings={"WipeMethod": 10}) as window:
            window.says("2 files")
            self.press_start(window)
            key("ctrl+q")
            window.says("Quit while files are being erased?")
            window.says("The current file would be left half overwritten, and 1 file would not be erased at all.")
            key("Return")
            wait_until(lambda: not window.shows("Quit while files are being erased?"), "the question to go")
            self.assertIsNone(window.process.poll(), "No is the default")
            key("ctrl+q")
            window.says("Quit while files are being erased?")
            key("space")
            self.assertEqual(window.process.wait(10), 0)
        self.assertEqual(os.path.getsize(large), LARGE)
        self.check_kept()

    def test_terminated_in_a_run_it_finishes_the_file_in_work(self):
        folder = os.path.join(self.folder, "many")
        os.mkdir(folder)
        names = [os.path.join(folder, f".hidden {number}") for number in range(400)]
        for name in names:
            with open(name, "wb") as file:
                file.write(b"content")
                file.truncate(1 << 20)
        with self.program(folder, settings={"WipeMethod": 6}) as window:
            window.says("400 files")
            self.press_start(window)
            wait_until(lambda: sum(map(os.path.exists, names)) < 390, "some files to go")
            window.process.send_signal(signal.SIGTERM)
            self.assertEqual(window.process.wait(10), 0)
        left = [name for name in names if os.path.exists(name)]
        self.assertTrue(left)
        for name in left:
            with open(name, "rb") as file:
                self.assertEqual(file.read(8), b"content\0", "what was not reached is untouched")

    def test_terminated_in_a_large_file_it_leaves_that_in_place(self):
        large, beside = self.large_file(), os.path.join(self.beside, "keep-0")
        with self.program(large, beside, settings={"WipeMethod": 10}) as window:
            window.says("2 files")
            self.press_start(window)
            start = time.monotonic()
            window.process.send_signal(signal.SIGTERM)
            window.ends_with(143)
            self.assertGreater(time.monotonic() - start, 4)
        self.assertEqual(os.path.getsize(large), LARGE)
        self.check_kept()

    def test_terminated_in_a_scan_it_ends_at_once(self):
        with self.program("/usr", "/usr", "/usr", "/usr", "/usr", "/usr") as window:
            window.says("Looking through your folders")
            window.process.send_signal(signal.SIGTERM)
            self.assertEqual(window.process.wait(10), 0)

    def test_a_shutdown_waits_for_the_file_in_work(self):
        folder = os.path.join(self.folder, "many")
        os.mkdir(folder)
        names = [os.path.join(folder, str(number)) for number in range(400)]
        for name in names:
            with open(name, "wb") as file:
                file.truncate(1 << 20)
        with Services(self.folder) as services, self.program(folder, settings={"WipeMethod": 6}) as window:
            window.says("400 files")
            self.assertEqual([call[::3] for call in services.calls("Inhibit")], [["idle", "block"]])
            self.press_start(window)
            wait_until(lambda: len(services.calls("Inhibit")) == 2, "the lock for the run")
            self.assertEqual(services.calls("Inhibit")[1], ["shutdown", "Vantorel", services.calls("Inhibit")[1][2], "delay"])
            wait_until(lambda: sum(map(os.path.exists, names)) < 390, "some files to go")
            self.assertEqual(services.calls("Released"), [])
            services.process.send_signal(signal.SIGUSR1)
            self.assertEqual(window.process.wait(10), 0)
            wait_until(lambda: ["shutdown"] in services.calls("Released"), "the lock to be given up")
        left = [name for name in names if os.path.exists(name)]
        self.assertTrue(left)
        for name in left:
            with open(name, "rb") as file:
                self.assertEqual(file.read(), bytes(1 << 20))

    def test_without_a_support_folder_it_says_so_and_ends(self):
        file = os.path.join(self.folder, "plain")
        with open(file, "w"):
            pass
        with self.program(environment={"XDG_DATA_HOME": file}) as window:
            window.says("Unable to access AppSupportPath")
            window.says(f"No access to:\n{file}/Vantorel\n\nVantorel will close now.")
            key("Return")
            window.ends_with(1)

    # Dialogs, menu, error log, services

    def test_about_comes_by_the_menu_and_goes_by_escape(self):
        with self.program() as window:
            window.says("Drag your files and folders here")
            key("alt+h")
            time.sleep(0.5)
            key("Down", "Down", "Return")
            window.says("Overwrites files in place")
            window.says("Contact the Makers")
            key("Escape")
            wait_until(lambda: not window.shows("Overwrites files in place"), "the dialog to go")
            key("F1")
            window.says("Overwrites files in place")
            key("Return")
            wait_until(lambda: not window.shows("Overwrites files in place"), "the dialog to go")

    def test_what_failed_stands_in_the_error_log_and_is_shown_in_its_folder(self):
        folder = self.files("dropped", 2)
        device = os.path.join(folder, "a device\u00e4")
        os.symlink("/dev/null", device)
        with Services(self.folder) as services, self.program(folder) as window:
            window.says("3 files")
            self.start_and_finish(window, "in 2 files")
            notify = services.called("Notify")
            self.assertEqual((notify[0], notify[3], notify[4], notify[5]), ("Vantorel", "Vantorel Finished", "Wiping done.", []))
            self.assertIn("sound-name", notify[6])
            window.says("1 file could not be erased.")
            window.click("Show Error Log")
            window.says("1 file could not be erased")
            row = window.row("Errors", 0)
            self.assertIn("a device\u00e4", row)
            self.assertIn(folder, row)
            self.assertRegex(row, "device|Operation")
            window.click("Show in Folder")
            uris, _ = services.called("ShowItems")
            self.assertEqual(uris, ["file://" + folder + "/a%20device%C3%A4"])
        self.assertTrue(os.path.islink(device))
        self.check_kept()

    def test_without_any_service_a_run_ends_as_usual(self):
        folder = self.files("dropped", 2)
        os.symlink("/dev/null", os.path.join(folder, "device"))
        with self.program(folder) as window:
            window.says("3 files")
            self.start_and_finish(window, "in 2 files")
            window.click("Show Error Log")
            window.says("1 file could not be erased")
            window.click("Show in Folder")
            time.sleep(0.5)
            self.assertIsNone(window.process.poll())


if __name__ == "__main__":
    sys.exit(main(Citizen))
