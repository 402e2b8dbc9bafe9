/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What is done with the fields of the settings, by the rows of their table. */
#ifndef VELKOR_CORE_SETTINGS_H
#define VELKOR_CORE_SETTINGS_H

#include "core/settings_table.h"

namespace velkor::settings {

/** Gives every field of a zero-filled record its default. */
void set_defaults(ZoxConfig &config) noexcept;

/** Releases what the field holds and gives it its default. */
void set_default(ZoxConfig &config, const Setting &setting) noexcept;

/**
 * Takes over one value from the file. Entries of lists are collected in reverse; complete() puts
 * them right after the last line.
 * @param value without white space around it
 */
void read(ZoxConfig &config, const Setting &setting, const char *value) noexcept;
void complete(ZoxConfig &config) noexcept;
void complete(ZoxConfig &config, const Setting &setting) noexcept;

/** Appends the lines of the file to `text`. */
void write(const ZoxConfig &config, GString *text) noexcept;

/** Frees every text and list of the record. */
void release(ZoxConfig &config) noexcept;

}  // namespace velkor::settings

namespace velkor {

/**
 * Replaces `core->config` by what the file holds over the defaults, as zox_config_load() does. How
 * that went is this thread's file outcome; only unknown keys are warned about.
 */
void load_settings() noexcept;

}  // namespace velkor

#endif
