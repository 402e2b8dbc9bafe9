/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Collects GLib log messages during its lifetime instead of printing them. */
#ifndef VELKOR_TESTS_SUPPORT_LOG_CAPTURE_H
#define VELKOR_TESTS_SUPPORT_LOG_CAPTURE_H

#include <string>
#include <vector>

#include <glib.h>

namespace velkor::test {

class LogCapture {
public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture &) = delete;
  LogCapture &operator=(const LogCapture &) = delete;

  /** The warnings so far, in order. */
  [[nodiscard]] std::vector<std::string> warnings() const { return at_level(G_LOG_LEVEL_WARNING); }
  [[nodiscard]] std::vector<std::string> criticals() const {
    return at_level(G_LOG_LEVEL_CRITICAL);
  }

private:
  struct Entry {
    GLogLevelFlags level;
    std::string text;
  };

  static void collect(const gchar *domain, GLogLevelFlags level, const gchar *message, gpointer);
  [[nodiscard]] std::vector<std::string> at_level(GLogLevelFlags level) const;

  LogCapture *const outer_;
  const GLogFunc earlier_;
  std::vector<Entry> entries_;
};

}  // namespace velkor::test

#endif
