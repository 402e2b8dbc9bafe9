# SPDX-License-Identifier: LGPL-2.1-or-later
"""Every text of the window is translated into every language that there is."""
import pathlib
import re
import subprocess
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXTRACT = ["xgettext", "--files-from=po/POTFILES", "--from-code=UTF-8", "--keyword=_", "--keyword=N_",
           "--keyword=counted:1,2", "--keyword=translatable", "--output=-"]
SETTINGS = "src/core/settings_table.cc"  # what the library says about them
TRANSLATION = re.compile(r'^msgid ((?:".*"\n)+)(?:msgid_plural (?:".*"\n)+)?((?:msgstr.*\n(?:".*"\n)*)+)',
                         re.MULTILINE)


def catalogue(text):
    """The texts with their translations, both as they stand in the file."""
    return {"".join(re.findall(r'"(.*)"', text)): translation
            for text, translation in TRANSLATION.findall(text + "\n")}


class Translations(unittest.TestCase):
    def setUp(self):
        extracted = subprocess.run(EXTRACT, cwd=ROOT, check=True, capture_output=True, text=True).stdout
        self.texts = set(catalogue(extracted)) - {""}
        self.assertGreater(len(self.texts), 50)

    def test_every_file_with_texts_is_looked_at(self):
        named = set((ROOT / "po/POTFILES").read_text().split()) - {SETTINGS}
        found = {str(path.relative_to(ROOT)) for path in (ROOT / "apps/velkor").rglob("*.cc")
                 if re.search(r"\bN?_\(|\bcounted\(", path.read_text())}
        self.assertEqual(found, named)

    def test_each_language_has_every_text_and_no_other(self):
        languages = list((ROOT / "po").glob("*.po"))
        self.assertTrue(languages)
        for language in languages:
            with self.subTest(language=language.stem):
                known = catalogue(language.read_text())
                self.assertEqual(set(known) - {""}, self.texts)
                for text, translation in known.items():
                    for form in re.split(r"^msgstr", translation, flags=re.MULTILINE)[1:]:
                        self.assertTrue("".join(re.findall(r'"(.*)"', form)), text)

    def test_the_catalogues_are_well_formed(self):
        for language in (ROOT / "po").glob("*.po"):
            run = subprocess.run(["msgfmt", "--check", "--output-file=/dev/null", language],
                                 capture_output=True, text=True)
            self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_numbers_stay_in_their_places(self):
        for language in (ROOT / "po").glob("*.po"):
            for text, translation in catalogue(language.read_text()).items():
                for form in re.split(r"^msgstr", translation, flags=re.MULTILINE)[1:]:
                    self.assertEqual(set(re.findall(r"%\d", form)), set(re.findall(r"%\d", text)))


if __name__ == "__main__":
    unittest.main()
