/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/arguments.h"

#include <limits>
#include <utility>

#include "support/numbers.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {

void Arguments::set(const std::string &name, std::vector<std::string> values) {
  values_[name] = std::move(values);
}

bool Arguments::has(const std::string &name) const {
  return values_.contains(name);
}

std::optional<std::string> Arguments::value(const std::string &name) const {
  const auto found = values_.find(name);
  if (found == values_.end() || found->second.empty())
    return std::nullopt;
  return found->second.front();
}

std::vector<std::string> Arguments::values(const std::string &name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? std::vector<std::string>() : found->second;
}

std::string Arguments::required(const std::string &name) const {
  const std::optional<std::string> given = value(name);
  if (!given)
    throw usage_error(name + " is missing");
  return *given;
}

std::int64_t number_in_range(const std::string &text, std::int64_t lowest, std::int64_t highest,
                             const std::string &what) {
  const auto number = whole_number(text);
  if (!number || *number < lowest || *number > highest)
    throw usage_error(what + ": \"" + text + "\" is not a number from " + std::to_string(lowest) +
                      " to " + std::to_string(highest));
  return *number;
}

std::int32_t posting_id(const std::string &text) {
  return static_cast<std::int32_t>(
      number_in_range(text, 1, std::numeric_limits<std::int32_t>::max(), "ID"));
}

}  // namespace velkor::ctl
