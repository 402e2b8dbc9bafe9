/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The one instance of the program that a user has, on the session bus. Threads: the main one. */
#ifndef VELKOR_APP_LIBRARY_INSTANCE_H
#define VELKOR_APP_LIBRARY_INSTANCE_H

#include <cstdint>
#include <functional>

namespace velkor::app {

class Instance {
public:
  struct Requests {
    std::function<void()> bring_to_front;
    std::function<void(std::int32_t id)> open_posting;
  };

  /**
   * Asks a running instance to come to the front; without one, this process becomes it. Without a
   * session bus it goes on alone.
   */
  Instance();
  ~Instance();
  Instance(const Instance &) = delete;
  Instance &operator=(const Instance &) = delete;

  [[nodiscard]] bool another_runs() const noexcept { return another_runs_; }

  /** From now on what others ask for is answered by the main loop. */
  void answer(Requests requests);

private:
  bool another_runs_ = false;
  Requests requests_;
};

}  // namespace velkor::app

#endif
