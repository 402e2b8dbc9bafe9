/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Private messages as the window shows them. */
#ifndef VELKOR_APP_MODEL_MESSAGE_H
#define VELKOR_APP_MODEL_MESSAGE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::app {

struct Message {
  std::uint64_t id = 0;  // the same after a restart
  bool sent = false;
  std::string other{};  // the sender, or of a sent message the addressee
  std::string subject{};
  std::string body{};
  std::int64_t stamp = 0;

  bool operator==(const Message &) const = default;
};

/** A message that is being written. */
struct Draft {
  std::string to{};
  std::string subject{};
  std::string body{};

  bool operator==(const Draft &) const = default;
};

/** The messages with the newest first; those of one moment in the opposite of their order. */
std::vector<Message> newest_first(std::vector<Message> messages);

/** A body without the line breaks of the display document. */
std::string plain_body(std::string_view body);

/** The beginning of an answer, with the message quoted. */
Draft answer_to(const Message &message);

}  // namespace velkor::app

#endif
