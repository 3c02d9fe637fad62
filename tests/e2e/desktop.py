"""A desktop of the tests' own: an X server without a screen, a session bus, a window manager, and
the programs that are tried on it. Everything is looked at and touched from outside: texts through
the accessibility bus, as a screen reader has them; keys and mouse through the X server.

Nothing here erases anything; the programs do, in folders that the tests made.
"""

import os
import shutil
import signal
import subprocess
import tempfile
import time
import urllib.parse

PATIENCE = 30.0 * float(os.environ.get("VANTOREL_TEST_PATIENCE", "1"))


DRAG_SOURCE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "drag-source")


class GaveUp(AssertionError):
    pass


def wait_until(condition, what, times=1):
    """What the condition answers, once that is true. A condition that fails counts as not yet.
    `what` is a text, or a function that makes one in the end. Waits so many times the usual."""
    end = time.monotonic() + PATIENCE * times
    problem = None
    while time.monotonic() < end:
        try:
            answer = condition()
            if answer:
                return answer
            problem = None
        except Exception as error:  # the accessibility tree changes under the reader
            problem = error
        time.sleep(0.05)
    raise GaveUp(f"waited in vain: {what() if callable(what) else what}" + (f" ({problem!r})" if problem else ""))


def uri(path):
    return "file://" + urllib.parse.quote(os.fsencode(path))


class Desktop:
    """X server, session bus and window manager; as a context."""

    def __init__(self, window_manager="openbox", screen="1280x1024x24"):
        self.folder = tempfile.mkdtemp(prefix="vantorel-desktop.")
        self.processes = []
        self.window_manager = window_manager
        self.screen = screen

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def _start(self):
        read, write = os.pipe()
        self._spawn(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", self.screen, "-nolisten", "tcp", "-noreset"], pass_fds=[write]
        )
        os.close(write)
        with os.fdopen(read) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        os.environ.pop("WAYLAND_DISPLAY", None)
        # The machine's own services hear nothing of what is tried here.
        for name in ("DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"):
            bus = self._spawn(["dbus-daemon", "--session", "--print-address", "--nofork"], stdout=subprocess.PIPE)
            os.environ[name] = bus.stdout.readline().decode().strip()
        os.environ["XDG_RUNTIME_DIR"] = self._folder("runtime", 0o700)
        os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        if self.window_manager:
            self._spawn([self.window_manager])
            wait_until(lambda: run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").find("window id") >= 0, "window manager")

    def _folder(self, name, mode=0o755):
        path = os.path.join(self.folder, name)
        os.makedirs(path, mode=mode, exist_ok=True)
        return path

    def _spawn(self, command, **options):
        options.setdefault("stdout", subprocess.DEVNULL)
        process = subprocess.Popen(
            command, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True, **options
        )
        self.processes.append(process)
        return process

    def __exit__(self, *_):
        for process in reversed(self.processes):
            end_process(process)
        shutil.rmtree(self.folder, ignore_errors=True)


def end_process(process):
    if process.poll() is None:
        for number in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(process.pid, number)
                process.wait(5)
                break
            except ProcessLookupError:
                break
            except subprocess.TimeoutExpired:
                continue
    if process.stdout:
        process.stdout.close()


def run(*command):
    """The command's output. A command that fails answers what it said until then."""
    return subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True).stdout.decode(errors="replace")


def mouse(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True, stdin=subprocess.DEVNULL)


def key(*names):
    """Presses keys one after the other, each a name such as Tab or ctrl+Return."""
    for name in names:
        mouse("key", "--clearmodifiers", name)


