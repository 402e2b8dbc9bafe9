/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The only file that includes CLI11, which is slow to compile. */
#include "velkorctl/command_line.h"

#include <algorithm>
#include <map>
#include <utility>

#include <CLI/CLI.hpp>

namespace velkor::ctl {
namespace {

constexpr std::int64_t longest_wait = 24 * 60 * 60;

std::string first_word(const std::string &name) {
  return name.substr(0, name.find(' '));
}

std::string last_word(const std::string &name) {
  return name.substr(name.rfind(' ') + 1);
}

/** The "--title" of "-t,--title". */
std::string long_name(const std::string &names) {
  return names.substr(names.rfind(',') + 1);
}

void add_option(CLI::App &app, const Option &option) {
  if (option.value.empty()) {
    app.add_flag(option.names, option.help);
    return;
  }
  CLI::Option *added = app.add_option(
      option.names, [](const auto &) { return true; }, option.help);
  added->type_name(option.value)->expected(1);
  added->multi_option_policy(option.repeatable ? CLI::MultiOptionPolicy::TakeAll
                                               : CLI::MultiOptionPolicy::Throw);
  added->allow_extra_args(false);
  if (!option.choices.empty())
    added->check(CLI::IsMember(option.choices));
}

void add_argument(CLI::App &app, const Argument &argument) {
  CLI::Option *added = app.add_option(
      argument.name, [](const auto &) { return true; }, argument.help);
  using Count = Argument::Count;
  added->type_name("");
  added->required(argument.count == Count::one || argument.count == Count::some);
  if (argument.count == Count::any || argument.count == Count::some)
    added->expected(CLI::detail::expected_max_vector_size);
}

/** A CLI11 application over the descriptions, which outlive it. */
class CommandLine {
public:
  CommandLine(const std::vector<CommandGroup> &groups, const std::vector<Command> &commands);
  ParsedCommandLine parse(const std::vector<std::string> &words);

private:
  CLI::App &parent_of(const Command &command);
  void add(const Command &command);
  void read_globals(GlobalOptions &options) const;

  CLI::App app_{"Reads and keeps up to date the local cache of the ZOX service.", "velkorctl"};
  std::map<std::string, CLI::App *> groups_;
  std::vector<std::pair<CLI::App *, const Command *>> commands_;
};

CommandLine::CommandLine(const std::vector<CommandGroup> &groups,
                         const std::vector<Command> &commands) {
  app_.set_version_flag("--version", "velkorctl " VELKOR_VERSION);
  app_.set_help_flag("-h,--help", "Show this help");
  app_.require_subcommand(1);
  app_.fallthrough();
  for (const Option &option : global_options())
    add_option(app_, option);
  for (const CommandGroup &group : groups) {
    groups_[group.name] = app_.add_subcommand(group.name, group.summary);
    groups_[group.name]->require_subcommand(1);
    groups_[group.name]->fallthrough();
  }
  for (const Command &command : commands)
    add(command);
}

CLI::App &CommandLine::parent_of(const Command &command) {
  const auto group = groups_.find(first_word(command.name));
  return group == groups_.end() ? app_ : *group->second;
}

void CommandLine::add(const Command &command) {
  CLI::App *sub = parent_of(command).add_subcommand(last_word(command.name), command.summary);
  sub->fallthrough();
  for (const Option &option : command.options)
    add_option(*sub, option);
  for (const Argument &argument : command.arguments)
    add_argument(*sub, argument);
  commands_.emplace_back(sub, &command);
}

void CommandLine::read_globals(GlobalOptions &options) const {
  const auto text = [this](const std::string &name) -> std::optional<std::string> {
    const CLI::Option *option = app_.get_option(name);
    return option->count() == 0 ? std::nullopt : std::optional(option->results().front());
  };
  options.server = text("--server");
  options.static_server = text("--static-server");
  options.cache_dir = text("--cache-dir");
  options.lib_dir = text("--lib-dir");
  options.data_dir = text("--data-dir");
  options.trace = app_.get_option("--trace")->count() > 0;
  options.wait = std::chrono::seconds(
      number_in_range(text("--wait").value_or("0"), 0, longest_wait, "--wait"));
}

Arguments arguments_of(const CLI::App &app, const Command &command) {
  Arguments result;
  const auto take = [&](const std::string &name) {
    const CLI::Option *option = app.get_option(name);
    if (option->count() > 0)
      result.set(name, option->results());
  };
  for (const Option &option : command.options)
    take(long_name(option.names));
  for (const Argument &argument : command.arguments)
    take(argument.name);
  return result;
}

ParsedCommandLine CommandLine::parse(const std::vector<std::string> &words) {
  ParsedCommandLine result;
  try {
    app_.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::CallForHelp &) {
    result.help_text = app_.help();
    return result;
  } catch (const CLI::CallForVersion &version) {
    result.help_text = std::string(version.what()) + "\n";
    return result;
  } catch (const CLI::ParseError &error) {
    throw usage_error(std::string(error.what()) + " (see velkorctl --help)");
  }
  read_globals(result.options);
  const auto chosen = std::find_if(commands_.begin(), commands_.end(),
                                   [](const auto &entry) { return entry.first->parsed(); });
  result.command = chosen->second;
  result.arguments = arguments_of(*chosen->first, *chosen->second);
  return result;
}

}  // namespace

std::vector<Option> global_options() {
  return {
      {"--server", "HOST[:PORT]", "The main ZOX server"},
      {"--static-server", "HOST[:PORT]", "The server of the dumps"},
      {"--cache-dir", "DIR", "The directory of settings and cache (default: ~/.velkor)"},
      {"--lib-dir", "DIR", "The directory of the authentication plug-in"},
      {"--data-dir", "DIR", "The directory of the data that Velkor comes with"},
      {"--trace", "", "Show the library's trace lines on standard error"},
      {"--wait", "SECONDS", "Wait so long for another writing command to end (default: 0)"},
  };
}

ParsedCommandLine parse_command_line(const std::vector<CommandGroup> &groups,
                                     const std::vector<Command> &commands,
                                     const std::vector<std::string> &words) {
  return CommandLine(groups, commands).parse(words);
}

}  // namespace velkor::ctl
