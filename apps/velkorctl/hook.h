/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A command of the user's that is handed a document. */
#ifndef VELKORCTL_HOOK_H
#define VELKORCTL_HOOK_H

#include <string>
#include <vector>

namespace velkor::ctl {

class Hook {
public:
  /**
   * `line`: the program and its arguments, quoted as for a shell; no shell reads it. Throws a usage
   * Failure when it is no such line or there is no such program.
   */
  explicit Hook(const std::string &line);

  /**
   * Runs the command with `input` on its standard input and waits for its end. What it prints goes
   * to standard error. Throws a Failure when it cannot be started or does not end with status 0.
   */
  void run(const std::string &input) const;

private:
  std::vector<std::string> words_;
};

}  // namespace velkor::ctl

#endif
