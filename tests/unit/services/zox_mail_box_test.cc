/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_mail.h>

#include <cstdlib>

#include <unistd.h>

#include <velkor/zox_file.h>

#include "tests/support/full_disk.h"
#include "tests/unit/services/mail_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ZoxMailBox : public LibraryTest {
protected:
  [[nodiscard]] std::string file() const { return read_file(cache_file("velkor.mail")); }
  void write(std::string_view content) const { write_file(cache_file("velkor.mail"), content); }

  /** The backups of the mail file. */
  [[nodiscard]] std::vector<std::filesystem::path> backups() const {
    std::vector<std::filesystem::path> found;
    for (const auto &entry : std::filesystem::directory_iterator(sandbox.cache())) {
      if (entry.path().filename().string().starts_with("velkor.mail.onleesbaar-"))
        found.push_back(entry.path());
    }
    return found;
  }

  LogCapture log;
  QuietXml quiet;
};

TEST_F(ZoxMailBox, MakesAMessageOfThreeTexts) {
  ZoxBericht *bericht = zox_mail_bericht_new("f", "", "b", 7);
  ASSERT_NE(bericht, nullptr);
  EXPECT_EQ(text_of(bericht->from), "f");
  EXPECT_EQ(text_of(bericht->subject), "");
  EXPECT_EQ(text_of(bericht->body), "b");
  EXPECT_EQ(bericht->stamp, 7);
  EXPECT_EQ(bericht->code, 0U);
  zox_mail_bericht_free(bericht);
  EXPECT_EQ(zox_mail_bericht_new(nullptr, "s", "b", 0), nullptr);
  EXPECT_EQ(zox_mail_bericht_new("f", nullptr, "b", 0), nullptr);
  EXPECT_EQ(zox_mail_bericht_new("f", "s", nullptr, 0), nullptr);
}

TEST_F(ZoxMailBox, MergesIntoANewListOfTheSameMessages) {
  ZoxBericht *first = put_in_box("1");
  ZoxBericht *second = put_in_box("2");
  GSList *other = g_slist_prepend(nullptr, second);
  const OwnedCells merged(zox_mail_merge(core->mail, other));
  EXPECT_EQ(g_slist_length(core->mail), 2U);
  EXPECT_EQ(g_slist_length(other), 1U);
  ASSERT_EQ(g_slist_length(merged.get()), 3U);
  EXPECT_EQ(merged->data, first);
  EXPECT_EQ(g_slist_nth_data(merged.get(), 2), second);
  const OwnedCells copy(zox_mail_merge(nullptr, other));
  EXPECT_NE(copy.get(), other);
  EXPECT_EQ(copy->data, second);
  EXPECT_EQ(zox_mail_merge(nullptr, nullptr), nullptr);
  g_slist_free(other);
}

TEST_F(ZoxMailBox, GivesItsMessagesAndTheirNumber) {
  EXPECT_EQ(zox_mail_get(), nullptr);
  EXPECT_EQ(zox_mail_get_num_messages(), 0U);
  put_in_box("a");
  put_in_box("b");
  EXPECT_EQ(zox_mail_get(), core->mail);
  EXPECT_EQ(zox_mail_get_num_messages(), 2U);
}

TEST_F(ZoxMailBox, FreesListsOfMessages) {
  zox_mail_free(nullptr);
  zox_mail_free(g_slist_prepend(nullptr, zox_mail_bericht_new("a", "b", "c", 0)));
}

TEST_F(ZoxMailBox, MakesAnEmptyFileAtTheFirstStart) {
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_EQ(file(), empty_mail_file);
  EXPECT_EQ(core->mail, nullptr);
}

TEST_F(ZoxMailBox, SavesTheListItHasWhenThereIsNoFile) {
  put_in_box("a");
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 a/s/b"));
  EXPECT_THAT(file(), HasSubstr("<From><![CDATA[a]]></From>"));
}

TEST_F(ZoxMailBox, TellsThatTheFirstFileCannotBeMade) {
  const ClosedCacheDirectory closed(sandbox.cache());
  EXPECT_EQ(zox_mail_load(), -1);
}

