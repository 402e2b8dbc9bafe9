/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The member's watchlist, stored on the server. */
#include "support/numbers.h"
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr std::string_view mark = "*1";

/** The id in "ID*1"; nothing when the text has another form. */
std::optional<std::int64_t> marked_id(std::string_view text) {
  if (!text.ends_with(mark))
    return std::nullopt;
  text.remove_suffix(mark.size());
  const std::optional<std::int64_t> id = whole_number(text);
  return id && *id > 0 ? id : std::nullopt;
}

Reply save(Service &service, const std::string &data, const Account &account) {
  std::vector<std::int64_t> postings;
  for (const std::string &piece : split_list(data)) {
    const std::optional<std::int64_t> id = marked_id(piece);
    if (!id)
      return text_reply(word::failed);
    postings.push_back(*id);
  }
  service.watchlists.save(account.name, postings);
  return text_reply(word::done);
}

Reply load(Service &service, const Account &account) {
  std::vector<std::string> ids;
  for (const std::int64_t posting : service.watchlists.load(account.name))
    ids.push_back(std::to_string(posting));
  return text_reply(join_list(ids));
}

}  // namespace

Reply watchlist(Service &service, const Request &request, const Account &account) {
  const std::string mode = request.value("mode");
  if (mode == "save")
    return save(service, request.value("data"), account);
  return mode == "load" ? load(service, account) : text_reply(word::failed);
}

}  // namespace velkor::server::endpoints
