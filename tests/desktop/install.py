#!/usr/bin/python3
"""What `cmake --install` puts in place, and what desktops and file managers make of it.

    install.py CMAKE BUILD-FOLDER [TEST...]

Installs the build into a scratch prefix, with a blank in its name. The entries in the menus of file
managers are started as each file manager does it, with a program in Vantorel's place that writes down
how it was called.
"""

import configparser
import contextlib
import importlib.util
import os
import pathlib
import re
import shutil
import stat
import struct
import subprocess
import sys
import tempfile
import types
import unittest
import unittest.mock
import urllib.parse
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "e2e"))
from desktop import Desktop, Program, end_process, run, uri, wait_until  # noqa: E402

ID = "org.vantorel.Vantorel"
LABEL = "Securely Erase with Vantorel…"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
PROGRAMS = {"bin/vantorel", "bin/vantorel-cli"}
KDE = f"share/kio/servicemenus/{ID}.desktop"
NEMO = f"share/nemo/actions/{ID}.nemo_action"
ACTIONS = f"share/file-manager/actions/{ID}.desktop"
THUNAR = f"share/Thunar/sendto/{ID}.desktop"
NAUTILUS = "share/nautilus-python/extensions/vantorel_nautilus.py"
ENTRY = f"share/applications/{ID}.desktop"
SERVICE = f"share/dbus-1/services/{ID}.service"
METAINFO = f"share/metainfo/{ID}.metainfo.xml"
SCALABLE = f"share/icons/hicolor/scalable/apps/{ID}.svg"

# Every name that trips up a careless command line.
PATHS = [
    b"/scratch/" + name
    for name in (
        b"plain", b"a name  with blanks ", b"-starts-with-a-dash", b"--", b"two\nlines", b"a\ttab", b"caf\xe9-\xff",
        "Übermäßig".encode(), b"it's", b'say "so"', b"$HOME `id` $(id)", b"back\\slash\\", b"100%F %U%%", b"a;b&c|d>e",
        b"#hash", b"*", b"~", b"a folder/inside",
    )
]

# Says how it was called, whole or not at all, in a file of its own.
RECORDER = """#!/bin/sh
folder=${0%/*}/../started
printf '%s\\0' "$0" "$@" >"$folder/.$$" && mv "$folder/.$$" "$folder/$$"
"""

cmake = build = ""
scratch = prefix = stand_in = None


def install(*arguments, **environment):
    subprocess.run([cmake, "--install", build, *arguments], check=True, stdout=subprocess.DEVNULL,
                   stdin=subprocess.DEVNULL, env=dict(os.environ, **environment))


def setUpModule():
    global scratch, prefix, stand_in
    scratch = pathlib.Path(tempfile.mkdtemp(prefix="vantorel-install."))
    prefix = scratch / "a prefix"
    install("--prefix", str(prefix))
    stand_in = scratch / "stand-in" / "bin" / "vantorel"
    stand_in.parent.mkdir(parents=True)
    stand_in.write_text(RECORDER)
    stand_in.chmod(0o755)


def tearDownModule():
    shutil.rmtree(scratch, ignore_errors=True)


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def expected_files():
    icons = {f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in SIZES}
    return PROGRAMS | icons | {SCALABLE, ENTRY, SERVICE, METAINFO, KDE, NEMO, ACTIONS, THUNAR, NAUTILUS}


def keys(path, group):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=", comment_prefixes="#", strict=True)
    parser.optionxform = str
    parser.read(prefix / path, encoding="utf-8")
    return dict(parser[group])


def entry_keys(path):
    """The keys of the group that is what the menu shows."""
    return keys(path, {KDE: "Desktop Action eraseWithVantorel", NEMO: "Nemo Action"}.get(path, "Desktop Entry"))


