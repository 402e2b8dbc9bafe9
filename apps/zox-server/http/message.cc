/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/message.h"

#include <algorithm>

#include "support/numbers.h"
#include "support/owned.h"

namespace velkor::server {
namespace {

std::string decoded(std::string text) {
  std::ranges::replace(text, '+', ' ');
  const OwnedText plain(g_uri_unescape_string(text.c_str(), nullptr));
  return plain ? plain.get() : text;
}

Parameter parse_parameter(std::string_view piece) {
  const std::size_t equals = piece.find('=');
  if (equals == std::string_view::npos)
    return {decoded(std::string(piece)), ""};
  return {decoded(std::string(piece.substr(0, equals))),
          decoded(std::string(piece.substr(equals + 1)))};
}

}  // namespace

const Parameter *Request::find(std::string_view name) const {
  const auto found =
      std::ranges::find_if(parameters.rbegin(), parameters.rend(),
                           [&](const Parameter &entry) { return entry.name == name; });
  return found == parameters.rend() ? nullptr : &*found;
}

std::string Request::value(std::string_view name) const {
  const Parameter *parameter = find(name);
  return parameter == nullptr ? std::string() : parameter->value;
}

std::int64_t Request::number(std::string_view name) const {
  return leading_number(value(name));
}

Reply text_reply(std::string body) {
  Reply reply;
  reply.body = std::move(body);
  return reply;
}

Reply xml_reply(std::string document) {
  Reply reply = text_reply(std::move(document));
  reply.type = "text/xml; charset=utf-8";
  return reply;
}

Reply failure(unsigned status, std::string reason) {
  Reply reply = text_reply(std::move(reason) + "\n");
  reply.status = status;
  return reply;
}

std::vector<Parameter> parse_query(std::string_view query) {
  std::vector<Parameter> parameters;
  for (std::size_t start = 0; start < query.size();) {
    const std::size_t end = std::min(query.find('&', start), query.size());
    if (end > start)
      parameters.push_back(parse_parameter(query.substr(start, end - start)));
    start = end + 1;
  }
  return parameters;
}

}  // namespace velkor::server
