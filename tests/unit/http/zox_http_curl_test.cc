/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_http_curl.h>

#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <velkor/zox_string.h>

#include "http/transfer.h"
#include "tests/support/fresh_process.h"
#include "tests/support/log_capture.h"
#include "tests/support/server_fixture.h"
#include "tests/unit/http/request.h"

namespace velkor {
namespace {

bool no_handles = false;

/** The options with a number that this thread set last. */
thread_local std::map<CURLoption, long> numbers;

}  // namespace
}  // namespace velkor

/** Stands before libcurl's own function, so that a test can run out of handles. */
extern "C" CURL *curl_easy_init() {
  using Function = CURL *(*)();
  static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "curl_easy_init"));
  return velkor::no_handles ? nullptr : original();
}

#undef curl_easy_setopt

// libcurl's own declaration has an enumeration in front of the variable arguments.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wvarargs"
#endif

/** Stands before libcurl's own function, so that a test sees the options that show no effect. */
extern "C" CURLcode curl_easy_setopt(CURL *handle, CURLoption option, ...) {
  using Function = CURLcode (*)(CURL *, CURLoption, ...);
  static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "curl_easy_setopt"));
  va_list arguments;
  va_start(arguments, option);
  CURLcode result = CURLE_OK;
  if (option < CURLOPTTYPE_OBJECTPOINT) {
    velkor::numbers[option] = va_arg(arguments, long);
    result = original(handle, option, velkor::numbers[option]);
  } else {
    result = original(handle, option, va_arg(arguments, void *));
  }
  va_end(arguments);
  return result;
}

