/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_mail.h>

#include "services/mail_document.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;

ZoxString *shout(ZoxString *body) {
  return g_string_new((text_of(body) + "!").c_str());
}
ZoxString *fail(ZoxString *) {
  return nullptr;
}

class ZoxMailPrint : public LibraryTest {
protected:
  static OwnedMail message(const char *from, const char *subject, const char *body,
                           gint64 stamp = 1200000000, guint32 code = 1) {
    ZoxBericht *bericht = zox_mail_bericht_new(from, subject, body, stamp);
    bericht->code = code;
    return OwnedMail(g_slist_prepend(nullptr, bericht));
  }

  static std::string printed(const OwnedMail &mail, ZoxTextFunc converter = nullptr) {
    return taken(zox_mail_print(static_cast<const ZoxBericht *>(mail->data), nullptr, converter));
  }

  /** What comes back of a body that is printed and read again. */
  static std::string body_read_back(const char *body) {
    const OwnedMail mail = message("f", "s", body);
    const OwnedString document = mail_document(mail.get());
    const OwnedMail read(zox_mail_parse(document.get()));
    return read ? text_of(static_cast<const ZoxBericht *>(read->data)->body) : "(unreadable)";
  }
};

TEST_F(ZoxMailPrint, PrintsAMessage) {
  const OwnedMail mail = message("Jan & co", "<onderwerp>", "regel een\r\n<BR />regel twee");
  EXPECT_EQ(printed(mail), read_file(VELKOR_TEST_DIR "/golden/bericht.xml"));
}

TEST_F(ZoxMailPrint, PrintsAStampBeyond32BitsCut) {
  const OwnedMail mail = message("f", "s", "b", 2147483648, 2);
  EXPECT_THAT(printed(mail), HasSubstr("\t\t<Stamp>-2147483648</Stamp>\n"
                                       "\t\t<DateTime>19-01 (04:14)</DateTime>\n"));
}

TEST_F(ZoxMailPrint, PrintsAStampThatIsNoDate) {
  const LogCapture log;
  const OwnedMail mail = message("f", "s", "b", G_MAXINT64);
  EXPECT_THAT(printed(mail), HasSubstr("<Stamp>-1</Stamp>\n\t\t<DateTime></DateTime>"));
}

TEST_F(ZoxMailPrint, PrintsAbsentTextsAsEmptyOnes) {
  const ZoxBericht bericht{};
  const std::string text = taken(zox_mail_print(&bericht, nullptr, nullptr));
  EXPECT_THAT(text, HasSubstr("<From><![CDATA[]]></From>"));
  EXPECT_THAT(text, HasSubstr("<Subject><![CDATA[]]></Subject>"));
  EXPECT_THAT(text, HasSubstr("<Body><![CDATA[]]></Body>"));
  EXPECT_THAT(text, HasSubstr("<Event Code=\"0\">"));
}

TEST_F(ZoxMailPrint, PrintsTheConvertedBodyAlone) {
  const OwnedMail mail = message("f", "s", "b");
  EXPECT_THAT(printed(mail, shout), HasSubstr("<Body><![CDATA[b!]]></Body>"));
  EXPECT_THAT(printed(mail, shout), HasSubstr("<From><![CDATA[f]]></From>"));
  EXPECT_EQ(text_of(static_cast<ZoxBericht *>(mail->data)->body), "b");
}

TEST_F(ZoxMailPrint, SplitsTheMarkThatEndsACdataSection) {
  const OwnedMail mail = message("f", "s", "a]]>b");
  EXPECT_THAT(printed(mail), HasSubstr("<Body><![CDATA[a]]]]><![CDATA[>b]]></Body>"));
}

TEST_F(ZoxMailPrint, PrintsWhatReadsBackUnchanged) {
  for (const char *body : {"", "]]>", "]]>]]>", "]]]]>>", "]]", "]", "<![CDATA[x]]>", "&amp;<b>",
                           "\t en \n regels", "\u00e9\u20ac\U0001f600"})
    EXPECT_EQ(body_read_back(body), body);
}

TEST_F(ZoxMailPrint, PrintsWhatADocumentCannotHoldUnchanged) {
  const OwnedMail mail = message("f\001", "s\xff",
                                 "a\037"
                                 "b\xef\xbf\xbe");
  EXPECT_THAT(printed(mail), HasSubstr("<From><![CDATA[f\001]]></From>"));
  EXPECT_THAT(printed(mail), HasSubstr("<Subject><![CDATA[s\xff]]></Subject>"));
  EXPECT_THAT(printed(mail), HasSubstr("<Body><![CDATA[a\037"
                                       "b\xef\xbf\xbe]]></Body>"));
}

TEST_F(ZoxMailPrint, TheSavedDocumentLeavesOutWhatItCannotHold) {
  EXPECT_EQ(body_read_back("a\001b\037c\x7f"), "abc\x7f");
  EXPECT_EQ(body_read_back("a\xef\xbf\xbe\xef\xbf\xbf.b"), "a.b");
}

TEST_F(ZoxMailPrint, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(body_read_back("caf\xe9!"), "caf\uFFFD!");
  EXPECT_EQ(body_read_back("\xed\xa0\x80x"), "\uFFFD\uFFFD\uFFFDx");
}

using ZoxMailPrintDeathTest = ZoxMailPrint;

TEST_F(ZoxMailPrintDeathTest, AssertsItsArgumentsAndTheConvertedBody) {
  const OwnedMail mail = message("f", "s", "b");
  EXPECT_DEATH(zox_mail_print(nullptr, nullptr, nullptr), "assertion failed: \\(bericht\\)");
  EXPECT_DEATH(printed(mail, fail), "zox_mail_print: assertion failed: \\(parsed_tekst\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        printed(mail);
      },
      "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor::test
