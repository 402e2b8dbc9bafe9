/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What all endpoints have in common. */
#include <glib.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

class ServerEndpoint : public ServerTest, public ::testing::WithParamInterface<const char *> {};

TEST_P(ServerEndpoint, IsForMembersOnly) {
  start();
  EXPECT_EQ(ask_as_nobody(GetParam()).body, "UNAUTH");
  EXPECT_NE(ask(GetParam()).body, "UNAUTH");
  EXPECT_EQ(ask(GetParam()).status, 200);
}

TEST_P(ServerEndpoint, InjectsFaults) {
  start({"--postings", "1", "--fault", std::string(GetParam()) + "=message:1:Onderhoud"});
  EXPECT_EQ(ask(GetParam()).body, "MSGOnderhoud");
}

TEST_P(ServerEndpoint, SurvivesInvalidParameters) {
  start();
  for (const char *value : {"", "-1", "0", "99999999999999999999", "'; DROP TABLE posting; --",
                            "\xff\xfe\x01", "|||", "<a>&amp;"}) {
    Parameters parameters;
    for (const char *name : {"lc", "id", "mode", "m", "s", "b", "t", "g", "c", "user", "data", "to",
                             "kudos", "forumid", "lastcheck", "section"})
      parameters.emplace_back(name, value);
    EXPECT_EQ(ask(GetParam(), parameters).status, 200) << value;
  }
  EXPECT_TRUE(is_xml(ask("/3.7.3/xml-groups.php").body));
}

INSTANTIATE_TEST_SUITE_P(
    All, ServerEndpoint,
    ::testing::Values("/3.7.3/xml.php", "/3.7.3/xml-groups.php", "/3.7.3/xml-findpost.php",
                      "/3.7.3/xml-posts.php", "/3.7.3/xml-dyn.php", "/3.7.3/xml-forum.php",
                      "/3.7.3/xml-wlist.php", "/3.7.3/xml-mail.php", "/3.7.3/xml-kudos.php",
                      "/3.7.3/xml-warn.php", "/3.7.3/xml-user.php", "/3.7.3/xml-myzox.php",
                      "/3.7.3/xml-post.php"),
    [](const auto &endpoint) {
      std::string name = endpoint.param;
      std::erase_if(name, [](char letter) { return g_ascii_isalpha(letter) == FALSE; });
      return name;
    });

}  // namespace
}  // namespace velkor::test
