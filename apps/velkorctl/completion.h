/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Completion of command lines: what the word under the cursor may become. */
#ifndef VELKORCTL_COMPLETION_H
#define VELKORCTL_COMPLETION_H

#include <functional>
#include <string>
#include <vector>

#include "velkorctl/command.h"

namespace velkor::ctl {

/** Something that a word may become, with a few words about it. */
struct Candidate {
  std::string word;
  std::string about = {};

  bool operator==(const Candidate &other) const = default;
};

/** Candidates without any words about them. */
std::vector<Candidate> words_only(const std::vector<std::string> &words);

/**
 * What the user has, such as saved filters, by the name of the argument or option for it.
 * `cache_directory`: what the line has behind --cache-dir; empty when it has none.
 */
using KnownValues = std::function<std::vector<Candidate>(const std::string &name,
                                                         const std::string &cache_directory)>;

/**
 * What the last one of `words` may become. `words` is what follows the program's name; shells that
 * break words at "=" hand it over as a word of its own. Options come only where the word begins
 * with "-".
 */
std::vector<Candidate> candidates_for(const std::vector<CommandGroup> &groups,
                                      const std::vector<std::string> &words,
                                      const KnownValues &known_values);

}  // namespace velkor::ctl

#endif
