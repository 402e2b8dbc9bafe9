/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What all services have in common: how a request that failed is reported. */
#include <functional>
#include <ostream>

#include <velkor/zox_eventinfo.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_kudos.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_profile.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

struct Operation {
  const char *name;
  const char *path;
  std::function<ZoxErrorCode(char **message)> run;
  /** The result of an empty reply where that is not reported as one. */
  ZoxErrorCode empty = 13;
  /** Whether the place for a message may be left out. */
  bool place_optional = true;
};

void PrintTo(const Operation &operation, std::ostream *out) {
  *out << operation.name;
}

/** Runs it and checks that what it would fill in success stays as it is. */
ZoxErrorCode check_mail(char **message) {
  guint32 waiting = 7;
  const ZoxErrorCode code = zox_mail_check(&waiting, message);
  EXPECT_EQ(waiting, 7U);
  return code;
}

ZoxErrorCode fetch_mail(char **message) {
  guint32 count = 7;
  const ZoxErrorCode code = zox_mail_fetch(&count, message);
  EXPECT_EQ(count, 7U);
  EXPECT_EQ(core->mail, nullptr);
  return code;
}

ZoxErrorCode post_mail(char **message) {
  ZoxBericht *bericht = zox_mail_bericht_new("aan", "over", "een\ntwee", 5);
  const ZoxErrorCode code = zox_mail_post(bericht, message);
  EXPECT_EQ(text_of(bericht->body), "een\ntwee");
  EXPECT_EQ(bericht->stamp, 5);
  EXPECT_EQ(bericht->code, 0U);
  EXPECT_EQ(core->mail, nullptr);
  zox_mail_bericht_free(bericht);
  return code;
}

ZoxErrorCode get_kudos(char **message) {
  gint32 first = 7;
  gint32 second = 8;
  const ZoxErrorCode code = zox_kudos_get(1, &first, &second, message);
  EXPECT_EQ(first, 7);
  EXPECT_EQ(second, 8);
  return code;
}

ZoxErrorCode warn(char **message) {
  gint32 number = 7;
  const ZoxErrorCode code = zox_modje_send(1, 0, "reden", &number, message);
  EXPECT_EQ(number, 7);
  return code;
}

ZoxErrorCode get_profile(char **message) {
  ZoxProfile *profile = nullptr;
  const ZoxErrorCode code = zox_profile_get("naam", &profile, message);
  EXPECT_EQ(profile, nullptr);
  return code;
}

const Operation operations[] = {
    {"MailCheck", "/3.7.3/xml-mail.php", check_mail},
    {"MailFetch", "/3.7.3/xml-mail.php", fetch_mail},
    {"MailPost", "/3.7.3/xml-mail.php", post_mail},
    {"KudosGive", "/3.7.3/xml-kudos.php",
     [](char **message) { return zox_kudos_give(1, 2, message); }},
    {"KudosGet", "/3.7.3/xml-kudos.php", get_kudos},
    {"ModjeSend", "/3.7.3/xml-warn.php", warn},
    {"ProfileGet", "/3.7.3/xml-user.php", get_profile, 33, false},
    {"MyzoxUpdate", "/3.7.3/xml-myzox.php",
     [](char **message) { return zox_myzox_update(1, message); }, 0},
    {"ForumPost", "/3.7.3/xml-forum.php",
     [](char **message) { return zox_events_forum_post("tekst", 1, 0, message); }},
    {"ForumFetch", "/3.7.3/xml-dyn.php",
     [](char **message) { return zox_events_forum_fetch(1, 0, message); }},
    {"EventinfoFetch", "/3.7.3/xml-posts.php",
     [](char **message) { return zox_eventinfo_fetch(1, message); }},
};

class ServiceFailure : public ServiceTest, public testing::WithParamInterface<Operation> {
protected:
  ServiceFailure() { cache(1); }

  ZoxErrorCode run() { return GetParam().run(message); }
};

TEST_P(ServiceFailure, GivesTheCodeOfTheRequestWithoutAMessage) {
  const std::pair<const char *, ZoxErrorCode> words[] = {
      {"UNAUTH", 2}, {"BANNED", 3}, {"Could not connect to the database", 4}, {"UPD", 27}};
  for (const auto &[word, code] : words) {
    server.reply(GetParam().path, word);
    EXPECT_EQ(run(), code) << word;
    EXPECT_EQ(message.text(), "(null)") << word;
  }
}

TEST_P(ServiceFailure, HandsTheServersNoticeOver) {
  server.reply(GetParam().path, "MSGOnderhoud tot 5 uur");
  EXPECT_EQ(run(), 29U);
  EXPECT_EQ(message.text(), "Onderhoud tot 5 uur");
  if (GetParam().place_optional) {
    EXPECT_EQ(GetParam().run(nullptr), 29U);
  }
}

TEST_P(ServiceFailure, JudgesAnEmptyReply) {
  server.reply(GetParam().path, "");
  standard_error_of([this] { EXPECT_EQ(run(), GetParam().empty); });
  EXPECT_EQ(server.requests(GetParam().path).size(), 1U);
}

TEST_P(ServiceFailure, TellsOfABrokenConnection) {
  server.reply(GetParam().path, StubReply{.body = "Y12*1", .claim_length = 500});
  EXPECT_NE(run(), 0U);
  EXPECT_EQ(message.text(), "(null)");
}

TEST_P(ServiceFailure, TellsOfARequestThatNeverGotAReply) {
  core->config->password = zox_string_new("wachtwoord");
  zox_file_set_lib_dir(sandbox.home().c_str());
  EXPECT_EQ(run(), 8U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_TRUE(server.requests().empty());
}

INSTANTIATE_TEST_SUITE_P(AllServices, ServiceFailure, testing::ValuesIn(operations),
                         [](const auto &one) { return std::string(one.param.name); });

}  // namespace
}  // namespace velkor::test
