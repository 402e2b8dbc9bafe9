# SPDX-License-Identifier: LGPL-2.1-or-later
"""tools/torture.py notices what must not happen to a cache."""
import gzip
import pathlib
import sys
import tempfile
import types
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import torture


def postings(*ids, stamp=int(torture.OLDEST) + 1000):
    events = "".join(f"<Event><PostID>{number}</PostID><Stamp>{stamp}</Stamp>"
                     "<Updated>5</Updated></Event>" for number in ids)
    return gzip.compress(f"<Events>{events}</Events>".encode())


def settings(last_check):
    return f"username=u\nlastCheck={last_check}\n".encode()


class Files(unittest.TestCase):
    def test_postings_are_read(self):
        self.assertEqual(torture.postings_of(postings(1, 2)), {1: 5, 2: 5})
        self.assertEqual(torture.postings_of(None), {})
        self.assertEqual(torture.postings_of(postings(1, stamp=int(torture.OLDEST))), {})

    def test_damaged_postings_are_noticed(self):
        whole = postings(1, 2)
        for damaged in (whole[:-1], whole[:20], b"", b"text", gzip.compress(b"<Events>")):
            with self.assertRaises(torture.Fault):
                torture.postings_of(damaged)

    def test_half_settings_are_noticed(self):
        self.assertEqual(torture.settings_of(settings(7))["lastCheck"], ["7"])
        for damaged in (settings(7)[:-1], b"", b"username=u\nlast\n"):
            with self.assertRaises(torture.Fault):
                torture.settings_of(damaged)


class Checks(unittest.TestCase):
    OLD = (settings(1), postings(1))
    NEW = (settings(2), postings(1, 2))

    def check(self, case, present):
        return case(None, None).check(self.OLD, present, self.NEW)

    def assert_fault(self, case, present, message):
        with self.assertRaisesRegex(torture.Fault, message):
            self.check(case, present)

    def test_an_update_is_old_or_new(self):
        self.assertEqual(self.check(torture.Update, self.OLD), "old")
        self.assertEqual(self.check(torture.Update, self.NEW), "new")
        self.assertEqual(self.check(torture.Update, (settings(1), postings(1, 2))), "new")

    def test_an_update_is_nothing_else(self):
        self.assert_fault(torture.Update, (settings(1), postings(2)), "neither the old nor")
        self.assert_fault(torture.Update, (settings(1), None), "neither the old nor")
        self.assert_fault(torture.Update, (settings(3), postings(1, 2)), "lastCheck is neither")
        self.assert_fault(torture.Update, (settings(2), postings(1)), "without the postings")

    def test_settings_are_old_or_new(self):
        new = (settings(2), self.OLD[1])
        self.assertEqual(self.check(torture.Settings, self.OLD), "old")
        self.assertEqual(self.check(torture.Settings, new), "new")
        self.assert_fault(torture.Settings, (settings(3), self.OLD[1]), "velkor.conf is neither")
        self.assert_fault(torture.Settings, self.NEW, "velkor.posts.gz has changed")


class Directories(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        server = types.SimpleNamespace(host="127.0.0.1:1")
        self.client = torture.Client(pathlib.Path("build"), server,
                                     pathlib.Path(directory.name) / "home")

    def test_leftovers_are_noticed(self):
        for name in ("velkor.conf", "velkor.posts.gz", "velkorctl.lock"):
            (self.client.cache / name).touch()
        self.assertEqual(self.client.leftovers(), [])
        (self.client.cache / "velkor.conf.tijdelijk-aB3xY9").touch()
        (self.client.cache / "test.dat").touch()
        (self.client.downloads / ".aB3xY9").touch()
        self.assertEqual(self.client.leftovers(),
                         [".aB3xY9", "test.dat", "velkor.conf.tijdelijk-aB3xY9"])

    def test_other_programs_notice_damage(self):
        (self.client.cache / "velkor.mail").write_text("<Mail/>")
        (self.client.cache / "velkor.posts.gz").write_bytes(postings(1))
        torture.check_with_tools(self.client)
        (self.client.cache / "velkor.mail").write_text("<Mail>")
        with self.assertRaisesRegex(torture.Fault, "xmllint refuses velkor.mail"):
            torture.check_with_tools(self.client)
        (self.client.cache / "velkor.mail").unlink()
        (self.client.cache / "velkor.posts.gz").write_bytes(postings(1)[:-4])
        with self.assertRaisesRegex(torture.Fault, "gzip cannot read velkor.posts.gz"):
            torture.check_with_tools(self.client)


if __name__ == "__main__":
    unittest.main()
