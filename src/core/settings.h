/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The table of the settings: one row for each key that velkor.conf may hold, in the order in which
 * they are saved. It serves the defaults, loading, saving and freeing alike.
 */
#ifndef VELKOR_CORE_SETTINGS_H
#define VELKOR_CORE_SETTINGS_H

#include <string_view>

#include <velkor/zox_config.h>

namespace velkor::settings {

/** Gives every field of a zero-filled record its default. */
void set_defaults(ZoxConfig &config) noexcept;

/**
 * Takes over one value from the file. Entries of lists are collected in reverse; complete() puts
 * them right after the last line.
 * @param value without white space around it
 * @return whether the key is known
 */
bool read(ZoxConfig &config, std::string_view key, const char *value) noexcept;
void complete(ZoxConfig &config) noexcept;

/** Appends the lines of the file to `text`. */
void write(const ZoxConfig &config, GString *text) noexcept;

/** Frees every text and list of the record. */
void release(ZoxConfig &config) noexcept;

}  // namespace velkor::settings

#endif
