/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading the settings without a word about a file that cannot be read. */
#ifndef VELKOR_CORE_SETTINGS_FILE_H
#define VELKOR_CORE_SETTINGS_FILE_H

namespace velkor {

/**
 * Replaces `core->config` by what the file holds over the defaults, as zox_config_load() does. How
 * that went is this thread's file outcome; only unknown keys are warned about.
 */
void load_settings() noexcept;

}  // namespace velkor

#endif
