/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Private mail between members. */
#include <gmock/gmock.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;

constexpr const char *mail = "/3.7.3/xml-mail.php";

class ServerMail : public ServerTest {
protected:
  ServerMail() {
    start({"--postings", "5", "--now", "1227351600"});
    server->add_account("anna", "kwartel");
  }

  std::string as_anna(const Parameters &parameters) {
    return ask(mail, parameters, "anna", "kwartel").body;
  }
};

TEST_F(ServerMail, AMessageIsDeliveredOnce) {
  EXPECT_EQ(body_of(mail, {{"mode", "check"}}), "N");
  EXPECT_EQ(as_anna({{"mode", "write"}, {"to", "demo"}, {"s", "Hé & ho"}, {"b", "a\n<b>]]>"}}),
            "SENT");
  EXPECT_EQ(body_of(mail, {{"mode", "check"}}), "Y");
  EXPECT_EQ(as_anna({{"mode", "check"}}), "N");
  const std::string reply = body_of(mail, {{"mode", "read"}});
  const std::string event = "/Mail/Event[@Code='1']/";
  EXPECT_THAT(find_in_xml(reply, event + "From"), ElementsAre("anna"));
  EXPECT_THAT(find_in_xml(reply, event + "Subject"), ElementsAre("Hé & ho"));
  EXPECT_THAT(find_in_xml(reply, event + "Body"), ElementsAre("a\n<b>]]>"));
  EXPECT_THAT(find_in_xml(reply, event + "Stamp"), ElementsAre("1227351600"));
  EXPECT_EQ(body_of(mail, {{"mode", "check"}}), "N");
}

TEST_F(ServerMail, MessagesArriveInTheOrderOfSending) {
  for (const char *subject : {"een", "twee", "drie"})
    as_anna({{"mode", "write"}, {"to", "demo"}, {"s", subject}, {"b", "x"}});
  EXPECT_THAT(find_in_xml(body_of(mail, {{"mode", "read"}}), "//Subject"),
              ElementsAre("een", "twee", "drie"));
}

TEST_F(ServerMail, WithoutMessagesThereIsAnEventWithCodeZero) {
  EXPECT_THAT(find_in_xml(body_of(mail, {{"mode", "read"}}), "/Mail/Event/@Code"),
              ElementsAre("0"));
}

TEST_F(ServerMail, EmptyTextsHaveElements) {
  as_anna({{"mode", "write"}, {"to", "demo"}, {"s", ""}, {"b", ""}});
  const std::string reply = body_of(mail, {{"mode", "read"}});
  EXPECT_THAT(find_in_xml(reply, "//Event[Subject and Body]/Subject"), ElementsAre(""));
}

TEST_F(ServerMail, UnknownRecipientsAreNotFound) {
  EXPECT_EQ(as_anna({{"mode", "write"}, {"to", "niemand"}, {"s", "x"}, {"b", "x"}}), "NOTFOUND");
}

TEST_F(ServerMail, TheControlPortSendsMessages) {
  server->command("POST", "/message",
                  {{"to", "demo"}, {"from", "beheer"}, {"subject", "Welkom"}, {"body", "Dag!"}});
  EXPECT_EQ(first_in_xml(body_of(mail, {{"mode", "read"}}), "//From"), "beheer");
  EXPECT_THROW(server->command("POST", "/message", {{"to", "niemand"}, {"from", "x"}}),
               std::runtime_error);
}

TEST_F(ServerMail, OtherModesAreRejected) {
  EXPECT_EQ(body_of(mail, {{"mode", "verbrand"}}), "FAIL");
  EXPECT_EQ(body_of(mail), "FAIL");
}

}  // namespace
}  // namespace velkor::test
