/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The private messages of the library. Functions with a session are called on the main thread,
 * where they call `done`; the others on the core's.
 */
#ifndef VELKOR_APP_LIBRARY_MAILBOX_H
#define VELKOR_APP_LIBRARY_MAILBOX_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "library/session.h"
#include "model/message.h"

namespace velkor::app {

/** All messages, the newest first. */
std::vector<Message> read_messages();

struct MailResult {
  std::string failure{};           // why nothing came of it; empty on success
  std::string not_saved{};         // why the file lacks what there is now; empty when it does not
  bool unknown_addressee = false;  // the reason for a failure without a sentence
  std::uint32_t received = 0;
  std::vector<Message> messages{};  // all that there are now
};

using MailFunction = std::function<void(const MailResult &)>;

/** Asks whether messages wait, and fetches them. */
SharedCancellation fetch_messages(Session &session, MailFunction done);

SharedCancellation send_message(Session &session, const Draft &draft, MailFunction done);

/** A message as the file holds it, taken out of the list. */
struct DeletedMessage {
  std::string from{};
  std::string subject{};
  std::string body{};
  std::int64_t stamp = 0;
  std::uint32_t code = 0;
  std::int32_t place = 0;
};

struct Deletion {
  MailResult result;
  std::optional<DeletedMessage> message{};  // nothing when the message is still there
};

Deletion delete_message(std::uint64_t id);

/** Puts a deleted message back to its place. */
MailResult restore_message(const DeletedMessage &message);

}  // namespace velkor::app

#endif
