/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The manual and the man page cover every fault, command and option. */
#include <regex>
#include <set>

#include <gmock/gmock.h>

#include "tests/integration/server_test.h"
#include "tests/support/child_process.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

std::string read_project_file(const char *name) {
  return read_file(std::filesystem::path(VELKOR_TEST_DIR) / "../.." / name);
}

std::string output_of(const std::string &option) {
  return ChildProcess({ZOX_SERVER_PROGRAM, option}).read_rest();
}

/** All matches of a pattern's first group in a text. */
std::set<std::string> all_in(const std::string &text, const char *pattern) {
  const std::regex expression(pattern, std::regex::ECMAScript | std::regex::multiline);
  std::set<std::string> found;
  for (std::sregex_iterator place(text.begin(), text.end(), expression), end; place != end; ++place)
    found.insert((*place)[1]);
  return found;
}

/** The man page without its font and hyphen escapes. */
std::string man_page() {
  const std::string page = read_project_file("man/zox-server.1");
  return std::regex_replace(std::regex_replace(page, std::regex(R"(\\-)"), "-"),
                            std::regex(R"(\\f.)"), "");
}

class ServerManual : public ServerTest {
protected:
  const std::string manual = read_project_file("docs/server.md");
};

TEST_F(ServerManual, DescribesEveryFaultAsTheProgramDoes) {
  const std::string faults = output_of("--list-faults");
  const std::regex line("([a-z0-9-]+) +(.+)");
  for (std::sregex_iterator place(faults.begin(), faults.end(), line), end; place != end; ++place)
    EXPECT_THAT(manual, HasSubstr("| `" + (*place)[1].str() + "` | " + (*place)[2].str() + " |"));
}

TEST_F(ServerManual, ListsNoUnknownFault) {
  const std::string section = manual.substr(manual.find("## Faults"));
  EXPECT_EQ(all_in(section, "^\\| `([a-z-]+)` \\|"),
            all_in(output_of("--list-faults"), "^([a-z-]+)"));
}

TEST_F(ServerManual, ListsEveryCommand) {
  start();
  const std::string commands = server->command("GET", "/commands");
  EXPECT_THAT(all_in(manual, "`[A-Z]+ (/[a-z-]+)`"),
              IsSupersetOf(all_in(commands, "\"path\" : \"([^\"]+)\"")));
}

TEST_F(ServerManual, TheManPageListsEveryFault) {
  for (const std::string &kind : all_in(output_of("--list-faults"), "^([a-z-]+)"))
    EXPECT_TRUE(man_page().find(kind) != std::string::npos) << kind;
}

TEST_F(ServerManual, TheManPageListsEveryOption) {
  EXPECT_EQ(all_in(man_page(), "^\\.BI? (--[a-z-]+)"), all_in(output_of("--help"), "(--[a-z-]+)"));
}

}  // namespace
}  // namespace velkor::test
