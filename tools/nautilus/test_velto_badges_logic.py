"""The badge extension's answers, on real databases in a temporary container."""

import os
import sqlite3
import tempfile
import time
import unittest

import velto_badges_logic as logic

# The cards table as Velto makes it, reduced to the columns the extension reads and those that
# refuse a row without them.
CARDS = """
CREATE TABLE cards (
    id TEXT PRIMARY KEY,
    display_path TEXT NOT NULL,
    status TEXT NOT NULL CHECK (status IN ('not_started', 'in_progress', 'waiting', 'complete')),
    is_missing INTEGER NOT NULL DEFAULT 0
)"""


class Container:
    def __init__(self):
        self._dir = tempfile.TemporaryDirectory()
        self.path = self._dir.name
        self.database = os.path.join(self.path, "Velto.sqlite")

    def write(self, cards):
        """cards: (path, status, is_missing) rows, replacing what was there."""
        with sqlite3.connect(self.database) as connection:
            connection.execute("PRAGMA journal_mode=WAL")
            connection.execute(CARDS.replace("CREATE TABLE", "CREATE TABLE IF NOT EXISTS"))
            connection.execute("DELETE FROM cards")
            connection.executemany(
                "INSERT INTO cards (id, display_path, status, is_missing) VALUES (?, ?, ?, ?)",
                [(str(n), *card) for n, card in enumerate(cards)])
        connection.close()

    def settings(self, text):
        with open(os.path.join(self.path, logic.IDENTIFIER + ".ini"), "w", encoding="utf-8") as file:
            file.write(text)

    def close(self):
        self._dir.cleanup()


