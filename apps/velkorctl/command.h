/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The description of a command: its words, what it takes, and what it does. */
#ifndef VELKORCTL_COMMAND_H
#define VELKORCTL_COMMAND_H

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "velkorctl/arguments.h"
#include "velkorctl/failure.h"
#include "velkorctl/output.h"

namespace velkor::ctl {

struct Option {
  /** "-t,--title"; the long name is the one to ask Arguments for. */
  std::string names;
  /** The word for its value in the help; empty for an option without one. */
  std::string value;
  std::string help;
  bool repeatable = false;
  /** The only values accepted, when there are any. */
  std::vector<std::string> choices = {};
};

struct Argument {
  std::string name;
  std::string help;
  enum class Count { one, optional, any, some } count = Count::one;
};

/** The options that stand before or after any command. */
struct GlobalOptions {
  std::optional<std::string> server;
  std::optional<std::string> static_server;
  std::optional<std::string> cache_dir;
  std::optional<std::string> lib_dir;
  std::optional<std::string> data_dir;
  bool trace = false;
  /** How long a writing command waits for another one to end. */
  std::chrono::seconds wait{0};
};

/** What a running command works with. */
struct Context {
  const GlobalOptions &options;
  const Arguments &arguments;
  Output &out;
};

struct Command {
  /** One word, or the word of a group and the command's own: "config set". */
  std::string name;
  std::string summary;
  std::vector<Argument> arguments;
  std::vector<Option> options;
  Exit (*run)(const Context &context);
};

/** The first word of commands such as "config set". */
struct CommandGroup {
  std::string name;
  std::string summary;
};

}  // namespace velkor::ctl

#endif
