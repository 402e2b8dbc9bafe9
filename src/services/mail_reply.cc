/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "services/mail_reply.h"

#include <string>
#include <string_view>
#include <utility>

#include <velkor/zox_app_core.h>

#include "core/app_core.h"
#include "core/atomic_file.h"
#include "core/backup.h"
#include "core/cache_directory.h"
#include "support/text.h"

namespace velkor {
namespace {

/** Whether there may be a message in the reply: an error page of a proxy holds none. */
bool may_hold_messages(std::string_view reply) noexcept {
  return reply.find(message_start) != std::string_view::npos;
}

void keep(std::string_view reply, const std::string &fault) noexcept {
  constexpr mode_t owner_only = 0600;
  constexpr const char *caller = "zox_mail_fetch";
  const std::string name = backup_name(cache_path("velkor.mail", false), "antwoord");
  AtomicFile file(name, AtomicFile::Form::plain, Z_DEFAULT_COMPRESSION, owner_only);
  file.write(reply);
  if (file.commit(caller))
    g_warning("%s(): niet alle berichten konden worden gelezen (%s); het antwoord van de server "
              "blijft bewaard als %s\n",
              caller, fault.c_str(), name.c_str());
  else
    g_warning("%s(): niet alle berichten konden worden gelezen (%s), en het antwoord van de server "
              "kon niet worden bewaard als %s: %s\n",
              caller, fault.c_str(), name.c_str(), g_strerror(file.error()));
}

}  // namespace

OwnedMail read_mail_reply(const ZoxString *reply) noexcept {
  MailReading reading = read_mail(reply, {.asserts = false});
  if (reading.fault.empty() || !may_hold_messages(view_of(reply)))
    return std::move(reading.messages);
  keep(view_of(reply), reading.fault);
  if (reading.unusable)
    return rescue_mail(view_of(reply));
  // Outside tolerant mode, a message that lacks a text fails the reader's assertion.
  return tolerant() ? std::move(reading.messages) : OwnedMail(zox_mail_parse(reply));
}

}  // namespace velkor
