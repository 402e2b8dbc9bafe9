/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One request to the server, from the list of its parameters to its result code. */
#include <velkor/zox_http_curl.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_parameter.h>

#include "core/hosts.h"
#include "core/job.h"
#include "http/callbacks.h"
#include "http/credentials.h"
#include "http/file_request.h"
#include "http/request_record.h"
#include "http/request_settings.h"
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
  return (is_dump(path) ? static_address() : main_address()) + std::string(path);
}

/** Logs for a developer how a request went: by default GLib drops what is logged at this level. */
void trace(double seconds) noexcept {
  const RequestRecord &record = latest_request();
  g_debug("zox_http_curl_execute(): %s%s: code %u, HTTP status %i, %" G_GINT64_FORMAT
          " bytes, %.3f s%s%s",
          record.host.c_str(), record.path.c_str(), record.code, record.http_status,
          record.received, seconds, record.reason.empty() ? "" : ", ", record.reason.c_str());
}

/** Ends a request before its transfer has begun. */
ZoxErrorCode give_up(ZoxErrorCode code, std::string reason) noexcept {
  RequestRecord &record = latest_request();
  record.code = code;
  record.reason = std::move(reason);
  trace(0);
  return code;
}

/** Gives the transfer the user's credentials, if there is a password to make them from. */
ZoxErrorCode authenticate_transfer(Transfer &transfer, const std::string &url,
                                   const ZoxConfig &config) noexcept {
  Credentials credentials = make_credentials(url.c_str(), config);
  if (credentials.code == ZOX_RESULT_UNAUTHORIZED)
    return ZOX_RESULT_SUCCESS;
  if (credentials.code != ZOX_RESULT_SUCCESS)
    return give_up(credentials.code, std::move(credentials.reason));
  const char *user_password = credentials.user_password.get();
  transfer.set_credentials(user_password);
  transfer.keep_secret(user_password + config.username->len + 1);
  return ZOX_RESULT_SUCCESS;
}

