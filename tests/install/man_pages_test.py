# SPDX-License-Identifier: LGPL-2.1-or-later
"""The man pages are laid out without a warning, and velkor.conf(5) has every setting.

usage: man_pages_test.py SETTINGS_PAGE PAGE...
"""
import os
import pathlib
import re
import subprocess
import sys
import unittest

SETTINGS_PAGE, *PAGES = sys.argv[1:]
CONFIG_HEADER = pathlib.Path(__file__).resolve().parents[2] / "include/velkor/zox_config.h"


def laid_out(page):
    environment = os.environ | {"MANWIDTH": "80", "LC_ALL": "C.UTF-8", "MANROFFOPT": "-ww"}
    return subprocess.run(["man", "--warnings", "--encoding=UTF-8", "--local-file", page],
                          env=environment, check=True, capture_output=True, text=True)


class ManPages(unittest.TestCase):
    def test_no_page_brings_a_warning(self):
        for page in [SETTINGS_PAGE, *PAGES]:
            with self.subTest(page=page):
                run = laid_out(page)
                self.assertEqual(run.stderr, "")
                self.assertIn("SEE ALSO", re.sub(".\b", "", run.stdout))

    def test_each_field_of_the_settings_is_described(self):
        record = CONFIG_HEADER.read_text().partition("typedef struct _ZoxConfig {")[2]
        fields = re.findall(r"^  (?:gint32|guint32|gint64|ZoxString \*|GSList \*|ZoxSplittedList \*)\s*"
                            r"(\w+);", record.partition("} ZoxConfig;")[0], re.MULTILINE)
        self.assertGreater(len(fields), 30)
        text = laid_out(SETTINGS_PAGE).stdout
        for field in fields:
            if field != "firstTime":  # the only one that the file does not hold
                with self.subTest(field=field):
                    self.assertRegex(text, rf"(?m)^       {field}\b")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