class BadgesTest(unittest.TestCase):
    def setUp(self):
        self.container = Container()
        self.addCleanup(self.container.close)
        self.badges = logic.Badges(self.container.path)

    def test_each_status_has_its_emblem_and_only_live_folders_have_one(self):
        self.container.write([
            ("/work/Thesis", "not_started", 0),
            ("/work/Grant/", "in_progress", 0),
            ("/work/Dépôt « final »\nzwei", "waiting", 0),
            ("/work/日本語 'quoted' \"twice\"", "complete", 0),
            ("/work/Gone", "complete", 1),
        ])
        self.badges.refresh()
        cases = [
            ("/work/Thesis", "emblem-velto-not-started"),
            ("/work/Thesis/", "emblem-velto-not-started"),
            ("/work/Grant", "emblem-velto-in-progress"),
            ("/work/Dépôt « final »\nzwei", "emblem-velto-waiting"),
            ("/work/日本語 'quoted' \"twice\"", "emblem-velto-complete"),
            ("/work/Gone", None),
            ("/work/Thesis/chapter", None),
            ("/work", None),
        ]
        for path, emblem in cases:
            with self.subTest(path=path):
                self.assertEqual(self.badges.emblem_for(path), emblem)

    def test_the_shared_setting_switches_badges_off_and_nothing_else_does(self):
        self.container.write([("/work/Thesis", "waiting", 0)])
        cases = [
            (None, True),
            ("[General]\nshowBadgesInFinder=false\n", False),
            ("[General]\nshowBadgesInFinder=true\n", True),
            ("[General]\nmirrorStatusToFinderTags=true\n", True),
            ("[General]\nshowBadgesInFinder=0\n", True),
            ("not an ini file at all", True),
            ("[General]\nshowBadgesInFinder=\"false\"\n", False),
        ]
        for settings, shown in cases:
            with self.subTest(settings=settings):
                path = os.path.join(self.container.path, logic.IDENTIFIER + ".ini")
                if settings is None:
                    if os.path.exists(path):
                        os.remove(path)
                else:
                    self.container.settings(settings)
                self.badges.refresh()
                self.assertEqual(self.badges.emblem_for("/work/Thesis"),
                                 "emblem-velto-waiting" if shown else None)

    def test_a_refresh_names_just_the_folders_whose_emblem_changed(self):
        self.container.write([("/a", "waiting", 0), ("/b", "waiting", 0), ("/c", "complete", 0)])
        self.assertEqual(self.badges.refresh(), {"/a", "/b", "/c"})
        self.container.write([("/a", "complete", 0), ("/b", "waiting", 0), ("/d", "waiting", 0)])
        self.assertEqual(self.badges.refresh(), {"/a", "/c", "/d"})
        self.assertEqual(self.badges.refresh(), set())
        self.container.settings("[General]\nshowBadgesInFinder=false\n")
        self.assertEqual(self.badges.refresh(), {"/a", "/b", "/d"})

    def test_a_missing_or_unreadable_database_draws_nothing(self):
        self.assertEqual(self.badges.refresh(), set())
        self.assertIsNone(self.badges.emblem_for("/work/Thesis"))
        self.assertFalse(os.path.exists(self.container.database), "a read-only open creates nothing")

        with open(self.container.database, "wb") as file:
            file.write(b"not a database")
        self.badges.refresh()
        self.assertIsNone(self.badges.emblem_for("/work/Thesis"))

        os.remove(self.container.database)
        with sqlite3.connect(self.container.database) as connection:
            connection.execute("CREATE TABLE other (x)")
        connection.close()
        self.badges.refresh()
        self.assertIsNone(self.badges.emblem_for("/work/Thesis"))

    def test_a_locked_database_gives_up_at_once_and_is_never_written(self):
        self.container.write([("/work/Thesis", "in_progress", 0)])
        # A writer holding the whole file, as a rollback-journal writer in the middle of a commit
        # does; Velto's own WAL writer never blocks readers.
        writer = sqlite3.connect(self.container.database, isolation_level=None)
        self.addCleanup(writer.close)
        writer.execute("PRAGMA journal_mode=DELETE")
        writer.execute("PRAGMA locking_mode=EXCLUSIVE")
        writer.execute("BEGIN EXCLUSIVE")
        started = time.monotonic()
        self.badges.refresh()
        self.assertLess(time.monotonic() - started, 1.0)
        self.assertIsNone(self.badges.emblem_for("/work/Thesis"))
        writer.execute("ROLLBACK")
        writer.close()
        with open(self.container.database, "rb") as file:
            before = (os.path.getmtime(self.container.database), file.read())
        self.badges.refresh()
        self.assertEqual(self.badges.emblem_for("/work/Thesis"), "emblem-velto-in-progress")
        with open(self.container.database, "rb") as file:
            self.assertEqual((os.path.getmtime(self.container.database), file.read()), before)

    def test_a_wal_database_with_nobody_writing_is_read(self):
        # Velto gone: no -wal or -shm beside the database, which a read-only reader cannot create.
        self.container.write([("/work/Thesis", "complete", 0)])
        for suffix in ("-wal", "-shm"):
            self.assertFalse(os.path.exists(self.container.database + suffix))
        self.badges.refresh()
        self.assertEqual(self.badges.emblem_for("/work/Thesis"), "emblem-velto-complete")


class PlacesTest(unittest.TestCase):
    def test_the_container_is_where_velto_puts_it(self):
        cases = [
            ({"XDG_DATA_HOME": "/data", "HOME": "/home/ana"}, "/data/io.quillmere.Velto"),
            ({"XDG_DATA_HOME": "relative", "HOME": "/home/ana"}, "/home/ana/.local/share/io.quillmere.Velto"),
            ({"HOME": "/home/ana"}, "/home/ana/.local/share/io.quillmere.Velto"),
        ]
        for environ, path in cases:
            with self.subTest(environ=environ):
                self.assertEqual(logic.container_path(environ), path)

    def test_the_signal_interface_is_the_identifier_made_valid(self):
        cases = [
            ("io.quillmere.Velto", "io.quillmere.Velto"),
            ("io.quill-mere.9Velto", "io.quill_mere._9Velto"),
        ]
        for identifier, interface in cases:
            with self.subTest(identifier=identifier):
                self.assertEqual(logic.bus_interface(identifier), interface)


if __name__ == "__main__":
    unittest.main()
