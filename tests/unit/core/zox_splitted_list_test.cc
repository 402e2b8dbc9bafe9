/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_splitted_list.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velkor/zox_string.h>

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

/** A list that frees itself. */
class List {
public:
  explicit List(ZoxSplittedList *list) : list_(list) {}
  List(const List &) = delete;
  List &operator=(const List &) = delete;
  ~List() { zox_splitted_list_free(&list_); }

  [[nodiscard]] ZoxSplittedList *get() const { return list_; }
  [[nodiscard]] std::vector<std::string> items() const {
    std::vector<std::string> items;
    for (const ZoxString *item : Items<ZoxString>(list_))
      items.emplace_back(view_of(item));
    return items;
  }
  [[nodiscard]] std::string stored() const {
    const OwnedString text(zox_splitted_list_concat(list_));
    return std::string(view_of(text.get()));
  }

private:
  ZoxSplittedList *list_;
};

using Strings = std::vector<std::string>;

TEST(SplittedList, SplitsAtEveryBarAndDropsEmptyPieces) {
  EXPECT_EQ(List(zox_splitted_list_split("||a||b|")).items(), (Strings{"a", "b"}));
  EXPECT_EQ(List(zox_splitted_list_split("a|b c")).items(), (Strings{"a", "b c"}));
  EXPECT_EQ(List(zox_splitted_list_split("a")).items(), Strings{"a"});
}

TEST(SplittedList, IsNullWhenNothingRemains) {
  EXPECT_EQ(zox_splitted_list_split("|"), nullptr);
  EXPECT_EQ(zox_splitted_list_split("|||"), nullptr);
  EXPECT_EQ(zox_splitted_list_split(""), nullptr);
  EXPECT_EQ(zox_splitted_list_split(nullptr), nullptr);
}

TEST(SplittedList, IsStoredBetweenBars) {
  EXPECT_EQ(List(zox_splitted_list_split("a|b")).stored(), "|a|b|");
  EXPECT_EQ(List(zox_splitted_list_split("a")).stored(), "|a|");
  EXPECT_EQ(List(nullptr).stored(), "|");
}

TEST(SplittedList, IsStoredAsOneBarWhenItsOnlyItemIsEmpty) {
  EXPECT_EQ(List(g_slist_append(nullptr, zox_string_new(""))).stored(), "|");
}

TEST(SplittedList, IsClosedWhenTwoItemsAreEmpty) {
  GSList *list = g_slist_append(nullptr, zox_string_new(""));
  EXPECT_EQ(List(g_slist_append(list, zox_string_new(""))).stored(), "|||");
}

TEST(SplittedList, IsDuplicatedDeeplyInOrder) {
  const List original(zox_splitted_list_split("a|b|c"));
  const List copy(zox_splitted_list_duplicate(original.get()));
  EXPECT_EQ(copy.items(), original.items());
  EXPECT_NE(copy.get()->data, original.get()->data);
  EXPECT_EQ(zox_splitted_list_duplicate(nullptr), nullptr);
}

TEST(SplittedList, LeavesNullBehindWhenFreed) {
  ZoxSplittedList *list = zox_splitted_list_split("a|b");
  zox_splitted_list_free(&list);
  EXPECT_EQ(list, nullptr);
  zox_splitted_list_free(&list);
  EXPECT_EQ(list, nullptr);
}

}  // namespace
}  // namespace velkor
