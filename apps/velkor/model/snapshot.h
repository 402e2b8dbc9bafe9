/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Everything that the window shows of the cache, as it was at one moment; never changed. */
#ifndef VELKOR_APP_MODEL_SNAPSHOT_H
#define VELKOR_APP_MODEL_SNAPSHOT_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "model/bitmap.h"
#include "model/labels.h"
#include "model/posting_table.h"

namespace velkor::app {

/** A place in the tree of categories: all postings, a main category, or a filter of the user's. */
struct TreeEntry {
  enum class Kind { everything, category, filter };

  Kind kind = Kind::everything;
  std::string name{};
  std::int32_t category = -1;
  std::uint32_t count = 0;
  std::uint32_t new_count = 0;
  Bitmap rows{};

  /** Counts the row as one of the entry's. */
  void insert(Row row, bool is_new) {
    rows.insert(row);
    ++count;
    new_count += is_new ? 1 : 0;
  }
};

/** The words for the numbers in a table. */
struct Vocabulary {
  std::map<std::pair<std::int32_t, std::int32_t>, std::string> categories;
  std::map<std::int32_t, std::string> states;
  std::unordered_map<std::string, std::string> newsgroups;
};

struct Snapshot {
  PostingTable table{};
  /** The first entry holds everything; each main category stands before its filters. */
  std::vector<TreeEntry> tree{};
  Labels tags{};        // by the names of the tags
  Labels newsgroups{};  // by the names of the newsgroups
  Vocabulary words{};
  std::unordered_set<std::int32_t> watched{};  // the watchlist, by id
  bool has_account = false;

  [[nodiscard]] const std::string &category_name(Row row) const noexcept;
  [[nodiscard]] const std::string &status_name(Row row) const noexcept;
};

using SharedSnapshot = std::shared_ptr<const Snapshot>;

}  // namespace velkor::app

#endif
