"""What the badge extension of Files draws: one emblem per tracked folder, after its column.

Kept apart from the extension so that it runs, and is tested, without Files. It reads Velto's
database read-only and never writes anything.
"""

import configparser
import os
import re
import sqlite3
import urllib.parse

IDENTIFIER = "io.quillmere.Velto"
SIGNAL_MEMBER = "databaseDidChange"

EMBLEMS = {
    "not_started": "emblem-velto-not-started",
    "in_progress": "emblem-velto-in-progress",
    "waiting": "emblem-velto-waiting",
    "complete": "emblem-velto-complete",
}

# Files asks for every folder it shows; waiting on Velto's writer would freeze its window, so a
# locked database gives up at once and draws nothing.
QUERY_TIMEOUT_SECONDS = 0.05

_STATUS_QUERY = "SELECT display_path, status FROM cards WHERE is_missing = 0"


def container_path(environ, identifier=IDENTIFIER):
    """The folder Velto keeps its database and shared settings in, as Velto finds it."""
    data_home = environ.get("XDG_DATA_HOME", "")
    if os.path.isabs(data_home):
        return os.path.normpath(os.path.join(data_home, identifier))
    home = environ.get("HOME") or os.path.expanduser("~")
    return os.path.normpath(os.path.join(home, ".local", "share", identifier))


def bus_interface(identifier=IDENTIFIER):
    """The interface of the change signal: the identifier as D-Bus accepts it."""
    elements = []
    for element in identifier.split("."):
        element = re.sub(r"[^A-Za-z0-9_]", "_", element)
        if element[:1].isdigit():
            element = "_" + element
        elements.append(element)
    return ".".join(elements)


def _normalised(path):
    return os.path.normpath(path) if path else path


class Badges:
    """The emblems of one container's folders, read again on each refresh."""

    def __init__(self, container, identifier=IDENTIFIER):
        self._database = os.path.join(container, "Velto.sqlite")
        self._settings = os.path.join(container, identifier + ".ini")
        self._emblems = {}

    def emblem_for(self, path):
        """The emblem of the folder at `path`, or None when it is not tracked or badges are off."""
        return self._emblems.get(_normalised(path))

    def refresh(self):
        """Reads the database and the setting again; answers the paths whose emblem changed."""
        before = self._emblems
        self._emblems = self._read_emblems() if self.shows_badges() else {}
        return {path for path in before.keys() | self._emblems.keys()
                if before.get(path) != self._emblems.get(path)}

    def shows_badges(self):
        """On unless the shared settings hold a stored false, as Velto itself reads it."""
        parser = configparser.RawConfigParser(interpolation=None, strict=False)
        parser.optionxform = str
        try:
            with open(self._settings, encoding="utf-8") as settings:
                parser.read_file(settings)
        except (OSError, UnicodeDecodeError, configparser.Error):
            return True
        value = parser.get("General", "showBadgesInFinder", fallback="true")
        return value.strip().strip('"') != "false"

    def _read_emblems(self):
        uri = "file:" + urllib.parse.quote(self._database) + "?mode=ro"
        try:
            connection = sqlite3.connect(uri, uri=True, timeout=QUERY_TIMEOUT_SECONDS)
        except sqlite3.Error:
            return {}
        try:
            rows = connection.execute(_STATUS_QUERY).fetchall()
        except sqlite3.Error:
            return {}
        finally:
            connection.close()
        return {_normalised(path): EMBLEMS[status] for path, status in rows if status in EMBLEMS}
