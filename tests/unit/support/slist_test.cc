/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/slist.h"

#include <string>

#include <gtest/gtest.h>

namespace velkor {
namespace {

int freed = 0;
void free_counted(char *text) {
  ++freed;
  g_free(text);
}
using Builder = ListBuilder<char, free_counted>;

TEST(ListBuilder, KeepsTheOrderOfItsItems) {
  Builder builder;
  builder.append(g_strdup("a"));
  builder.append(g_strdup("b"));
  GSList *list = builder.release();
  std::string joined;
  for (const char *item : Items<char>(list))
    joined += item;
  EXPECT_EQ(joined, "ab");
  EXPECT_TRUE(builder.empty());
  g_slist_free_full(list, g_free);
}

TEST(ListBuilder, FreesWhatNobodyTook) {
  freed = 0;
  {
    Builder builder;
    builder.append(g_strdup("a"));
    builder.append(g_strdup("b"));
  }
  EXPECT_EQ(freed, 2);
}

TEST(ListBuilder, StartsAgainAfterRelease) {
  Builder builder;
  builder.append(g_strdup("a"));
  g_slist_free_full(builder.release(), g_free);
  builder.append(g_strdup("b"));
  GSList *list = builder.release();
  EXPECT_EQ(g_slist_length(list), 1U);
  g_slist_free_full(list, g_free);
}

TEST(CellBuilder, LeavesTheItemsToTheirOwner) {
  char text[] = "a";
  CellBuilder<char>().append(text);
  EXPECT_STREQ(text, "a");
}

}  // namespace
}  // namespace velkor
