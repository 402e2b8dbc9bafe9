/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_http_parameter.h>

#include <string>

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(ZoxHttpParameter, HoldsCopies) {
  std::string name = "naam";
  std::string value = "waarde";
  ZoxHttpParameter *parameter = zox_http_parameter_new(name.c_str(), value.c_str());
  name = value = "";
  EXPECT_STREQ(parameter->paramName->str, "naam");
  EXPECT_STREQ(parameter->paramValue->str, "waarde");
  zox_http_parameter_free(parameter);
}

TEST(ZoxHttpParameter, IsFreedWithItsList) {
  GSList *list = g_slist_append(nullptr, zox_http_parameter_new("a", "1"));
  zox_http_parameter_free_all(g_slist_append(list, zox_http_parameter_new("b", "")));
  zox_http_parameter_free_all(nullptr);
}

TEST(ZoxHttpParameterDeathTest, NeedsNameAndValue) {
  EXPECT_DEATH(zox_http_parameter_new(nullptr, "a"), "assertion failed: \\(name\\)");
  EXPECT_DEATH(zox_http_parameter_new("a", nullptr), "assertion failed: \\(value\\)");
}

TEST(ZoxHttpParameterDeathTest, FreesOnlyWhatIsWhole) {
  EXPECT_DEATH(zox_http_parameter_free(nullptr), "assertion failed: \\(parameter\\)");
  ZoxHttpParameter nameless{nullptr, nullptr};
  EXPECT_DEATH(zox_http_parameter_free(&nameless), "assertion failed: \\(parameter->paramName\\)");
  GString text{};
  ZoxHttpParameter valueless{&text, nullptr};
  EXPECT_DEATH(zox_http_parameter_free(&valueless),
               "assertion failed: \\(parameter->paramValue\\)");
}

TEST(ZoxHttpParameterDeathTest, FreesNoListWithGaps) {
  EXPECT_DEATH(zox_http_parameter_free_all(g_slist_append(nullptr, nullptr)),
               "assertion failed: \\(param\\)");
}

}  // namespace
}  // namespace velkor
