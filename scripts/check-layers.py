#!/usr/bin/env python3
"""Proves that the dependencies below src/ point one way.

    check-layers.py ROOT         checks itself, then the tree at ROOT
    check-layers.py --self-test  checks itself only

Every include is looked at, whether or not the compiler would get to see it:
  - a project header is included in quotes, by its path below src/, and only from a layer that may
    know it;
  - POSIX, Linux and D-Bus headers are included by src/platform alone. Elsewhere a header in angle
    brackets is one of C++ or of Qt, nothing else;
  - the layers without pictures include only what stands in Qt's QtCore folder, and their CMake
    files name no other part of Qt. (A target that links Qt Core alone still finds the headers of
    the other parts.)
Prints each violation as "file:line: text" and exits 1 if there is any, or nothing to check.
"""

import glob
import os
import re
import subprocess
import sys
import tempfile

# A folder below src/, and what its files may include.
LAYERS = {
    "platform": {"platform"},
    "engine": {"engine", "platform"},
    "scan": {"scan", "engine", "platform"},
    "support": {"support", "platform"},
    "ui": {"ui", "support", "scan", "engine", "platform"},
    "support/view": {"support/view", "ui", "support", "engine", "platform"},
    "app/run": {"app/run", "scan", "engine", "support", "platform"},
    "app": {"app", "app/run", "support/view", "ui", "support", "scan", "engine", "platform"},
    "cli": {"cli", "app/run", "scan", "engine", "support", "platform"},
}

# The layers without pictures, and the parts of Qt that they may use.
QT_PARTS = {layer: {"Core"} for layer in ("engine", "scan", "support", "app/run", "cli")}
QT_PARTS["platform"] = {"Core", "DBus"}

# <csignal> is left out: signals are the platform's.
STANDARD_HEADERS = set(
    """
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
    cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
    csetjmp cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
    exception execution filesystem format forward_list fstream functional future initializer_list
    iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex
    scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept
    stop_token streambuf string string_view syncstream system_error thread tuple type_traits
    typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
    """.split()
)

SOURCE_SUFFIXES = (".h", ".hh", ".hpp", ".hxx", ".inl", ".ipp", ".c", ".cc", ".cpp", ".cxx")

# String literals are matched so that no comment is seen to start inside one.
COMMENT_OR_LITERAL = re.compile(
    r"""(?P<comment>//(?:\\\n|[^\n])*|/\*.*?\*/)
      | R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)"
      | "(?:\\.|[^"\\\n])*"
      | (?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])*'
    """,
    re.S | re.X,
)
DIRECTIVE = re.compile(r"^[ \t]*(?:\#|%:)(?:[ \t]|\\\n)*(?:include(?:_next)?|import)\b[ \t]*(.*?)[ \t]*$", re.M)
MODULE_IMPORT = re.compile(r"^[ \t]*(?:export[ \t]+)?import[ \t]+([<\"\w:.]+[^;]*);", re.M)
QT_HEADER = re.compile(r"(?:Qt[A-Z]\w*/)?(?:Q[A-Za-z]\w*|Qt|q[a-z0-9_]+\.h)")
QT_PART = re.compile(r"\bQt6?(?:::|)(?P<part>[A-Z][A-Za-z]*)\b")
QT_COMPONENTS = re.compile(r"find_package\s*\(\s*Qt6?\b(?P<words>[^)]*)\)")


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def without_comments(text):
    """The text with comments and raw strings blanked; every line keeps its number."""

    def blank(match):
        if match["comment"] is None and match["mark"] is None:
            return match[0]
        return " " + "\n" * match[0].count("\n")

    return COMMENT_OR_LITERAL.sub(blank, text)


def layer_of(path):
    """The layer of a path below src/, the deepest folder that is one; None outside of all."""
    folders = path.split("/")[:-1]
    for depth in range(len(folders), 0, -1):
        layer = "/".join(folders[:depth])
        if layer in LAYERS:
            return layer
    return None


