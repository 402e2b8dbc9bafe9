/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The description of a command: its name, its options and arguments, and what it does. */
#ifndef VELKORCTL_COMMAND_H
#define VELKORCTL_COMMAND_H

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "velkorctl/arguments.h"
#include "velkorctl/failure.h"
#include "velkorctl/output.h"
#include "velkorctl/record.h"

namespace velkor::ctl {

struct Option {
  /** "-t,--title" */
  std::string names;
  /** What the help calls its value; empty for an option without one. */
  std::string value;
  std::string help;
  bool repeatable = false;
  /** The only values accepted, when there are any. */
  std::vector<std::string> choices = {};

  /** "--title", the name under which Arguments has it. */
  [[nodiscard]] std::string long_name() const { return names.substr(names.rfind(',') + 1); }
};

struct Argument {
  std::string name;
  std::string help;
  enum class Count { one, optional, any, some } count = Count::one;
};

inline Argument posting_argument() {
  return {"ID", "The ID of the posting"};
}
inline Argument postings_argument() {
  return {"ID", "The IDs of the postings", Argument::Count::some};
}

/** The options that stand before or after any command. */
struct GlobalOptions {
  std::optional<std::string> server;
  std::optional<std::string> static_server;
  std::optional<std::string> ca_file;
  std::optional<std::string> cache_dir;
  std::optional<std::string> lib_dir;
  std::optional<std::string> data_dir;
  bool trace = false;
  /** How long a command that writes waits until another one has finished. */
  std::chrono::seconds wait{0};
  /** How long a transfer may bring nothing before it is given up; 0 for any time. */
  std::chrono::seconds timeout{60};
  /** "auto", "always" or "never". */
  std::string color = "auto";
  bool pager = true;
};

struct Command;

/** What a command is run with. */
struct Context {
  const GlobalOptions &options;
  const Arguments &arguments;
  Output &out;
  const Command &command;
  /** The whole name of the command with dots, as in "config.set". */
  std::string name;
};

struct Command {
  /** One word; behind that of its group, if it is in one: the "set" of "config set". */
  std::string name;
  std::string summary;
  std::vector<Argument> arguments;
  std::vector<Option> options;
  std::function<Exit(const Context &)> run;
  /** What it prints in the formats of with_output(). */
  std::optional<RecordInfo> record = {};
};

struct CommandGroup {
  /** The first word of its commands; empty for commands of one word. */
  std::string name;
  std::string summary;
  std::vector<Command> commands;
  /** The command that the name of the group alone stands for; empty for none. */
  std::string otherwise = {};
};

}  // namespace velkor::ctl

#endif
