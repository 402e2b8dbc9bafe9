/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A single posting: as listed in dumps, and with its details. */
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

/** The requested posting, unless it was deleted or removed. */
std::optional<Posting> requested_posting(Service &service, const Request &request) {
  std::optional<Posting> posting = service.postings.find(request.number("id"));
  return posting && posting->status > state_deleted ? posting : std::nullopt;
}

}  // namespace

Reply find_posting(Service &service, const Request &request, const Account &) {
  const std::optional<Posting> posting = requested_posting(service, request);
  if (!posting)
    return text_reply(word::not_found);
  XmlWriter xml("Post");
  write_posting(xml, *posting, false);
  return xml_reply(xml.finish());
}

Reply posting_details(Service &service, const Request &request, const Account &) {
  std::optional<Posting> posting = requested_posting(service, request);
  if (!posting)
    return text_reply(word::not_found);
  ++posting->views;
  service.postings.replace(*posting, false);
  XmlWriter xml("PostInfo");
  xml.open("Post");
  write_posting(xml, *posting, true);
  xml.close();
  // Clients expect the posting before its tracks.
  write_tracks(xml, *posting);
  return xml_reply(xml.finish());
}

}  // namespace velkor::server::endpoints
