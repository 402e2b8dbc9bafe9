# SPDX-License-Identifier: LGPL-2.1-or-later
"""check_documentation.py finds every kind of omission."""
import pathlib
import unittest

import check_documentation

GOOD = """
/**
 * @file
 * Numbers. Threads: one at
 * a time, hand-over allowed.
 */

/**
 * Adds. Threads: any, own data.
 * @param left   a number
 * @param right  a number, over
 *               two lines
 * @return the sum
 */
gint32 add(gint32 left,
           const char *right);

/** Nothing to add. */
void nothing(void);

/**
 * Called.
 * @param data  handed on
 * @return ignored
 */
typedef gint (*Callback)(gpointer data);

/** A record. */
typedef struct _Record {
  gint32 first; /**< one */
  char *second; /**< two,
                     over two lines */
} Record;
"""


class CheckDocumentation(unittest.TestCase):
    def assert_faults(self, text, *expected):
        self.assertEqual(list(check_documentation.faults(text)), list(expected))

    def test_accepts_what_is_documented(self):
        self.assert_faults(GOOD)

    def test_refuses_a_function_without_comment(self):
        self.assert_faults("int *bare(void);\n", "bare: no comment")

    def test_refuses_a_parameter_that_is_left_out(self):
        self.assert_faults(GOOD.replace("@param right", "right"),
                           "add: nothing about the parameter right")

    def test_refuses_a_result_that_is_left_out(self):
        self.assert_faults(GOOD.replace("@return ignored", ""), "Callback: nothing about the result")

    def test_refuses_a_field_without_comment(self):
        self.assert_faults(GOOD.replace(" /**< one */", ""), "field first: no comment")

    def test_refuses_a_function_about_whose_threads_nothing_is_said(self):
        self.assert_faults(GOOD.replace("Numbers. Threads:", "Numbers."),
                           "nothing: nothing about threads")

    def test_refuses_other_words_about_threads(self):
        self.assert_faults(GOOD.replace("any, own data", "anyone"), "add: nothing about threads")


if __name__ == "__main__":
    unittest.main()
