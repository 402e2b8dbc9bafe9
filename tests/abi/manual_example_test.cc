/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Runs the example program of the manual against a scripted server. */
#include <gtest/gtest.h>

#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"
#include "tests/support/stub_server.h"

namespace velkor::test {
namespace {

constexpr const char *available = R"(<Events>
  <Event Code="0"><Stamp>1199145600</Stamp></Event>
  <Event Code="7"><Chunks>een</Chunks></Event>
</Events>)";

constexpr const char *postings = R"(<Events>
  <Event Code="1"><PostID>7</PostID><Stamp>4000000</Stamp><Status>0</Status><Cat>0</Cat>
    <Title>Linux draait</Title><Poster>gebruiker</Poster></Event>
  <Event Code="1"><PostID>8</PostID><Stamp>4000000</Stamp><Status>0</Status><Cat>0</Cat>
    <Title>Iets anders</Title><Poster>gebruiker</Poster></Event>
</Events>)";

constexpr const char *details =
    "<PostInfo><Post><PostID>7</PostID><Des>een\ntwee</Des></Post></PostInfo>";

const std::vector<std::string> command{VELKOR_MANUAL_EXAMPLE, VELKOR_TEST_PLUGINS "/good"};

class ManualExample : public testing::Test {
protected:
  ManualExample() {
    server_.reply("/3.7.3/xml.php", available);
    server_.reply("/3.7.3/dumps/een.gz", postings);
    server_.reply("/3.7.3/xml-posts.php", details);
    std::filesystem::create_directory(sandbox_.cache());
  }

  void use_settings(const std::string &text) const {
    write_file(sandbox_.cache() / "velkor.conf", text);
  }

  Sandbox sandbox_;
  StubServer server_;
  EnvironmentVariable main_host_{"VELKOR_MAIN_HOST", server_.host()};
  EnvironmentVariable static_host_{"VELKOR_STATIC_HOST", server_.host()};
  EnvironmentVariable bus_{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"};
};

TEST_F(ManualExample, UpdatesShowsAndFetchesDetails) {
  use_settings("username=gebruiker\npassword=woord\n");
  ChildProcess example(command);
  EXPECT_EQ(example.read_line(), "dump 1 of 1");
  EXPECT_EQ(example.read_line(), "update: Geen fout opgetreden");
  EXPECT_EQ(example.read_line(), "1 of 2 postings");
  EXPECT_EQ(example.read_line(), "posting 7: Linux draait");
  EXPECT_EQ(example.read_line(), "<Events>");
  const std::string rest = example.read_rest();
  EXPECT_NE(rest.find("<Title><![CDATA[Linux draait]]></Title>"), std::string::npos);
  EXPECT_EQ(rest.find("Iets anders"), std::string::npos);
  EXPECT_NE(rest.find("</Events>\ndetails of 7: Geen fout opgetreden\n"), std::string::npos);
  EXPECT_EQ(example.wait(), 0);
}

TEST_F(ManualExample, ReportsTheServersNotice) {
  use_settings("username=gebruiker\n");
  server_.reply("/3.7.3/xml.php", "MSGOnderhoud");
  ChildProcess example(command);
  EXPECT_EQ(example.read_line(), "update: Servermededeling ontvangen: Onderhoud");
  EXPECT_EQ(example.read_line(), "0 of 0 postings");
  EXPECT_TRUE(example.read_rest().ends_with("</Events>\n"));
  EXPECT_EQ(example.wait(), 0);
}

TEST_F(ManualExample, NeedsAUser) {
  use_settings("");
  ChildProcess example(command);
  EXPECT_EQ(example.read_rest(), "");
  EXPECT_EQ(example.wait(), 1);
  EXPECT_TRUE(server_.requests().empty());
}

}  // namespace
}  // namespace velkor::test
