/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/workers.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>

#include "http/transfer.h"
#include "support/immortal.h"

namespace velkor {
namespace {

struct State {
  std::mutex mutex;
  std::condition_variable ended;
  unsigned count = 0;
  std::atomic<bool> stopping = false;
};

State &state() noexcept {
  return immortal<State>();
}

thread_local bool current_is_worker = false;

bool others_have_ended() noexcept {
  return state().count == (is_worker() ? 1U : 0U);
}

/**
 * Lets the workers stop before what they use is taken down. The program may have called exit()
 * while it held a lock that one of them needs: the end is not put off for long.
 */
void stop_workers_at_exit() noexcept {
  constexpr std::chrono::seconds patience{5};
  std::unique_lock lock(state().mutex);
  state().stopping = true;
  state().ended.wait_for(lock, patience, others_have_ended);
}

/** What libcurl takes down at exit is taken down after this, since it is set up before. */
void watch_exit() noexcept {
  set_up_transfers();
  std::atexit(stop_workers_at_exit);
}

}  // namespace

Worker::Worker() noexcept {
  static std::once_flag once;
  std::call_once(once, watch_exit);
  const std::lock_guard lock(state().mutex);
  ++state().count;
}

Worker::~Worker() {
  const std::lock_guard lock(state().mutex);
  --state().count;
  state().ended.notify_all();
}

void Worker::begin() noexcept {
  current_is_worker = true;
}

bool is_worker() noexcept {
  return current_is_worker;
}

bool worker_must_stop() noexcept {
  return is_worker() && state().stopping;
}

void stop_workers() noexcept {
  std::unique_lock lock(state().mutex);
  state().stopping = true;
  state().ended.wait(lock, others_have_ended);
  state().stopping = false;
}

}  // namespace velkor
