/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/snapshot.h"

namespace velkor::app {
namespace {

template <typename Words, typename Key>
const std::string &word_for(const Words &words, const Key &key) noexcept {
  static const auto &none = *new std::string();  // never destroyed: a worker may still read it
  const auto place = words.find(key);
  return place == words.end() ? none : place->second;
}

}  // namespace

const std::string &Snapshot::category_name(Row row) const noexcept {
  return word_for(words.categories, std::pair(table.category(row), table.sub_category(row)));
}

const std::string &Snapshot::status_name(Row row) const noexcept {
  return word_for(words.states, table.status(row));
}

}  // namespace velkor::app
