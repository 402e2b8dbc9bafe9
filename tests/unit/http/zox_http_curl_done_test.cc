/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <map>
#include <string>

#include <curl/curl.h>
#include <gtest/gtest.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "tests/support/core_fixture.h"

namespace velkor {
namespace {

class ZoxHttpCurlDone : public test::CoreTest {
protected:
  ZoxErrorCode done(gint32 transfer_result, const char *text, gint32 require_data = 1) {
    const OwnedString body(zox_string_new(text));
    char *server_text = nullptr;
    const ZoxErrorCode code =
        zox_http_curl_done(transfer_result, body.get(), &server_text, require_data);
    notice.reset(server_text);
    return code;
  }

  OwnedText notice;
};

TEST_F(ZoxHttpCurlDone, MapsLibcurlsResults) {
  const std::map<gint32, ZoxErrorCode> codes{{CURLE_COULDNT_RESOLVE_PROXY, 15},
                                             {CURLE_COULDNT_RESOLVE_HOST, 14},
                                             {CURLE_COULDNT_CONNECT, 16},
                                             {CURLE_WRITE_ERROR, 18},
                                             {CURLE_SEND_ERROR, 18},
                                             {CURLE_READ_ERROR, 17},
                                             {CURLE_RECV_ERROR, 17},
                                             {CURLE_OPERATION_TIMEDOUT, 19}};
  for (gint32 transfer_result = 1; transfer_result < CURL_LAST; ++transfer_result) {
    const auto listed = codes.find(transfer_result);
    EXPECT_EQ(done(transfer_result, "BAN"), listed == codes.end() ? 1U : listed->second)
        << transfer_result;
  }
}

TEST_F(ZoxHttpCurlDone, KnowsTheStatusWordsByTheBeginning) {
  const std::map<const char *, ZoxErrorCode> codes{
      {"UNAUTH", 2},
      {"UNAUTHORIZED", 2},
      {"BAN", 3},
      {"BANANA", 3},
      {"Could not connect to the database", 4},
      {"Could not connect to the database: too many connections", 4},
      {"UPD", 27},
      {"MSG", 29},
  };
  for (const auto &[body, code] : codes)
    EXPECT_EQ(done(CURLE_OK, body), code) << body;
}

TEST_F(ZoxHttpCurlDone, LeavesEveryOtherBodyToTheCaller) {
  for (const char *body : {"<Events/>", "ban", " BAN", "UNAUT", "Could not connect", "OK"})
    EXPECT_EQ(done(CURLE_OK, body), 0U) << body;
}

TEST_F(ZoxHttpCurlDone, HandsOverTheNoticeUntrimmed) {
  EXPECT_EQ(done(CURLE_OK, "MSG  Onderhoud \n"), 29U);
  EXPECT_STREQ(notice.get(), "  Onderhoud \n");
  EXPECT_EQ(done(CURLE_OK, "MSG"), 29U);
  EXPECT_STREQ(notice.get(), "");
}

TEST_F(ZoxHttpCurlDone, HandsOverNoNoticeOtherwise) {
  EXPECT_EQ(done(CURLE_OK, "BAN MSG"), 3U);
  EXPECT_EQ(notice, nullptr);
}

TEST_F(ZoxHttpCurlDone, NeedsNoPlaceForTheNotice) {
  const OwnedString body(zox_string_new("MSGtekst"));
  EXPECT_EQ(zox_http_curl_done(CURLE_OK, body.get(), nullptr, 1), 29U);
}

TEST_F(ZoxHttpCurlDone, TellsAnEmptyBodyWhenDataIsRequired) {
  EXPECT_EQ(done(CURLE_OK, "", 1), 13U);
  EXPECT_EQ(done(CURLE_OK, "", 0), 0U);
}

TEST(ZoxHttpCurlDoneDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_http_curl_done(0, nullptr, nullptr, 0), "assertion failed: \\(core\\)");
}

TEST(ZoxHttpStatusWord, IsTheOneThatTheReplyBeginsWith) {
  EXPECT_EQ(zox_http_status_word(""), ZOX_STATUS_WORD_NONE);
  EXPECT_EQ(zox_http_status_word("unauth"), ZOX_STATUS_WORD_NONE);
  EXPECT_EQ(zox_http_status_word(" BAN"), ZOX_STATUS_WORD_NONE);
  EXPECT_EQ(zox_http_status_word("UNAUTH"), ZOX_STATUS_WORD_UNAUTH);
  EXPECT_EQ(zox_http_status_word("BANANA"), ZOX_STATUS_WORD_BAN);
  EXPECT_EQ(zox_http_status_word("Could not connect to the database!"), ZOX_STATUS_WORD_DATABASE);
  EXPECT_EQ(zox_http_status_word("UPDATE"), ZOX_STATUS_WORD_UPD);
  EXPECT_EQ(zox_http_status_word("MSG tekst"), ZOX_STATUS_WORD_MSG);
}

}  // namespace
}  // namespace velkor
