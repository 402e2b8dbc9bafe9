/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* One request to each server, which the checks of names, servers and the proxy judge. */
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_mail.h>

#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {
namespace {

bool has_text(const ZoxString *text) noexcept {
  return text != nullptr && text->len > 0;
}

ZoxErrorCode request(const char *path) noexcept {
  return zox_http_curl_execute(path, nullptr, 1, nullptr, 0, nullptr, 0);
}

/** With an account, a question that changes nothing tells whether the server accepts it. */
LibraryResult ask_main_server(bool with_account) {
  constexpr const char *name = "asking the main server";
  if (with_account) {
    guint32 waiting = 0;
    return try_call(name, zox_mail_check, &waiting);
  }
  return try_call(name, [](char ** /*server_text*/) { return request("/"); });
}

}  // namespace

Answers ask_servers() {
  const bool with_account = has_text(core->config->username) && has_text(core->config->password);
  LibraryResult main = ask_main_server(with_account);
  return {std::move(main), with_account,
          try_call("asking the server of the dumps",
                   [](char ** /*server_text*/) { return request("/3.7.3/dumps/"); })};
}

}  // namespace velkor::ctl::doctor
