/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/completion.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "velkorctl/command_line.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Candidates = std::vector<Candidate>;

void append(Candidates &candidates, const Candidates &more) {
  candidates.insert(candidates.end(), more.begin(), more.end());
}

bool is_named(const Option &option, const std::string &name) {
  return name == option.long_name() || (option.names.find(',') != std::string::npos &&
                                        name == option.names.substr(0, option.names.find(',')));
}

/** A command line up to the word under the cursor. */
class Line {
public:
  Line(const std::vector<CommandGroup> &groups, const std::vector<std::string> &words);

  [[nodiscard]] Candidates candidates(const KnownValues &known_values) const;

private:
  void take(const std::string &word);
  void take_option(const std::string &word);
  void take_value(const Option &option, const std::string &value);
  void take_command(const std::string &word);
  [[nodiscard]] std::vector<Option> options() const;
  [[nodiscard]] std::optional<Option> option_named(const std::string &name) const;
  [[nodiscard]] Candidates command_names() const;
  [[nodiscard]] Candidates option_names() const;
  [[nodiscard]] Candidates argument_values(const KnownValues &known_values) const;
  [[nodiscard]] Candidates option_values(const Option &option,
                                         const KnownValues &known_values) const;

  const std::vector<CommandGroup> &groups_;
  const CommandGroup *group_ = nullptr;
  const Command *command_ = nullptr;
  std::size_t arguments_ = 0;
  std::string category_;
  std::string cache_directory_;
  /** The option whose value comes next. */
  std::optional<Option> pending_;
  bool only_arguments_ = false;
  std::string current_;
};

Line::Line(const std::vector<CommandGroup> &groups, const std::vector<std::string> &words)
    : groups_(groups) {
  for (std::size_t place = 0; place + 1 < words.size(); ++place)
    if (words[place] != "=" || !pending_)
      take(words[place]);
  if (!words.empty() && !(words.back() == "=" && pending_))
    current_ = words.back();
  const std::size_t mark = current_.find('=');
  if (current_.starts_with("--") && mark != std::string::npos && !only_arguments_) {
    pending_ = option_named(current_.substr(0, mark));
    current_.erase(0, mark + 1);
  }
}

void Line::take(const std::string &word) {
  if (pending_)
    take_value(*std::exchange(pending_, std::nullopt), word);
  else if (word == "--")
    only_arguments_ = true;
  else if (word.starts_with("-") && !only_arguments_)
    take_option(word);
  else if (command_ != nullptr)
    ++arguments_;
  else
    take_command(word);
}

/** An option alone, or with its value behind "=". */
void Line::take_option(const std::string &word) {
  const std::size_t mark = word.find('=');
  const std::optional<Option> option = option_named(word.substr(0, mark));
  if (!option || option->value.empty())
    return;
  if (mark == std::string::npos)
    pending_ = option;
  else
    take_value(*option, word.substr(mark + 1));
}

void Line::take_value(const Option &option, const std::string &value) {
  if (option.long_name() == "--category")
    category_ = value;
  else if (option.long_name() == "--cache-dir")
    cache_directory_ = value;
}

void Line::take_command(const std::string &word) {
  for (const CommandGroup &group : groups_) {
    if (group_ == nullptr && !group.name.empty() && group.name == word) {
      group_ = &group;
      return;
    }
    if (group_ != nullptr ? &group != group_ : !group.name.empty())
      continue;
    for (const Command &command : group.commands)
      if (command.name == word)
        command_ = &command;
  }
}

std::vector<Option> Line::options() const {
  std::vector<Option> options = global_options();
  const Command *command = command_;
  if (command == nullptr && group_ != nullptr && !group_->otherwise.empty())
    command = &*std::ranges::find(group_->commands, group_->otherwise, &Command::name);
  if (command != nullptr)
    options.insert(options.begin(), command->options.begin(), command->options.end());
  options.push_back({"-h,--help", "", "Show this help"});
  return options;
}

std::optional<Option> Line::option_named(const std::string &name) const {
  for (const Option &option : options())
    if (is_named(option, name))
      return option;
  return std::nullopt;
}

Candidates Line::command_names() const {
  Candidates names;
  for (const CommandGroup &group : groups_) {
    if (group_ == nullptr && !group.name.empty())
      names.push_back({group.name, group.summary});
    if (group_ == nullptr ? group.name.empty() : &group == group_)
      for (const Command &command : group.commands)
        names.push_back({command.name, command.summary});
  }
  return names;
}

Candidates Line::option_names() const {
  Candidates names;
  for (const Option &option : options())
    names.push_back({option.long_name(), option.help});
  return names;
}

Candidates Line::argument_values(const KnownValues &known_values) const {
  if (command_->arguments.empty())
    return {};
  const Argument &argument =
      command_->arguments[std::min(arguments_, command_->arguments.size() - 1)];
  const bool takes_more =
      argument.count == Argument::Count::any || argument.count == Argument::Count::some;
  if (arguments_ >= command_->arguments.size() && !takes_more)
    return {};
  const std::string name = group_ == nullptr ? command_->name : group_->name + " " + command_->name;
  return known_values(name + " " + argument.name, cache_directory_);
}

/** What can follow the last comma of a list. */
Candidates list_items(const std::string &begun, const std::vector<FieldInfo> &fields) {
  const std::size_t comma = begun.rfind(',');
  const std::string before = comma == std::string::npos ? "" : begun.substr(0, comma + 1);
  Candidates items;
  for (const FieldInfo &field : fields)
    items.push_back({before + field.name});
  return items;
}

Candidates Line::option_values(const Option &option, const KnownValues &known_values) const {
  Candidates values = words_only(option.choices);
  const std::string name = option.long_name();
  const Command *command = command_;
  if (name == "--fields" && command != nullptr && command->record)
    append(values, list_items(current_, command->record->fields));
  else if (name == "--sub-category" && !category_.empty())
    append(values, known_values(name + " " + category_, cache_directory_));
  else
    append(values, known_values(name, cache_directory_));
  return values;
}

Candidates Line::candidates(const KnownValues &known_values) const {
  Candidates all;
  if (pending_)
    all = option_values(*pending_, known_values);
  else if (current_.starts_with("-") && !only_arguments_)
    all = option_names();
  else if (command_ != nullptr)
    all = argument_values(known_values);
  else
    all = command_names();
  std::erase_if(all, [this](const Candidate &candidate) {
    return !candidate.word.starts_with(current_) || candidate.word.empty();
  });
  std::ranges::sort(all, {}, &Candidate::word);
  const auto same_word = [](const Candidate &one, const Candidate &other) {
    return one.word == other.word;
  };
  all.erase(std::unique(all.begin(), all.end(), same_word), all.end());
  return all;
}

}  // namespace

std::vector<Candidate> words_only(const std::vector<std::string> &words) {
  Candidates candidates;
  candidates.reserve(words.size());
  for (const std::string &word : words)
    candidates.push_back({word});
  return candidates;
}

std::vector<Candidate> candidates_for(const std::vector<CommandGroup> &groups,
                                      const std::vector<std::string> &words,
                                      const KnownValues &known_values) {
  return Line(groups, words).candidates(known_values);
}

}  // namespace velkor::ctl
