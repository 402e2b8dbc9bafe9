/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One request of a service: its parameters in order, its reply, and the message for the caller. */
#ifndef VELKOR_HTTP_SERVICE_REQUEST_H
#define VELKOR_HTTP_SERVICE_REQUEST_H

#include <initializer_list>
#include <string_view>

#include <velkor/zox_http_parameter.h>
#include <velkor/zox_types.h>

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {

/** The parameters of one request, in the order in which they are sent. */
class Parameters {
public:
  struct Entry {
    const char *name;
    const char *value;
  };

  Parameters() = default;
  Parameters(std::initializer_list<Entry> entries) noexcept;

  void add(const char *name, const char *value) noexcept;
  void add_number(const char *name, gint32 number) noexcept;
  /** Leaves the parameter out when there is no text. */
  void add_if_present(const char *name, const GString *value) noexcept;

  [[nodiscard]] GSList *list() const noexcept { return list_.list(); }

private:
  ListBuilder<ZoxHttpParameter, zox_http_parameter_free> list_;
};

/** How a request is made; most services log in and expect an answer. */
struct RequestRule {
  bool authenticate = true;
  bool require_data = true;
};

struct ServiceReply {
  ZoxErrorCode code;
  /** The body, or the server's notice; null when the request failed before a reply existed. */
  OwnedString text;

  [[nodiscard]] bool failed() const noexcept { return code != ZOX_RESULT_SUCCESS; }
  [[nodiscard]] std::string_view view() const noexcept { return view_of(text.get()); }
  /** A copy of the server's notice, or null when the reply is none. */
  [[nodiscard]] OwnedText notice() const noexcept;
};

/** Asks the main server for `path` and collects the reply in memory. */
ServiceReply send_request(const char *path, const Parameters &parameters,
                          RequestRule rule = {}) noexcept;

/** Gives a failed request's message to the caller, the notice or none, and returns its code. */
ZoxErrorCode report_failure(const ServiceReply &reply, char **message) noexcept;

}  // namespace velkor

#endif
