/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The settings as fields of a form: those of the library, and the servers, which this program keeps
 * in a file of its own. Threads: the core's.
 */
#ifndef VELKOR_APP_LIBRARY_SETTINGS_ACCESS_H
#define VELKOR_APP_LIBRARY_SETTINGS_ACCESS_H

#include <filesystem>

#include "model/setting.h"

namespace velkor::app {

/**
 * Every setting with its value, in the order of the file, and behind them the servers under the
 * keys of setting_labels.h.
 */
Settings read_settings(const std::filesystem::path &servers_file);

/** Takes each of the values that is in order, and saves it where it belongs. */
SettingRefusals apply_settings(const SettingChanges &changes,
                               const std::filesystem::path &servers_file);

}  // namespace velkor::app

#endif
