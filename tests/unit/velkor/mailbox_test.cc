/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/mailbox.h"

#include <string>

#include <gtest/gtest.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_mail.h>

#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

class Mailbox : public ::testing::Test {
protected:
  Mailbox() {
    const std::string cache = sandbox_.cache();
    ZoxCoreOptions options{};
    options.cacheDir = cache.c_str();
    options.parts = ZOX_CORE_SETTINGS | ZOX_CORE_MAIL;
    opened_ = zox_app_core_open(&options, nullptr) == ZOX_CORE_OPENED;
  }
  ~Mailbox() override { zox_app_core_close(); }
  Mailbox(const Mailbox &) = delete;
  Mailbox &operator=(const Mailbox &) = delete;

  void SetUp() override {
    ASSERT_TRUE(opened_);
    for (const gint64 stamp : {10, 20, 30}) {
      ZoxBericht *bericht = zox_mail_bericht_new("anna", "Haven", "Hoi\r\n<BR />Dag", stamp);
      bericht->code = ZOX_MAIL_SENT;
      core->mail = g_slist_append(core->mail, bericht);
    }
    ASSERT_EQ(zox_mail_save(), 0);
  }

  [[nodiscard]] std::string saved() const {
    return test::read_file(sandbox_.cache() / "velkor.mail");
  }

  test::Sandbox sandbox_;
  bool opened_ = false;
};

TEST_F(Mailbox, ReadsTheNewestFirst) {
  const std::vector<Message> messages = read_messages();
  ASSERT_EQ(messages.size(), 3U);
  EXPECT_EQ(messages[0].stamp, 30);
  EXPECT_EQ(messages[0].other, "anna");
  EXPECT_EQ(messages[0].body, "Hoi\nDag");
  EXPECT_TRUE(messages[0].sent);
}

TEST_F(Mailbox, DeletesAndPutsBackWhatWasThere) {
  const std::vector<Message> before = read_messages();
  const std::string file = saved();
  const Deletion deletion = delete_message(before[1].id);
  ASSERT_TRUE(deletion.message);
  EXPECT_EQ(deletion.result.messages, (std::vector{before[0], before[2]}));
  EXPECT_NE(saved(), file);
  const MailResult restored = restore_message(*deletion.message);
  EXPECT_EQ(restored.not_saved, "");
  EXPECT_EQ(restored.messages, before);
  EXPECT_EQ(saved(), file);
}

TEST_F(Mailbox, DeletesNothingThatIsNotThere) {
  const Deletion deletion = delete_message(1);
  EXPECT_FALSE(deletion.message);
  EXPECT_EQ(deletion.result.messages.size(), 3U);
}

TEST_F(Mailbox, KeepsWhatCannotBeDeletedFromTheFile) {
  const std::uint64_t id = read_messages()[0].id;
  std::filesystem::remove(sandbox_.cache() / "velkor.mail");
  std::filesystem::create_directory(sandbox_.cache() / "velkor.mail");
  const Deletion deletion = delete_message(id);
  EXPECT_FALSE(deletion.message);
  EXPECT_NE(deletion.result.failure, "");
  EXPECT_EQ(deletion.result.messages.size(), 3U);
}

}  // namespace
}  // namespace velkor::app
