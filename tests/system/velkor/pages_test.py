# SPDX-License-Identifier: LGPL-2.1-or-later
"""Uses the pages beside the spots as a person does, and looks at what that changed.

usage: pages_test.py BUILD_DIRECTORY [TEST ...]
"""
import json
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent))
from desktop import PASSWORD, wait_until  # noqa: E402
from front_end import FrontEndCase, ids_of  # noqa: E402


class PagesCase(FrontEndCase):
    postings = 15  # every part of the list takes time to look at

    def setting_lines(self, key):
        """The values of a setting in the file, which the front end writes."""
        lines = (self.home() / ".velkor/velkor.conf").read_text().splitlines()
        return [line.partition("=")[2] for line in lines if line.startswith(key + "=")]


class SettingsPage(PagesCase):
    postings = 90  # enough for a word that several titles hold

    def open_settings(self, program):
        self.desktop.press("ctrl+comma")
        program.wait_for("text", "Port of the proxy")

    def test_a_refused_value_is_said_at_its_field_and_a_good_one_saved(self):
        program = self.start_with_list(self.service_with_cache())
        self.open_settings(program)
        program.enter("text", "Port of the proxy", "70000")
        self.desktop.press("ctrl+s")
        program.wait_for_text("Not taken: a number from 1 to 65535 is needed.")
        self.assertEqual(self.setting_lines("proxyPort"), [])
        program.enter("text", "Port of the proxy", "8118")
        self.desktop.press("ctrl+s")
        wait_until(lambda: self.setting_lines("proxyPort") == ["8118"], "the port is saved")
        wait_until(lambda: not program.shows("Not taken"), "the refusal is gone")
        self.desktop.press("ctrl+z")
        wait_until(lambda: self.setting_lines("proxyPort") == [], "the port is gone again")
        self.desktop.press("Escape")
        wait_until(lambda: not program.showing("text", "Port of the proxy"), "the page is left")
        self.quit(program)

    def test_bad_words_tell_what_they_drop_before_they_do(self):
        service = self.service_with_cache()
        word = "verlegen"
        doomed = [item for item in service.listed() if word in item["title"].lower()]
        self.assertTrue(doomed)
        program = self.start_with_list(service)
        self.open_settings(program)
        program.enter("text", "Bad words", word)
        program.wait_for_text(f"{len(doomed)} spot")
        self.assertEqual(self.setting_lines("badword"), [])
        self.desktop.press("ctrl+s")
        wait_until(lambda: self.setting_lines("badword") == [word], "the word is saved")
        self.quit(program)
        kept = ids_of(service.listed())
        self.assertEqual(len(kept), self.postings - len(doomed))
        self.assertFalse(set(kept) & {item["id"] for item in doomed})

    def test_the_age_limit_says_that_it_deletes(self):
        program = self.start_with_list(self.service_with_cache())
        self.open_settings(program)
        program.wait_for_text("An update deletes older spots from the cache: ")
        self.quit(program)

    def test_a_first_start_takes_the_server(self):
        service = self.service(account=False)
        service.options = service.options[4:]  # without those that name the servers
        host = service.host
        program = self.start(service)
        program.wait_for_text("Welcome to Velkor")
        self.desktop.type("demo")
        self.desktop.press("Tab")
        self.desktop.type(PASSWORD)
        self.desktop.press("alt+s")
        program.enter("text", "Server", "no server")
        program.enter("text", "Server of the downloads", host)
        program.press_button("Continue")
        program.wait_for_text("This is not a server")
        program.enter("text", "Server", host)
        program.press_button("Continue")
        program.wait_for_text(f"{self.postings} spots received.")
        self.assertIn(f"main={host}\n", (self.home() / ".config/velkor/servers.ini").read_text())
        self.quit(program)


