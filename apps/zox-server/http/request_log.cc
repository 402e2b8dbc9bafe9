/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/request_log.h"

#include "support/json.h"

namespace velkor::server {
namespace {

/** Keeps whether there were credentials, but not their values. */
void remove_secrets(Request &request, std::string_view hidden_parameter) {
  request.url.clear();
  if (request.credentials)
    request.credentials = Credentials();
  if (request.proxy_credentials)
    request.proxy_credentials = Credentials();
  for (Parameter &parameter : request.parameters) {
    if (!hidden_parameter.empty() && parameter.name == hidden_parameter)
      parameter.value = "(hidden)";
  }
}

void write_parameters(Json &json, const Request &request) {
  json.begin_array("parameters");
  for (const Parameter &parameter : request.parameters) {
    json.begin_object().member("name", parameter.name).member("value", parameter.value);
    json.end_object();
  }
  json.end_array();
}

void write_request(Json &json, const Request &request) {
  json.member("method", request.method).member("path", request.path);
  write_parameters(json, request);
  json.member("host", request.host)
      .member("listener", request.listener == Listener::dumps ? "dumps" : "main")
      .member("credentials", request.credentials.has_value())
      .member("proxied", request.proxied)
      .member("proxyCredentials", request.proxy_credentials.has_value());
}

}  // namespace

void RequestLog::add(const Request &request, const Outcome &outcome) {
  entries_.push_back({request, outcome.status, outcome.fault});
  remove_secrets(entries_.back().request, outcome.hidden_parameter);
  if (entries_.size() > capacity)
    entries_.pop_front();
}

std::string RequestLog::json() const {
  Json json;
  json.begin_array();
  for (const Entry &entry : entries_) {
    json.begin_object();
    write_request(json, entry.request);
    json.member("status", entry.status).member("fault", entry.fault).end_object();
  }
  return json.end_array().pretty();
}

}  // namespace velkor::server
