/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/message.h"

#include <gtest/gtest.h>

namespace velkor::app {
namespace {

TEST(Messages, AreShownWithTheNewestFirst) {
  const std::vector<Message> messages = newest_first({{.id = 1, .stamp = 50},
                                                      {.id = 2, .stamp = 70},
                                                      {.id = 3, .stamp = 60},
                                                      {.id = 4, .stamp = 70}});
  std::vector<std::uint64_t> ids;
  for (const Message &message : messages)
    ids.push_back(message.id);
  EXPECT_EQ(ids, (std::vector<std::uint64_t>{4, 2, 3, 1}));
}

TEST(Messages, LoseTheLineBreaksOfTheDisplayDocument) {
  EXPECT_EQ(plain_body("Hoi\r\n<BR />\r\n<BR />Dag"), "Hoi\n\nDag");
  EXPECT_EQ(plain_body("a < b\n<b>"), "a < b\n<b>");
  EXPECT_EQ(plain_body(""), "");
}

TEST(Messages, AreQuotedInAnAnswer) {
  const Message message{.other = "anna", .subject = "Haven", .body = "Hoi\nDag"};
  EXPECT_EQ(answer_to(message), (Draft{"anna", "Re: Haven", "\n\n> Hoi\n> Dag"}));
}

TEST(Messages, AreAnsweredUnderOneRe) {
  EXPECT_EQ(answer_to({.subject = "Re: Haven"}).subject, "Re: Haven");
}

}  // namespace
}  // namespace velkor::app