class Check:
    """Looks through one tree and collects its violations as (file, line, text)."""

    def __init__(self, root, qt_core_headers):
        self.src = os.path.join(root, "src")
        self.qt_core_headers = qt_core_headers
        self.violations = []
        self.files_checked = 0

    def run(self):
        for folder, folders, files in os.walk(self.src):
            folders.sort()
            for file in sorted(files):
                path = os.path.relpath(os.path.join(folder, file), self.src).replace(os.sep, "/")
                if file.endswith(SOURCE_SUFFIXES):
                    self.files_checked += 1
                    self.check_source(path)
                elif file == "CMakeLists.txt" or file.endswith(".cmake"):
                    self.check_cmake(path)
        return self.violations

    def read(self, path):
        with open(os.path.join(self.src, path), encoding="utf-8", errors="surrogateescape") as file:
            return file.read()

    def report(self, path, line, text):
        self.violations.append(("src/" + path, line, text))

    def check_source(self, path):
        layer = layer_of(path)
        if layer is None:
            self.report(path, 1, "stands in no layer that this script knows")
            return
        text = without_comments(self.read(path))
        for match in MODULE_IMPORT.finditer(text):
            self.report(path, line_of(text, match.start(1)), f"imports {match[1]}: headers are included")
        for match in DIRECTIVE.finditer(text):
            line = line_of(text, match.start(1))
            operand = match[1]
            if re.fullmatch(r'"[^"]+"', operand):
                complaint = self.wrong_quoted(path, layer, operand[1:-1])
            elif re.fullmatch(r"<[^>]+>", operand):
                complaint = self.wrong_angled(layer, operand[1:-1])
            else:
                complaint = "the name of a header is written out, in quotes or angle brackets"
            if complaint:
                self.report(path, line, f"{match[0].strip()}: {complaint}")

    def wrong_quoted(self, path, layer, header):
        stem = os.path.splitext(os.path.basename(path))[0]
        if header in (f"{stem}.moc", f"moc_{stem}.cpp"):
            return None
        if header.startswith("/") or any(part in ("", ".", "..") for part in header.split("/")):
            return "a project header is named by its path below src/"
        if not os.path.isfile(os.path.join(self.src, header)):
            return "there is no such file below src/"
        return self.wrong_direction(layer, header)

    @staticmethod
    def wrong_direction(layer, header):
        other = layer_of(header)
        if other is None:
            return "it stands in no layer that this script knows"
        return None if other in LAYERS[layer] else f"{layer} must not know {other}"

    def wrong_angled(self, layer, header):
        if os.path.isfile(os.path.join(self.src, header)):
            return "a project header is included in quotes"
        if ".." in header.split("/"):
            return "no header is named by a way around"
        if header in STANDARD_HEADERS:
            return None
        if not QT_HEADER.fullmatch(header) and not header.startswith(("Qt", "Q", "private/q")):
            return None if layer == "platform" else "only platform includes more than C++ and Qt"
        return self.wrong_qt(layer, header)

    def wrong_qt(self, layer, header):
        folder, _, name = header.rpartition("/")
        bus = folder == "QtDBus" or (not folder and re.match(r"Qt?DBus|qdbus|qtdbus", name))
        if bus:
            return None if "DBus" in QT_PARTS.get(layer, ()) else "only platform talks over D-Bus"
        if not QT_HEADER.fullmatch(header):
            return "not one of Qt's public headers"
        if layer in QT_PARTS and (folder not in ("", "QtCore") or name not in self.qt_core_headers):
            return f"{layer} includes nothing of Qt but Qt Core"
        return None

    def check_cmake(self, path):
        parts = QT_PARTS.get(layer_of(path))
        if parts is None:
            return
        text = re.sub(r"#[^\n]*", "", self.read(path))
        named = [(match.start(), match["part"]) for match in QT_PART.finditer(text)]
        for match in QT_COMPONENTS.finditer(text):
            for word in re.finditer(r"\b[A-Z][a-z]\w*\b|\bDBus\b", match["words"]):
                named.append((match.start("words") + word.start(), word[0]))
        for position, part in sorted(named):
            if part.removesuffix("Private") not in parts:
                self.report(path, line_of(text, position), f"{layer_of(path)} must not link Qt {part}")


