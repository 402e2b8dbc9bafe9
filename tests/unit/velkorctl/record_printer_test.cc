/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/record_printer.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::ctl {
namespace {

using ::testing::ElementsAre;

struct Box {
  int id = 0;
  std::string label;
  std::string note;
  int weight = 0;
};

Fields<Box> box_fields() {
  return {{{.name = "id", .type = type::number(), .rank = 1},
           [](const Box &box) -> Value { return box.id; }},
          {{.name = "shortLabel", .type = type::text(), .rank = 2},
           [](const Box &box) -> Value { return box.label; }},
          {{.name = "note", .type = type::text(), .place = Place::below},
           [](const Box &box) -> Value { return box.note; }},
          {{.name = "weight", .type = type::number(), .place = Place::line_unless_zero},
           [](const Box &box) -> Value { return box.weight; }},
          {{.name = "secret", .type = type::text(), .place = Place::nowhere},
           [](const Box &) -> Value { return "hidden"; }}};
}

const std::vector<Box> &boxes() {
  static const std::vector<Box> boxes{
      {2, "tall\tand\nthin", "", 5}, {1, "back\\slash", "two\nlines", 0}, {3, "", "", 5}};
  return boxes;
}

class RecordPrinterTest : public ::testing::Test {
protected:
  using Given = std::vector<std::pair<std::string, std::string>>;

  /** What `print` writes to standard output in the context of a command with this record. */
  template <typename Print>
  static std::string printed(RecordInfo record, const Given &given, Print print) {
    ::testing::internal::CaptureStdout();
    {
      Output out(false, Output::Stream::open);
      const GlobalOptions options;
      Arguments arguments;
      for (const auto &[name, value] : given)
        arguments.set(name, {value});
      Command command{"list", "", {}, {}, {}};
      command.record = std::move(record);
      print(Context{options, arguments, out, command, "box.list"});
      out.flush();
    }
    return ::testing::internal::GetCapturedStdout();
  }

  static std::string list(const Given &given, const std::vector<Box> &items = boxes(),
                          const Result &result = {}) {
    return printed(
        list_of_records(box_fields(), "box", "boxes"), given,
        [&](const Context &context) { print_records(context, box_fields(), items, result); });
  }

  static std::string one(const Given &given, const Box &box) {
    return printed(one_record(box_fields()), given,
                   [&](const Context &context) { print_record(context, box_fields(), box); });
  }

  test::Sandbox sandbox;
};

TEST_F(RecordPrinterTest, ATableHasTheImportantFieldsALineEach) {
  EXPECT_EQ(list({}), "ID  SHORT LABEL\n2  tall and thin\n1  back\\slash\n3\n");
  EXPECT_EQ(list({{"--no-header", ""}}, {boxes()[1]}), "1  back\\slash\n");
}

TEST_F(RecordPrinterTest, FieldsAreChosenAndOrderedByName) {
  EXPECT_EQ(list({{"--fields", "weight,id"}}), "WEIGHT  ID\n5  2\n0  1\n5  3\n");
  EXPECT_EQ(list({{"--fields", "secret"}}, {boxes()[0]}), "SECRET\nhidden\n");
}

TEST_F(RecordPrinterTest, TabSeparatedValuesHaveEveryFieldWithEscapes) {
  EXPECT_EQ(list({{"--format", "tsv"}}), "id\tshortLabel\tnote\tweight\tsecret\n"
                                         "2\ttall\\tand\\nthin\t\t5\thidden\n"
                                         "1\tback\\\\slash\ttwo\\nlines\t0\thidden\n"
                                         "3\t\t\t5\thidden\n");
}

TEST_F(RecordPrinterTest, LinesOfJsonHaveOneObjectEach) {
  EXPECT_EQ(list({{"--format", "ndjson"}, {"--fields", "id,weight"}}),
            "{\"id\":2,\"weight\":5}\n{\"id\":1,\"weight\":0}\n{\"id\":3,\"weight\":5}\n");
}

TEST_F(RecordPrinterTest, AJsonDocumentSaysWhatItIs) {
  EXPECT_EQ(list({{"--format", "json"}, {"--fields", "id"}}, boxes(),
                 {.code = Exit::not_found, .message = "no \"box\"", .facts = {{"total", 3}}}),
            "{\"schema\":\"velkorctl.box.list\",\"version\":1,\"code\":7,"
            "\"message\":\"no \\\"box\\\"\",\"total\":3,\"items\":[\n"
            "{\"id\":2},\n{\"id\":1},\n{\"id\":3}\n]}\n");
  EXPECT_EQ(list({{"--format", "json"}}, {}),
            "{\"schema\":\"velkorctl.box.list\",\"version\":1,\"code\":0,\"message\":\"\","
            "\"items\":[]}\n");
  EXPECT_EQ(one({{"--format", "json"}, {"--fields", "id"}}, boxes()[0]),
            "{\"schema\":\"velkorctl.box.list\",\"version\":1,\"code\":0,\"message\":\"\","
            "\"item\":{\"id\":2}}\n");
}

TEST_F(RecordPrinterTest, ADocumentInMemoryIsThatOfTheCommand) {
  EXPECT_EQ(json_list("box.list", box_fields(), boxes()), list({{"--format", "json"}}));
}

TEST_F(RecordPrinterTest, OneRecordHasALinePerFieldThatIsKnown) {
  EXPECT_EQ(one({}, boxes()[0]), "ID           2\nShort label  tall and thin\nWeight       5\n");
  EXPECT_EQ(one({}, boxes()[1]), "ID           1\nShort label  back\\slash\n\nNote:\ntwo\nlines\n");
  EXPECT_EQ(one({{"--fields", "secret,id"}}, boxes()[2]), "Secret  hidden\nID      3\n");
}

TEST_F(RecordPrinterTest, EqualItemsKeepTheirOrderWhenSorted) {
  const auto ids = [](const RecordPrinterTest::Given &given) {
    RecordPrinterTest::Given all{{"--format", "tsv"}, {"--fields", "id"}, {"--no-header", ""}};
    all.insert(all.end(), given.begin(), given.end());
    return list(all);
  };
  EXPECT_EQ(ids({{"--sort", "weight"}}), "1\n2\n3\n");
  EXPECT_EQ(ids({{"--sort", "id"}, {"--reverse", ""}}), "3\n2\n1\n");
  EXPECT_EQ(ids({{"--sort", "id"}, {"--limit", "2"}}), "1\n2\n");
  EXPECT_EQ(ids({{"--reverse", ""}, {"--limit", "1"}}), "3\n");
}

TEST_F(RecordPrinterTest, EventsAreOneDocumentThatGrows) {
  const std::string text =
      printed(events_of(box_fields()), {{"--format", "json"}}, [](const Context &context) {
        RecordPrinter<Box> printer(context, box_fields());
        printer.add(boxes()[0]);
        printer.finish();
      });
  EXPECT_THAT(text, ::testing::HasSubstr("\"items\":[\n{\"id\":2,"));
}

TEST(TitleOf, IsMadeOfTheNameUnlessThereIsOne) {
  const auto title = [](const char *name, const char *given) {
    return title_of({.name = name, .type = type::text(), .title = given});
  };
  EXPECT_THAT((std::vector{title("fileName", ""), title("id", ""), title("fileName", "File")}),
              ElementsAre("File name", "ID", "File"));
  EXPECT_EQ(title("id", "Number"), "Number");
}

}  // namespace
}  // namespace velkor::ctl
