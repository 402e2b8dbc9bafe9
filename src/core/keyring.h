/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The password behind the token of the settings. Only the core's thread uses it. Whatever happens
 * to the keyring, a token that could not be followed stays in the file, and a new password that the
 * keyring does not take is written to the file itself.
 */
#ifndef VELKOR_CORE_KEYRING_H
#define VELKOR_CORE_KEYRING_H

#include <optional>
#include <string>

#include <velkor/zox_config.h>

#include "support/owned.h"

namespace velkor::keyring {

/** Forgets the token of the settings before: those in force come from elsewhere. */
void forget() noexcept;

/** Replaces a token that the settings hold by the password, or by none with a warning. */
void resolve(ZoxConfig &config) noexcept;

/** Whether the settings in force keep the password in the keyring. */
bool in_use() noexcept;

/** Why the password could not be had; empty when it could or was not asked for. */
const std::string &fault() noexcept;

/**
 * What the file is to hold as the password: the token when the keyring has the password, which is
 * given a changed one first; otherwise the password itself, null for none.
 */
OwnedString written_password(const ZoxConfig &config) noexcept;

/** Gives the keyring the password; why that failed, or nothing. */
std::optional<std::string> start_using(const ZoxConfig &config) noexcept;

/** The password is written to the file again from now on. */
struct Entry {
  std::string id;
};
Entry stop_using() noexcept;
/** Takes that back; the password is what the entry holds. */
void use_again(const Entry &entry, const ZoxConfig &config) noexcept;

/** Removes what the keyring holds under the entry. */
void remove(const Entry &entry) noexcept;

}  // namespace velkor::keyring

#endif
