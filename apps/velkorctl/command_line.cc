/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The only file that includes CLI11, which is slow to compile. */
#include "velkorctl/command_line.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

#include <CLI/CLI.hpp>

#include "velkorctl/suggestion.h"

namespace velkor::ctl {
namespace {

constexpr std::int64_t longest_time = std::chrono::seconds(std::chrono::hours(24)).count();

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
  explicit CommandLine(const std::vector<CommandGroup> &groups);
  ParsedCommandLine parse(const std::vector<std::string> &given);

private:
  /** Says which word is wrong and what may have been meant; null when it is none of these. */
  [[nodiscard]] std::optional<std::string> wrong_word(const std::vector<std::string> &words) const;
  /** Adds the command that the name of a group stands for, where no other one of it is named. */
  [[nodiscard]] std::vector<std::string> completed(std::vector<std::string> words) const;
  void add(const CommandGroup &group);
  void add(CLI::App &parent, const Command &command);
  void read_globals(GlobalOptions &options) const;

  CLI::App app_{"Updates and searches the local cache of the ZOX service.", "velkorctl"};
  std::vector<std::pair<CLI::App *, const Command *>> commands_;
  /** The commands that the names of groups stand for. */
  std::map<std::string, CLI::App *> otherwise_;
};

CommandLine::CommandLine(const std::vector<CommandGroup> &groups) {
  app_.set_version_flag("--version", "velkorctl " VELKOR_VERSION);
  app_.set_help_flag("-h,--help", "Show this help");
  app_.require_subcommand(1);
  app_.fallthrough();
  for (const Option &option : global_options())
    add_option(app_, option);
  for (const CommandGroup &group : groups)
    add(group);
}

void CommandLine::add(const CommandGroup &group) {
  CLI::App *parent = &app_;
  if (!group.name.empty())
    parent = app_.add_subcommand(group.name, group.summary)->require_subcommand(1)->fallthrough();
  for (const Command &command : group.commands)
    add(*parent, command);
  if (!group.otherwise.empty())
    otherwise_[group.name] = parent->get_subcommand(group.otherwise);
}

void CommandLine::add(CLI::App &parent, const Command &command) {
  CLI::App *sub = parent.add_subcommand(command.name, command.summary);
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
  options.ca_file = text("--ca-file");
  options.cache_dir = text("--cache-dir");
  options.lib_dir = text("--lib-dir");
  options.data_dir = text("--data-dir");
  options.trace = app_.get_option("--trace")->count() > 0;
  const auto seconds = [&text](const std::string &name, std::chrono::seconds otherwise) {
    const auto given = text(name);
    return given ? std::chrono::seconds(number_in_range(*given, 0, longest_time, name)) : otherwise;
  };
  options.pager = app_.get_option("--no-pager")->count() == 0;
  options.color = text("--color").value_or(options.color);
  options.wait = seconds("--wait", options.wait);
  options.timeout = seconds("--timeout", options.timeout);
}

/** The names of all options that may stand behind the command. */
std::vector<std::string> option_names(const CLI::App &command) {
  std::vector<std::string> names;
  for (const CLI::App *app = &command; app != nullptr; app = app->get_parent())
    for (const CLI::Option *option : app->get_options([](const CLI::Option *) { return true; })) {
      for (const std::string &name : option->get_lnames())
        names.push_back("--" + name);
      for (const std::string &name : option->get_snames())
        names.push_back("-" + name);
    }
  return names;
}

std::vector<std::string> command_names(const CLI::App &app) {
  std::vector<std::string> names;
  for (const CLI::App *command : app.get_subcommands([](const CLI::App *) { return true; }))
    names.push_back(command->get_name());
  return names;
}

/** Whether the option named in the word takes the next word as its value. */
bool takes_next_word(const CLI::App &app, const std::string &word) {
  for (const CLI::App *owner = &app; owner != nullptr; owner = owner->get_parent())
    if (const CLI::Option *option = owner->get_option_no_throw(word))
      return option->get_type_size() != 0;
  return false;
}

bool contains(const std::vector<std::string> &words, const std::string &word) {
  return std::ranges::find(words, word) != words.end();
}

std::string whole_name(const CLI::App &app, const std::string &separator) {
  const CLI::App *parent = app.get_parent();
  if (parent == nullptr)
    return "";
  const std::string before = whole_name(*parent, separator);
  return (before.empty() ? "" : before + separator) + app.get_name();
}

std::optional<std::string> CommandLine::wrong_word(const std::vector<std::string> &words) const {
  const CLI::App *app = &app_;
  for (std::size_t place = 0; place < words.size() && words[place] != "--"; ++place) {
    const std::string word = words[place].substr(0, words[place].find('='));
    const std::vector<std::string> commands = command_names(*app);
    if (word.starts_with("-")) {
      const std::vector<std::string> options = option_names(*app);
      if (word.starts_with("--") && !contains(options, word))
        return "no option " + word + suggestion(word, options);
      if (word == words[place] && takes_next_word(*app, word))
        ++place;
    } else if (contains(commands, word)) {
      app = app->get_subcommand(word);
    } else if (!commands.empty()) {
      const std::string before = whole_name(*app, " ");
      return "no command " +
             (before.empty() ? word : std::string(before).append(" ").append(word)) +
             suggestion(word, commands);
    }
  }
  return std::nullopt;
}

std::vector<std::string> CommandLine::completed(std::vector<std::string> words) const {
  const CLI::App *app = &app_;
  std::size_t behind_group = 0;
  for (std::size_t place = 0; place < words.size(); ++place) {
    const std::string &word = words[place];
    if (word == "--help" || word == "-h")
      return words;
    if (word.starts_with("-")) {
      if (takes_next_word(*app, word))
        ++place;
      continue;
    }
    const auto group = otherwise_.find(word);
    if (behind_group != 0 || group == otherwise_.end())
      return words;
    app = group->second;
    behind_group = place + 1;
  }
  if (behind_group != 0)
    words.insert(words.begin() + static_cast<std::ptrdiff_t>(behind_group), app->get_name());
  return words;
}

Arguments arguments_of(const CLI::App &app, const Command &command) {
  Arguments result;
  const auto take = [&](const std::string &name) {
    const CLI::Option *option = app.get_option(name);
    if (option->count() > 0)
      result.set(name, option->results());
  };
  for (const Option &option : command.options)
    take(option.long_name());
  for (const Argument &argument : command.arguments)
    take(argument.name);
  return result;
}

ParsedCommandLine CommandLine::parse(const std::vector<std::string> &given) {
  ParsedCommandLine result;
  const std::vector<std::string> words = completed(given);
  try {
    app_.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::CallForHelp &) {
    result.help_text = app_.help();
    return result;
  } catch (const CLI::CallForVersion &version) {
    result.help_text = std::string(version.what()) + "\n";
    return result;
  } catch (const CLI::ParseError &error) {
    throw usage_error(wrong_word(words).value_or(error.what()) + " (see velkorctl --help)");
  }
  read_globals(result.options);
  const auto chosen =
      std::ranges::find_if(commands_, [](const auto &entry) { return entry.first->parsed(); });
  result.command = chosen->second;
  result.name = whole_name(*chosen->first, ".");
  result.arguments = arguments_of(*chosen->first, *chosen->second);
  return result;
}

}  // namespace

