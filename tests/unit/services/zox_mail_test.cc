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

/** Fetching replies of which something cannot be read. */
class ZoxMailDamaged : public ZoxMail {
protected:
  ZoxErrorCode fetch_reply(const std::string &text) {
    server.reply(path, text);
    ZoxErrorCode code = 0;
    standard_error_of([&] { code = fetch(); });
    return code;
  }

  [[nodiscard]] std::vector<std::filesystem::path> kept() const {
    std::vector<std::filesystem::path> found;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(sandbox.home())) {
      if (entry.path().filename().string().starts_with("velkor.mail.antwoord-"))
        found.push_back(entry.path());
    }
    return found;
  }

  /** The reply is kept once, for its owner alone, and named in a warning. */
  void expect_kept(const std::string &text) const {
    ASSERT_EQ(kept().size(), 1U);
    const std::filesystem::path file = kept().front();
    EXPECT_TRUE(read_file(file) == text);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(file).permissions(), perms::owner_read | perms::owner_write);
    EXPECT_THAT(log.warnings(),
                ::testing::Contains(::testing::AllOf(
                    HasSubstr("zox_mail_fetch(): niet alle berichten konden worden gelezen ("),
                    HasSubstr("blijft bewaard als " + file.string()))));
  }
};

TEST_F(ZoxMailDamaged, BytesThatXmlCannotHoldCostThemselvesOnly) {
  const std::string text = "<Mail>" + received("een") +
                           received("twee", "a\1b\xe9"
                                            "c\x1b") +
                           received("drie", "\u20ac") + "</Mail>";
  EXPECT_EQ(fetch_reply(text), 0U);
  EXPECT_EQ(count, 3U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/b", "1 twee/s/ab\ufffdc", "1 drie/s/\u20ac"));
  expect_kept(text);
}

TEST_F(ZoxMailDamaged, ADeclaredEncodingStaysTheOneOfTheText) {
  EXPECT_EQ(fetch_reply("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><Mail>" +
                        received("een", "\2caf\xe9") + "</Mail>"),
            0U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/caf\u00e9"));
}

TEST_F(ZoxMailDamaged, DamageInOneMessageCostsNoOther) {
  const std::vector<std::string> damaged{
      "<Event Code=\"1\"><From>x</From><Subject>s</Subject><Body>",
      "<Event Code=\"1\"><From>x</From><Subject><b>s</Subject></Event>",
      "<Event Code=\"1\"><From>x</From></Subject></Body></Event></Event>",
      "<Event Code=\"1\"><From>x<Subject>s</Subject><Body><![CDATA[ </Body></Event>"};
  for (const std::string &one : damaged) {
    zox_mail_free(std::exchange(core->mail, nullptr));
    const std::string text = "<Mail>" + received("een") + one + received("drie") + "</Mail>";
    EXPECT_EQ(fetch_reply(text), 0U) << one;
    std::vector<std::string> box = shown(core->mail);
    EXPECT_EQ(std::erase_if(box, [](const auto &each) { return each.starts_with("1 x/"); }),
              count - 2);
    EXPECT_THAT(box, ElementsAre("1 een/s/b", "1 drie/s/b")) << one;
    expect_kept(text);
    std::filesystem::remove(kept().front());
  }
}

TEST_F(ZoxMailDamaged, ACharacterThatXmlCannotHoldCostsItselfOnly) {
  const std::string text =
      "<Mail>" + received("een", "a&#1;b&onbekend;c & d") + received("twee") + "</Mail>";
  EXPECT_EQ(fetch_reply(text), 0U);
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(shown(core->mail).back(), "1 twee/s/b");
  expect_kept(text);
}

TEST_F(ZoxMailDamaged, WhatComesBeforeAZeroByteIsRead) {
  const std::string text = "<Mail>" + received("een") + received("twee", "ab");
  EXPECT_EQ(fetch_reply(text + std::string("\0cd", 3) + received("drie") + "</Mail>"), 0U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/b", "1 twee/s/ab"));
  expect_kept(text);
}

TEST_F(ZoxMailDamaged, AReplyOfWhichNothingCanBeReadIsKept) {
  put_in_box("oud");
  const std::string text = "<Mail><Event Code=\"1\"><From>a";
  EXPECT_EQ(fetch_reply(text), 11U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 oud/s/b"));
  expect_kept(text);
}

TEST_F(ZoxMailDamaged, AReplyWithoutMessagesIsNotKept) {
  for (const char *text : {"<html><body>502</html>", "niet goed", "<Mail/>", "<Mail>",
                           "<Mail><Event Code=\"0\"/></Mail>"})
    EXPECT_EQ(fetch_reply(text), 11U) << text;
  EXPECT_THAT(kept(), ::testing::IsEmpty());
}

TEST_F(ZoxMailDamaged, AReplyWithoutDamageIsNotKept) {
  EXPECT_EQ(fetch_reply("<Mail>" + received("een") + "</Mail>"), 0U);
  EXPECT_THAT(kept(), ::testing::IsEmpty());
  EXPECT_THAT(log.warnings(), ::testing::IsEmpty());
}

TEST_F(ZoxMailDamaged, TellsOfAReplyThatCannotBeKept) {
  const ClosedCacheDirectory closed(sandbox.cache());
  EXPECT_EQ(fetch_reply("<Mail>" + received("een", "\1") + "</Mail>"), 0U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/"));
  EXPECT_THAT(log.warnings(), ::testing::Contains(HasSubstr("kon niet worden bewaard als ")));
}

TEST_F(ZoxMailDamaged, AnIncompleteMessageIsKeptInTolerantMode) {
  const Tolerance tolerance;
  const std::string text =
      "<Mail><Event Code=\"1\"><From>x</From></Event>" + received("twee") + "</Mail>";
  EXPECT_EQ(fetch_reply(text), 0U);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 twee/s/b"));
  expect_kept(text);
}

TEST_F(ZoxMailDamaged, ABodyThatIsTooLongForXmlCostsNoOtherMessage) {
  const std::string text = "<Mail>" + received("een") +
                           received("twee", "<![CDATA[" + std::string(11'000'000, 'x') + "]]>") +
                           received("drie") + "</Mail>";
  EXPECT_EQ(fetch_reply(text), 0U);
  expect_kept(text);
  std::vector<std::string> senders;
  for (const ZoxBericht *bericht : Items<const ZoxBericht>(core->mail))
    senders.emplace_back(bericht->from->str);
  EXPECT_THAT(senders, ::testing::AllOf(::testing::Contains("een"), ::testing::Contains("drie")));
}

TEST_F(ZoxMailDamaged, ABodyOfManySectionsIsReadBackFromTheFile) {
  const std::string part(6'000'000, 'x');
  EXPECT_EQ(fetch_reply("<Mail>" +
                        received("een", "<![CDATA[" + part + "]]><![CDATA[" + part + "]]>") +
                        received("twee") + "</Mail>"),
            0U);
  ASSERT_EQ(g_slist_length(core->mail), 2U);
  EXPECT_EQ(zox_mail_load(), 0);
  ASSERT_EQ(g_slist_length(core->mail), 2U);
  EXPECT_EQ(static_cast<ZoxBericht *>(core->mail->data)->body->len, 2 * part.size());
  EXPECT_THAT(kept(), ::testing::IsEmpty());
}

TEST_F(ZoxMailDamaged, MarksThatEndASectionAreReadBackFromTheFile) {
  std::string body;
  for (int number = 0; number < 300'000; ++number)
    body += "]]>";
  put_in_box("oud", "s", body.c_str());
  EXPECT_EQ(fetch_reply("<Mail>" + received("een") + "</Mail>"), 0U);
  ASSERT_EQ(g_slist_length(core->mail), 2U);
  EXPECT_TRUE(text_of(static_cast<ZoxBericht *>(core->mail->data)->body) == body);
}

std::string messages_without_texts(int number) {
  std::string text;
  while (number-- > 0)
    text += "<Event Code=\"1\"><From/><Subject/><Body/></Event>";
  return text;
}

TEST_F(ZoxMailDamaged, ABoxMayGrowBeyondOneReply) {
  EXPECT_EQ(fetch_reply("<Mail>" + messages_without_texts(110'000) + "</Mail>"), 0U);
  EXPECT_EQ(g_slist_length(core->mail), 110'000U);
  EXPECT_THAT(log.warnings(), ::testing::IsEmpty());
}

TEST_F(ZoxMailDamaged, OfEndlessMessagesTheFirstAreReadAndAllAreKept) {
  const std::string text = "<Mail>&" + messages_without_texts(50'001) + "</Mail>";
  EXPECT_EQ(fetch_reply(text), 0U);
  EXPECT_EQ(count, 50'000U);
  expect_kept(text);
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

using ZoxMailDamagedDeathTest = ZoxMailDamaged;

TEST_F(ZoxMailDamagedDeathTest, AnIncompleteMessageFailsAnAssertionOnceTheReplyIsKept) {
  const FreshProcess fresh(sandbox);
  const std::string text =
      "<Mail>" + received("een") + "<Event Code=\"1\"><From>x</From></Event></Mail>";
  server.reply(path, text);
  EXPECT_DEATH(fetch(), "assertion failed: \\(subject\\)");
  ASSERT_EQ(kept().size(), 1U);
  EXPECT_EQ(read_file(kept().front()), text);
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
