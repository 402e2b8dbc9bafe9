/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The library as the window uses it. Every call of the library is made on one of two threads: the
 * core's, and another for what is asked about one posting, so that a posting can be opened while an
 * update runs. Functions of this class are called on the main thread and return at once; what they
 * bring comes through the main loop.
 */
#ifndef VELKOR_APP_LIBRARY_SESSION_H
#define VELKOR_APP_LIBRARY_SESSION_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "library/job_thread.h"
#include "library/transfers.h"
#include "model/posting_details.h"
#include "model/snapshot.h"
#include "model/update_state.h"

namespace velkor::app {

/** Where the library works; what is not given is as the library has it. */
struct SessionOptions {
  std::optional<std::string> cache_dir{};
  std::optional<std::string> data_dir{};
  std::optional<std::string> lib_dir{};
  std::optional<std::string> server{};
  std::optional<std::string> static_server{};
  std::optional<std::string> ca_file{};
};

/** What is known of a posting so far. A failure ends the replies. */
struct PostingReply {
  enum class Stage { cached, details, complete, failed };

  Stage stage = Stage::failed;
  PostingDetails details{};
  std::string failure{};
};

class Session {
public:
  struct Events {
    /** The cache has been read, at the start and after an update. */
    std::function<void(SharedSnapshot)> snapshot;
    /** The cache cannot be used at all. */
    std::function<void(std::string message)> unusable;
    std::function<void(UpdateProgress)> update_progress;
    std::function<void(UpdateOutcome)> update_ended;
  };
  using PostingFunction = std::function<void(PostingReply)>;
  /** Receives an empty text on success, else why not. */
  using DoneFunction = std::function<void(std::string failure)>;

  Session(SessionOptions options, Events events);
  ~Session();
  Session(const Session &) = delete;
  Session &operator=(const Session &) = delete;

  void update();
  void stop_update();

  /**
   * Tells all about a posting, in steps, until it is complete or failed.
   * @return cancels what is left; nothing is told after that
   */
  SharedCancellation fetch_posting(std::int32_t id, bool known, PostingFunction function);

  SharedCancellation send_reaction(std::int32_t id, std::string text, DoneFunction done);
  SharedCancellation give_kudos(std::int32_t id, DoneFunction done);
  void set_watched(std::int32_t id, bool watched);

  /** Reads the cache anew, for what was changed in it. */
  void refresh();

  /** The threads that call the library. */
  enum class Thread { core, server };
  using Job = std::function<void(const SharedCancellation &wanted)>;
  /**
   * Lets a job run on that thread, behind those that were asked for before; its transfers belong to
   * it. Without a core, or when it is cancelled before it begins, it does not run.
   * @return cancels the job
   */
  SharedCancellation run(Thread thread, Job job);

  /** Stops what runs and lets go of the cache; nothing else may be asked for from then on. */
  void close(std::function<void()> closed);

private:
  void open();
  void publish_snapshot();
  void run_update(const Cancellation &cancellation);
  SharedCancellation request(std::function<std::string()> ask, DoneFunction done);
  SharedCancellation new_cancellation();

  SessionOptions options_;
  Events events_;
  SharedCancellation update_;
  std::vector<std::weak_ptr<Cancellation>> requests_;
  /** Of the core's thread: the watchers' hits of the latest update. */
  std::unordered_set<std::int32_t> hits_;
  std::atomic<bool> is_open_ = false;
  JobThread core_;
  JobThread server_;  // behind the core's, which its jobs use: it ends first
};

}  // namespace velkor::app

#endif
