/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/read_marks.h"

#include <charconv>
#include <fstream>
#include <utility>

#include <glib.h>

#include "model/shown_text.h"
#include "support/owned.h"

namespace velkor::app {

ReadMarks::ReadMarks(std::filesystem::path file) : file_(std::move(file)) {
  std::ifstream lines(file_);
  for (std::string line; std::getline(lines, line);) {
    std::uint64_t id = 0;
    const char *end = line.data() + line.size();
    const auto [stop, error] = std::from_chars(line.data(), end, id);
    if (error == std::errc() && stop == end)
      read_.insert(id);
  }
}

std::string ReadMarks::add(const Message &message) {
  if (message.sent || !read_.insert(message.id).second)
    return "";
  std::string text;
  for (const std::uint64_t id : read_)
    text += std::to_string(id) + "\n";
  g_mkdir_with_parents(file_.parent_path().c_str(), 0700);
  GError *error = nullptr;
  g_file_set_contents(file_.c_str(), text.data(), static_cast<gssize>(text.size()), &error);
  const OwnedError failure(error);
  return failure ? shown_line(failure->message) : "";
}

}  // namespace velkor::app
