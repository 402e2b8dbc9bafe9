/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading documents of postings in the tests. */
#ifndef VELKOR_TESTS_UNIT_STORE_READING_H
#define VELKOR_TESTS_UNIT_STORE_READING_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <velkor/zox_types.h>

namespace velkor::test {

/** What became of a document. */
struct Reading {
  ZoxErrorCode code;
  std::optional<std::string> error;
  std::vector<std::string> postings;  // described, in the order of the document
};

/** The content of a file of the fixtures. */
std::string fixture(std::string_view name);

/** Reads with zox_events_parse in list mode, without the dump. */
Reading read_events(std::string_view document);

/** Reads through a tree, each posting with zox_events_parse_event; nothing when it is no document.
 */
std::optional<std::vector<std::string>> read_by_tree(std::string_view document);

}  // namespace velkor::test

#endif
