/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/servers.h"

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

TEST(Servers, AreHostsWithAPortAndHttps) {
  for (const char *server : {"", "zox.example", "https://zox.example", "zox.example:8080",
                             "https://zox-1.example:443", "127.0.0.1:80", "[::1]:8080", "[::1]"})
    EXPECT_TRUE(is_server(server)) << server;
}

TEST(Servers, AreNothingElse) {
  for (const char *text : {"http://zox.example", "zox.example/path", "zox example", "zox.example:",
                           "zox.example:0", "zox.example:65536", "zox.example:080", ":80",
                           "https://", "[::1", "[]", "[::1]80", "user@zox.example", "zox\nexample"})
    EXPECT_FALSE(is_server(text)) << text;
}

TEST(Servers, ComeBackFromTheirFile) {
  const test::TemporaryDirectory directory;
  const auto file = directory.path() / "velkor" / "servers.ini";
  const Servers servers{"https://zox.example", "dumps.example:81"};
  EXPECT_EQ(read_servers(file), Servers{});
  EXPECT_EQ(write_servers(file, servers), "");
  EXPECT_EQ(read_servers(file), servers);
}

TEST(Servers, ThatAreNoneInTheFileAreLeftOut) {
  const test::TemporaryDirectory directory;
  const auto file = directory.path() / "servers.ini";
  test::write_file(file, "[Servers]\nmain=not a server\ndumps=dumps.example\n");
  EXPECT_EQ(read_servers(file), (Servers{"", "dumps.example"}));
}

TEST(Servers, TellWhyTheyCannotBeWritten) {
  const test::TemporaryDirectory directory;
  test::write_file(directory.path() / "file", "in the way");
  EXPECT_NE(write_servers(directory.path() / "file" / "servers.ini", {}), "");
}

}  // namespace
}  // namespace velkor::app