def starts(program, started=1):
    """How the program in its place was called, each call a list of bytes, its own path first."""
    folder = program.parent.parent / "started"

    def look():
        names = [name for name in os.listdir(folder) if not name.startswith(".")]
        return names if len(names) >= started else None

    calls = [(folder / name).read_bytes().split(b"\0")[:-1] for name in wait_until(look, f"{started} starts")]
    shutil.rmtree(folder)
    folder.mkdir()
    return calls


@contextlib.contextmanager
def in_path(program):
    (program.parent.parent / "started").mkdir(exist_ok=True)
    with unittest.mock.patch.dict(os.environ, PATH=f"{program.parent}:{os.environ['PATH']}"):
        yield


class Install(unittest.TestCase):
    def test_everything_is_in_its_place_and_nothing_else(self):
        self.assertEqual(files_below(prefix), expected_files())

    def test_only_programs_and_the_service_menu_are_executable(self):
        executable = {name for name in files_below(prefix) if (prefix / name).stat().st_mode & stat.S_IXUSR}
        self.assertEqual(executable, PROGRAMS | {KDE})
        unreadable = {name for name in files_below(prefix) if not (prefix / name).stat().st_mode & stat.S_IROTH}
        self.assertEqual(unreadable, set())

    def test_what_is_staged_names_the_place_where_it_will_be(self):
        stage = scratch / "stage"
        install("--prefix", "/usr", DESTDIR=str(stage))
        self.assertEqual(files_below(stage), {f"usr/{name}" for name in expected_files()})
        service = (stage / "usr" / SERVICE).read_text()
        self.assertIn('\nExec="/usr/bin/vantorel"\n', service)
        shutil.rmtree(stage)

    def test_the_installed_programs_start(self):
        for name in sorted(PROGRAMS):
            said = subprocess.run([prefix / name, "--version"], capture_output=True, stdin=subprocess.DEVNULL)
            self.assertEqual((said.returncode, said.stderr), (0, b""))
            self.assertRegex(said.stdout.decode(), rf"^{os.path.basename(name)} \d+\.\d+\.\d+\n$")

    # The entry in the menu of programs

    def test_the_entries_of_programs_are_valid(self):
        for name in (ENTRY, THUNAR):
            judged = subprocess.run(["desktop-file-validate", prefix / name], capture_output=True, text=True)
            self.assertEqual((judged.returncode, judged.stdout, judged.stderr), (0, "", ""))

    def test_nothing_is_opened_with_it_unless_it_is_chosen(self):
        self.assertNotIn("MimeType", keys(ENTRY, "Desktop Entry"))
        applications = scratch / "applications"
        shutil.copytree((prefix / ENTRY).parent, applications)
        subprocess.run(["update-desktop-database", applications], check=True)
        cache = applications / "mimeinfo.cache"
        self.assertNotIn(ID, cache.read_text() if cache.exists() else "")

    def test_it_can_be_chosen_to_open_files(self):
        from gi.repository import Gio

        with in_path(stand_in):
            entry = Gio.DesktopAppInfo.new_from_filename(str(prefix / ENTRY))
            self.assertTrue(entry.should_show())
            self.assertTrue(entry.supports_files())

    def test_the_entry_hands_files_over_whatever_their_names(self):
        self.assertEqual(self.started_by_gio_without_bus(ENTRY), b"--\0" + b"\0".join(PATHS))

    def test_the_bus_starts_the_installed_program(self):
        installed = prefix / "bin" / "vantorel"
        real = scratch / "real"
        installed.rename(real)
        try:
            shutil.copy2(stand_in, installed)
            (prefix / "started").mkdir()
            with bus_with(prefix / "share" / "dbus-1" / "services") as address:
                # The stand-in takes no name on the bus, so the answer would be long in coming.
                call = subprocess.Popen(
                    ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                     "org.freedesktop.DBus.StartServiceByName", f"string:{ID}", "uint32:0"],
                    env=dict(os.environ, DBUS_SESSION_BUS_ADDRESS=address), stdout=subprocess.DEVNULL,
                    stderr=subprocess.DEVNULL, start_new_session=True)
                try:
                    self.assertEqual(starts(installed), [[os.fsencode(installed)]])
                finally:
                    end_process(call)
        finally:
            real.replace(installed)
            shutil.rmtree(prefix / "started", ignore_errors=True)

    def test_the_window_belongs_to_the_entry(self):
        home = scratch / "home"
        home.mkdir()
        with unittest.mock.patch.dict(os.environ), Desktop(), Program(str(prefix / "bin" / "vantorel"), str(home)) as program:
            window_class = run("xprop", "-id", program.window(), "WM_CLASS")
        self.assertIn(f'"{keys(ENTRY, "Desktop Entry")["StartupWMClass"]}"\n', window_class)

    # Its page in software centres

    def test_the_metainfo_is_valid(self):
        judged = subprocess.run(["appstreamcli", "validate", "--no-net", "--no-color", prefix / METAINFO],
                                capture_output=True, text=True)
        self.assertEqual(judged.returncode, 0, judged.stdout + judged.stderr)

    def test_the_metainfo_tells_of_what_is_installed(self):
        page = ElementTree.parse(prefix / METAINFO)
        self.assertEqual(page.findtext("id"), ID)
        self.assertEqual(page.findtext("launchable"), os.path.basename(ENTRY))
        self.assertEqual({f"bin/{node.text}" for node in page.iterfind("provides/binary")}, PROGRAMS)
        self.assertEqual(page.findtext("provides/dbus"), keys(SERVICE, "D-BUS Service")["Name"])
        entry = keys(ENTRY, "Desktop Entry")
        self.assertEqual((page.findtext("name"), page.findtext("summary")), (entry["Name"], entry["Comment"]))
        self.assertTrue((ROOT / "LICENSE").read_text().startswith(page.findtext("project_license") + " "))

    def test_the_metainfo_lists_the_releases_of_the_changelog(self):
        released = re.findall(r"^## (\d\S*)", (ROOT / "CHANGELOG.md").read_text(), re.M)
        page = ElementTree.parse(prefix / METAINFO)
        self.assertEqual([node.get("version") for node in page.iterfind("releases/release")], released)

    # Icons

    def test_each_icon_has_the_size_of_its_folder(self):
        for size in SIZES:
            head = (prefix / f"share/icons/hicolor/{size}x{size}/apps/{ID}.png").read_bytes()[:24]
            self.assertEqual((head[:8], struct.unpack(">II", head[16:])), (b"\x89PNG\r\n\x1a\n", (size, size)))

    def test_the_icon_without_size_is_the_drawing_of_the_large_ones(self):
        self.assertEqual((prefix / SCALABLE).read_bytes(), (ROOT / "src/ui/pictures/application_icon.svg").read_bytes())
        self.assertTrue(ElementTree.parse(prefix / SCALABLE).getroot().tag.endswith("}svg"))

    def test_every_entry_shows_that_icon(self):
        for name in (ENTRY, KDE, ACTIONS, THUNAR):
            self.assertEqual(entry_keys(name)["Icon"], ID)
        self.assertEqual(entry_keys(NEMO)["Icon-Name"], ID)

    # The entries in the menus of file managers

    def test_every_entry_says_the_same(self):
        for name in (KDE, NEMO, ACTIONS, THUNAR):
            self.assertEqual(entry_keys(name)["Name"], LABEL)

    def test_no_entry_is_shown_for_files_of_other_machines(self):
        self.assertEqual(keys(KDE, "Desktop Entry")["X-KDE-Protocols"], "file")
        self.assertEqual(entry_keys(NEMO)["UriScheme"], "file")
        # Not by Schemes: Caja's actions crash over that at names that are not UTF-8.
        profile = keys(ACTIONS, "X-Action-Profile erase")
        self.assertEqual((profile["Folders"], profile.get("Schemes")), ("/*;", None))
        # Thunar tells local files by what the entry takes: paths, not addresses.
        self.assertTrue(entry_keys(THUNAR)["Exec"].endswith(" %F"))

    def test_plasma_lists_files_and_folders(self):
        menu = keys(KDE, "Desktop Entry")
        self.assertEqual((menu["Type"], menu["MimeType"], menu["Actions"]), ("Service", "all/all;", "eraseWithVantorel;"))
        self.assertEqual(self.started(expanded_by_plasma(entry_keys(KDE)["Exec"])), [b"--", *PATHS])

    def test_nemo_lists_files_and_folders(self):
        action = entry_keys(NEMO)
        self.assertEqual((action["Selection"], action["Extensions"], action["Quote"]), ("notnone", "any;", "double"))
        self.assertEqual(self.started(expanded_by_nemo(action["Exec"])), [b"--", *PATHS])

    def test_caja_and_pcmanfm_list_files_and_folders(self):
        self.assertEqual(keys(ACTIONS, "Desktop Entry")["Type"], "Action")
        self.assertEqual(keys(ACTIONS, "Desktop Entry")["Profiles"], "erase;")
        profile = keys(ACTIONS, "X-Action-Profile erase")
        self.assertEqual(profile["MimeTypes"], "all/all;")
        self.assertEqual(self.started(expanded_by_actions(profile["Exec"])), [b"--", *PATHS])

    def test_thunar_lists_files_and_folders(self):
        self.assertNotIn("MimeType", entry_keys(THUNAR))
        self.assertEqual(self.started_by_gio_without_bus(THUNAR), b"--\0" + b"\0".join(PATHS))

    def test_nautilus_3_lists_files_and_folders(self):
        self.assertEqual(self.started_by_nautilus(PATHS, window=object()), [[b"--", *PATHS]])

    def test_nautilus_4_lists_files_and_folders(self):
        self.assertEqual(self.started_by_nautilus(PATHS), [[b"--", *PATHS]])

    def test_nautilus_lists_more_than_one_start_can_take(self):
        paths = [b"/scratch/%06d-" % number + b"x" * 200 for number in range(12000)]
        calls = self.started_by_nautilus(paths, started=6)
        self.assertEqual(sorted(path for call in calls for path in call[1:]), paths)
        self.assertTrue(all(call[0] == b"--" and call[1:] == sorted(call[1:]) for call in calls))

    def test_nautilus_offers_nothing_for_what_is_elsewhere(self):
        with in_path(stand_in), nautilus_extension() as extension:
            here = NautilusFile("file:///scratch/here")
            provider = extension.VantorelMenuProvider()
            self.assertEqual(len(provider.get_file_items([here])), 1)
            for elsewhere in ("trash:///gone", "sftp://host/file", "file://host/file"):
                self.assertEqual(provider.get_file_items([here, NautilusFile(elsewhere)]), [])
            self.assertEqual(provider.get_file_items([]), [])

    def test_nautilus_offers_nothing_where_the_program_is_missing(self):
        with nautilus_extension() as extension, unittest.mock.patch.dict(os.environ, PATH=str(scratch)):
            self.assertEqual(extension.VantorelMenuProvider().get_file_items([NautilusFile("file:///a")]), [])

    def started(self, command_line):
        """What the program gets when this line is started; as in a shell, blanks split and quotes hold."""
        with in_path(stand_in):
            subprocess.run([b"/bin/sh", b"-c", command_line], check=True)
            (call,) = starts(stand_in)
        self.assertEqual(call[0], os.fsencode(stand_in))
        return call[1:]

    def started_by_gio_without_bus(self, name):
        """GIO starts the entry in a process of its own, where no bus could start it instead."""
        script = (
            "import sys\nfrom gi.repository import Gio\n"
            "entry = Gio.DesktopAppInfo.new_from_filename(sys.argv[1])\n"
            "assert entry.launch([Gio.File.new_for_uri(each) for each in sys.argv[2:]], None)\n"
        )
        with in_path(stand_in):
            environment = dict(os.environ, DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
            subprocess.run(["/usr/bin/python3", "-c", script, prefix / name, *map(uri, PATHS)], check=True,
                           env=environment, stderr=subprocess.DEVNULL)
            (call,) = starts(stand_in)
        return b"\0".join(call[1:])

    def started_by_nautilus(self, paths, window=None, started=1):
        with in_path(stand_in), nautilus_extension() as extension:
            files = [NautilusFile(uri(path)) for path in paths]
            arguments = [files] if window is None else [window, files]
            (item,) = extension.VantorelMenuProvider().get_file_items(*arguments)
            self.assertEqual((item.label, item.icon), (LABEL, ID))
            item.activate()
            return [call[1:] for call in starts(stand_in, started)]


# How the file managers put the selected paths into the line of an entry.

def quoted(path):
    return b"'" + path.replace(b"'", b"'\\''") + b"'"


def expanded_by_plasma(line):
    return line.encode().replace(b"%F", b" ".join(map(quoted, PATHS)))


def expanded_by_actions(line):
    return line.encode().replace(b"%F", b" ".join(map(quoted, PATHS)))


def expanded_by_nemo(line):
    inside = (re.sub(rb'([\\"$`])', rb"\\\1", path) for path in PATHS)
    return line.encode().replace(b"%F", b" ".join(b'"' + path + b'"' for path in inside))


class NautilusFile:
    def __init__(self, address):
        self.address = address

    def get_uri(self):
        return self.address


class NautilusItem:
    def __init__(self, name, label, tip, icon):
        self.name, self.label, self.tip, self.icon = name, label, tip, icon

    def connect(self, signal, function, *arguments):
        assert signal == "activate"
        self.activate = lambda: function(self, *arguments)


@contextlib.contextmanager
def nautilus_extension():
    """The installed extension, loaded as Nautilus does it."""
    repository = types.ModuleType("gi.repository")
    repository.GObject = types.SimpleNamespace(GObject=type("GObject", (), {}))
    repository.Nautilus = types.SimpleNamespace(MenuProvider=type("MenuProvider", (), {}), MenuItem=NautilusItem)
    package = types.ModuleType("gi")
    package.repository = repository
    with unittest.mock.patch.dict(sys.modules, {"gi": package, "gi.repository": repository}), \
            unittest.mock.patch.object(sys, "dont_write_bytecode", True):
        specification = importlib.util.spec_from_file_location("vantorel_nautilus", prefix / NAUTILUS)
        module = importlib.util.module_from_spec(specification)
        specification.loader.exec_module(module)
        yield module


@contextlib.contextmanager
def bus_with(services):
    """A session bus that can start what stands in this folder, and nothing else."""
    settings = scratch / "bus.conf"
    settings.write_text(
        "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
        f"<servicedir>{services}</servicedir><policy context='default'>"
        "<allow send_destination='*'/><allow eavesdrop='true'/><allow own='*'/></policy></busconfig>"
    )
    bus = subprocess.Popen(["dbus-daemon", f"--config-file={settings}", "--nofork", "--print-address"],
                           stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                           start_new_session=True)
    try:
        yield bus.stdout.readline().decode().strip()
    finally:
        end_process(bus)


class Result(unittest.TextTestResult):
    passed = 0

    def addSuccess(self, test):
        super().addSuccess(test)
        self.passed += 1


def main():
    global cmake, build
    cmake, build = sys.argv[1:3]
    names = [f"Install.{name}" for name in sys.argv[3:]]
    loader = unittest.defaultTestLoader
    suite = loader.loadTestsFromNames(names, sys.modules[__name__]) if names else loader.loadTestsFromTestCase(Install)
    outcome = unittest.TextTestRunner(stream=sys.stdout, verbosity=2, resultclass=Result).run(suite)
    failed = max(outcome.testsRun - outcome.passed, 0 if outcome.wasSuccessful() else 1)
    print(f"Totals: {outcome.passed} passed, {failed} failed, 0 skipped, 0 blacklisted, 0ms")
    return 0 if outcome.wasSuccessful() and outcome.testsRun else 1


if __name__ == "__main__":
    sys.exit(main())
