/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The man page speaks of every command and every option. */
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sandbox.h"
#include "velkorctl/command_line.h"
#include "velkorctl/commands.h"

namespace velkor::ctl {
namespace {

using ::testing::HasSubstr;

/** The text of the page without the escapes of its dashes. */
std::string man_page() {
  std::string text = test::read_file(VELKORCTL_MAN_PAGE);
  for (std::size_t at = text.find("\\-"); at != std::string::npos; at = text.find("\\-", at))
    text.erase(at, 1);
  return text;
}

/** The part of the page about one command. */
std::string section_of(const std::string &page, const std::string &command) {
  const std::size_t begin = page.find("\n.SS " + command);
  return begin == std::string::npos ? "" : page.substr(begin, page.find("\n.S", begin + 1) - begin);
}

/** Calls `check` with every command and its whole name, such as "config set". */
template <typename Check>
void for_each_command(Check check) {
  for (const CommandGroup &group : all_commands())
    for (const Command &command : group.commands)
      check(command, group.name.empty() ? command.name : group.name + " " + command.name);
}

TEST(ManPage, DescribesEveryCommandWithItsArguments) {
  const std::string page = man_page();
  for_each_command([&](const Command &command, const std::string &name) {
    const std::string section = section_of(page, name);
    EXPECT_NE(section, "") << name;
    for (const Argument &argument : command.arguments)
      EXPECT_THAT(section, HasSubstr(argument.name)) << name;
  });
}

TEST(ManPage, DescribesEveryOption) {
  const std::string page = man_page();
  for (const Option &option : global_options())
    EXPECT_THAT(page, HasSubstr(option.names));
  for_each_command([&](const Command &command, const std::string &name) {
    for (const Option &option : command.options)
      EXPECT_THAT(page, HasSubstr(option.long_name())) << name;
  });
}

TEST(ManPage, NamesEveryExitCode) {
  const std::string page = man_page();
  for (const Exit exit :
       {Exit::ok, Exit::failed, Exit::usage, Exit::account, Exit::busy, Exit::nothing_new,
        Exit::files, Exit::not_found, Exit::command_failed, Exit::interrupted, Exit::broken_pipe})
    EXPECT_THAT(page, HasSubstr("\n.B " + std::to_string(static_cast<int>(exit)) + "\n"));
}

}  // namespace
}  // namespace velkor::ctl
