/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/messages.h"

#include <string>

#include <glib.h>
#include <gmock/gmock.h>
#include <libxml/parser.h>

#include "support/xml.h"

namespace velkor::ctl {
namespace {

using ::testing::HasSubstr;

/** What reaches standard error; the handlers before are put back. */
class MessagesTest : public ::testing::Test {
protected:
  MessagesTest() { install_log_handlers(); }
  ~MessagesTest() override {
    set_tracing(false);
    g_log_set_default_handler(g_log_default_handler, nullptr);
    xmlSetGenericErrorFunc(nullptr, nullptr);
  }

  template <typename Action>
  static std::string printed_by(Action action) {
    ::testing::internal::CaptureStderr();
    action();
    return ::testing::internal::GetCapturedStderr();
  }
};

void warn(const char *text) {
  g_log("velkor", G_LOG_LEVEL_WARNING, "%s", text);
}

TEST_F(MessagesTest, WhatIsForTheUserIsPrintedWithoutTheFunction) {
  EXPECT_EQ(printed_by([] { warn("zox_x(): /a kan niet en blijft bewaard als /b\n"); }),
            "velkorctl: warning: /a kan niet en blijft bewaard als /b\n");
  EXPECT_EQ(printed_by([] { warn("posting 7: no text in Tags, passed over"); }),
            "velkorctl: warning: posting 7: no text in Tags, passed over\n");
}

TEST_F(MessagesTest, WhatIsForADeveloperIsPrintedWhileTracing) {
  const auto log = [] {
    warn("zox_x(): no children of root-node!\n");
    g_log("velkor", G_LOG_LEVEL_DEBUG, "a request");
    g_log("other", G_LOG_LEVEL_DEBUG, "another library");
  };
  EXPECT_EQ(printed_by(log), "");
  set_tracing(true);
  EXPECT_EQ(printed_by(log), "velkorctl: trace: zox_x(): no children of root-node!\n"
                             "velkorctl: trace: a request\n");
}

TEST_F(MessagesTest, TheXmlParserIsHeardWhileTracing) {
  const auto parse = [] {
    const xml::Document document(xmlReadMemory("<a>", 3, nullptr, nullptr, 0));
  };
  EXPECT_EQ(printed_by(parse), "");
  set_tracing(true);
  EXPECT_THAT(printed_by(parse), HasSubstr("velkorctl: trace: XML: "));
}

}  // namespace
}  // namespace velkor::ctl
