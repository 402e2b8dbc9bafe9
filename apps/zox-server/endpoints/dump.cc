/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr std::string_view suffix = ".gz";

/** A file as it lies there: compressed, and not merely for the transport. */
Reply file_reply(std::string content) {
  Reply reply = text_reply(std::move(content));
  reply.type = "application/gzip";
  reply.headers.push_back({"Cache-Control", "public, max-age=31536000, immutable"});
  return reply;
}

}  // namespace

Reply dump(Service &service, const Request &request, const Account &) {
  std::string_view name = std::string_view(request.path).substr(dump_directory.size());
  if (!name.ends_with(suffix))
    return failure(404, "There is no such dump.");
  name.remove_suffix(suffix.size());
  std::optional<std::string> content = service.dumps.content(std::string(name));
  return content ? file_reply(std::move(*content)) : failure(404, "There is no such dump.");
}

}  // namespace velkor::server::endpoints
