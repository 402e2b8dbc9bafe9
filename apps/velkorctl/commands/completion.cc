/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl completion: the script for bash, made of the table of commands. */
#include "velkorctl/completion.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "velkorctl/command_line.h"
#include "velkorctl/commands.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Words = std::set<std::string>;

/** Finds out which command stands before the word under the cursor. */
constexpr const char *script_begin = R"bash(# bash completion for velkorctl
_velkorctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
  local index word words globals= command= skip=
  for ((index = 1; index < COMP_CWORD; index++)); do
    word=${COMP_WORDS[index]}
    if [[ $skip ]]; then skip=; continue; fi
    case $word in
)bash";

constexpr const char *script_middle = R"bash(      -*) ;;
      *) command=${command:+$command }$word
         case $command in *' '*) break ;; esac ;;
    esac
  done
  case "$command $previous" in
)bash";

constexpr const char *script_end =
    R"bash(  COMPREPLY=($(compgen -W "$words $globals" -- "$current"))
}
complete -o default -F _velkorctl velkorctl
)bash";

/** A line of a "case" that sets the words to complete from. */
std::string case_of(const std::string &pattern, const Words &words) {
  return "    \"" + pattern + "\") words=\"" + joined(words, " ") + "\" ;;\n";
}

/** The names of the options, "-t,--title" being two. */
Words names_of(const std::vector<Option> &options) {
  Words names;
  for (const Option &option : options) {
    names.insert(option.long_name());
    names.insert(option.names.substr(0, option.names.find(',')));
  }
  return names;
}

/** The global options that have a value, as a pattern of a "case". */
std::string global_options_with_value() {
  Words names;
  for (const Option &option : global_options())
    if (!option.value.empty())
      names.merge(names_of({option}));
  return joined(names, "|");
}

/** The words that may follow each command, and the empty one at the start of the line. */
std::map<std::string, Words> following_words(const std::vector<CommandGroup> &groups) {
  std::map<std::string, Words> words;
  for (const CommandGroup &group : groups) {
    if (!group.name.empty())
      words[""].insert(group.name);
    for (const Command &command : group.commands) {
      words[group.name].insert(command.name);
      const std::string prefix = group.name.empty() ? "" : group.name + " ";
      words[prefix + command.name].merge(names_of(command.options));
      if (command.name == group.otherwise)
        words[group.name].merge(names_of(command.options));
    }
  }
  return words;
}

/** The words known for an option, by the commands that have it. */
using ValuesByCommand = std::map<std::string, Words>;

Words words_for(const Command &command, const Option &option) {
  if (option.long_name() == "--category") {
    const std::vector<std::string> categories = category_names();
    return {categories.begin(), categories.end()};
  }
  Words words(option.choices.begin(), option.choices.end());
  if (option.long_name() == "--fields" && command.record)
    for (const FieldInfo &field : command.record->fields)
      words.insert(field.name);
  return words;
}

std::map<std::string, ValuesByCommand> known_values(const std::vector<CommandGroup> &groups) {
  std::map<std::string, ValuesByCommand> values;
  for (const CommandGroup &group : groups)
    for (const Command &command : group.commands)
      for (const Option &option : command.options)
        if (Words words = words_for(command, option); !words.empty())
          values[option.long_name()][(group.name.empty() ? "" : group.name + " ") + command.name] =
              std::move(words);
  for (const Option &option : global_options())
    if (!option.choices.empty())
      values[option.long_name()][""] = Words(option.choices.begin(), option.choices.end());
  return values;
}

/** The cases for an option: one for all commands when they agree. */
std::string cases_of(const std::string &option, const ValuesByCommand &values) {
  const Words &first = values.begin()->second;
  if (std::ranges::all_of(values, [&](const auto &entry) { return entry.second == first; }))
    return "    *\" " + option + "\") words=\"" + joined(first, " ") + "\" ;;\n";
  std::string cases;
  for (const auto &[command, words] : values)
    cases += case_of(std::string(command).append(" ").append(option), words);
  return cases;
}

Exit run(const Context &context) {
  context.out.write(bash_completion(all_commands()));
  return Exit::ok;
}

}  // namespace

std::string bash_completion(const std::vector<CommandGroup> &commands) {
  std::string script = script_begin;
  script += "      " + global_options_with_value() + ") skip=1 ;;\n" + script_middle;
  for (const auto &[option, values] : known_values(commands))
    script += cases_of(option, values);
  script += "    *) globals=\"" + joined(names_of(global_options()), " ") + " --help\"\n";
  script += "    case $command in\n";
  for (const auto &[command, words] : following_words(commands))
    script += case_of(command, words);
  return script + "    esac ;;\n  esac\n" + script_end;
}

Command completion_command() {
  return {"completion", "Print the script that completes command lines in bash", {}, {}, run};
}

}  // namespace velkor::ctl
