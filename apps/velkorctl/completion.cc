/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/completion.h"

#include <map>
#include <set>

#include "velkorctl/command_line.h"

namespace velkor::ctl {
namespace {

/** Completes the word under the cursor by the words of the command typed so far. */
constexpr const char *script_begin = R"bash(# bash completion for velkorctl
_velkorctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
  local index word command= skip=
  for ((index = 1; index < COMP_CWORD; index++)); do
    word=${COMP_WORDS[index]}
    if [[ $skip ]]; then skip=; continue; fi
    case $word in
      --server|--static-server|--cache-dir|--lib-dir|--data-dir|--wait) skip=1 ;;
      -*) ;;
      *) command=${command:+$command }$word
         case $command in *' '*) break ;; esac ;;
    esac
  done
)bash";

constexpr const char *script_end =
    R"bash(  COMPREPLY=($(compgen -W "$words $globals" -- "$current"))
}
complete -o default -F _velkorctl velkorctl
)bash";

std::string first_word(const std::string &name) {
  return name.substr(0, name.find(' '));
}

std::string joined(const std::set<std::string> &words) {
  std::string result;
  for (const std::string &word : words)
    result += (result.empty() ? "" : " ") + word;
  return result;
}

/** "-t,--title" as two words. */
void add_names(std::set<std::string> &words, const Option &option) {
  const std::size_t comma = option.names.find(',');
  words.insert(option.names.substr(0, comma));
  if (comma != std::string::npos)
    words.insert(option.names.substr(comma + 1));
}

std::string names_of(const std::vector<Option> &options) {
  std::set<std::string> words;
  for (const Option &option : options)
    add_names(words, option);
  return joined(words);
}

/** The words that may follow each command typed so far, none at first. */
std::map<std::string, std::string> following_words(const std::vector<Command> &commands) {
  std::map<std::string, std::set<std::string>> words;
  for (const Command &command : commands) {
    const std::string first = first_word(command.name);
    words[""].insert(first);
    if (first != command.name)
      words[first].insert(command.name.substr(first.size() + 1));
    for (const Option &option : command.options)
      add_names(words[command.name], option);
  }
  std::map<std::string, std::string> result;
  for (const auto &[command, following] : words)
    result[command] = joined(following);
  return result;
}

/** What can stand behind an option, for those that take one of few words. */
std::map<std::string, std::string> known_values(const std::vector<Command> &commands) {
  std::map<std::string, std::set<std::string>> values{
      {"--category", {"Applicaties", "Beeld", "Geluid", "Spelletjes"}}};
  for (const Command &command : commands)
    for (const Option &option : command.options)
      if (!option.choices.empty())
        values[option.names.substr(option.names.rfind(',') + 1)].insert(option.choices.begin(),
                                                                        option.choices.end());
  std::map<std::string, std::string> result;
  for (const auto &[option, words] : values)
    result[option] = joined(words);
  return result;
}

}  // namespace

std::string bash_completion(const std::vector<Command> &commands) {
  std::string script = script_begin;
  script += "  case $previous in\n";
  for (const auto &[option, values] : known_values(commands))
    script += "    " + option + ") COMPREPLY=($(compgen -W \"" + values +
              "\" -- \"$current\")); return ;;\n";
  script += "  esac\n  local words= globals=\"" + names_of(global_options()) + " --help\"\n";
  script += "  case $command in\n";
  for (const auto &[command, words] : following_words(commands))
    script += "    \"" + command + "\") words=\"" + words + "\" ;;\n";
  return script + "  esac\n" + script_end;
}

}  // namespace velkor::ctl
