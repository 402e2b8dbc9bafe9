/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/log_capture.h"

namespace velkor::test {

LogCapture::LogCapture() : earlier_(g_log_set_default_handler(collect, this)) {}

LogCapture::~LogCapture() {
  g_log_set_default_handler(earlier_, nullptr);
}

void LogCapture::collect(const gchar *, GLogLevelFlags level, const gchar *message, gpointer self) {
  auto *capture = static_cast<LogCapture *>(self);
  const std::lock_guard lock(capture->mutex_);
  capture->entries_.push_back({static_cast<GLogLevelFlags>(level & G_LOG_LEVEL_MASK), message});
}

std::vector<std::string> LogCapture::at_level(GLogLevelFlags level) const {
  const std::lock_guard lock(mutex_);
  std::vector<std::string> texts;
  for (const Entry &entry : entries_) {
    if (entry.level == level)
      texts.push_back(entry.text);
  }
  return texts;
}

}  // namespace velkor::test