class MessagesPage(PagesCase):
    def open_messages(self, program):
        self.desktop.press("ctrl+m")
        program.wait_for("push button", "New message")

    def messages_in_the_file(self, service):
        return json.loads(service.velkorctl("mail", "list", "--format", "json"))["items"]

    def test_a_message_is_written_fetched_read_deleted_and_put_back(self):
        service = self.service_with_cache()
        program = self.start_with_list(service)
        self.open_messages(program)
        program.wait_for_text("No messages yet.")
        self.desktop.press("ctrl+n")
        program.enter("text", "To", "demo")
        program.enter("text", "Subject", "Haven")
        program.enter("text", "Text of the message", "Tot morgen")
        self.desktop.press("ctrl+Return")
        program.wait_for_text("The message has been sent.")
        program.press_button("Fetch")
        program.wait_for_text("1 new message.")
        program.wait_for_text("Unread: Haven, From demo")
        self.desktop.press("Home", "space")
        wait_until(lambda: program.shows("Haven, From demo"), "the message has been read")
        self.assertEqual(len((self.home() / ".config/velkor/read-messages").read_text().split()), 1)
        self.desktop.press("Delete")
        program.wait_for_text("The message is deleted")
        wait_until(lambda: not program.shows("Haven, From demo"), "the message is gone")
        self.desktop.press("ctrl+z")
        program.wait_for_text("Haven, From demo")
        self.quit(program)
        kept = self.messages_in_the_file(service)
        self.assertEqual([(one["direction"], one["body"]) for one in kept],
                         [("sent", "Tot morgen"), ("received", "Tot morgen")])

    def test_what_cannot_be_sent_is_kept(self):
        program = self.start_with_list(self.service_with_cache())
        self.open_messages(program)
        self.desktop.press("ctrl+n")
        program.enter("text", "To", "nobody-of-this-name")
        program.enter("text", "Text of the message", "Tot morgen")
        self.desktop.press("ctrl+Return")
        program.wait_for_text("The server knows no user of this name.")
        self.assertEqual(program.text_of("text", "Text of the message"), "Tot morgen")
        self.quit(program)


class WatchlistPage(PagesCase):
    def open_watchlist(self, program):
        self.desktop.press("ctrl+shift+d")
        program.wait_for("push button", "Get from the server")

    def watched(self):
        return [line for line in self.setting_lines("watchlist") if line]

    def test_the_watchlist_is_stored_on_the_server_and_got_back(self):
        service = self.service_with_cache()
        posting = service.listed()[3]
        program = self.start_with_list(service)
        self.open_watchlist(program)
        program.wait_for_text("No spots on the watchlist.")
        program.enter("text", "Number of a spot", "no number")
        program.press_button("Add")
        program.wait_for_text("This is not the number of a spot.")
        program.enter("text", "Number of a spot", str(posting["id"]))
        program.press_button("Add")
        program.name_of("list item", posting["title"])
        wait_until(lambda: self.watched() == [str(posting["id"])], "it is watched")
        program.press_button("Store on the server")
        program.wait_for_text("The server keeps this watchlist now.")
        self.desktop.press("Escape", "ctrl+shift+d", "Home", "Delete")
        program.wait_for_text("Taken off the watchlist")
        wait_until(lambda: self.watched() == [], "it is no longer watched")
        program.press_button("Get from the server")
        program.wait_for_text("1 spot added.")
        program.name_of("list item", posting["title"])
        self.assertEqual(self.watched(), [str(posting["id"])])
        self.quit(program)

    def test_a_failure_leaves_the_watchlist(self):
        service = self.service_with_cache()
        posting = service.listed()[3]
        service.velkorctl("watch", "add", str(posting["id"]))
        program = self.start_with_list(service)
        self.open_watchlist(program)
        program.name_of("list item", posting["title"])
        service.command("/fault?path=*&kind=database")
        program.press_button("Get from the server")
        program.wait_for_text("Database-storing")
        self.assertEqual(self.watched(), [str(posting["id"])])
        self.quit(program)