std::vector<Option> global_options() {
  return {
      {"--server", "[https://]HOST[:PORT]", "The main ZOX server"},
      {"--static-server", "[https://]HOST[:PORT]", "The server that the dumps are fetched from"},
      {"--ca-file", "FILE", "The certificate authorities to trust over HTTPS, in PEM"},
      {"--cache-dir", "DIR", "The directory of the settings and the cache (default: ~/.velkor)"},
      {"--lib-dir", "DIR", "The directory of the authentication plug-in"},
      {"--data-dir", "DIR", "The directory of the data installed with Velkor"},
      {"--trace", "", "Print each request, and all that the library logs, to standard error"},
      {"--wait", "SECONDS",
       "Wait at most SECONDS seconds for another velkorctl to finish writing (default: 0)"},
      {"--timeout", "SECONDS",
       "Give up on a server that sends nothing for SECONDS seconds (default: 60; 0: never)"},
      {"--color",
       "WHEN",
       "Use colours: auto (default, on a terminal that has them), always or never",
       false,
       {"auto", "always", "never"}},
      {"--no-pager", "", "Print to the terminal at once instead of page by page"},
  };
}

ParsedCommandLine parse_command_line(const std::vector<CommandGroup> &commands,
                                     const std::vector<std::string> &words) {
  return CommandLine(commands).parse(words);
}

}  // namespace velkor::ctl
