/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/message.h"

#include <algorithm>

#include "model/shown_text.h"

namespace velkor::app {

std::vector<Message> newest_first(std::vector<Message> messages) {
  std::ranges::reverse(messages);
  std::ranges::stable_sort(messages, std::greater{}, &Message::stamp);
  return messages;
}

std::string plain_body(std::string_view body) {
  constexpr std::string_view mark = "<BR />";
  std::string plain(body);
  for (std::size_t at = plain.find(mark); at != std::string::npos; at = plain.find(mark, at))
    plain.erase(at, mark.size());
  return shown_lines(plain);
}

Draft answer_to(const Message &message) {
  constexpr std::string_view again = "Re: ";
  Draft draft{.to = message.other,
              .subject = message.subject.starts_with(again) ? message.subject
                                                            : std::string(again) + message.subject,
              .body = "\n\n> "};
  for (const char byte : message.body)
    draft.body += byte == '\n' ? std::string("\n> ") : std::string(1, byte);
  return draft;
}

}  // namespace velkor::app
