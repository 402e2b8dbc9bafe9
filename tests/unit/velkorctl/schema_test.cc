/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The schemas in docs/schemas; VELKOR_RENEW=1 writes them. */
#include "velkorctl/schema.h"

#include <cstdlib>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sandbox.h"
#include "velkorctl/commands.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

using ::testing::HasSubstr;

TEST(Schema, TheFilesAreUpToDate) {
  const fs::path directory = VELKORCTL_SCHEMAS;
  const auto schemas = all_schemas(all_commands());
  std::set<std::string> names;
  for (const auto &[name, text] : schemas) {
    if (std::getenv("VELKOR_RENEW") != nullptr)
      test::write_file(directory / name, text);
    ASSERT_TRUE(fs::exists(directory / name)) << name;
    EXPECT_EQ(test::read_file(directory / name), text) << name;
    names.insert(name);
  }
  for (const auto &entry : fs::directory_iterator(directory))
    EXPECT_TRUE(names.contains(entry.path().filename())) << entry.path();
}

TEST(Schema, DescribesTheFieldsOfACommand) {
  const Fields<int> fields{
      {{.name = "id", .type = type::number()}, [](int) { return Value(); }},
      {{.name = "date", .type = type::moment()}, [](int) { return Value(); }},
      {{.name = "tags", .type = type::list_of(type::object({{"code", type::text()}}))},
       [](int) { return Value(); }}};
  const std::vector<CommandGroup> groups{
      {"box", "", {{"list", "", {}, {}, {}, list_of_records(fields, "box", "boxes")}}}};
  const std::string text = all_schemas(groups).at("velkorctl.box.list.schema.json");
  for (const char *part :
       {R"("title" : "velkorctl box list --format json")", R"("const" : "velkorctl.box.list")",
        R"("format" : "date-time")", R"("id" : {)", R"("code" : {)", R"("items" : {)",
        R"("$ref" : "#/$defs/record")"})
    EXPECT_THAT(text, HasSubstr(part));
}

}  // namespace
}  // namespace velkor::ctl
