/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What velkorctl doctor looks at, and what it finds: one function per subject. */
#ifndef VELKORCTL_DOCTOR_EXAMINATION_H
#define VELKORCTL_DOCTOR_EXAMINATION_H

#include <filesystem>
#include <string>
#include <vector>

#include "velkorctl/failure.h"

namespace velkor::ctl::doctor {

struct Finding {
  std::string subject;
  /** What was found, as a clause. */
  std::string what;
  /** What to do about it; empty when all is well. */
  std::string advice = {};

  [[nodiscard]] bool is_well() const noexcept { return advice.empty(); }
};

using Findings = std::vector<Finding>;

/** One request to each server. There must be a core. */
struct Answers {
  LibraryResult main;
  /** Whether the main server was asked as the user of the account. */
  bool with_account;
  LibraryResult dumps;
};

/** These need no core: the directory may be unusable. */
Findings check_directory(const std::filesystem::path &directory);
Findings check_space(const std::filesystem::path &directory);
Findings check_files(const std::filesystem::path &directory);
Findings check_bus();

/** There must be a core for these. */
Findings check_settings();
Findings check_plugin();
Answers ask_servers();
Findings check_names(const Answers &answers);
Findings check_servers(const Answers &answers);
Findings check_proxy(const Answers &answers);

}  // namespace velkor::ctl::doctor

#endif
