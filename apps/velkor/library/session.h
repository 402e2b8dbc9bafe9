/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The library as the window uses it. Every call of the library is made on one thread, the core's,
 * which never waits for the server: what is asked of that are requests, which end there. Functions
 * of this class are called on the main thread and return at once; what they bring comes through the
 * main loop.
 */
#ifndef VELKOR_APP_LIBRARY_SESSION_H
#define VELKOR_APP_LIBRARY_SESSION_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "library/cancellation.h"
#include "library/file_health.h"
#include "library/full_update.h"
#include "library/job_thread.h"
#include "model/posting_details.h"
#include "model/server_answer.h"
#include "model/snapshot.h"
#include "model/update_state.h"
#include "model/watcher_hits.h"

struct ZoxRequest;

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
    /** The files of the cache are others, or were looked at. */
    std::function<void(std::vector<CachedFile>)> files;
  };
  using PostingFunction = std::function<void(PostingReply)>;
  using AnswerFunction = std::function<void(ActionOutcome)>;

  Session(SessionOptions options, Events events);
  ~Session();
  Session(const Session &) = delete;
  Session &operator=(const Session &) = delete;

  enum class Extent { what_is_new, everything };
  void update(Extent extent);
  void stop_update();

  /**
   * Tells all about a posting, in steps, until it is complete or failed.
   * @return cancels what is left; nothing is told after that
   */
  SharedCancellation fetch_posting(std::int32_t id, PostingFunction function);

  SharedCancellation send_reaction(std::int32_t id, std::string text, AnswerFunction done);
  SharedCancellation give_kudos(std::int32_t id, AnswerFunction done);
  /** Warns the moderators about a posting. */
  SharedCancellation warn(std::int32_t id, std::string reason, AnswerFunction done);
  void set_watched(std::int32_t id, bool watched);

  /** Reads the cache anew, for what was changed in it. */
  void refresh();

  /** Tells of the files of the cache as they are now. */
  void look_at_files();

  using Job = std::function<void(GMainContext *context, const SharedCancellation &wanted)>;
  /**
   * Lets a job run on the core's thread, behind those that were asked for before. It must not wait
   * for the server: it starts a request that ends on `context`. Without a core, or when it is
   * cancelled before it begins, it does not run.
   * @return cancels the job
   */
  SharedCancellation run(Job job);

  /** Stops what runs and lets go of the cache; nothing else may be asked for from then on. */
  void close(std::function<void()> closed);

private:
  void open();
  SharedSnapshot publish_snapshot();
  void publish_files();
  void end_update(const ZoxRequest &request, const std::optional<FullUpdate> &full,
                  std::int32_t age_limit);
  std::vector<WatcherGroup> take_hits(const ZoxRequest &request);

  SessionOptions options_;
  Events events_;
  SharedCancellation update_;
  /** Of the core's thread: the watchers' hits of the latest update that changed the list. */
  std::unordered_set<std::int32_t> hits_;
  FileHealth health_;     // likewise
  bool is_open_ = false;  // likewise
  JobThread core_;        // the last member: its jobs use all others
};

}  // namespace velkor::app

#endif
