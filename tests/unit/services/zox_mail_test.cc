/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_mail.h>

#include <csignal>
#include <ctime>

#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/fresh_process.h"
#include "tests/unit/services/mail_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char *path = "/3.7.3/xml-mail.php";

class ZoxMail : public ServiceTest {
protected:
  [[nodiscard]] std::string file() const { return read_file(cache_file("velkor.mail")); }

  ZoxErrorCode fetch() { return zox_mail_fetch(&count, message); }

  LogCapture log;
  guint32 count = 77;
};

TEST_F(ZoxMail, ChecksTheFirstCharacterOnly) {
  guint32 waiting = 77;
  server.reply_once(path, "Yes, 3 berichten");
  server.reply_once(path, "N");
  EXPECT_EQ(zox_mail_check(&waiting, message), 0U);
  EXPECT_EQ(waiting, 1U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_EQ(zox_mail_check(&waiting, message), 0U);
  EXPECT_EQ(waiting, 0U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_THAT(sent(),
              ElementsAre("/3.7.3/xml-mail.php mode=check", "/3.7.3/xml-mail.php mode=check"));
}

TEST_F(ZoxMail, DoesNotUnderstandAnyOtherCheckReply) {
  for (const char *reply : {"no", "y", " Y", "?"}) {
    guint32 waiting = 77;
    server.reply(path, reply);
    EXPECT_EQ(zox_mail_check(&waiting, message), 10U) << reply;
    EXPECT_EQ(waiting, 77U);
    EXPECT_EQ(message.text(), "(null)");
  }
}

TEST_F(ZoxMail, FetchesMessagesBehindTheOldOnesAndSaves) {
  put_in_box("oud");
  server.reply(path, "<Mail>" + received("nieuw") + received("nieuwer", "x]]&gt;y") + "</Mail>");
  EXPECT_EQ(fetch(), 0U);
  EXPECT_EQ(count, 2U);
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-mail.php mode=read"));
  EXPECT_THAT(shown(core->mail), ElementsAre("1 oud/s/b", "1 nieuw/s/b", "1 nieuwer/s/x]]>y"));
  const std::vector<std::string> before = shown(core->mail);
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_EQ(shown(core->mail), before);
}

TEST_F(ZoxMail, RebuildsTheBoxFromTheFile) {
  ZoxBericht *sent_message = put_in_box("oud", "s", "a\r\nb");
  sent_message->stamp = 4294967297;
  server.reply(path, "<Mail>" + received("nieuw") + "</Mail>");
  EXPECT_EQ(fetch(), 0U);
  // A file holds 32 bits of a stamp and XML no carriage return.
  EXPECT_EQ(static_cast<ZoxBericht *>(core->mail->data)->stamp, 1);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 oud/s/a\nb", "1 nieuw/s/b"));
}

TEST_F(ZoxMail, CountsAReplyWithoutMessagesAsAFailure) {
  put_in_box("oud");
  for (const char *reply :
       {"<Mail><Event Code=\"0\"/></Mail>", "<Mail/>", "<Other/>", "niet goed", "<Mail><Event"}) {
    server.reply(path, reply);
    standard_error_of([this] { EXPECT_EQ(fetch(), 11U); });
    EXPECT_EQ(message.text(), "(null)") << reply;
    EXPECT_EQ(count, 77U);
    EXPECT_THAT(shown(core->mail), ElementsAre("1 oud/s/b"));
    EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.mail")));
  }
}

TEST_F(ZoxMail, KeepsMessagesThatCouldNotBeSavedInMemory) {
  put_in_box("oud");
  ASSERT_EQ(zox_mail_save(), 0);
  const std::string before = file();
  server.reply(path, "<Mail>" + received("nieuw") + "</Mail>");
  {
    const ClosedCacheDirectory closed(sandbox.cache());
    EXPECT_EQ(fetch(), 0U);
  }
  EXPECT_EQ(count, 1U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 oud/s/b", "1 nieuw/s/b"));
  EXPECT_EQ(file(), before);
}

TEST_F(ZoxMail, SendsAMessageAndKeepsItAsSent) {
  put_in_box("oud");
  ZoxBericht *bericht = zox_mail_bericht_new("aan", "over", "een\ntwee", 0);
  server.reply(path, "Message SENT.");
  const std::time_t before = std::time(nullptr);
  EXPECT_EQ(zox_mail_post(bericht, message), 0U);
  EXPECT_EQ(message.text(), "(voorheen)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-mail.php mode=write to=aan s=over b=een\ntwee"));
  EXPECT_THAT(shown(core->mail), ElementsAre("1 oud/s/b", "2 aan/over/een\r\n<BR />twee"));
  EXPECT_EQ(g_slist_last(core->mail)->data, bericht);
  EXPECT_GE(bericht->stamp, before);
  EXPECT_LE(bericht->stamp, std::time(nullptr));
  EXPECT_THAT(file(), HasSubstr("<Event Code=\"2\">\n\t\t<From><![CDATA[aan]]></From>"));
  EXPECT_THAT(file(), HasSubstr("<Body><![CDATA[een\r\n<BR />twee]]></Body>"));
}

TEST_F(ZoxMail, KeepsASentMessageThatCouldNotBeSavedInMemory) {
  server.reply(path, "SENT");
  const ClosedCacheDirectory closed(sandbox.cache());
  EXPECT_EQ(zox_mail_post(zox_mail_bericht_new("aan", "s", "b", 0), message), 0U);
  EXPECT_THAT(shown(core->mail), ElementsAre("2 aan/s/b"));
}

TEST_F(ZoxMail, LeavesAMessageThatWasNotSentToTheCaller) {
  const std::pair<const char *, ZoxErrorCode> replies[] = {
      {"NOTFOUND", static_cast<ZoxErrorCode>(-1)},
      {"NOTFOUND: aan", static_cast<ZoxErrorCode>(-1)},
      {"user NOTFOUND", 10},
      {"NOTFOUN", 10},
      {"sent", 10},
      {"notfound", 10}};
  ZoxBericht *bericht = zox_mail_bericht_new("aan", "s", "b\nb", 3);
  for (const auto &[reply, code] : replies) {
    server.reply(path, reply);
    EXPECT_EQ(zox_mail_post(bericht, message), code) << reply;
    EXPECT_EQ(message.text(), "(null)");
    EXPECT_EQ(text_of(bericht->body), "b\nb");
    EXPECT_EQ(bericht->code, 0U);
    EXPECT_EQ(core->mail, nullptr);
  }
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.mail")));
  zox_mail_bericht_free(bericht);
}

TEST_F(ZoxMail, TakesSentAnywhereBeforeNotFoundAtTheBeginning) {
  server.reply(path, "NOTFOUND? SENT!");
  EXPECT_EQ(zox_mail_post(zox_mail_bericht_new("aan", "s", "b", 0), message), 0U);
  EXPECT_EQ(g_slist_length(core->mail), 1U);
}

using ZoxMailDeathTest = ZoxMail;

TEST_F(ZoxMailDeathTest, AssertsItsPlaces) {
  const FreshProcess fresh(sandbox);
  EXPECT_DEATH(zox_mail_check(nullptr, nullptr), "assertion failed: \\(mailWaiting\\)");
  EXPECT_DEATH(zox_mail_fetch(nullptr, nullptr), "assertion failed: \\(numNewMail\\)");
}

/** How many messages the mail file holds, all of them whole. */
guint32 messages_in_file() {
  zox_mail_free(std::exchange(core->mail, nullptr));
  zox_mail_load();
  return zox_mail_get_num_messages();
}

/** Does something again and again in a child that is killed once it did it a few times. */
void repeat_until_killed(bool (*action)()) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    while (action() && write(ends[1], "x", 1) == 1)
      continue;
    _exit(1);
  }
  close(ends[1]);
  char progress[3];
  for (char &step : progress)
    EXPECT_EQ(read(ends[0], &step, 1), 1);
  close(ends[0]);
  EXPECT_EQ(kill(child, SIGKILL), 0);
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status));
}