class OwnSpotsPage(PagesCase):
    OVERVIEW = "/3.7.3/xml-myzox.php"

    def open_own_spots(self, program):
        self.desktop.press("ctrl+shift+p")
        program.wait_for("push button", "Refresh")

    def place_spot(self, service, title, description):
        """Its number."""
        service.velkorctl("groups", "--fetch")
        file = self.home() / "spot"
        file.write_text(f"[posting]\ntitle={title}\ncategory=Beeld\nsub-category=DivX\n"
                        f"tags=Genre/Drama\nnewsgroups=1\ndescription={description}\n")
        return service.velkorctl("post", str(file)).split()[0]

    def test_a_spot_of_ones_own_is_listed_refreshed_and_opened(self):
        service = self.service_with_cache()
        posting = self.place_spot(service, "Haven", "Schepen in de mist")
        self.place_spot(service, "Duinen", "Zand in de wind")
        program = self.start_with_list(service)
        self.open_own_spots(program)
        name = program.name_of("list item", "Haven, Spot — Beeld/DivX — ")
        self.assertTrue(name.endswith(" — 0 kudos — 0 reactions — can still be changed"), name)
        program.wait_for_text("2 spots")
        self.desktop.press("End", "alt+r")
        program.wait_for_text("The server has been asked to refresh the spot.")
        asked = [{parameter["name"]: parameter["value"] for parameter in request["parameters"]}
                 for request in service.requests(self.OVERVIEW)]
        refreshed = [request["id"] for request in asked if request.get("mode") == "update"]
        self.assertEqual(refreshed, [posting])
        self.assertEqual(len(asked), 3)  # the overview before and after it
        self.desktop.press("Return")
        program.wait_for_text("Schepen in de mist")
        self.desktop.press("Escape")  # closes the spot now that the page is left
        wait_until(lambda: not program.shows("Schepen in de mist"), "the spot is closed")
        self.quit(program)

    def test_without_spots_it_says_where_they_come_from(self):
        program = self.start_with_list(self.service_with_cache())
        self.open_own_spots(program)
        program.wait_for_text("The server knows no spots of yours.")
        self.quit(program)

    def test_a_failure_leaves_the_list(self):
        service = self.service_with_cache()
        self.place_spot(service, "Haven", "Schepen in de mist")
        program = self.start_with_list(service)
        self.open_own_spots(program)
        name = program.name_of("list item", "Haven, Spot")
        service.command("/fault?path=*&kind=database")
        program.press_button("Fetch")
        program.wait_for_text("Database-storing")
        program.wait_for_focus("list item", name)  # which a list that is not shown loses
        self.quit(program)


class CachePage(PagesCase):
    UPDATE = "/3.7.3/xml.php"

    def kept(self, file):
        """The content of the files that were put aside."""
        return [path.read_text() for path in (self.home() / ".velkor").glob(f"{file}.onleesbaar-*")]

    def test_a_damaged_list_is_said_and_fetched_again(self):
        service = self.service_with_cache()
        (self.home() / ".velkor/velkor.posts.gz").write_text("no list")
        program = self.start(service)
        program.wait_for_text("The spots in the cache could not be read.")
        program.press_button("Cache files")
        program.name_of("list item", "Damaged: Spots — velkor.posts.gz, 7 bytes — ")
        program.press_button("Fetch everything again")
        program.wait_for_text(f"{self.postings} spots received.")
        program.name_of("list item", "Spots — velkor.posts.gz.onleesbaar-")
        self.assertEqual(self.kept("velkor.posts.gz"), ["no list"])
        asked = [{parameter["name"]: parameter["value"] for parameter in request["parameters"]}
                 for request in service.requests(self.UPDATE)]
        self.assertIn("0", [request["lc"] for request in asked[1:]])  # the first one filled the cache
        self.desktop.press("Escape")
        program.wait_for_rows(ids_of(service.listed()))
        self.quit(program)
        self.assertEqual(len(service.listed()), self.postings)
        self.assertEqual(self.setting_lines("recursiveUpdate"), ["0"])
        self.assertNotEqual(self.setting_lines("lastCheck"), ["0"])

    def test_files_that_can_be_read_are_in_order(self):
        program = self.start_with_list(self.service_with_cache())
        self.desktop.press("ctrl+shift+c")
        program.wait_for_text("Every file could be read.")
        self.assertTrue(program.name_of("list item", "Spots — velkor.posts.gz, ").endswith(" — in order"))
        self.assertFalse(program.shows("The spots in the cache could not be read."))
        self.quit(program)


class ProfilePage(PagesCase):
    def test_the_profile_of_a_poster_is_that_of_the_server(self):
        service = self.service_with_cache()
        posting = service.listed()[3]
        profile = json.loads(service.velkorctl("profile", posting["poster"], "--format", "json"))["item"]
        program = self.start_with_list(service)
        service.velkorctl("open", str(posting["id"]))
        program.wait_for_text(service.shown(posting["id"])["description"])
        self.desktop.press("ctrl+p")
        program.wait_for("label", profile["name"])
        program.wait_for("label", f"{profile['spots']:n}")
        program.press_button("Write a message")
        wait_until(lambda: program.text_of("text", "To") == profile["name"], "a message is begun")
        self.quit(program)

    def test_a_failure_is_said_in_place_of_the_profile(self):
        service = self.service_with_cache()
        posting = service.listed()[3]
        program = self.start_with_list(service)
        service.velkorctl("open", str(posting["id"]))
        program.wait_for_text(service.shown(posting["id"])["description"])
        service.command("/fault?path=*&kind=database")
        self.desktop.press("ctrl+p")
        program.wait_for_text("Database-storing")
        self.quit(program)


if __name__ == "__main__":
    FrontEndCase.build = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
