/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/text_input.h"

#include <array>
#include <cerrno>
#include <cstdio>

#include "support/owned.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

/** The content, or the beginning of it, which has more than `most` bytes. */
std::string read_all(std::FILE *file, const std::string &name, std::size_t most) {
  std::string text;
  std::array<char, 4096> block{};
  while (text.size() <= most) {
    const std::size_t count = std::fread(block.data(), 1, block.size(), file);
    text.append(block.data(), count);
    if (count < block.size())
      break;
  }
  if (std::ferror(file) != 0)
    throw usage_error("cannot read " + name + ": " + system_error(errno));
  return text;
}

std::string read_file(const std::string &name, std::size_t most) {
  const OwnedFile file(std::fopen(name.c_str(), "r"));
  if (!file)
    throw usage_error("cannot read " + name + ": " + system_error(errno));
  return read_all(file.get(), name, most);
}

}  // namespace

std::string read_text(const std::string &file, std::size_t most) {
  std::string text = file == "-" ? read_all(stdin, "standard input", most) : read_file(file, most);
  if (text.size() > most)
    throw usage_error("the text is too long");
  if (g_utf8_validate_len(text.data(), text.size(), nullptr) == FALSE)
    throw usage_error("the text is not UTF-8");
  text.erase(text.find_last_not_of(" \t\r\n") + 1);
  if (text.empty())
    throw usage_error("the text is empty");
  return text;
}

}  // namespace velkor::ctl
