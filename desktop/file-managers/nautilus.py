"""The entry "Securely Erase with Vantorel…" in the menu of Nautilus (nautilus-python 1.2 and 4).

It lists what is selected in Vantorel; nothing is erased before Start is pressed there.
"""

import shutil
import subprocess
from urllib.parse import unquote_to_bytes

from gi.repository import GObject, Nautilus

# The system takes about 2 MB of arguments in one start.
MOST_BYTES = 500_000


def path_of(file):
    """The bytes of its path; None for what is not a file of this machine."""
    uri = file.get_uri()
    return unquote_to_bytes(uri[len("file://"):]) if uri.startswith("file:///") else None


def portions(paths):
    """All the paths in their order, in lists that one start can take."""
    portion, size = [], 0
    for path in paths:
        if portion and size + len(path) > MOST_BYTES:
            yield portion
            portion, size = [], 0
        portion.append(path)
        size += len(path)
    yield portion


def erase(_item, paths):
    for portion in portions(paths):
        subprocess.Popen(["vantorel", "--", *portion], stdin=subprocess.DEVNULL, start_new_session=True)


class VantorelMenuProvider(GObject.GObject, Nautilus.MenuProvider):
    # Nautilus 3 puts its window before the files.
    def get_file_items(self, *arguments):
        paths = [path_of(file) for file in arguments[-1]]
        # What is elsewhere cannot be erased; a part of the selection is not what was asked for.
        if not paths or None in paths or not shutil.which("vantorel"):
            return []
        item = Nautilus.MenuItem(
            name="Vantorel::erase",
            label="Securely Erase with Vantorel…",
            tip="List the selected items in Vantorel; nothing is erased before you press Start there",
            icon="org.vantorel.Vantorel",
        )
        item.connect("activate", erase, paths)
        return [item]
