/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Numbers for messages that outlive the list. */
#include <velkor/zox_mail.h>

#include <set>

#include "tests/unit/services/mail_fixture.h"

namespace velkor::test {
namespace {

using ZoxMailId = ServiceTest;

TEST_F(ZoxMailId, IsTheSameAfterTheListWasLoadedAgain) {
  put_in_box("anna", "onderwerp", "een\r\ntwee\rdrie\nvier\x01 <b>&amp;</b> ]]>");
  ZoxBericht *sent_message = put_in_box("bert", "", "\r\n<BR />");
  sent_message->code = ZOX_MAIL_SENT;
  std::vector<guint64> before;
  for (const ZoxBericht *bericht : Items<ZoxBericht>(core->mail))
    before.push_back(zox_mail_id(bericht));
  ASSERT_EQ(zox_mail_save(), 0);
  ASSERT_EQ(zox_mail_load(), 0);
  std::vector<guint64> after;
  for (const ZoxBericht *bericht : Items<ZoxBericht>(core->mail))
    after.push_back(zox_mail_id(bericht));
  EXPECT_EQ(after, before);
}

TEST_F(ZoxMailId, IsMadeOfEveryPart) {
  std::set<guint64> numbers;
  const auto note = [&numbers](ZoxBericht *bericht) { numbers.insert(zox_mail_id(bericht)); };
  ZoxBericht *bericht = put_in_box("anna", "bc", "d");
  note(bericht);
  bericht->code = ZOX_MAIL_SENT;
  note(bericht);
  ++bericht->stamp;
  note(bericht);
  note(put_in_box("annab", "c", "d"));
  note(put_in_box("anna", "b", "cd"));
  note(put_in_box("anna", "bc", "D"));
  EXPECT_EQ(numbers.size(), 6U);
  EXPECT_FALSE(numbers.contains(0));
}

TEST_F(ZoxMailId, IsTheSameOnEveryMachine) {
  EXPECT_EQ(zox_mail_id(put_in_box("anna", "s", "b")), zox_mail_id(put_in_box("anna", "s", "b")));
  // SHA-256 of "1:14:anna1:s1:b10:1200000000"
  EXPECT_EQ(zox_mail_id(put_in_box("anna", "s", "b")), G_GUINT64_CONSTANT(0xcafa0a83ab5e1d0a));
}

TEST_F(ZoxMailId, FindsTheMessage) {
  put_in_box("anna");
  ZoxBericht *second = put_in_box("bert");
  EXPECT_EQ(zox_mail_find(zox_mail_id(second)), second);
  EXPECT_EQ(zox_mail_find(zox_mail_id(second) + 1), nullptr);
}

}  // namespace
}  // namespace velkor::test
