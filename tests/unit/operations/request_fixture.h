/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** For tests of requests: what a request told, and a core with a scripted server. */
#ifndef VELKOR_TESTS_UNIT_OPERATIONS_REQUEST_FIXTURE_H
#define VELKOR_TESTS_UNIT_OPERATIONS_REQUEST_FIXTURE_H

#include <array>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <velkor/zox_request.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {

/** Far longer than anything here takes: no test ends by it unless something hangs. */
inline constexpr guint32 a_long_time = 600'000;

/* What the three ends tell. */
inline constexpr std::array done{"done 1", "released"};
inline constexpr std::array failed{"done 2", "released"};
inline constexpr std::array cancelled{"done 3", "released"};

/** A reply that stops before its end; the connection stays open. */
inline StubReply never_ending() {
  return {.body = "<", .claim_length = 1000, .stall = true};
}

/** A request of the test, and all that it told. */
class Told {
public:
  ~Told() {
    if (request_ != nullptr)
      zox_request_unref(request_);
  }
  Told() = default;
  Told(const Told &) = delete;
  Told &operator=(const Told &) = delete;

  ZoxRequestOptions options(GMainContext *context = nullptr) {
    return {.context = context,
            .progress = note_progress,
            .done = note_done,
            .userData = this,
            .destroy = note_release};
  }
  ZoxRequest *operator=(ZoxRequest *request) { return request_ = request; }
  operator ZoxRequest *() const { return request_; }

  std::vector<std::string> events;
  std::vector<ZoxRequestProgress> progress;
  std::thread::id thread;
  std::function<void()> on_done;

private:
  static void note_progress(ZoxRequest *, const ZoxRequestProgress *progress, gpointer self) {
    static_cast<Told *>(self)->progress.push_back(*progress);
  }
  static void note_done(ZoxRequest *request, gpointer self) {
    auto *told = static_cast<Told *>(self);
    told->thread = std::this_thread::get_id();
    told->events.push_back("done " + std::to_string(zox_request_state(request)));
    if (told->on_done)
      told->on_done();
  }
  static void note_release(gpointer self) {
    static_cast<Told *>(self)->events.emplace_back("released");
  }

  ZoxRequest *request_ = nullptr;
};

class RequestTest : public ServiceTest {
protected:
  ~RequestTest() override {
    zox_requests_cancel_all();
    zox_requests_wait(a_long_time);
  }

  static void run_until_ended(const Told &told) {
    while (told.events.size() < 2)
      g_main_context_iteration(nullptr, TRUE);
    while (g_main_context_iteration(nullptr, FALSE) != FALSE)
      continue;
  }
  void wait_until_asked(const char *path) const {
    while (server.requests(path).empty())
      std::this_thread::yield();
  }

  Told told;
};

}  // namespace velkor::test

#endif