class Program:
    """The application under test in a world of its own: home, settings and data are fresh."""

    def __init__(self, executable, home, *arguments, settings=None, environment=None):
        self.home = home
        self.expected = 0
        os.makedirs(os.path.join(home, ".config", "Vantorel"), exist_ok=True)
        self.settings_path = os.path.join(home, ".config", "Vantorel", "Vantorel.ini")
        if settings is not None:
            with open(self.settings_path, "w") as file:
                file.write("[General]\n" + "".join(f"{name}={value}\n" for name, value in settings.items()))
        world = dict(os.environ, HOME=home, XDG_CONFIG_HOME=os.path.join(home, ".config"),
                     XDG_DATA_HOME=os.path.join(home, ".local/share"), LC_ALL="C.UTF-8")
        world.update(environment or {})
        self.errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [executable, *map(os.fsencode, arguments)], env=world, stdin=subprocess.DEVNULL, stdout=self.errors,
            stderr=self.errors, start_new_session=True,
        )

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        ended = self.process.poll()
        end_process(self.process)
        if kind or ended != self.expected and ended:
            self.errors.seek(0)
            print(self.errors.read().decode(errors="replace"))
        self.errors.close()
        if ended and ended != self.expected and not kind:
            raise AssertionError(f"the program ended by itself, with {ended}")

    def ends_with(self, code):
        self.expected = code
        ended = self.process.wait(60)
        if ended != code:
            raise AssertionError(f"the program ended with {ended} instead of {code}")

    # The accessibility tree

    def root(self):
        import pyatspi
        from gi.repository import Atspi

        for application in pyatspi.Registry.getDesktop(0):
            if application and application.get_process_id() == self.process.pid:
                # Nothing is remembered: no event loop runs here that would hear of changes.
                application.set_cache_mask(getattr(Atspi.Cache, "NONE"))
                application.clear_cache()
                return application
        raise LookupError("the application is not on the accessibility bus")

    def all(self):
        """Everything that shows, in the tree's order."""
        import pyatspi

        found = []
        waiting = [self.root()]
        while waiting:
            node = waiting.pop(0)
            children = [] if "table" in node.getRoleName() else [child for child in node if child is not None]
            for child in children:
                states = child.getState()
                if states.contains(pyatspi.STATE_SHOWING) or child.getRoleName() in ("frame", "filler"):
                    found.append(child)
                    waiting.append(child)
        return found

    def texts(self):
        return [node.name for node in self.all() if node.name]

    def says(self, text, times=1):
        return wait_until(lambda: any(text in shown for shown in self.texts()),
                          lambda: f"text {text!r} among {self.safe_texts()}", times)

    def shows(self, text):
        return any(text in shown for shown in wait_until(self.texts, "the texts"))

    def row(self, table, number):
        """What a screen reader hears of a row."""
        def look():
            found = self.find(table).queryTable()
            return found.nRows > number and found.getAccessibleAt(number, 0).name

        return wait_until(look, f"row {number} of {table}")

    def safe_texts(self):
        try:
            return self.texts()
        except Exception as error:
            return repr(error)

    def find(self, name, role=None):
        def look():
            for node in self.all():
                if node.name == name and role in (None, node.getRoleName()):
                    return node
            return None

        return wait_until(look, lambda: f"{role or 'element'} {name!r} among {self.safe_texts()}")

    def click(self, name, role=None):
        x, y, width, height = place(self.find(name, role))
        mouse("mousemove", x + width // 2, y + height // 2, "click", 1)

    def focused(self):
        import pyatspi

        for node in self.all():
            if node.getState().contains(pyatspi.STATE_FOCUSED):
                return node.name
        return None

    # The window

    def is_visible(self):
        return run("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)).strip() != ""

    def window(self):
        def look():
            for number in run("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)).split():
                if run("xprop", "-id", number, "_NET_WM_WINDOW_TYPE").find("NORMAL") >= 0:
                    return number
            return None

        return wait_until(look, "the window")

    def frame(self):
        return geometry(self.window())

    def activate(self):
        mouse("windowactivate", "--sync", self.window())

    def picture(self, path, title=None):
        """Of the window, or of the one with this title, with what lies over it."""
        number = self.window() if title is None else run("xdotool", "search", "--onlyvisible", "--name", title).split()[0]
        x, y, width, height = geometry(number)
        subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage", path],
                       check=True, stdin=subprocess.DEVNULL)


def geometry(number):
    words = dict(line.split("=") for line in run("xdotool", "getwindowgeometry", "--shell", number).split() if "=" in line)
    return tuple(int(words[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def place(node):
    import pyatspi

    area = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return area.x, area.y, area.width, area.height


def drag(locations, x, y, steps=12, release=True):
    """Drags the locations out of another program's window to this place, as a hand would."""
    process = subprocess.Popen(
        [DRAG_SOURCE, *[uri(location) for location in locations]], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL, start_new_session=True,
    )
    try:
        process.stdout.readline()
        number = wait_until(
            lambda: run("xdotool", "search", "--onlyvisible", "--pid", str(process.pid)).split(), "the drag source"
        )[-1]
        mouse("windowraise", number, "windowmove", "--sync", number, 20, 20)
        words = dict(line.split("=") for line in run("xdotool", "getwindowgeometry", "--shell", number).split() if "=" in line)
        from_x, from_y = int(words["X"]) + 40, int(words["Y"]) + 40
        mouse("mousemove", from_x, from_y, "mousedown", 1)
        for step in range(1, steps + 1):
            mouse("mousemove", from_x + (x - from_x) * step // steps, from_y + (y - from_y) * step // steps)
            time.sleep(0.03)
        if not release:
            return process
        mouse("mouseup", 1)
        word = process.stdout.readline().decode().strip()
        end_process(process)
        return word
    except BaseException:
        mouse("mouseup", 1)
        end_process(process)
        raise