namespace velkor {
namespace {

namespace fs = std::filesystem;
using test::Outcome;
using test::Request;
using test::StubReply;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using testing::StrEq;

constexpr const char *path = "/3.7.3/xml.php";

class ZoxHttpCurlExecute : public test::ServerCoreTest {
protected:
  /** The only request so far. */
  [[nodiscard]] test::StubRequest request() const {
    const auto requests = server.requests();
    return requests.size() == 1 ? requests.front() : test::StubRequest{};
  }
};

TEST_F(ZoxHttpCurlExecute, FetchesAReply) {
  server.reply(path, "<Events/>");
  const Outcome outcome = Request{}.execute();
  EXPECT_EQ(outcome.code, 0U);
  EXPECT_THAT(outcome.reply, Optional(StrEq("<Events/>")));
  EXPECT_EQ(request().method, "GET");
  EXPECT_EQ(request().target, path);
}

TEST_F(ZoxHttpCurlExecute, SendsParametersInOrderWithTheirValuesEscaped) {
  server.reply(path, "OK");
  const Request query{.parameters = {{"z+z", "a b&c"}, {"a", ""}, {"m", "\xc3\xa9=?/"}}};
  EXPECT_EQ(query.execute().code, 0U);
  EXPECT_EQ(request().target, "/3.7.3/xml.php?z+z=a%20b%26c&a=&m=%C3%A9%3D%3F%2F");
}

TEST_F(ZoxHttpCurlExecute, IntroducesItself) {
  server.reply(path, "OK");
  EXPECT_EQ(Request{}.execute().code, 0U);
  EXPECT_EQ(request().headers["user-agent"], "Velkor 1.0 Beta 5 (Linux)");
  EXPECT_EQ(request().headers["accept-encoding"], "gzip");
  EXPECT_EQ(request().headers["host"], server.host());
}

TEST_F(ZoxHttpCurlExecute, WaitsTwentySecondsForAConnectionAndWithoutSignals) {
  server.reply(path, "OK");
  numbers.clear();
  EXPECT_EQ(Request{}.execute().code, 0U);
  EXPECT_EQ(numbers.at(CURLOPT_CONNECTTIMEOUT), 20);
  EXPECT_EQ(numbers.at(CURLOPT_NOSIGNAL), 1);
  EXPECT_EQ(numbers.at(CURLOPT_NOPROGRESS), 1);
  EXPECT_FALSE(numbers.contains(CURLOPT_TIMEOUT));
  EXPECT_FALSE(numbers.contains(CURLOPT_TIMEOUT_MS));
}

TEST_F(ZoxHttpCurlExecute, TakesAWholeAddressWithoutAHost) {
  server.reply("/elders", "OK");
  zox_http_set_hosts("main.invalid", "static.invalid");
  const Request whole{.path = "http://" + server.host() + "/elders", .use_host = false};
  EXPECT_EQ(whole.execute().code, 0U);
  EXPECT_THAT(server.requests("/elders"), SizeIs(1));
}

TEST_F(ZoxHttpCurlExecute, SpeaksOnlyHttp) {
  const auto file = sandbox.home() / "file";
  test::write_file(file, "geheim");
  const Request local{.path = "file://" + file.string(), .use_host = false};
  const Outcome outcome = local.execute();
  EXPECT_EQ(outcome.code, 1U);
  EXPECT_THAT(outcome.reply, Optional(StrEq("")));
}

TEST_F(ZoxHttpCurlExecute, NeedsNoPlaceForTheReply) {
  server.reply(path, "MSGtekst");
  EXPECT_EQ(zox_http_curl_execute(path, nullptr, 1, nullptr, 0, nullptr, 1), 29U);
}

TEST_F(ZoxHttpCurlExecute, HandsOverTheReplyThatCarriesAStatusWord) {
  const std::map<std::string, ZoxErrorCode> codes{
      {"UNAUTH", 2}, {"BANANA", 3}, {"Could not connect to the database", 4}, {"UPDATE", 27}};
  for (const auto &[body, code] : codes) {
    server.reply(path, body);
    const Outcome outcome = Request{}.execute();
    EXPECT_EQ(outcome.code, code);
    EXPECT_THAT(outcome.reply, Optional(body));
  }
}

TEST_F(ZoxHttpCurlExecute, HandsOverTheServersNoticeInsteadOfTheBody) {
  server.reply(path, "MSG Onderhoud\n");
  const Outcome outcome = Request{}.execute();
  EXPECT_EQ(outcome.code, 29U);
  EXPECT_THAT(outcome.reply, Optional(StrEq(" Onderhoud\n")));
}

TEST_F(ZoxHttpCurlExecute, TellsAnEmptyBodyWhenDataIsRequired) {
  server.reply(path, "");
  EXPECT_EQ(Request{}.execute().code, 13U);
  const Outcome outcome = Request{.require_data = false}.execute();
  EXPECT_EQ(outcome.code, 0U);
  EXPECT_THAT(outcome.reply, Optional(StrEq("")));
}

TEST_F(ZoxHttpCurlExecute, JudgesTheBodyWhateverTheHttpStatus) {
  server.reply(path, StubReply{.status = 500, .body = "BAN"});
  EXPECT_EQ(Request{}.execute().code, 3U);
}

TEST_F(ZoxHttpCurlExecute, Decompresses) {
  const auto compressed = sandbox.home() / "reply.gz";
  const std::string text(100000, 'x');
  test::write_gzip(compressed, text);
  server.reply(path, StubReply{.body = test::read_file(compressed),
                               .headers = {{"Content-Encoding", "gzip"}}});
  EXPECT_THAT(Request{}.execute().reply, Optional(text));
}

TEST_F(ZoxHttpCurlExecute, RefusesBrokenCompression) {
  server.reply(path, StubReply{.body = "geen gzip", .headers = {{"Content-Encoding", "gzip"}}});
  EXPECT_EQ(Request{}.execute().code, 1U);
}

TEST_F(ZoxHttpCurlExecute, FollowsNoRedirect) {
  const std::string target = "http://" + server.host() + "/elders";
  server.reply(path, StubReply{.status = 302, .body = "zie", .headers = {{"Location", target}}});
  EXPECT_THAT(Request{}.execute().reply, Optional(StrEq("zie")));
  EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(ZoxHttpCurlExecute, RefusesAnAddressThatIsFarTooLong) {
  const Request query{.parameters = {{"text", std::string(9000000, 'x')}}};
  EXPECT_EQ(query.execute().code, 1U);
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(ZoxHttpCurlExecute, WritesIntoATemporaryFile) {
  const std::string content("BAN\0\x01\xff", 6);
  server.reply(path, content);
  const Outcome outcome = Request{.into_file = true}.execute();
  EXPECT_EQ(outcome.code, 0U);
  EXPECT_THAT(outcome.reply, Optional(StrEq("")));
  ASSERT_TRUE(outcome.file);
  EXPECT_EQ(fs::path(*outcome.file).parent_path(), g_get_tmp_dir());
  EXPECT_EQ(fs::status(*outcome.file).permissions(), fs::perms{0600});
  EXPECT_EQ(test::read_file(*outcome.file), content);
  fs::remove(*outcome.file);
}

TEST_F(ZoxHttpCurlExecute, NamesTheTemporaryFileOfAFailedTransferToo) {
  server.reply(path, StubReply{.body = "half", .claim_length = 100});
  const Outcome outcome = Request{.into_file = true}.execute();
  EXPECT_EQ(outcome.code, 1U);
  ASSERT_TRUE(outcome.file);
  EXPECT_EQ(test::read_file(*outcome.file), "half");
  fs::remove(*outcome.file);
}

TEST_F(ZoxHttpCurlExecute, FetchesDumpsFromTheStaticHost) {
  test::StubServer static_server;
  static_server.reply("/3.7.3/dumps/1.gz", "dump");
  server.reply("/3.7.3/dumps", "main");
  zox_http_set_hosts(server.host().c_str(), static_server.host().c_str());
  EXPECT_THAT(Request{.path = "/3.7.3/dumps/1.gz"}.execute().reply, Optional(StrEq("dump")));
  EXPECT_THAT(Request{.path = "/3.7.3/dumps"}.execute().reply, Optional(StrEq("main")));
}

TEST_F(ZoxHttpCurlExecute, MayRunOnSeveralThreads) {
  server.reply(path, "OK");
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([] { EXPECT_EQ(Request{}.execute().code, 0U); });
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_THAT(server.requests(), SizeIs(4));
}

TEST_F(ZoxHttpCurlExecute, FailsWithoutATransferHandle) {
  const test::LogCapture log;
  no_handles = true;
  ZoxString untouched{};
  ZoxString *reply = &untouched;
  EXPECT_EQ(zox_http_curl_execute(path, nullptr, 1, &reply, 0, nullptr, 1), 24U);
  no_handles = false;
  EXPECT_EQ(reply, nullptr);
  EXPECT_THAT(log.warnings(), ElementsAre("zox_http_curl_execute(): curl_easy_init() mislukt\n"));
}

using ZoxHttpCurlExecuteDeathTest = ZoxHttpCurlExecute;

/** Ends with 0 when no temporary file can be made and the request says so. */
[[noreturn]] void execute_without_temporary_directory() {
  setenv("TMPDIR", "/nonexistent", 1);
  ZoxString untouched{};
  ZoxString *reply = &untouched;
  char *file = nullptr;
  const ZoxErrorCode code = zox_http_curl_execute(path, nullptr, 1, &reply, 0, &file, 1);
  std::_Exit(code == 1 && reply == &untouched && file == nullptr ? 0 : 1);
}

TEST_F(ZoxHttpCurlExecuteDeathTest, LeavesTheReplyAloneWhenNoTemporaryFileCanBeMade) {
  // GLib asks for the directory once in the life of a process.
  const test::FreshProcess fresh(sandbox);
  EXPECT_EXIT(execute_without_temporary_directory(), testing::ExitedWithCode(0), "");
}

gint count_call(gpointer count) {
  ++*static_cast<int *>(count);
  return 0;
}

/** Ends with 0 when of a failed and a good request only the first runs the mail hook. */
[[noreturn]] void execute_twice(test::StubServer &server) {
  int calls = 0;
  zox_http_curl_set_zox_mail_callback(count_call, &calls);
  const ZoxErrorCode first = Request{}.execute().code;
  const int calls_of_first = calls;
  server.reply(path, "OK");
  const ZoxErrorCode second = Request{}.execute().code;
  std::_Exit(first == 13 && calls_of_first == 1 && second == 0 && calls == 1 ? 0 : 1);
}

TEST_F(ZoxHttpCurlExecuteDeathTest, RunsTheMailHookAtMostEveryFiveMinutes) {
  // A fresh process: the time of the last run belongs to it.
  const test::FreshProcess fresh(sandbox);
  EXPECT_EXIT(execute_twice(server), testing::ExitedWithCode(0), "");
}

gint execute_again(gpointer code) {
  *static_cast<ZoxErrorCode *>(code) = Request{}.execute().code;
  return 0;
}

/** Ends with 0 when the mail hook's own request reaches a server of one connection at once. */
[[noreturn]] void execute_with_asking_hook(test::StubServer &server) {
  ZoxErrorCode code_in_hook = 99;
  zox_http_curl_set_zox_mail_callback(execute_again, &code_in_hook);
  server.reply(path, StubReply{.body = "OK", .keep_alive = true});
  const ZoxErrorCode code = Request{}.execute().code;
  const bool waited = server.clients_kept_waiting() > 0;
  std::_Exit(code == 0 && code_in_hook == 0 && !waited ? 0 : 1);
}

TEST_F(ZoxHttpCurlExecuteDeathTest, KeepsNoConnectionWhileTheMailHookRuns) {
  const test::FreshProcess fresh(sandbox);
  EXPECT_EXIT(execute_with_asking_hook(server), testing::ExitedWithCode(0), "");
}

TEST_F(ZoxHttpCurlExecuteDeathTest, NeedsAnAddressAndSettings) {
  const test::FreshProcess fresh(sandbox);
  EXPECT_DEATH(zox_http_curl_execute(nullptr, nullptr, 1, nullptr, 0, nullptr, 1),
               "assertion failed: \\(url\\)");
  zox_config_free();
  EXPECT_DEATH(zox_http_curl_execute(path, nullptr, 1, nullptr, 0, nullptr, 1),
               "assertion failed: \\(core->config\\)");
}

TEST(ZoxHttpCurlCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_http_curl_execute(path, nullptr, 1, nullptr, 0, nullptr, 1),
               "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
