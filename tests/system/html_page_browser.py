#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Opens the page of "velkorctl list --format html" in a headless Chromium.

usage: html_page_browser.py VELKORCTL

A cache is filled with ordinary and with hostile postings; the page must show the ordinary ones in
order, run nothing of the hostile ones, stay where it is, and hide no row.
"""

import contextlib
import gzip
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import urllib.request
from xml.sax.saxutils import escape

VELKORCTL = ""
MARK = "document.documentElement.dataset.ran=1"

ATTACKS = [
    f"<script>{MARK}</script>",
    f"<img src=x onerror=\"{MARK}\">",
    f"\"><svg onload=\"{MARK}\">",
    f"' onmouseover='{MARK}' autofocus onfocus='{MARK}",
    f"<iframe srcdoc=\"<script>parent.{MARK}</script>\"></iframe>",
    "<meta http-equiv=\"refresh\" content=\"0;url=data:text/html,away\">",
    "<base href=\"http://127.0.0.1:1/\">",
    "<style>.event{display:none}</style>",
    "<link rel=stylesheet href=\"data:text/css,.event{display:none}\">",
    f"</h3></div></div></div></main></body><script>{MARK}</script>",
    f"<a href=\"javascript:{MARK}\" autofocus onfocus=\"{MARK}\">link</a>",
    f"<form action=\"http://127.0.0.1:1/\"><button formaction=\"javascript:{MARK}\" autofocus>",
    f"<object data=\"data:text/html,<script>{MARK}</script>\"></object>",
    f"<details open ontoggle=\"{MARK}\">x</details>",
    f"<template><script>{MARK}</script></template><noscript><style>.event{{display:none}}</style>",
    f"<math><mtext><table><mglyph><style><img src=x onerror=\"{MARK}\">",
    f"javascript:{MARK}//",
    f"http://a'><script>{MARK}</script><b x='",
    "<!-- an open comment",
    "<plaintext>",
    f"&lt;script&gt;{MARK}&lt;/script&gt;",
    "<textarea><xmp><title>",
    f"<xsl:value-of xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\" select=\"{MARK}\"/>",
    "<div style=\"position:fixed;inset:0;background:white;z-index:9999\">cover</div>",
]
BREAKING = [
    f"]]></Title><script xmlns=\"http://www.w3.org/1999/xhtml\">{MARK}</script><Title><![CDATA[",
    "]]></Title></Event><!-- ",
    f"]]></TagInfo><TagInfo><![CDATA[<script>{MARK}</script>",
    "]]></Title></Event><Event><PostID>1</PostID><Title><![CDATA[forged",
]
FIELDS = ["FName", "Title", "Poster", "Link", "Tag"]


def posting(number, status=0, cat=0, sub=0, **texts):
    values = {"FName": "bestand", "Title": f"Titel {number:04}", "Poster": "iemand",
              "Link": "example.org/pagina", "Tag": "vrij"}
    values.update(texts)
    fields = "".join(f"<{name}>{escape(text)}</{name}>" for name, text in values.items())
    return (f"<Event Code=\"1\"><PostID>{number}</PostID><Stamp>{4000000000 - 2**32 + number}</Stamp>"
            f"<Updated>0</Updated><Status>{status}</Status><Groups>|1|</Groups><Rating>10</Rating>"
            f"<Cat>{cat}</Cat><SCat>{sub}</SCat><Tags>|a0|d1|</Tags>{fields}</Event>")


class Browser:
    """A minimal WebDriver client."""

    def __init__(self):
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True)
        port = None
        for line in self.driver.stdout:
            if match := re.search(r"started successfully on port (\d+)", line):
                port = match.group(1)
                break
        assert port, "chromedriver did not start"
        self.base = f"http://127.0.0.1:{port}/session"
        arguments = ["--headless=new", "--disable-gpu", "--no-sandbox", "--disable-dev-shm-usage",
                     "--window-size=1000,800"]
        options = {"capabilities": {"alwaysMatch": {"goog:chromeOptions": {"args": arguments}}}}
        self.base += "/" + self.call("", options)["sessionId"]

    def call(self, path, data=None):
        body = None if data is None else json.dumps(data).encode()
        request = urllib.request.Request(self.base + path, data=body,
                                         headers={"Content-Type": "application/json"})
        with urllib.request.urlopen(request, timeout=60) as reply:
            return json.load(reply)["value"]

    def open(self, path):
        self.call("/url", {"url": path.as_uri()})

    def run(self, script):
        return self.call("/execute/sync", {"script": script, "args": []})

    def url(self):
        return self.call("/url")

    def close(self):
        with contextlib.suppress(OSError):
            request = urllib.request.Request(self.base, method="DELETE")
            urllib.request.urlopen(request, timeout=10)
        self.driver.terminate()
        self.driver.wait()


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name)

    def show(self, postings, *options):
        """Opens the page for these postings; returns its path."""
        cache = self.directory / "cache"
        cache.mkdir(mode=0o700, exist_ok=True)
        with gzip.open(cache / "velkor.posts.gz", "wb") as file:
            file.write(("<?xml version=\"1.0\"?><Events>" + "".join(postings) + "</Events>").encode())
        with gzip.open(cache / "velkor.groups.gz", "wb") as file:
            file.write(b"<Groups><Group ID=\"1\"><Name>alt.binaries.test</Name></Group></Groups>")
        (cache / "velkor.conf").write_text("username=gebruiker\npassword=geheim\n")
        environment = dict(os.environ, HOME=str(self.directory), TZ="UTC", LC_ALL="C.UTF-8")
        environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
        done = subprocess.run([VELKORCTL, "--cache-dir", str(cache), "list", "--format", "html",
                               *options], env=environment, capture_output=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        page = self.directory / "page.html"
        page.write_bytes(done.stdout)
        self.browser.open(page)
        return page

    def visible_rows(self):
        # What is out of view has no height otherwise.
        self.browser.run("for (const part of document.querySelectorAll('.part'))"
                         " part.style.contentVisibility = 'visible'")
        return self.browser.run("return Array.from(document.querySelectorAll('div.event'))"
                                ".filter(row => row.offsetHeight > 20).map(row => +row.dataset.id)")

    def assert_unharmed(self, page):
        self.assertEqual(self.browser.url(), page.as_uri())
        self.assertIsNone(self.browser.run("return document.documentElement.dataset.ran || null"))
        foreign = self.browser.run(
            "const known = new Set('HTML HEAD META TITLE STYLE SCRIPT BODY HEADER MAIN SECTION H1 H2"
            " H3 P OL LI DIV SPAN DETAILS SUMMARY TABLE TBODY TR TD B A BR INPUT SELECT OPTION'"
            ".split(' '));"
            "return Array.from(document.querySelectorAll('*')).map(e => e.tagName)"
            ".filter(name => !known.has(name))")
        self.assertEqual(foreign, [])
        counts = self.browser.run("return ['script', 'style', 'input'].map("
                                  "name => document.querySelectorAll(name).length)")
        self.assertEqual(counts, [1, 1, 1])
        links = self.browser.run("return Array.from(document.querySelectorAll('a'))"
                                 ".map(a => a.protocol)")
        self.assertTrue(set(links) <= {"http:", "https:"}, links)

    def test_orders_and_counts(self):
        postings = [posting(n, Title=title) for n, title in
                    enumerate(["delta", "alfa", "charlie", "bravo"], start=1)]
        self.show(postings, "--sort", "title")
        self.assertEqual(self.visible_rows(), [2, 4, 3, 1])
        self.show(postings, "--sort", "title", "--reverse")
        self.assertEqual(self.visible_rows(), [1, 3, 4, 2])
        self.assertIn("4 postings", self.browser.run("return document.body.textContent"))
        self.assertIsNone(self.browser.run("return document.querySelector('.notice')"))

    def test_links_lead_to_the_poster_s_page(self):
        self.show([posting(1, Link="example.org/pagina")])
        links = self.browser.run("return Array.from(document.querySelectorAll('a')).map(a => a.href)")
        self.assertEqual(links, ["http://example.org/pagina"])

    def test_search_hides_what_does_not_match(self):
        self.show([posting(1, Title="eerste"), posting(2, Title="tweede")])
        self.browser.run("const field = document.querySelector('input'); field.value = 'TWEE';"
                         "field.dispatchEvent(new Event('input'))")
        self.assertEqual(self.visible_rows(), [2])

    def set_value(self, selector, value):
        self.browser.run(f"const field = document.querySelector({json.dumps(selector)});"
                         f"field.value = {json.dumps(value)};"
                         "field.dispatchEvent(new Event('input'))")

    def choose(self, label, value):
        self.set_value(f"select[aria-label='{label}']", value)

    def count(self):
        return self.browser.run("return document.querySelector('.count').textContent.trim()")

    def test_the_count_follows_the_search(self):
        self.show([posting(1, Title="eerste"), posting(2, Title="tweede"), posting(3, Title="derde")])
        self.assertEqual(self.count(), "3 postings")
        self.set_value("input", "rde")
        self.assertEqual(self.count(), "1 van 3 postings")
        self.assertFalse(self.browser.run("return document.querySelector('.nothing').checkVisibility()"))
        self.set_value("input", "vierde")
        self.assertEqual(self.visible_rows(), [])
        self.assertEqual(self.count(), "0 van 3 postings")
        self.assertEqual(self.browser.run("return document.querySelector('.nothing').innerText"),
                         "Geen postings gevonden.")
        self.set_value("input", "")
        self.assertEqual(len(self.visible_rows()), 3)

    def test_filters_by_category_and_state(self):
        self.show([posting(1), posting(2, cat=0, sub=3), posting(3, cat=1, sub=4),
                   posting(4, status=1)])
        self.choose("Categorie", "Beeld")
        self.assertEqual(sorted(self.visible_rows()), [1, 2, 4])
        self.choose("Categorie", "Beeld/DVD")
        self.assertEqual(self.visible_rows(), [2])
        self.choose("Categorie", "Alle categorieën")
        self.choose("Status", "Aangekondigd")
        self.assertEqual(self.visible_rows(), [4])
        self.assertEqual(self.count(), "1 van 4 postings")

    def test_sorts(self):
        self.show([posting(1, Title="b", Poster="z"), posting(2, Title="É", Poster="y"),
                   posting(3, Title="a 10", Poster="x"), posting(4, Title="a 9", Poster="w")],
                  "--sort", "id")
        for order, wanted in [("Op titel", [4, 3, 1, 2]), ("Op poster", [4, 3, 2, 1]),
                              ("Nieuwste eerst", [4, 3, 2, 1]), ("Oudste eerst", [1, 2, 3, 4]),
                              ("Volgorde van de lijst", [1, 2, 3, 4])]:
            self.choose("Volgorde", order)
            self.assertEqual(self.visible_rows(), wanted, order)

    def test_sorts_beyond_one_part(self):
        self.show([posting(number) for number in range(1, 121)], "--sort", "id")
        self.choose("Volgorde", "Nieuwste eerst")
        self.assertEqual(self.visible_rows(), list(range(120, 0, -1)))

    def test_hides_the_heading_of_what_is_not_found(self):
        self.show([posting(1, Title="eerste"), posting(2, Title="tweede", cat=1, sub=4)],
                  "--per-category")
        headings = ("return Array.from(document.querySelectorAll('h2'))"
                    ".filter(h => h.offsetHeight > 0).map(h => h.textContent)")
        self.assertIn("Geluid (1)", self.browser.run(headings))
        self.set_value("input", "eerste")
        self.assertEqual(self.browser.run(headings), ["Beeld (1)"])

    def test_rows_tell_what_they_are(self):
        self.show([posting(1, Title="Titel")])
        row = self.browser.run("return document.querySelector('div.event').innerText")
        self.assertIn("Beeld/DivX", row)
        self.assertRegex(row, r"\d\d-\d\d-\d{4} \d\d:\d\d")
        self.assertEqual(self.browser.run("return document.querySelector('summary').ariaLabel"),
                         "Meer over Titel")
        roles = self.browser.run("return [document.querySelector('.events'),"
                                 " document.querySelector('.event')].map(e => e.role)")
        self.assertEqual(roles, ["list", "listitem"])

    def test_works_without_script(self):
        self.browser.call("/goog/cdp/execute", {
            "cmd": "Emulation.setScriptExecutionDisabled", "params": {"value": True}})
        self.addCleanup(self.browser.call, "/goog/cdp/execute", {
            "cmd": "Emulation.setScriptExecutionDisabled", "params": {"value": False}})
        self.show([posting(1, Title="eerste"), posting(2, Title="tweede")])
        elements = self.browser.call("/elements", {"using": "css selector", "value": "h3"})
        texts = [self.browser.call(f"/element/{next(iter(element.values()))}/text")
                 for element in elements]
        self.assertEqual(sorted(texts), ["eerste", "tweede"])
        self.assertEqual(self.browser.call("/elements", {"using": "css selector", "value": "input"}), [])

    def test_attacks_stay_text(self):
        postings = [posting(9000)]
        for field_number, field in enumerate(FIELDS):
            for attack_number, attack in enumerate(ATTACKS):
                number = 100 * (field_number + 1) + attack_number
                postings.append(posting(number, **{field: attack}))
        page = self.show(postings)
        self.assert_unharmed(page)
        self.assertEqual(len(self.visible_rows()), len(postings))
        titles = self.browser.run("return Array.from(document.querySelectorAll('h3'))"
                                  ".map(h => h.textContent)")
        for attack in ATTACKS:
            self.assertIn(attack, titles)
        self.assertIsNone(self.browser.run("return document.querySelector('.notice')"))

    def test_texts_that_break_the_document_are_announced(self):
        for attack in BREAKING:
            for field in FIELDS:
                with self.subTest(attack=attack, field=field):
                    page = self.show([posting(1), posting(2, **{field: attack}), posting(3)])
                    self.assert_unharmed(page)
                    notice = self.browser.run("const n = document.querySelector('.notice');"
                                              "return n && n.offsetHeight > 10 ? n.textContent : null")
                    rows = self.visible_rows()
                    self.assertTrue(notice or sorted(rows) == [1, 2, 3], rows)

    def test_fits_a_phone_and_the_dark(self):
        self.show([posting(1, Title="x" * 400)])
        self.browser.call("/window/rect", {"width": 500, "height": 800})
        self.assertTrue(self.browser.run(
            "return document.documentElement.scrollWidth <= window.innerWidth"))
        self.browser.call("/goog/cdp/execute", {
            "cmd": "Emulation.setEmulatedMedia",
            "params": {"features": [{"name": "prefers-color-scheme", "value": "dark"}]}})
        self.assertEqual(self.browser.run("return getComputedStyle(document.body).backgroundColor"),
                         "rgb(22, 22, 26)")


if __name__ == "__main__":
    VELKORCTL = sys.argv.pop(1)
    unittest.main(verbosity=2)
