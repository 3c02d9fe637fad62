#!/usr/bin/env python3
"""Proves that every test is in the build.

    check-tests-listed.py ROOT         checks itself, then the tree at ROOT
    check-tests-listed.py --self-test  checks itself only

Every tests/**/*Test.cpp stands in exactly one line vantorel_test(<folder>/<Name>Test ...) of
tests/CMakeLists.txt or of a Tests.cmake that is included from there, and every such line names a
test that exists. Prints each violation as "file:line: text" and exits 1 if there is any, or no test.
"""

import os
import re
import sys
import tempfile

COMMENT = re.compile(r"#\[(=*)\[.*?\]\1\]|#[^\n]*", re.S)
CALL = re.compile(r"^[ \t]*vantorel_test\s*\(\s*\"?([^\s\")]*)", re.M | re.I)
INCLUDE = re.compile(r"^[ \t]*include\s*\(\s*\"?([^\s\")]*Tests\.cmake)", re.M | re.I)


class Check:
    """Looks through one tree and collects its violations as (file, line, text)."""

    def __init__(self, root):
        self.tests = os.path.join(root, "tests")
        self.violations = []
        self.listed = {}
        self.read_lists = set()

    def run(self):
        found, lists = self.walk()
        if os.path.isfile(os.path.join(self.tests, "CMakeLists.txt")):
            self.read_list("CMakeLists.txt")
        for path in sorted(lists - self.read_lists):
            self.report(path, 1, "is not included, so its tests are not built")
        for path in sorted(found - set(self.listed)):
            self.report(path, 1, "no vantorel_test() line names it")
        return self.violations

    def walk(self):
        """The paths below tests/ of all test sources and of all Tests.cmake."""
        found, lists = set(), set()
        for folder, _, files in os.walk(self.tests):
            for file in files:
                path = os.path.relpath(os.path.join(folder, file), self.tests).replace(os.sep, "/")
                if file.endswith("Test.cpp"):
                    found.add(path)
                elif file == "Tests.cmake":
                    lists.add(path)
        return found, lists

    def report(self, path, line, text):
        self.violations.append(("tests/" + path, line, text))

    def read_list(self, path):
        self.read_lists.add(path)
        with open(os.path.join(self.tests, path), encoding="utf-8") as file:
            text = COMMENT.sub(lambda match: "\n" * match[0].count("\n"), file.read())
        for match in CALL.finditer(text):
            self.take_test(path, text.count("\n", 0, match.start(1)) + 1, match[1])
        for match in INCLUDE.finditer(text):
            self.take_include(path, text.count("\n", 0, match.start(1)) + 1, match[1])

    def take_test(self, path, line, name):
        source = name + ".cpp"
        if "$" in name:
            self.report(path, line, f"{name}: a test's name is written out")
        elif not re.fullmatch(r"(?:\w+/)+\w+Test", name):
            self.report(path, line, f"{name}: a test is named <folder>/<Name>Test")
        elif not os.path.isfile(os.path.join(self.tests, source)):
            self.report(path, line, f"{name}: there is no tests/{source}")
        elif source in self.listed:
            self.report(path, line, f"{name}: already listed in {self.listed[source]}")
        self.listed.setdefault(source, f"tests/{path}:{line}")

    def take_include(self, path, line, name):
        """Includes name a list by its path below tests/, from wherever they stand."""
        name = name.replace("${CMAKE_CURRENT_SOURCE_DIR}/", "")
        if not os.path.isfile(os.path.join(self.tests, name)):
            self.report(path, line, f"{name}: there is no such list of tests")
        elif name not in self.read_lists:
            self.read_list(name)


# (path below tests/, text, the numbers of the lines that are violations)
SELF_TEST = [
    ("CMakeLists.txt", 'function(vantorel_test path)\nendfunction()\ninclude(CTest)\ninclude(engine/Tests.cmake)\n'
     'include("${CMAKE_CURRENT_SOURCE_DIR}/scan/Tests.cmake")\ninclude(gone/Tests.cmake)\n'
     'vantorel_test(platform/GoodTest LINKS a)\n', [6]),
    ("engine/Tests.cmake", 'vantorel_test(engine/GoodTest ROOT LINKS a)\n# vantorel_test(engine/CommentedTest LINKS a)\n'
     'vantorel_test(engine/GoneTest LINKS a)\nvantorel_test(engine/GoodTest LINKS a)\nvantorel_test(${name} LINKS a)\n'
     'vantorel_test(engine/Odd LINKS a)\n#[[\nvantorel_test(engine/BracketedTest LINKS a)\n]]\n'
     'vantorel_test(\n  engine/WrappedTest\n  LINKS a)\nvantorel_test(LonelyTest)\n', [3, 4, 5, 6, 13]),
    ("scan/Tests.cmake", 'vantorel_test(scan/deep/DeepTest LINKS a)\n', []),
    ("support/Tests.cmake", 'vantorel_test(support/UnincludedTest LINKS a)\n', [1]),
    ("platform/GoodTest.cpp", "", []),
    ("engine/GoodTest.cpp", "", []),
    ("engine/CommentedTest.cpp", "", [1]),
    ("engine/BracketedTest.cpp", "", [1]),
    ("engine/WrappedTest.cpp", "", []),
    ("engine/ForgottenTest.cpp", "", [1]),
    ("engine/Odd.cpp", "", []),
    ("LonelyTest.cpp", "", []),
    ("scan/deep/DeepTest.cpp", "", []),
    ("support/UnincludedTest.cpp", "", [1]),
    ("kit/Helper.cpp", "", []),
]


def self_test():
    """Sees every kind of violation reported in a scratch tree, and nothing else."""
    with tempfile.TemporaryDirectory(prefix="check-tests-listed.") as root:
        for path, text, _ in SELF_TEST:
            file = os.path.join(root, "tests", path)
            os.makedirs(os.path.dirname(file), exist_ok=True)
            with open(file, "w", encoding="utf-8") as out:
                out.write(text)
        seen = {(path, line) for path, line, _ in Check(root).run()}
    expected = {("tests/" + path, line) for path, _, lines in SELF_TEST for line in lines}
    for path, line in sorted(expected - seen):
        print(f"check-tests-listed: self-test: {path}:{line}: not seen")
    for path, line in sorted(seen - expected):
        print(f"check-tests-listed: self-test: {path}:{line}: seen where all is well")
    if seen != expected:
        sys.exit(1)
    print(f"self-test: {len(seen)} violations seen")


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: check-tests-listed.py ROOT | --self-test")
    self_test()
    if sys.argv[1] == "--self-test":
        return 0
    check = Check(sys.argv[1])
    for path, line, text in check.run():
        print(f"{path}:{line}: {text}")
    print(f"{len(check.listed)} tests listed, {len(check.violations)} violations")
    if not check.listed:
        print("check-tests-listed: no test is listed, that cannot be right")
    return 1 if check.violations or not check.listed else 0


if __name__ == "__main__":
    sys.exit(main())
