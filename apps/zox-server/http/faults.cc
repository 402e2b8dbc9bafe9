/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/faults.h"

#include <algorithm>
#include <array>

#include "support/numbers.h"
#include "zox-server/support/gzip.h"

namespace velkor::server {
namespace {

constexpr std::string_view dump_type = "application/gzip";

/** Replaces the body by a document, compressed when the reply is a dump. */
void replace_document(Reply &reply, std::string_view document) {
  reply.body = reply.type == dump_type ? gzip(document) : std::string(document);
}

/** Makes sure that the body is gzip data: dumps already are, others get a content encoding. */
void ensure_gzip(Reply &reply) {
  if (reply.type == dump_type)
    return;
  reply.body = gzip(reply.body);
  reply.headers.push_back({"Content-Encoding", "gzip"});
}

void status_word_unauth(Reply &reply, const std::string &) {
  reply = text_reply("UNAUTH");
}
void status_word_ban(Reply &reply, const std::string &) {
  reply = text_reply("BAN");
}
void status_word_database(Reply &reply, const std::string &) {
  reply = text_reply("Could not connect to the database");
}
void status_word_update(Reply &reply, const std::string &) {
  reply = text_reply("UPD");
}
void status_word_message(Reply &reply, const std::string &argument) {
  reply = text_reply("MSG" + (argument.empty() ? "Onderhoud" : argument));
}

template <Delivery delivery>
void deliver(Reply &reply, const std::string &) {
  reply.delivery = delivery;
}
void deliver_slowly(Reply &reply, const std::string &argument) {
  reply.delivery = Delivery::drip;
  reply.bytes_per_second =
      std::max<std::int64_t>(argument.empty() ? 64 : leading_number(argument), 1);
}

void truncate_gzip(Reply &reply, const std::string &) {
  ensure_gzip(reply);
  reply.body.resize(reply.body.size() / 2);
}
void corrupt_gzip(Reply &reply, const std::string &) {
  ensure_gzip(reply);
  // What stands in the place of codes can be codes again, to the end, which would be a truncated
  // body. Right behind the header, however, these bytes begin a block of a type that there is not.
  for (std::size_t start = reply.body.size() / 2; !is_corrupt_gzip(reply.body); --start)
    std::fill(reply.body.begin() + static_cast<std::ptrdiff_t>(start), reply.body.end(), '\xff');
}
void replace_gzip(Reply &reply, const std::string &) {
  ensure_gzip(reply);
  reply.body = "This is not compressed at all.\n";
}

void break_xml(Reply &reply, const std::string &) {
  replace_document(reply, "<?xml version=\"1.0\"?>\n<Events><Event Code=\"1\"><PostID>1</Event>");
}
void change_root(Reply &reply, const std::string &) {
  replace_document(reply, "<?xml version=\"1.0\"?>\n<Onverwacht><Event Code=\"0\"/></Onverwacht>");
}
void empty_body(Reply &reply, const std::string &) {
  reply.body.clear();
}

void redirect(Reply &reply, const std::string &argument) {
  reply = failure(302, "Found");
  reply.headers.push_back({"Location", argument.empty() ? "/elsewhere" : argument});
}
void internal_error(Reply &reply, const std::string &) {
  reply = failure(500, "Internal Server Error");
}

void entity_bomb(Reply &reply, const std::string &) {
  std::string document = "<?xml version=\"1.0\"?>\n<!DOCTYPE Events [\n<!ENTITY a0 \"boem\">\n";
  for (int level = 1; level <= 12; ++level) {
    const std::string inner = "&a" + std::to_string(level - 1) + ";";
    document += "<!ENTITY a" + std::to_string(level) + " \"";
    for (int times = 0; times < 10; ++times)
      document += inner;
    document += "\">\n";
  }
  replace_document(reply, document + "]>\n<Events><Event Code=\"1\"><PostID>1</PostID>"
                                     "<Title>&a12;</Title></Event></Events>");
}

constexpr std::array kinds{
    FaultKind{"unauth", "the status word UNAUTH", false, status_word_unauth},
    FaultKind{"ban", "the status word BAN", false, status_word_ban},
    FaultKind{"database", "the status word \"Could not connect to the database\"", false,
              status_word_database},
    FaultKind{"update", "the status word UPD", false, status_word_update},
    FaultKind{"message", "the status word MSG with the argument as its notice (\"Onderhoud\")",
              false, status_word_message},
    FaultKind{"close", "the connection is closed without a reply", false, deliver<Delivery::close>},
    FaultKind{"reset", "the connection is reset without a reply", false, deliver<Delivery::reset>},
    FaultKind{"stall", "no reply is sent, the connection stays open", false,
              deliver<Delivery::stall>},
    FaultKind{"drop", "the connection is closed after half of the body", true,
              deliver<Delivery::drop>},
    FaultKind{"drip", "the reply is sent at ARGUMENT bytes per second (64)", true, deliver_slowly},
    FaultKind{"length-short", "Content-Length is half of what is sent", true,
              deliver<Delivery::length_short>},
    FaultKind{"length-long", "Content-Length is more than is sent before the connection closes",
              true, deliver<Delivery::length_long>},
    FaultKind{"gzip-truncated", "the compressed body is cut in half, but the reply is complete",
              true, truncate_gzip},
    FaultKind{"gzip-corrupt", "the compressed body is garbage from halfway or before", true,
              corrupt_gzip},
    FaultKind{"gzip-missing", "the body is declared as compressed but is not", true, replace_gzip},
    FaultKind{"xml-malformed", "a document that is not well-formed", true, break_xml},
    FaultKind{"xml-root", "a document with a different root element", true, change_root},
    FaultKind{"xml-bomb", "a document whose entities expand to terabytes", true, entity_bomb},
    FaultKind{"empty", "an empty body", true, empty_body},
    FaultKind{"redirect", "HTTP 302 to the argument (/elsewhere)", false, redirect},
    FaultKind{"error", "HTTP 500", false, internal_error},
};

bool matches(const Fault &fault, std::string_view path) {
  if (fault.path == "*")
    return true;
  return fault.path.ends_with('/') ? path.starts_with(fault.path) : path == fault.path;
}

}  // namespace

std::span<const FaultKind> fault_kinds() {
  return kinds;
}

const FaultKind *find_fault_kind(std::string_view name) {
  const auto *const found =
      std::ranges::find_if(kinds, [name](const FaultKind &kind) { return kind.name == name; });
  return found == kinds.end() ? nullptr : found;
}

std::optional<Fault> parse_fault(const std::string &text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0)
    return std::nullopt;
  const std::size_t colon = std::min(text.find(':', equals), text.size());
  const std::size_t second =
      std::min(text.find(':', std::min(colon + 1, text.size())), text.size());
  Fault fault;
  fault.path = text.substr(0, equals);
  fault.kind = find_fault_kind(text.substr(equals + 1, colon - equals - 1));
  if (colon < text.size()) {
    const auto times = whole_number(text.substr(colon + 1, second - colon - 1));
    if (!times || *times < 0)
      return std::nullopt;
    fault.times = *times;
  }
  if (second < text.size())
    fault.argument = text.substr(second + 1);
  return fault.kind == nullptr ? std::nullopt : std::optional(fault);
}

std::optional<Fault> FaultList::take(std::string_view path) {
  const auto found =
      std::ranges::find_if(faults_, [path](const Fault &fault) { return matches(fault, path); });
  if (found == faults_.end())
    return std::nullopt;
  Fault fault = *found;
  if (found->times > 0 && --found->times == 0)
    faults_.erase(found);
  return fault;
}

}  // namespace velkor::server