def qt_core_headers():
    """The names of the headers in the QtCore folder of the Qt that is installed."""
    folders = glob.glob("/usr/include/*/qt6/QtCore") + glob.glob("/usr/include/qt6/QtCore")
    for program in ("qtpaths6", "qmake6"):
        if folders:
            break
        query = "--query" if program == "qtpaths6" else "-query"
        try:
            found = subprocess.run([program, query, "QT_INSTALL_HEADERS"], capture_output=True, text=True, check=True)
        except (OSError, subprocess.CalledProcessError):
            continue
        folders = glob.glob(glob.escape(found.stdout.strip()) + "/QtCore")
    names = set(os.listdir(folders[0])) if folders else set()
    if "QString" not in names:
        sys.exit("check-layers: Qt's QtCore include folder was not found")
    return names


# (path below src/, text, the numbers of the lines that are violations)
SELF_TEST = [
    ("platform/Files.h", "#pragma once\n#include <fcntl.h>\n#include <QtDBus/QDBusConnection>\n#include <QString>\n", []),
    ("platform/Up.cpp", '#include "platform/Files.h"\n#include "engine/Wiper.h"\n', [2]),
    ("platform/Pictures.cpp", "#include <sys/stat.h>\n#include <QImage>\n#include <QDBusMessage>\n", [2]),
    ("engine/Wiper.h", '#include "platform/Files.h"\n#include <cerrno>\n#include <QtCore/QString>\n#include <QtGlobal>\n', []),
    ("engine/Up.cpp", '#include "engine/Wiper.h"\n#include "scan/Scanner.h"\n#include "support/Log.h"\n', [2, 3]),
    ("engine/Posix.cpp", "#include <unistd.h>\n#include <csignal>\n#include <linux/fs.h>\n#include <pthread.h>\n", [1, 2, 3, 4]),
    ("engine/CNames.cpp", "#include <stdint.h>\n#include <cstdint>\n#  include <poll.h>\n", [1, 3]),
    ("engine/Pictures.cpp", "#include <QtGui/QColor>\n#include <QWidget>\n#include <QtWidgets>\n#include <QtCore/QObject>\n", [1, 2, 3]),
    ("engine/Bus.cpp", "#include <QDBusInterface>\n#include <QtDBus>\n#include <qdbusmessage.h>\n", [1, 2, 3]),
    ("engine/Private.cpp", "#include <private/qobject_p.h>\n#include <QtCore/private/qobject_p.h>\n", [1, 2]),
    ("engine/Relative.cpp", '#include "Wiper.h"\n#include "../engine/Wiper.h"\n#include "./engine/Wiper.h"\n', [1, 2, 3]),
    ("engine/Missing.cpp", '#include "engine/Nowhere.h"\n#include "QString"\n#include "/usr/include/stdio.h"\n', [1, 2, 3]),
    ("engine/Angled.cpp", "#include <engine/Wiper.h>\n", [1]),
    ("engine/Indirect.cpp", "#define WHICH <unistd.h>\n#include WHICH\n#import <QString>\nimport <vector>;\n", [2, 4]),
    ("engine/Spliced.cpp", "#include \\\n  <unistd.h>\n# \\\n include <fcntl.h>\n// \\\n#include <poll.h>\n", [1, 4]),
    ("engine/Twisted.cpp", "#include <QtCore/../QtGui/QColor>\n#include <c++/../unistd.h>\n", [1, 2]),
    ("engine/Silent.cpp", '// #include <unistd.h>\n/*\n#include <unistd.h>\n*/\nauto a = "/*";\nauto b = R"(\n#include <unistd.h>\n)";\n', []),
    ("engine/Literals.cpp", "auto a = '\"';\nauto b = 1'000'000;\nauto c = \"//\";\n/* c */ #include <unistd.h>\n", [4]),
    ("engine/Thread.cpp", '#include "engine/Wiper.h"\n#include <QThread>\n#include "Thread.moc"\n#include "Other.moc"\n', [4]),
    ("scan/Scanner.h", '#include "engine/Wiper.h"\n#include "support/Log.h"\n#include <dirent.h>\n', [2, 3]),
    ("support/Log.h", '#include "platform/Files.h"\n#include "engine/Wiper.h"\n#include "support/view/Table.h"\n#include <QIcon>\n', [2, 3, 4]),
    ("support/view/Table.h", '#include "ui/Button.h"\n#include "support/Log.h"\n#include "app/Main.h"\n#include "scan/Scanner.h"\n#include <QIcon>\n', [3, 4]),
    ("ui/Button.h", '#include "support/Log.h"\n#include "support/view/Table.h"\n#include "app/run/Run.h"\n#include <QtWidgets/QWidget>\n#include <QColor>\n', [2, 3]),
    ("ui/Posix.cpp", "#include <termios.h>\n#include <QDBusReply>\n#include <QtGui/private/qguiapplication_p.h>\n", [1, 2, 3]),
    ("app/run/Run.h", '#include "scan/Scanner.h"\n#include "app/Main.h"\n#include "ui/Button.h"\n#include <QGuiApplication>\n', [2, 3, 4]),
    ("app/Main.h", '#include "app/run/Run.h"\n#include "support/view/Table.h"\n#include "cli/Terminal.h"\n#include <QNetworkReply>\n', [3]),
    ("cli/Terminal.h", '#include "app/run/Run.h"\n#include "app/Main.h"\n#include "ui/Button.h"\n#include <QApplication>\n', [2, 3, 4]),
    ("other/Stray.h", "#pragma once\n", [1]),
    ("Stray.cpp", '#include "engine/Wiper.h"\n', [1]),
    ("engine/CMakeLists.txt", "# Qt6::Gui is not for here\ntarget_link_libraries(a Qt6::Core)\ntarget_link_libraries(a\n  Qt6::Gui)\n", [4]),
    ("scan/CMakeLists.txt", "target_link_libraries(a Qt::Widgets Qt6::Core)\n", [1]),
    ("support/CMakeLists.txt", "target_link_libraries(a Qt6::CorePrivate)\ntarget_link_libraries(a Qt6Gui)\n", [2]),
    ("cli/CMakeLists.txt", "find_package(Qt6 6.4 REQUIRED COMPONENTS Core\n  Widgets)\n", [2]),
    ("app/run/CMakeLists.txt", "target_link_libraries(a Qt6::Core)\ntarget_link_libraries(a Qt6::DBus)\n", [2]),
    ("platform/CMakeLists.txt", "target_link_libraries(a Qt6::Core Qt6::DBus)\ntarget_link_libraries(a Qt6::GuiPrivate)\n", [2]),
    ("app/CMakeLists.txt", "target_link_libraries(a Qt6::Widgets)\n", []),
    ("support/view/CMakeLists.txt", "target_link_libraries(a Qt6::Widgets)\n", []),
]


