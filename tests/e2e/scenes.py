"""What the window's tests on a desktop have in common: scratch files, the program over them, and a
look at what is left.
"""

import os
import shutil
import sys
import tempfile
import time
import unittest

from desktop import Desktop, Program, key

executable = ""


def contents(folder):
    """Every name below the folder, with what it holds."""
    found = {}
    for path, folders, files in os.walk(os.fsencode(folder)):
        for name in folders + files:
            whole = os.path.join(path, name)
            if os.path.islink(whole):
                found[whole] = b"->" + os.readlink(whole)
            elif os.path.isfile(whole):
                with open(whole, "rb") as file:
                    found[whole] = file.read()
            else:
                found[whole] = None
    return found


class Scene(unittest.TestCase):
    """A scratch folder, with a home for the program and files that it must not touch."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="vantorel-e2e.")
        self.home = os.path.join(self.folder, "home")
        os.mkdir(self.home)
        self.beside = os.path.join(self.folder, "beside")
        os.mkdir(self.beside)
        for number in range(5):
            with open(os.path.join(self.beside, f"keep-{number}"), "wb") as file:
                file.write(os.urandom(5000 + number))
        self.kept = contents(self.beside)

    def tearDown(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def files(self, name, count=7, size=3000):
        folder = os.path.join(self.folder, name)
        os.makedirs(os.path.join(folder, "inside"))
        for number in range(count):
            with open(os.path.join(folder, "inside" if number % 2 else "", f"file {number}.txt"), "wb") as file:
                file.write(os.urandom(size + number))
        return folder

    def program(self, *arguments, **options):
        return Program(executable, self.home, *arguments, **options)

    def check_kept(self):
        self.assertEqual(contents(self.beside), self.kept)

    def start_and_finish(self, window, result):
        # Start takes no input in the first moments of its view.
        time.sleep(0.6)
        key("ctrl+Return")
        window.says("Finished")
        window.says(result)


class Result(unittest.TextTestResult):
    def addSuccess(self, test):
        super().addSuccess(test)
        self.passed = getattr(self, "passed", 0) + 1


def main(case):
    """Runs the case, or those of its tests that are named behind the program's path."""
    global executable
    executable = sys.argv[1]
    suite = unittest.TestSuite(case(name) for name in sys.argv[2:] or unittest.defaultTestLoader.getTestCaseNames(case))
    with Desktop():
        outcome = unittest.TextTestRunner(stream=sys.stdout, verbosity=2, resultclass=Result).run(suite)
    failed = outcome.testsRun - getattr(outcome, "passed", 0)
    print(f"Totals: {outcome.testsRun - failed} passed, {failed} failed, 0 skipped, 0 blacklisted, 0ms")
    return 0 if outcome.wasSuccessful() and outcome.testsRun else 1
