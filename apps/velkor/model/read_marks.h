/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Which messages have been read, kept in a file of this program. */
#ifndef VELKOR_APP_MODEL_READ_MARKS_H
#define VELKOR_APP_MODEL_READ_MARKS_H

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include "model/message.h"

namespace velkor::app {

class ReadMarks {
public:
  /** Takes what the file holds; lines that hold no number are passed over. */
  explicit ReadMarks(std::filesystem::path file);

  [[nodiscard]] bool is_unread(const Message &message) const {
    return !message.sent && !read_.contains(message.id);
  }

  /**
   * From now on the message has been read.
   * @return why that could not be written; empty on success
   */
  std::string add(const Message &message);

private:
  std::filesystem::path file_;
  std::set<std::uint64_t> read_;
};

}  // namespace velkor::app

#endif
