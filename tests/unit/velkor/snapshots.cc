/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/unit/velkor/snapshots.h"

#include <memory>
#include <utility>

namespace velkor::app {

SharedSnapshot snapshot_of(const std::vector<PostingFields> &postings) {
  Snapshot snapshot;
  snapshot.tree = {{.kind = TreeEntry::Kind::everything},
                   {.kind = TreeEntry::Kind::category, .name = "Beeld", .category = 0},
                   {.kind = TreeEntry::Kind::filter, .name = "Nieuw", .category = 0}};
  const Labels::Number drama = snapshot.tags.add_name("Drama");
  const Labels::Number newsgroup = snapshot.newsgroups.add_name("binaries.beeld");
  for (const PostingFields &posting : postings) {
    snapshot.tags.begin_row();
    if (posting.id == 1 || posting.id == 4)
      snapshot.tags.add(drama);
    snapshot.newsgroups.begin_row();
    if (posting.id == 2)
      snapshot.newsgroups.add(newsgroup);
    const Row row = snapshot.table.add(posting);
    const bool is_new = (posting.marks & mark_new) != 0;
    snapshot.tree[0].insert(row, is_new);
    if (posting.category == 0)
      snapshot.tree[1].insert(row, is_new);
    if (posting.category == 0 && is_new)
      snapshot.tree[2].insert(row, is_new);
  }
  snapshot.table.complete();
  snapshot.words.categories = {
      {{0, 0}, "Beeld/DivX"}, {{0, 1}, "Beeld/WMV"}, {{1, 0}, "Applicaties"}};
  snapshot.words.states = {{0, "Ready"}, {1, "Aangekondigd"}};
  return std::make_shared<const Snapshot>(std::move(snapshot));
}

std::vector<std::int32_t> ids_of(const Snapshot &snapshot, const std::vector<Row> &rows) {
  std::vector<std::int32_t> ids;
  ids.reserve(rows.size());
  for (const Row row : rows)
    ids.push_back(snapshot.table.id(row));
  return ids;
}

}  // namespace velkor::app
