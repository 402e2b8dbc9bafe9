/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/request_watch.h"

#include <gmock/gmock.h>
#include <velkor/zox_http_curl.h>

#include "parts_fixture.h"

namespace velkor::ctl {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class RequestWatchTest : public PartsTest {
protected:
  RequestWatchTest() { zox_http_set_transfer_callback(on_transfer, nullptr); }
  ~RequestWatchTest() override { zox_http_set_transfer_callback(nullptr, nullptr); }

  /** A request to a port at which nobody listens. */
  static void send_failing_request() {
    zox_http_curl_execute("http://127.0.0.1:1/path", nullptr, 0, nullptr, 0, nullptr, 0);
  }

private:
  static gint on_transfer(gint64 received, gint64 /*total*/, gpointer /*data*/) noexcept {
    return note_transfer(received);
  }
};

TEST_F(RequestWatchTest, KnowsTheRequestThatFailed) {
  const RequestWatch watch;
  EXPECT_EQ(watch.failure(), std::nullopt);
  send_failing_request();
  ASSERT_NE(watch.failure(), std::nullopt);
  EXPECT_THAT(watch.failure()->words(), StartsWith("127.0.0.1:1: "));
  EXPECT_THAT(watch.failure()->words(), HasSubstr("onnect"));
}

TEST_F(RequestWatchTest, LeavesAnEarlierRequestAlone) {
  send_failing_request();
  const RequestWatch watch;
  EXPECT_EQ(watch.failure(), std::nullopt);
}

TEST_F(RequestWatchTest, SeesARequestThatFailsAsTheOneBefore) {
  send_failing_request();
  const RequestWatch watch;
  send_failing_request();
  EXPECT_NE(watch.failure(), std::nullopt);
}

TEST(RequestFailureWords, NameTheStatusOrTheReason) {
  RequestFailure failure{.host = "host:1", .path = "/x", .text = "why"};
  EXPECT_EQ(failure.words(), "host:1: why");
  failure.http_status = 500;
  EXPECT_EQ(failure.words(), "host:1: HTTP status 500");
  failure.transfer_result = 18;
  EXPECT_EQ(failure.words(), "host:1: HTTP status 500, why");
  failure.proxy_failed = true;
  EXPECT_THAT(failure.words(), StartsWith("host:1 through the proxy: "));
  EXPECT_EQ((RequestFailure{.code = ZOX_RESULT_BANNED,
                            .http_status = 200,
                            .host = "host",
                            .text = "the reply is a status word"})
                .words(),
            "host");
}

}  // namespace
}  // namespace velkor::ctl
