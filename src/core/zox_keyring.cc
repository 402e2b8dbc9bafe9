/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_keyring.h>

#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>

#include "core/app_core.h"
#include "core/file_outcome.h"
#include "core/keyring.h"
#include "support/assertion.h"
#include "support/text.h"

namespace velkor {
namespace {

/** Saves the settings; why that failed, or nothing. */
std::string save() noexcept {
  zox_config_save();
  return file_outcome().status == ZOX_FILE_FINE ? "" : zox_file_last_error()->message;
}

/** Each: why the password stays where it was; empty when it does not. */
std::string move_to_keyring() noexcept {
  if (read_only())
    return "the library is open for reading only";
  if (auto refusal = keyring::start_using(*core->config))
    return *refusal;
  std::string fault = save();
  if (!fault.empty())
    keyring::remove(keyring::stop_using());
  return fault;
}

std::string move_to_file() noexcept {
  const keyring::Entry entry = keyring::stop_using();
  std::string fault = save();
  if (fault.empty())
    keyring::remove(entry);
  else
    keyring::use_again(entry, *core->config);
  return fault;
}

std::string move_to(ZoxPasswordPlace place) noexcept {
  const bool to_keyring = place == ZOX_PASSWORD_IN_KEYRING;
  if (to_keyring == keyring::in_use())
    return {};
  if (core->config->password == nullptr)
    return keyring::in_use() ? keyring::fault() : "there is no password";
  return to_keyring ? move_to_keyring() : move_to_file();
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

gint32 zox_keyring_keep_password(ZoxPasswordPlace place, char **message) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const std::string fault = move_to(place);
  hand_over(message, OwnedText(fault.empty() ? nullptr : g_strdup(fault.c_str())));
  return fault.empty() ? 1 : 0;
}

ZoxPasswordPlace zox_keyring_password_place(void) {
  return keyring::in_use() ? ZOX_PASSWORD_IN_KEYRING : ZOX_PASSWORD_IN_FILE;
}

const char *zox_keyring_fault(void) {
  const std::string &fault = keyring::fault();
  return fault.empty() ? nullptr : fault.c_str();
}

}  // extern "C"
