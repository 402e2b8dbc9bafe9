/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The guide explains every sentence that a result has, and gives the exit code that goes with it.
 */
#include <map>
#include <regex>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_codes.h>
#include <velkor/zox_http_curl.h>

#include "support/owned.h"
#include "tests/support/sandbox.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

struct Row {
  std::string sentence;
  std::string exit;
};

/** The rows of the guide's table, by the number of the result. */
std::map<ZoxErrorCode, Row> rows_of_the_guide() {
  static const std::regex row(R"(\| (\d+) \| (.+?) \| (.+?) \| (.+?) \|)");
  const std::string page = test::read_file(VELKOR_GUIDE);
  std::istringstream lines(page.substr(page.find("\n| number | sentence |")));
  std::map<ZoxErrorCode, Row> rows;
  for (std::string line; std::getline(lines, line);)
    if (std::smatch match; std::regex_match(line, match, row))
      rows[static_cast<ZoxErrorCode>(std::stoul(match[1]))] = {match[2], match[3]};
  return rows;
}

/** "update" alone decides about the exit code when there is nothing new. */
std::string exit_words(ZoxErrorCode code) {
  if (code == ZOX_RESULT_NOTHING_NEW)
    return "0 or 5";
  return std::to_string(static_cast<int>(exit_of(code)));
}

/** The library's sentence, or that of the command where the library has none. */
std::string sentence_for(ZoxErrorCode code) {
  static const std::string none = OwnedText(zox_error_msg(ZOX_RESULT_NO_PROFILE + 1, "")).get();
  const char *text = code == ZOX_RESULT_SERVER_NOTICE ? "TEXT" : nullptr;
  std::string sentence = OwnedText(zox_error_msg(code, text)).get();
  return sentence == none ? sentence_of(code, text) : sentence;
}

TEST(SentencesPage, HasEveryResultWithItsSentenceAndExitCode) {
  zox_http_set_hosts("HOST", "HOST");
  std::map<ZoxErrorCode, Row> expected;
  const auto addressee = static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN);
  expected[addressee] = {sentence_for(addressee), exit_words(addressee)};
  const std::string none = sentence_for(ZOX_RESULT_NO_PROFILE + 1);
  for (ZoxErrorCode code = 0; sentence_for(code) != none; ++code)
    expected[code] = {sentence_for(code), exit_words(code)};
  EXPECT_GT(expected.size(), static_cast<std::size_t>(ZOX_RESULT_NO_PROFILE));

  const std::map<ZoxErrorCode, Row> found = rows_of_the_guide();
  for (const auto &[code, row] : expected) {
    ASSERT_TRUE(found.contains(code)) << code;
    EXPECT_EQ(found.at(code).sentence, row.sentence) << code;
    EXPECT_EQ(found.at(code).exit, row.exit) << code;
  }
  EXPECT_EQ(found.size(), expected.size());
  zox_http_set_hosts(nullptr, nullptr);
}

}  // namespace
}  // namespace velkor::ctl
