/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The mail document: what is saved to the mail file can be read back. */
#include "services/mail_document.h"
#include "support/text.h"
#include "tests/fuzz/session.h"

namespace velkor::fuzz {
namespace {

/** Whether a text is preserved by the file: XML treats a carriage return as a line end. */
bool keeps(const GString *text) noexcept {
  return view_of(text).find('\r') == std::string_view::npos;
}

bool all_kept(const GSList *messages) noexcept {
  for (; messages != nullptr; messages = messages->next) {
    const auto *bericht = static_cast<const ZoxBericht *>(messages->data);
    if (!keeps(bericht->from) || !keeps(bericht->subject) || !keeps(bericht->body))
      return false;
  }
  return true;
}

bool same_message(const ZoxBericht &left, const ZoxBericht &right) noexcept {
  return same_text(left.from, right.from) && same_text(left.subject, right.subject) &&
         same_text(left.body, right.body) && left.stamp == right.stamp && left.code == right.code;
}

void compare(const GSList *left, const GSList *right) {
  for (; left != nullptr && right != nullptr; left = left->next, right = right->next) {
    require(same_message(*static_cast<const ZoxBericht *>(left->data),
                         *static_cast<const ZoxBericht *>(right->data)),
            "a message that was saved is read again");
  }
  require(left == right, "as many messages are read as were saved");
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  const MailReading reading = read_mail(text.get());
  const OwnedString saved = mail_document(reading.messages.get());
  if (fuzz::all_kept(reading.messages.get())) {
    const MailReading again = read_mail(saved.get());
    fuzz::require(again.fault.empty() || !reading.messages, "the file that was saved is whole");
    fuzz::compare(reading.messages.get(), again.messages.get());
  }
  return 0;
}
