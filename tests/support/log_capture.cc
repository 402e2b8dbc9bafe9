/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/log_capture.h"

#include <mutex>
#include <utility>

namespace velkor::test {
namespace {

/** Guards what follows, and what the captures hold: other threads may still log when one ends. */
std::mutex mutex;
LogCapture *innermost = nullptr;

LogCapture *exchange_innermost(LogCapture *capture) {
  const std::lock_guard lock(mutex);
  return std::exchange(innermost, capture);
}

}  // namespace

LogCapture::LogCapture()
    : outer_(exchange_innermost(this)), earlier_(g_log_set_default_handler(collect, nullptr)) {}

LogCapture::~LogCapture() {
  g_log_set_default_handler(earlier_, nullptr);
  exchange_innermost(outer_);
}

void LogCapture::collect(const gchar *, GLogLevelFlags level, const gchar *message, gpointer) {
  const std::lock_guard lock(mutex);
  if (innermost != nullptr)
    innermost->entries_.push_back({static_cast<GLogLevelFlags>(level & G_LOG_LEVEL_MASK), message});
}

std::vector<std::string> LogCapture::at_level(GLogLevelFlags level) const {
  const std::lock_guard lock(mutex);
  std::vector<std::string> texts;
  for (const Entry &entry : entries_) {
    if (entry.level == level)
      texts.push_back(entry.text);
  }
  return texts;
}

}  // namespace velkor::test