TEST_F(ZoxMailBox, SavesAndLoadsAllMessages) {
  put_in_box("een", "", "twee\nregels");
  put_in_box("twee", "a]]>b", "\u20ac")->code = 2;
  EXPECT_EQ(zox_mail_save(), 0);
  EXPECT_EQ(file(), read_file(VELKOR_TEST_DIR "/golden/velkor.mail"));
  const std::vector<std::string> before = shown(core->mail);
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_EQ(shown(core->mail), before);
  EXPECT_EQ(static_cast<ZoxBericht *>(core->mail->data)->stamp, 1200000000);
}

TEST_F(ZoxMailBox, ReplacesTheListByTheFile) {
  write(empty_mail_file);
  put_in_box("a");
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_EQ(core->mail, nullptr);
  EXPECT_EQ(file(), empty_mail_file);
}

TEST_F(ZoxMailBox, KeepsAFileThatCannotBeUnderstood) {
  for (const char *broken : {"<Mail><Event Code=\"1\">", "<Events/>", "geen XML"}) {
    write(broken);
    standard_error_of([] { EXPECT_EQ(zox_mail_load(), 0); });
    EXPECT_EQ(core->mail, nullptr);
    EXPECT_EQ(file(), broken);
    EXPECT_EQ(zox_mail_save(), 0);
    EXPECT_EQ(file(), empty_mail_file);
    ASSERT_EQ(backups().size(), 1U) << broken;
    EXPECT_EQ(read_file(backups().front()), broken);
    std::filesystem::remove(backups().front());
  }
}

TEST_F(ZoxMailBox, ReadsWhatItCanOfADamagedFileAndKeepsThat) {
  const std::string damaged =
      "<Mail>" + received("een") + received("twee", "a\1&") + received("drie") + "</Mail>";
  write(damaged);
  standard_error_of([] { EXPECT_EQ(zox_mail_load(), 0); });
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_DAMAGED);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/b", "1 twee/s/a", "1 drie/s/b"));
  EXPECT_EQ(zox_mail_save(), 0);
  ASSERT_EQ(backups().size(), 1U);
  EXPECT_EQ(read_file(backups().front()), damaged);
}

TEST_F(ZoxMailBox, KeepsAFileThatTolerantModeReadsInPart) {
  const Tolerance tolerance;
  const std::string file_text =
      "<Mail>" + received("a") + "<Event Code=\"1\"><From>b</From></Event></Mail>";
  write(file_text);
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 a/s/b"));
  EXPECT_EQ(zox_mail_save(), 0);
  ASSERT_EQ(backups().size(), 1U);
  EXPECT_EQ(read_file(backups().front()), file_text);
}

TEST_F(ZoxMailBox, MakesNoBackupOfAFileThatIsGood) {
  for (const char *good : {"", empty_mail_file, "<Mail/>", "<Mail><Event Code=\"0\"/></Mail>"}) {
    write(good);
    standard_error_of([] { EXPECT_EQ(zox_mail_load(), 0); });
    EXPECT_EQ(zox_mail_save(), 0);
    EXPECT_EQ(file(), empty_mail_file);
    EXPECT_THAT(backups(), IsEmpty()) << good;
  }
}

TEST_F(ZoxMailBox, OutcomeTellsWhatTheFileWas) {
  const auto status = [] {
    standard_error_of([] { zox_mail_load(); });
    return zox_file_last_error()->status;
  };
  EXPECT_EQ(status(), ZOX_FILE_MISSING);
  EXPECT_EQ(status(), ZOX_FILE_FINE);
  write("");
  EXPECT_EQ(status(), ZOX_FILE_EMPTY);
  write("<Mail/>");
  EXPECT_EQ(status(), ZOX_FILE_FINE);
  write("<Events/>");
  EXPECT_EQ(status(), ZOX_FILE_DAMAGED);
  EXPECT_THAT(zox_file_last_error()->message, HasSubstr(": the root element is not Mail"));
  write("geen XML");
  EXPECT_EQ(status(), ZOX_FILE_DAMAGED);
  EXPECT_THAT(zox_file_last_error()->message, HasSubstr(": line 1: "));
  const Tolerance tolerance;
  write("<Mail><Event Code=\"1\"><From>b</From></Event></Mail>");
  EXPECT_EQ(status(), ZOX_FILE_DAMAGED);
  EXPECT_THAT(zox_file_last_error()->message, HasSubstr("a message lacks From, Subject or Body"));
}

