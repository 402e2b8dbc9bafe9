/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One request to the server, from the list of its parameters to its result code. */
#include <velkor/zox_http_curl.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_parameter.h>

#include "core/hosts.h"
#include "http/callbacks.h"
#include "http/transfer.h"
#include "support/assertion.h"
#include "support/descriptor.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

MailHook mail_hook;
SharedCallback<ZoxTransferCallback> transfer_callback;

/** Whether the path is one of the static host, which is never sent credentials. */
bool is_dump(std::string_view path) noexcept {
  return path.starts_with("/3.7.3/dumps/");
}

std::string query_of(Transfer &transfer, GSList *parameters) noexcept {
  std::string query;
  for (const ZoxHttpParameter *parameter : Items<ZoxHttpParameter>(parameters)) {
    query += query.empty() ? '?' : '&';
    query += parameter->paramName->str;
    query += '=';
    query += transfer.escaped(view_of(parameter->paramValue));
  }
  return query;
}

std::string address_of(std::string_view path, bool use_host) noexcept {
  if (!use_host)
    return std::string(path);
  return "http://" + (is_dump(path) ? static_host() : main_host()) + std::string(path);
}

/** Gives the transfer the user's credentials, if there is a password to make them from. */
ZoxErrorCode authenticate_transfer(Transfer &transfer, const std::string &url) noexcept {
  char *credentials = nullptr;
  const ZoxErrorCode code = zox_http_curl_add_auth(url.c_str(), &credentials);
  const OwnedText owned(credentials);
  if (code == ZOX_RESULT_SUCCESS)
    transfer.set_credentials(credentials);
  return code == ZOX_RESULT_UNAUTHORIZED ? ZoxErrorCode{ZOX_RESULT_SUCCESS} : code;
}

void choose_proxy(Transfer &transfer, const ZoxConfig &config) noexcept {
  if (config.proxyHost == nullptr || config.proxyPort == nullptr)
    return;
  transfer.set_proxy(config.proxyHost->str, leading_integer(config.proxyPort->str));
  if (config.proxyUser == nullptr || config.proxyPassword == nullptr)
    return;
  const OwnedText credentials(
      g_strconcat(config.proxyUser->str, ":", config.proxyPassword->str, nullptr));
  transfer.set_proxy_credentials(credentials.get());
}

/** Performs the transfer with the options that depend on settings and front end. */
CURLcode perform(Transfer &transfer) noexcept {
  choose_proxy(transfer, *core->config);
  const auto observer = transfer_callback.get();
  if (observer.function != nullptr)
    transfer.observe(observer);
  return transfer.perform();
}

ZoxErrorCode receive_in_memory(Transfer &transfer, OwnedString &body,
                               gint32 require_data) noexcept {
  transfer.receive_into(body.get());
  const CURLcode transfer_result = perform(transfer);
  char *server_text = nullptr;
  const ZoxErrorCode code =
      zox_http_curl_done(transfer_result, body.get(), &server_text, require_data);
  const OwnedText notice(server_text);
  if (notice)
    body.reset(g_string_new(notice.get()));
  return code;
}

/** The file is closed when its content has come in. */
ZoxErrorCode receive_in_file(Transfer &transfer, Descriptor file) noexcept {
  int descriptor = file.get();
  transfer.receive_into(&descriptor);
  return perform(transfer) == CURLE_OK ? ZOX_RESULT_SUCCESS : ZOX_RESULT_UNKNOWN_ERROR;
}

/** Hands the reply to the caller, if he wants it. */
void deliver(ZoxString **place, OwnedString reply) noexcept {
  if (place != nullptr)
    *place = reply.release();
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_http_curl_execute(const char *path, GSList *parameters, gint32 useHost,
                                   ZoxString **reply, gint32 authenticate, char **tempFileName,
                                   gint32 requireData) {
  ZOX_ASSERT(core);
  ZOX_ASSERT_AS(path, "url");
  ZOX_ASSERT(core->config);
  if (authenticate != 0)
    ZOX_ASSERT(core->config->username);
  std::optional<Transfer> transfer(std::in_place);
  if (!*transfer) {
    deliver(reply, nullptr);
    g_warning("zox_http_curl_execute(): curl_easy_init() mislukt\n");
    return ZOX_RESULT_NO_TRANSFER_HANDLE;
  }
  const std::string url = address_of(path, useHost != 0) + query_of(*transfer, parameters);
  if (authenticate != 0 && !(useHost != 0 && is_dump(path))) {
    if (const ZoxErrorCode code = authenticate_transfer(*transfer, url);
        code != ZOX_RESULT_SUCCESS) {
      deliver(reply, nullptr);
      return code;
    }
  }
  Descriptor file;
  if (tempFileName != nullptr) {
    file = Descriptor(g_file_open_tmp(nullptr, tempFileName, nullptr));
    if (!file)
      return ZOX_RESULT_UNKNOWN_ERROR;
  }
  transfer->set_url(url);
  OwnedString body(g_string_new(""));
  const ZoxErrorCode code = file ? receive_in_file(*transfer, std::move(file))
                                 : receive_in_memory(*transfer, body, requireData);
  deliver(reply, std::move(body));
  transfer.reset();  // a server of one connection at a time would keep the hook's request waiting
  mail_hook.run_if_due(g_get_real_time() / G_USEC_PER_SEC);
  return code;
}

void zox_http_curl_set_zox_mail_callback(ZoxMailCallback function, gpointer data) {
  mail_hook.set(function, data);
}

void zox_http_set_transfer_callback(ZoxTransferCallback function, gpointer userData) {
  transfer_callback.set(function, userData);
}

}  // extern "C"
