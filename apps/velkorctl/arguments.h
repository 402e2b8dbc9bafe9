/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The options and arguments given to one command, by the names that the command declares. */
#ifndef VELKORCTL_ARGUMENTS_H
#define VELKORCTL_ARGUMENTS_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::ctl {

class Arguments {
public:
  /** `name`: "--title" of an option, "ID" of an argument. */
  void set(const std::string &name, std::vector<std::string> values);

  [[nodiscard]] bool has(const std::string &name) const;
  [[nodiscard]] std::optional<std::string> value(const std::string &name) const;
  [[nodiscard]] std::vector<std::string> values(const std::string &name) const;
  /** The value of an argument that the command requires. */
  [[nodiscard]] std::string required(const std::string &name) const;

private:
  std::map<std::string, std::vector<std::string>> values_;
};

/** A whole decimal number from `lowest` to `highest`; throws a usage Failure naming `what`. */
std::int64_t number_in_range(const std::string &text, std::int64_t lowest, std::int64_t highest,
                             const std::string &what);

/** The ID of a posting: 1 to 2147483647. */
std::int32_t posting_id(const std::string &text);

}  // namespace velkor::ctl

#endif
