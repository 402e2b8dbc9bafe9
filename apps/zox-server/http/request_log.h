/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The latest requests, without credentials. */
#ifndef ZOX_SERVER_HTTP_REQUEST_LOG_H
#define ZOX_SERVER_HTTP_REQUEST_LOG_H

#include <deque>
#include <string>

#include "zox-server/http/message.h"

namespace velkor::server {

class RequestLog {
public:
  struct Outcome {
    unsigned status = 0;
    /** The kind of the injected fault, empty for none. */
    std::string fault;
    /** A parameter whose value is not logged, empty for none. */
    std::string_view hidden_parameter;
  };

  void add(const Request &request, const Outcome &outcome);
  void clear() { entries_.clear(); }
  /** The entries, oldest first, as a JSON array. */
  [[nodiscard]] std::string json() const;

private:
  struct Entry {
    Request request;
    unsigned status;
    std::string fault;
  };
  /** The oldest entries are dropped, so that a long-running server does not grow. */
  static constexpr std::size_t capacity = 10000;

  std::deque<Entry> entries_;
};

}  // namespace velkor::server

#endif