class ZoxMailKilled : public ZoxMail {
protected:
  ZoxMailKilled() {
    put_in_box("oud", "s", std::string(200000, 'x').c_str());
    zox_mail_save();
  }
  /** Lets the action grow the box in several runs that are killed. */
  static void expect_growth(bool (*action)()) {
    guint32 before = 1;
    for (int round = 0; round < 5; ++round) {
      repeat_until_killed(action);
      const guint32 now = messages_in_file();
      EXPECT_GE(now, before + 3);
      expect_old_first();
      before = now;
    }
  }
  static void expect_old_first() {
    EXPECT_EQ(text_of(static_cast<ZoxBericht *>(core->mail->data)->from), "oud");
  }
};

TEST_F(ZoxMailKilled, WhileFetchingItLosesNoEarlierMessage) {
  server.reply(path, "<Mail>" + received("nieuw") + "</Mail>");
  expect_growth([] {
    guint32 fetched = 0;
    return zox_mail_fetch(&fetched, nullptr) == 0;
  });
}

TEST_F(ZoxMailKilled, WhileSendingItLosesNoEarlierMessage) {
  server.reply(path, "SENT");
  expect_growth(
      [] { return zox_mail_post(zox_mail_bericht_new("anna", "s", "b", 0), nullptr) == 0; });
}

TEST_F(ZoxMailKilled, WhileDeletingItLosesNothingElse) {
  for (int number = 0; number < 200; ++number)
    put_in_box("te wissen", "s", "b");
  ASSERT_EQ(zox_mail_save(), 0);
  guint32 before = 201;
  for (int round = 0; round < 3; ++round) {
    repeat_until_killed([] {
      if (zox_mail_get_num_messages() == 1)
        pause();  // the old one stays
      return zox_mail_delete(static_cast<ZoxBericht *>(g_slist_last(core->mail)->data)) == 0;
    });
    const guint32 now = messages_in_file();
    EXPECT_LE(now, before - 3);
    EXPECT_GE(now, 1U);
    expect_old_first();
    before = now;
  }
}

}  // namespace
}  // namespace velkor::test