def self_test(core):
    """Sees every kind of violation reported in a scratch tree, and nothing else."""
    with tempfile.TemporaryDirectory(prefix="check-layers.") as root:
        nothing = Check(root, core)
        if nothing.run() or nothing.files_checked:
            sys.exit("check-layers: self-test: found something in an empty folder")
        for path, text, _ in SELF_TEST:
            file = os.path.join(root, "src", path)
            os.makedirs(os.path.dirname(file), exist_ok=True)
            with open(file, "w", encoding="utf-8") as out:
                out.write(text)
        check = Check(root, core)
        seen = {(path, line) for path, line, _ in check.run()}
    expected = {("src/" + path, line) for path, _, lines in SELF_TEST for line in lines}
    for path, line in sorted(expected - seen):
        print(f"check-layers: self-test: {path}:{line}: not seen")
    for path, line in sorted(seen - expected):
        print(f"check-layers: self-test: {path}:{line}: seen where all is well")
    if seen != expected:
        sys.exit(1)
    print(f"self-test: {len(seen)} violations seen")


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: check-layers.py ROOT | --self-test")
    core = qt_core_headers()
    self_test(core)
    if sys.argv[1] == "--self-test":
        return 0
    check = Check(sys.argv[1], core)
    for path, line, text in check.run():
        print(f"{path}:{line}: {text}")
    print(f"{check.files_checked} files checked, {len(check.violations)} violations")
    if not check.files_checked:
        print("check-layers: nothing to check, that cannot be right")
    return 1 if check.violations or not check.files_checked else 0


if __name__ == "__main__":
    sys.exit(main())