TEST_F(ZoxMailBox, OutcomeTellsOfAFileThatCannotBeMade) {
  const ClosedCacheDirectory closed(sandbox.cache());
  EXPECT_EQ(zox_mail_load(), -1);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
}

TEST_F(ZoxMailBox, ForgetsAnUnreadableFileThatBecameGood) {
  write("geen XML");
  standard_error_of([] { EXPECT_EQ(zox_mail_load(), 0); });
  write(empty_mail_file);
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_EQ(zox_mail_save(), 0);
  EXPECT_THAT(backups(), IsEmpty());
}

TEST_F(ZoxMailBox, KeepsManyAndLongMessages) {
  const std::string body(300000, 'x');
  for (int number = 0; number < 60; ++number)
    put_in_box(std::to_string(number).c_str(), "s", body.c_str());
  const std::vector<std::string> before = shown(core->mail);
  EXPECT_EQ(zox_mail_save(), 0);
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_TRUE(shown(core->mail) == before);
}

TEST_F(ZoxMailBox, DeletesAMessageFromListAndFile) {
  ZoxBericht *first = put_in_box("een");
  ZoxBericht *second = put_in_box("twee");
  put_in_box("drie");
  EXPECT_EQ(zox_mail_delete(second), 0);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/b", "1 drie/s/b"));
  EXPECT_THAT(file(), testing::Not(HasSubstr("twee")));
  EXPECT_EQ(zox_mail_delete(first), 0);
  EXPECT_THAT(shown(core->mail), ElementsAre("1 drie/s/b"));
}

TEST_F(ZoxMailBox, DeletesManyMessagesWithOneSave) {
  GSList *many = nullptr;
  for (int number = 0; number < 50'000; ++number) {
    core->mail = g_slist_prepend(core->mail, zox_mail_bericht_new("weg", "s", "b", 1));
    many = g_slist_prepend(many, core->mail->data);
  }
  put_in_box("blijft");
  core->mail = g_slist_prepend(core->mail, zox_mail_bericht_new("eerste", "s", "b", 1));
  many = g_slist_prepend(many, many->data);  // the same one twice
  const OwnedCells cells(many);
  EXPECT_EQ(zox_mail_delete_messages(many), 0);
  EXPECT_THAT(shown(core->mail), ElementsAre("0 eerste/s/b", "1 blijft/s/b"));
  EXPECT_THAT(file(), testing::Not(HasSubstr("weg")));
  EXPECT_EQ(zox_mail_delete_messages(nullptr), 0);
  EXPECT_EQ(zox_mail_get_num_messages(), 2U);
}

TEST_F(ZoxMailBox, KeepsMessagesWhoseDeletionCannotBeSaved) {
  GSList *both = g_slist_prepend(nullptr, put_in_box("een"));
  put_in_box("twee");
  both = g_slist_prepend(both, put_in_box("drie"));
  const OwnedCells cells(both);
  {
    const ClosedCacheDirectory closed(sandbox.cache());
    EXPECT_EQ(zox_mail_delete_messages(both), -1);
  }
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/b", "1 twee/s/b", "1 drie/s/b"));
}

TEST_F(ZoxMailBox, LeavesAnEmptyDocumentWhenTheLastMessageGoes) {
  EXPECT_EQ(zox_mail_delete(put_in_box("een")), 0);
  EXPECT_EQ(core->mail, nullptr);
  EXPECT_EQ(file(), empty_mail_file);
}

TEST_F(ZoxMailBox, KeepsAMessageWhoseDeletionCannotBeSaved) {
  put_in_box("een");
  ZoxBericht *second = put_in_box("twee");
  put_in_box("drie");
  EXPECT_EQ(zox_mail_save(), 0);
  const std::string before = file();
  {
    const ClosedCacheDirectory closed(sandbox.cache());
    EXPECT_EQ(zox_mail_delete(second), -1);
  }
  EXPECT_THAT(shown(core->mail), ElementsAre("1 een/s/b", "1 twee/s/b", "1 drie/s/b"));
  EXPECT_EQ(file(), before);
}

