/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/service_request.h"

#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "support/assertion.h"

namespace velkor {

Parameters::Parameters(std::initializer_list<Entry> entries) noexcept {
  for (const Entry &entry : entries)
    add(entry.name, entry.value);
}

void Parameters::add(const char *name, const char *value) noexcept {
  list_.append(zox_http_parameter_new(name, value));
}

void Parameters::add_number(const char *name, gint32 number) noexcept {
  const OwnedString text(zox_string_integer(number));
  add(name, text->str);
}

void Parameters::add_if_present(const char *name, const GString *value) noexcept {
  if (value != nullptr)
    add(name, value->str);
}

OwnedText ServiceReply::notice() const noexcept {
  return OwnedText(code == ZOX_RESULT_SERVER_NOTICE && text ? g_strdup(text->str) : nullptr);
}

ServiceReply send_request(const char *path, const Parameters &parameters,
                          RequestRule rule) noexcept {
  ZoxString *text = nullptr;
  const ZoxErrorCode code =
      zox_http_curl_execute(path, parameters.list(), 1, &text, rule.authenticate ? 1 : 0, nullptr,
                            rule.require_data ? 1 : 0);
  // Only a request that failed before a reply existed may come back without one.
  ZOX_ASSERT_AS(text != nullptr || code != 0, "uitvoer");
  return {code, OwnedString(text)};
}

ZoxErrorCode report_failure(const ServiceReply &reply, char **message) noexcept {
  hand_over(message, reply.notice());
  return reply.code;
}

}  // namespace velkor
