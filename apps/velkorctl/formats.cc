/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/formats.h"

#include <algorithm>
#include <array>
#include <limits>
#include <sstream>
#include <string_view>
#include <utility>

#include "velkorctl/suggestion.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

struct NamedFormat {
  std::string_view name;
  Format format;
};

constexpr auto formats = std::to_array<NamedFormat>({{"table", Format::table},
                                                     {"tsv", Format::tsv},
                                                     {"json", Format::json},
                                                     {"ndjson", Format::ndjson},
                                                     {"xml", Format::xml},
                                                     {"html", Format::html}});

std::vector<std::string> names_of(const std::vector<FieldInfo> &fields) {
  std::vector<std::string> names;
  names.reserve(fields.size());
  for (const FieldInfo &field : fields)
    names.push_back(field.name);
  return names;
}

Option format_option(const std::vector<std::string> &more_formats) {
  std::vector<std::string> choices{"table", "tsv", "json", "ndjson"};
  choices.insert(choices.end(), more_formats.begin(), more_formats.end());
  return {"--format", "FORMAT", "Output format: " + joined(choices), false, choices};
}

std::vector<Option> list_options(const std::vector<std::string> &names) {
  return {
      {"--sort", "FIELD", "Sort by this field, in ascending order", false, names},
      {"--reverse", "", "Print in reverse order"},
      {"-l,--limit", "N", "Print at most N"},
      {"--no-header", "", "Print the table without the column titles"},
  };
}

}  // namespace

Format format_of(const Arguments &arguments) {
  const std::string name = arguments.value("--format").value_or("table");
  return std::ranges::find(formats, name, &NamedFormat::name)->format;
}

bool wants_records(const Arguments &arguments) {
  return arguments.has("--format") || arguments.has("--fields");
}

Command with_output(Command command, RecordInfo record,
                    const std::vector<std::string> &more_formats) {
  const std::vector<std::string> names = names_of(record.fields);
  std::vector<Option> &options = command.options;
  options.push_back(format_option(more_formats));
  options.push_back({"--fields", "NAMES", "Print these fields: " + joined(names, ",")});
  if (record.shape == RecordInfo::Shape::list)
    std::ranges::move(list_options(names), std::back_inserter(options));
  command.record = std::move(record);
  return command;
}

void check_output_options(const Command &command, const Arguments &arguments) {
  if (!command.record)
    return;
  const std::vector<std::string> known = names_of(command.record->fields);
  if (const auto list = arguments.value("--fields"))
    for (const std::string &name : words_of(*list))
      if (std::ranges::find(known, name) == known.end())
        throw usage_error("--fields: no field \"" + name + "\"" + suggestion(name, known) +
                          "; known are: " + joined(known));
  if (const auto limit = arguments.value("--limit"))
    number_in_range(*limit, 1, std::numeric_limits<std::int32_t>::max(), "--limit");
}

std::vector<std::string> words_of(const std::string &list) {
  std::vector<std::string> words;
  std::istringstream rest(list);
  for (std::string word; std::getline(rest, word, ',');)
    words.push_back(word);
  if (words.empty())
    words.emplace_back();
  return words;
}

}  // namespace velkor::ctl
