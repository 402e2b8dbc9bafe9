/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/value.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::ctl {
namespace {

class ValueTest : public ::testing::Test {
protected:
  static std::string json(const Value &value) {
    Json json;
    json.begin_array();
    add_to(json, nullptr, value);
    const std::string array = json.end_array().compact();
    return array.substr(1, array.size() - 2);
  }

  const Value object =
      Value::Object{"DivX", {{"code", "a0"}, {"name", "DivX"}, {"group", Value()}}};

private:
  test::Sandbox sandbox_;
};

TEST_F(ValueTest, HasATextForPeople) {
  EXPECT_EQ(text_for_people({}), "");
  EXPECT_EQ(text_for_people(true), "yes");
  EXPECT_EQ(text_for_people(false), "no");
  EXPECT_EQ(text_for_people(-12), "-12");
  EXPECT_EQ(text_for_people("x"), "x");
  EXPECT_EQ(text_for_people(Moment{1700000000}), "2023-11-14 23:13");
  EXPECT_EQ(text_for_people(Value::List{"a", object, 3}), "a, DivX, 3");
}

TEST_F(ValueTest, HasATextForScripts) {
  EXPECT_EQ(text_for_scripts({}), "");
  EXPECT_EQ(text_for_scripts(true), "true");
  EXPECT_EQ(text_for_scripts(false), "false");
  EXPECT_EQ(text_for_scripts(Moment{1700000000}), "2023-11-14T23:13:20+01:00");
  EXPECT_EQ(text_for_scripts(Moment{1690000000}), "2023-07-22T06:26:40+02:00");
  EXPECT_EQ(text_for_scripts(Value::List{Moment{1700000000}, false}),
            "2023-11-14T23:13:20+01:00, false");
}

TEST_F(ValueTest, HasAJsonForm) {
  EXPECT_EQ(json({}), "null");
  EXPECT_EQ(json(true), "true");
  EXPECT_EQ(json(std::int64_t{1} << 40), "1099511627776");
  EXPECT_EQ(json("a\"b"), R"("a\"b")");
  EXPECT_EQ(json(Moment{1700000000}), R"("2023-11-14T23:13:20+01:00")");
  EXPECT_EQ(json(Value::List{1, object}), R"([1,{"code":"a0","name":"DivX","group":null}])");
}

TEST_F(ValueTest, NoTextAndNoTimeAreNothing) {
  EXPECT_EQ(json(static_cast<const char *>(nullptr)), "null");
  EXPECT_EQ(json(static_cast<const GString *>(nullptr)), "null");
  EXPECT_EQ(json(text_or_nothing("")), "null");
  EXPECT_EQ(json(moment_or_nothing(0)), "null");
  EXPECT_EQ(json(moment_or_nothing(-5)), "null");
  EXPECT_EQ(json(unless_zero(0)), "null");
  EXPECT_TRUE(Value("").is_empty());
  EXPECT_TRUE(Value(Value::List{}).is_empty());
  EXPECT_FALSE(Value(0).is_empty());
  EXPECT_FALSE(Value(false).is_empty());
}

TEST_F(ValueTest, SortsNumbersBySizeAndTextsWithoutRegardToCase) {
  EXPECT_LT(SortKey(9), SortKey(10));
  EXPECT_LT(SortKey(-1), SortKey(0));
  EXPECT_LT(SortKey(Moment{5}), SortKey(Moment{6}));
  EXPECT_LT(SortKey(false), SortKey(true));
  EXPECT_LT(SortKey("alpha"), SortKey("Beta"));
  EXPECT_EQ(SortKey("alpha"), SortKey("ALPHA"));
  EXPECT_LT(SortKey(Value::List{"a"}), SortKey(Value::List{"b"}));
}

TEST_F(ValueTest, NothingComesFirst) {
  EXPECT_LT(SortKey(Value()), SortKey(-5));
  EXPECT_LT(SortKey(Value()), SortKey("a"));
  EXPECT_LT(SortKey(""), SortKey(" "));
}

}  // namespace
}  // namespace velkor::ctl
