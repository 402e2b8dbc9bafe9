# SPDX-License-Identifier: LGPL-2.1-or-later
"""Uses the desktop front end as a person does: by its keys and by what is on the screen.

usage: velkor_test.py BUILD_DIRECTORY [TEST ...]
"""
import json
import os
import pathlib
import signal
import subprocess
import sys
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent))
from desktop import PASSWORD, PATIENCE, Program, wait_until  # noqa: E402
from front_end import FrontEndCase, POSTINGS, ids_of  # noqa: E402


class FrontEnd(FrontEndCase):
    def test_the_list_shows_what_velkorctl_lists(self):
        service = self.service_with_cache()
        expected = ids_of(service.listed())
        program = self.start(service)
        program.wait_for_rows(expected)
        program.wait_for_text(f"{len(expected)} spots")
        self.quit(program)

    def test_a_search_narrows_the_list(self):
        service = self.service_with_cache()
        expected = ids_of(service.listed("--title", "de v"))
        self.assertTrue(0 < len(expected) < len(service.listed()))
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        self.search("de v")
        program.wait_for_rows(expected)
        self.desktop.press("Escape")
        program.wait_for_rows(ids_of(service.listed()))
        self.search("no title holds this")
        program.wait_for_text("Nothing found")
        self.quit(program)

    def test_a_category_narrows_the_list(self):
        service = self.service_with_cache()
        expected = ids_of(service.listed("--category", "Geluid"))
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        self.desktop.press("alt+1")
        for _ in range(20):
            if program.rows() == expected:
                break
            self.desktop.press("Down", "space")
            time.sleep(0.1)
        program.wait_for_rows(expected)
        self.quit(program)

    def test_conditions_narrow_the_list(self):
        service = self.service_with_cache()
        items = service.listed()
        poster = items[0]["poster"]
        expected = [item["id"] for item in items if poster.lower() in item["poster"].lower()]
        self.assertTrue(0 < len(expected) < len(items))
        program = self.start(service)
        program.wait_for_rows(ids_of(items))
        self.desktop.press("ctrl+shift+f", "Tab", "Tab")
        program.wait_for_focus("text", "Poster")
        self.desktop.type(poster)
        program.wait_for_rows(expected)
        hidden = next(item["id"] for item in items if item["id"] not in expected)
        service.velkorctl("open", str(hidden))
        program.wait_for_text("Not in the list: it is not by the chosen poster.")
        program.press_button("Show it in the list")
        program.wait_for_rows(ids_of(items))
        self.quit(program)

    def test_only_the_watchlist_is_listed(self):
        service = self.service_with_cache()
        items = service.listed()
        program = self.start(service)
        program.wait_for_rows(ids_of(items))
        service.velkorctl("open", str(items[3]["id"]))
        program.wait_for("push button", "Close the spot")
        self.desktop.press("ctrl+d")
        program.wait_for_text("Put on the watchlist")
        self.desktop.press("ctrl+shift+f", "Tab", "space")
        program.wait_for_text("Found by a watcher")
        self.desktop.press("Down", "Down", "Return")
        program.wait_for_rows([items[3]["id"]])
        self.desktop.press("ctrl+d")
        program.wait_for_text("Nothing found")
        self.desktop.press("ctrl+shift+f")
        program.wait_for_rows(ids_of(items))
        self.quit(program)

    def test_an_opened_posting_shows_what_the_server_tells(self):
        service = self.service_with_cache()
        posting = service.listed()[5]
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        self.search(posting["title"])
        program.wait_for_rows([posting["id"]])
        self.desktop.press("Return", "Return")
        program.wait_for_text(service.shown(posting["id"])["description"])
        self.desktop.press("Escape")
        wait_until(lambda: not program.find("push button", "Close the spot"), "the posting is closed")
        self.quit(program)

    def test_an_update_brings_what_is_new(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        added = service.command("/posting?Title=Een+nieuwe+haven&Cat=0&SCat=0&Tags=|a0|&Poster=anna")
        self.desktop.press("F5")
        program.wait_for_text("1 spot received.")
        wait_until(lambda: added["id"] in (program.rows() or []), "the new posting is listed")
        self.quit(program)
        self.assertIn(added["id"], ids_of(service.listed()))

    def text_of_the_update(self, program, beginning):
        """All that the bar of the update says, once it begins so."""
        program.wait_for_text(beginning)
        return program.name_of("label", beginning)

    def test_an_update_tells_what_is_new_and_what_watchers_matched(self):
        service = self.service_with_cache()
        service.velkorctl("watchers", "add", "walrus")
        service.velkorctl("watchers", "add", "zeemeeuw")
        program = self.start_with_list(service)
        for title in ("Een+nieuwe+walrus", "De+oude+zeemeeuw", "De+walrus+bij+nacht"):
            service.command(f"/posting?Title={title}&Cat=0&SCat=0&Tags=|a0|&Poster=anna")
        service.command("/advance?seconds=1&updated=1&deleted=1")
        self.desktop.press("F5")
        told = self.text_of_the_update(program, "5 spots received. ")
        self.assertTrue(told.startswith("5 spots received. 3 are new, 1 has changed, 1 has been deleted."), told)
        program.wait_for("label", "“walrus” matches 2 spots: De walrus bij nacht; Een nieuwe walrus")
        program.wait_for("label", "“zeemeeuw” matches 1 spot: De oude zeemeeuw")
        self.quit(program)

    def test_an_update_tells_what_aged_out_and_which_setting_decided(self):
        service = self.service_with_cache()
        service.velkorctl("config", "set", "verwijderPostsNaXDagen", "0")  # 7 days
        before = set(ids_of(service.listed()))
        program = self.start_with_list(service)
        service.command("/posting?Title=Een+nieuwe+haven&Cat=0&SCat=0&Tags=|a0|&Poster=anna")
        self.desktop.press("F5")
        told = self.text_of_the_update(program, "1 spot received. 1 is new.")
        old = before - set(ids_of(service.listed()))
        self.assertTrue(1 < len(old) < len(before))
        self.assertIn(f"{len(old)} spots have been removed, as they were older than 7 days "
                      "(the age limit in the settings).", told)
        self.assertNotIn("deleted", told)
        self.quit(program)

    def test_an_update_that_would_empty_the_list_asks_first(self):
        service = self.service(now=int(time.time()) - 100 * 86400)
        service.velkorctl("update")
        before = ids_of(service.listed())
        program = self.start_with_list(service)
        added = service.command("/posting?Title=Een+nieuwe+haven&Cat=0&SCat=0&Tags=|a0|&Poster=anna")
        asked = len(service.requests("/3.7.3/xml.php"))
        self.desktop.press("F5")
        program.wait_for("label", f"The update would remove all {len(before)} spots that are not on the watchlist: "
                         "they are older than 14 days, the age limit in the settings. "
                         "Is the clock of this computer right?")
        self.desktop.press("alt+s")
        program.wait_for("text", "Port of the proxy")
        self.desktop.press("Escape")
        program.wait_for_rows(before)
        self.assertEqual(len(service.requests("/3.7.3/xml.php")), asked)
        self.desktop.press("alt+n")
        wait_until(lambda: not program.find("push button", "Not now"), "the question is gone")
        self.desktop.press("F5")
        program.wait_for("push button", "Update anyway")
        self.desktop.press("alt+u")
        program.wait_for_text("1 spot received.")
        program.wait_for_rows([added["id"]])
        self.assertIsNone(program.find("push button", "Update anyway"))
        self.quit(program)

    def test_other_programs_open_postings_in_the_one_instance(self):
        service = self.service_with_cache()
        posting = ids_of(service.listed())[7]
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        service.velkorctl("open", str(posting))
        program.wait_for_text(service.shown(posting)["description"])
        second = Program(service)
        self.addCleanup(second.kill)
        self.assertEqual(second.wait(), 0)
        self.quit(program)

    def test_the_watchlist_changes_and_changes_back(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        posting = ids_of(service.listed())[3]
        service.velkorctl("open", str(posting))
        program.wait_for("push button", "Close the spot")
        self.desktop.press("ctrl+d")
        program.wait_for_text("Put on the watchlist")
        wait_until(lambda: self.watched(service) == [posting], "the posting is watched")
        self.desktop.press("ctrl+z")
        wait_until(lambda: self.watched(service) == [], "the posting is no longer watched")
        self.quit(program)

    def watched(self, service):
        """From the file, which the front end writes."""
        settings = (pathlib.Path(self.desktop.environment["HOME"]) / ".velkor/velkor.conf").read_text()
        return [int(line.partition("=")[2]) for line in settings.splitlines()
                if line.startswith("watchlist=") and line.partition("=")[2]]

    def test_a_reaction_is_sent(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        posting = ids_of(service.listed())[1]
        service.velkorctl("open", str(posting))
        program.wait_for_text(service.shown(posting)["description"])
        self.desktop.press("alt+3")
        self.desktop.type("Dank je wel")
        self.desktop.press("ctrl+Return")
        wait_until(lambda: "Dank je wel" in [reaction["body"] for reaction in
                                             service.shown(posting)["reactions"]], "it is on the server")
        self.quit(program)

    def open_posting(self, service, program, posting):
        service.velkorctl("open", str(posting))
        program.wait_for_text(service.shown(posting)["description"])

    def test_kudos_are_given_once_and_refused_the_second_time(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        posting = ids_of(service.listed())[4]
        self.open_posting(service, program, posting)
        self.desktop.press("ctrl+k")
        program.wait_for_text("Kudos given")
        self.assertEqual(self.parameters(service, "/3.7.3/xml-kudos.php", "mode", "id", "kudos"),
                         [("give", str(posting), "1")])
        self.desktop.press("ctrl+k")
        program.wait_for_text("The server already has this from you.")
        self.assertEqual(len(service.requests("/3.7.3/xml-kudos.php")), 2)
        self.quit(program)

    def test_the_moderators_are_warned(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        posting = ids_of(service.listed())[4]
        self.open_posting(service, program, posting)
        for told in ("The moderators have been warned", "The server already has this from you."):
            self.desktop.press("ctrl+shift+m")
            program.wait_for_focus("text", "What is wrong with this spot?")
            self.desktop.type("dubbel")
            self.desktop.press("Return")
            program.wait_for_text(told)
            self.assertEqual(self.parameters(service, "/3.7.3/xml-warn.php", "id", "forumid", "reason")[-1],
                             (str(posting), "0", "dubbel"))
        self.assertEqual(len(service.requests("/3.7.3/xml-warn.php")), 2)
        self.quit(program)

    def parameters(self, service, path, *names):
        """Of the requests for that path, the parameters of these names."""
        return [tuple(parameter["value"] for name in names for parameter in request["parameters"]
                      if parameter["name"] == name) for request in service.requests(path)]

    def test_the_list_is_saved(self):
        service = self.service_with_cache()
        program = self.start(service)
        expected = ids_of(service.listed("--title", "de v"))
        program.wait_for_rows(ids_of(service.listed()))
        self.search("de v")
        program.wait_for_rows(expected)
        file = pathlib.Path(self.desktop.environment["HOME"]) / "spots.json"
        self.desktop.press("ctrl+s")
        program.wait_for_focus("text", "Name:")
        self.desktop.press("ctrl+a")
        self.desktop.type(str(file))
        self.desktop.press("Return")
        program.wait_for_text("Saved: ")
        self.assertEqual(ids_of(json.loads(file.read_text())["items"]), expected)
        self.quit(program)

    def test_a_first_start_asks_for_the_account(self):
        service = self.service(account=False)
        program = self.start(service)
        program.wait_for_text("Welcome to Velkor")
        self.desktop.type("demo")
        self.desktop.press("Tab")
        self.desktop.type(PASSWORD)
        self.desktop.press("Return")
        program.wait_for_text(f"{POSTINGS} spots received.")
        program.wait_for_rows(ids_of(service.listed()))
        self.quit(program)

    def test_it_ends_while_the_server_says_nothing(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        service.command("/fault?path=/3.7.3/xml.php&kind=stall")
        self.desktop.press("F5")
        program.wait_for_text("Asking the server what is new")
        wait_until(lambda: service.asked_for("/3.7.3/xml.php"), "the server has been asked")
        self.quit(program)

    def test_an_update_that_is_stopped_changes_nothing(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        service.command("/fault?path=/3.7.3/xml.php&kind=stall&times=1")
        self.desktop.press("F5")
        wait_until(lambda: service.asked_for("/3.7.3/xml.php"), "the server has been asked")
        self.desktop.press("ctrl+period")
        program.wait_for_text("The update was stopped.")
        self.assertEqual(ids_of(service.listed()), program.rows())
        service.command("/posting?Title=Een+nieuwe+haven&Cat=0&SCat=0&Tags=|a0|&Poster=anna")
        self.desktop.press("F5")
        program.wait_for_text("1 spot received.")
        self.quit(program)

    def test_it_ends_while_a_posting_is_waited_for(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        path = "/3.7.3/xml-posts.php"
        service.command(f"/fault?path={path}&kind=stall")
        service.velkorctl("open", str(ids_of(service.listed())[2]))
        wait_until(lambda: service.asked_for(path), "the server has been asked")
        self.quit(program)

    def test_a_signal_ends_it_properly(self):
        program = self.start(self.service_with_cache())
        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.wait(), 0, program.printed())

    def test_the_sorting_is_remembered(self):
        service = self.service_with_cache()
        program = self.start(service)
        program.wait_for_rows(ids_of(service.listed()))
        self.quit(program)
        state = self.desktop.environment["HOME"] + "/.config/velkor/window.ini"
        text = pathlib.Path(state).read_text()
        self.assertIn("sort=date", text)
        pathlib.Path(state).write_text(text.replace("sort=date", "sort=rating"))
        ratings = {item["id"]: item["rating"] for item in service.listed()}
        again = self.start(service)
        wait_until(lambda: self.is_sorted([ratings[row] for row in again.rows() or []]),
                   "the best rated come first")
        self.quit(again)

    def is_sorted(self, ratings):
        return len(ratings) > 1 and ratings == sorted(ratings, reverse=True)

    def test_the_heartbeat_is_printed(self):
        service = self.service_with_cache()
        program = self.start(service, "--heartbeat")
        program.wait_for_rows(ids_of(service.listed()))
        self.quit(program)
        self.assertRegex(program.printed(), r"(?m)^heartbeat: longest gap \d+ ms$")
        self.assertRegex(program.printed(), r"(?m)^heartbeat: list painted after \d+ ms at most, 1 times$")


class CommandLine(unittest.TestCase):
    """Without a display."""

    def run_velkor(self, *words):
        environment = {"PATH": os.defpath, "LC_ALL": "C.UTF-8", "HOME": "/nonexistent"}
        return subprocess.run([FrontEndCase.build / "bin/velkor", *words], env=environment, capture_output=True,
                              text=True, timeout=PATIENCE)

    def test_help_and_version(self):
        run = self.run_velkor("--help")
        self.assertEqual(run.returncode, 0)
        self.assertIn("--heartbeat", run.stdout)
        self.assertRegex(self.run_velkor("--version").stdout, r"^velkor \d+\.\d+\.\d+\n$")

    def test_an_unknown_option_is_an_error(self):
        for words in (["--nothing"], ["42"]):
            run = self.run_velkor(*words)
            self.assertEqual(run.returncode, 2)
            self.assertTrue(run.stderr.startswith("velkor: "))


if __name__ == "__main__":
    FrontEndCase.build = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