/** libcurl may quote an address or a setting; no query, user or password gets out that way. */
void keep_secrets(Transfer &transfer, const ZoxConfig &config) noexcept {
  for (const std::string_view secret : {std::string_view("?"), std::string_view("@"),
                                        view_of(config.password), view_of(config.proxyPassword)})
    transfer.keep_secret(secret);
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

/** Those who follow a transfer: the front end's function, and the job that it is made for. */
struct Observers {
  Callback<ZoxTransferCallback> front_end;
  Job *job = nullptr;
};

/** Each of the two may stop the transfer. */
gint tell_observers(gint64 received, gint64 total, gpointer data) {
  const auto *observers = static_cast<const Observers *>(data);
  if (observers->job != nullptr) {
    observers->job->count(received, total);
    if (observers->job->cancelled())
      return 1;
  }
  const auto &front_end = observers->front_end;
  return front_end.function == nullptr ? 0 : front_end.function(received, total, front_end.data);
}

/** Performs the transfer with what depends on those who follow it. */
CURLcode perform(Transfer &transfer) noexcept {
  Observers observers{transfer_callback.get(), current_job()};
  const Callback<ZoxTransferCallback> observer{tell_observers, &observers};
  if (observers.front_end.function != nullptr || observers.job != nullptr)
    transfer.observe(observer);
  return is_cancelled() ? CURLE_ABORTED_BY_CALLBACK : transfer.perform();
}

/** How a transfer ended, and what that makes of the request. */
struct Outcome {
  CURLcode transfer;
  ZoxErrorCode code;
};

Outcome receive_in_memory(Transfer &transfer, OwnedString &body, gint32 require_data) noexcept {
  transfer.receive_into(body.get());
  const CURLcode result = perform(transfer);
  char *server_text = nullptr;
  const ZoxErrorCode code = zox_http_curl_done(result, body.get(), &server_text, require_data);
  const OwnedText notice(server_text);
  if (notice)
    body.reset(g_string_new(notice.get()));
  return {result, code};
}

Outcome receive_in_file(Transfer &transfer, const Descriptor &file) noexcept {
  transfer.receive_into(file.get());
  const CURLcode result = perform(transfer);
  if (result != CURLE_OK)
    return {result, ZOX_RESULT_UNKNOWN_ERROR};
  return {result, ZOX_RESULT_SUCCESS};
}

/** What there is to say about the outcome; empty when all went well. `file` took the reply. */
std::string reason_of(const Outcome &outcome, const Transfer &transfer, const char *file) noexcept {
  constexpr long first_error = 400;
  if (transfer.too_large())
    return "the reply is larger than " + std::to_string(max_reply_size >> 20) + " MiB";
  if (outcome.transfer != CURLE_OK)
    return transfer.failure_text(outcome.transfer);
  if (transfer.write_error() != 0)
    return std::string("cannot write ") + file + ": " + g_strerror(transfer.write_error());
  if (transfer.http_status() >= first_error)
    return "HTTP status " + std::to_string(transfer.http_status());
  if (outcome.code == ZOX_RESULT_NO_DATA)
    return "the reply is empty";
  return outcome.code == ZOX_RESULT_SUCCESS ? "" : "the reply is a status word";
}

void note_outcome(const Outcome &outcome, const Transfer &transfer, const char *file) noexcept {
  RequestRecord &record = latest_request();
  record.code = outcome.code;
  record.transfer_result = outcome.transfer;
  record.http_status = static_cast<gint32>(transfer.http_status());
  record.proxy_failed = transfer.proxy_failed(outcome.transfer);
  record.received = transfer.received();
  record.reason = reason_of(outcome, transfer, file);
}

/** Runs the hook when it is due. Its requests are no part of this one or of its job. */
void run_mail_hook() noexcept {
  const WorkFor nobody(nullptr);
  RequestRecord record = std::exchange(latest_request(), {});
  mail_hook.run_if_due(g_get_real_time() / G_USEC_PER_SEC);
  latest_request() = std::move(record);
}

/** Hands the reply to a caller who wants it. */
void deliver(ZoxString **place, OwnedString reply) noexcept {
  if (place != nullptr)
    *place = reply.release();
}

/** What is asked of the server. */
struct Request {
  const char *path;
  GSList *parameters;
  bool use_host;
  bool authenticate;
  RequestSettings settings{};
};

/** Makes the transfer of a request; a failure ends the request. */
ZoxErrorCode prepare(std::optional<Transfer> &transfer, const Request &request) noexcept {
  const std::string address = address_of(request.path, request.use_host);
  latest_request() = new_record(address);
  transfer.emplace();
  if (!*transfer) {
    g_warning("zox_http_curl_execute(): curl_easy_init() mislukt\n");
    return give_up(ZOX_RESULT_NO_TRANSFER_HANDLE, "curl_easy_init() failed");
  }
  const ZoxConfig &config = request.settings.get();
  keep_secrets(*transfer, config);
  choose_proxy(*transfer, config);
  if (const std::string file = ca_file(); !file.empty())
    transfer->trust_only(file);
  const std::string url = address + query_of(*transfer, request.parameters);
  transfer->set_url(url);
  if (request.authenticate && !(request.use_host && is_dump(request.path)))
    return authenticate_transfer(*transfer, url, config);
  return ZOX_RESULT_SUCCESS;
}

/** What follows every transfer. */
ZoxErrorCode conclude(std::optional<Transfer> &transfer, const Outcome &outcome,
                      const char *file) noexcept {
  note_outcome(outcome, *transfer, file);
  trace(transfer->seconds());
  transfer.reset();  // a server of one connection at a time would keep the hook's request waiting
  run_mail_hook();
  return outcome.code;
}

ZoxErrorCode give_up_without_file(const GError &error) noexcept {
  return give_up(ZOX_RESULT_UNKNOWN_ERROR, error.message);
}

/** Not every file system can make a file without a name; where none can be, one loses its name. */
Descriptor make_unnamed_file(OwnedError &error) noexcept {
  Descriptor unnamed(open(g_get_tmp_dir(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
  if (unnamed)
    return unnamed;
  GError *reason = nullptr;
  char *place = nullptr;
  Descriptor file(g_file_open_tmp(nullptr, &place, &reason));
  const OwnedText name(place);
  error.reset(reason);
  if (file)
    unlink(name.get());
  return file;
}

}  // namespace

ZoxErrorCode request_into_file(const char *path, Descriptor &file) noexcept {
  std::optional<Transfer> transfer;
  const Request request{path, nullptr, true, true};
  if (const ZoxErrorCode code = prepare(transfer, request); code != ZOX_RESULT_SUCCESS)
    return code;
  OwnedError error;
  file = make_unnamed_file(error);
  if (!file)
    return give_up_without_file(*error);
  const std::string name = std::string("a file in ") + g_get_tmp_dir();
  return conclude(transfer, receive_in_file(*transfer, file), name.c_str());
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_http_curl_execute(const char *path, GSList *parameters, gint32 useHost,
                                   ZoxString **reply, gint32 authenticate, char **tempFileName,
                                   gint32 requireData) {
  ZOX_ASSERT(core);
  ZOX_ASSERT_AS(path, "url");
  const Request request{path, parameters, useHost != 0, authenticate != 0};
  if (authenticate != 0)
    ZOX_ASSERT_AS(request.settings.get().username, "core->config->username");
  std::optional<Transfer> transfer;
  if (const ZoxErrorCode code = prepare(transfer, request); code != ZOX_RESULT_SUCCESS) {
    deliver(reply, nullptr);
    return code;
  }
  OwnedString body(g_string_new(""));
  if (tempFileName == nullptr) {
    const Outcome outcome = receive_in_memory(*transfer, body, requireData);
    deliver(reply, std::move(body));
    return conclude(transfer, outcome, nullptr);
  }
  GError *error = nullptr;
  const Descriptor file(g_file_open_tmp(nullptr, tempFileName, &error));
  if (!file)
    return give_up_without_file(*OwnedError(error));
  const Outcome outcome = receive_in_file(*transfer, file);
  deliver(reply, std::move(body));
  return conclude(transfer, outcome, *tempFileName);
}

void zox_http_curl_set_zox_mail_callback(ZoxMailCallback function, gpointer data) {
  mail_hook.set(function, data);
}

void zox_http_set_transfer_callback(ZoxTransferCallback function, gpointer userData) {
  transfer_callback.set(function, userData);
}

}  // extern "C"