using ZoxMailBoxDeathTest = ZoxMailBox;

TEST_F(ZoxMailBoxDeathTest, KeepsTheFileWhenTheDiskIsFull) {
  put_in_box("oud");
  ASSERT_EQ(zox_mail_save(), 0);
  const std::string before = file();
  put_in_box("nieuw", "s", std::string(100000, 'x').c_str());
  EXPECT_EXIT(
      {
        fill_disk(4096);
        std::exit(zox_mail_save() == -1 && file() == before ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EQ(file(), before);
}

/** Goes on as a user without privileges, who owns the sandbox. */
void drop_privileges(const std::filesystem::path &home) {
  constexpr uid_t nobody = 65534;
  if (geteuid() != 0)
    return;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(home))
    ASSERT_EQ(chown(entry.path().c_str(), nobody, nobody), 0);
  ASSERT_EQ(chown(home.c_str(), nobody, nobody), 0);
  ASSERT_EQ(seteuid(nobody), 0);
}

TEST_F(ZoxMailBoxDeathTest, KeepsAFileThatCannotBeOpened) {
  put_in_box("oud");
  ASSERT_EQ(zox_mail_save(), 0);
  const std::string before = file();
  std::filesystem::permissions(cache_file("velkor.mail"), std::filesystem::perms::none);
  EXPECT_EXIT(
      {
        drop_privileges(sandbox.home());
        const bool loaded = zox_mail_load() == 0 && zox_mail_get_num_messages() == 1;
        put_in_box("nieuw");
        std::_Exit(loaded && zox_mail_save() == 0 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  ASSERT_EQ(backups().size(), 1U);
  std::filesystem::permissions(backups().front(), std::filesystem::perms::owner_all);
  EXPECT_EQ(read_file(backups().front()), before);
}

TEST_F(ZoxMailBoxDeathTest, AssertsTheMessageAndTheBox) {
  EXPECT_DEATH(zox_mail_bericht_free(nullptr), "assertion failed: \\(bericht\\)");
  EXPECT_DEATH(zox_mail_free(g_slist_prepend(nullptr, nullptr)), "assertion failed: \\(bericht\\)");
  ZoxBericht *bericht = put_in_box("een");
  GSList *list = std::exchange(core->mail, nullptr);
  EXPECT_DEATH(zox_mail_delete(bericht), "assertion failed: \\(core->mail\\)");
  core->mail = list;
}

TEST_F(ZoxMailBoxDeathTest, AssertsTheTextsOfAMessage) {
  for (GString *ZoxBericht::*text : {&ZoxBericht::from, &ZoxBericht::subject, &ZoxBericht::body}) {
    ZoxBericht bericht{string_of("f").release(), string_of("s").release(), string_of("b").release(),
                       0, 0};
    replace_string(bericht.*text, nullptr);
    const char *name = text == &ZoxBericht::from      ? "from"
                       : text == &ZoxBericht::subject ? "subject"
                                                      : "body";
    EXPECT_DEATH(zox_mail_bericht_free(&bericht),
                 "assertion failed: \\(bericht->" + std::string(name) + "\\)");
    for (GString *left : {bericht.from, bericht.subject, bericht.body})
      OwnedString(left).reset();
  }
}

TEST_F(ZoxMailBoxDeathTest, AssertsTheCore) {
  const std::string no_core = "assertion failed: \\(core\\)";
  ZoxBericht *bericht = put_in_box("een");
  for (const auto &use :
       {+[](ZoxBericht *) { zox_mail_get(); }, +[](ZoxBericht *) { zox_mail_get_num_messages(); },
        +[](ZoxBericht *) { zox_mail_load(); }, +[](ZoxBericht *) { zox_mail_save(); },
        +[](ZoxBericht *one) { zox_mail_delete(one); }}) {
    EXPECT_DEATH(
        {
          core = nullptr;
          use(bericht);
        },
        no_core);
  }
}

}  // namespace
}  // namespace velkor::test
