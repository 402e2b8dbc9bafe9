/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A core with tags, newsgroups and an empty event list, and postings to display. */
#ifndef VELKOR_TESTS_UNIT_FILTER_DISPLAY_FIXTURE_H
#define VELKOR_TESTS_UNIT_FILTER_DISPLAY_FIXTURE_H

#include <memory>
#include <string>

#include <velkor/zox_event.h>
#include <velkor/zox_filter.h>

#include "support/owned_records.h"
#include "tests/support/layer_fixtures.h"

namespace velkor::test {

class DisplayTest : public LibraryTest {
protected:
  DisplayTest();

  /** A posting of which only the id is known. */
  static OwnedEvent bare_event(gint32 postId = -1);
  /** A posting of which everything is known, in newsgroups 17 (alt.binaries.tv) and 4 (comp.os). */
  static OwnedEvent full_event();

  static void add_group(guint32 id, const char *name);
  /** Puts a copy of the posting into the list. */
  static void add_event(const ZoxEvent &event);
  /** Lets filters accept postings of the four main categories. */
  static void show_every_category();

  static std::string print(const ZoxEvent &event, bool indent = false, gint32 position = 0,
                           ZoxTextFunc textFunc = nullptr);
};

/** The text as a string; it is freed. */
std::string take(ZoxString *text);
std::string golden(const std::string &name);
/** The content of the first element of that name, without its CDATA section. */
std::string content_of(const std::string &xml, const std::string &element);
/** How often `part` occurs in `text`. */
std::size_t count_of(const std::string &text, const std::string &part);
/** A conversion: the text in braces. */
ZoxString *in_braces(ZoxString *text);

}  // namespace velkor::test

#endif
