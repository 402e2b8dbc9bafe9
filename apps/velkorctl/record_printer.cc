/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/record_printer.h"

#include <cstdlib>

#include "support/numbers.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/table.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

/** "File name" without a dot or capitals inside, from "fileName". */
std::string words_of_name(const std::string &name) {
  std::string words;
  for (const char letter : name) {
    if (g_ascii_isupper(letter))
      words += ' ';
    words += g_ascii_tolower(letter);
  }
  words[0] = g_ascii_toupper(words[0]);
  return words;
}

std::string in_capitals(const std::string &text) {
  return OwnedText(g_ascii_strup(text.c_str(), -1)).get();
}

std::string for_people(const Cell &cell) {
  return text_for_people(cell.value);
}

/** A list of records as a table. */
class TableWriter : public RecordWriter {
public:
  TableWriter(const Context &context, const std::vector<FieldInfo> &fields)
      : context_(context), look_(look_of(context.options, context.out)),
        header_(!context.arguments.has("--no-header")),
        table_(columns_of(fields, context.arguments.has("--fields"))) {
    if (!look_.on_terminal() && header_)
      context_.out.write(table_.header_line(look_));
  }

  void add(const std::vector<Cell> &record) override {
    std::vector<TableCell> cells;
    cells.reserve(record.size());
    for (const Cell &cell : record)
      cells.push_back({for_people(cell), cell.link});
    ++count_;
    if (look_.on_terminal())
      table_.add(std::move(cells));
    else
      context_.out.write(table_.unpadded_line(cells, look_));
  }

  void finish() override {
    if (!look_.on_terminal())
      return;
    const RecordInfo &record = *context_.command.record;
    context_.out.write(table_.text(look_, header_));
    context_.out.write(
        styled(std::to_string(count_) + " " + (count_ == 1 ? record.noun : record.plural),
               Style::faint, look_) +
        "\n");
  }

private:
  /** Fields that were asked for by name are all kept. */
  static std::vector<Column> columns_of(const std::vector<FieldInfo> &fields, bool named) {
    std::vector<Column> columns;
    columns.reserve(fields.size());
    for (const FieldInfo &field : fields)
      columns.push_back({.title = in_capitals(title_of(field)),
                         .align = field.type.kind == Type::Kind::number ? Column::Align::right
                                                                        : Column::Align::left,
                         .flexible = field.flexible,
                         .rank = named ? 1 : field.rank,
                         .style = field.style});
    return columns;
  }

  const Context &context_;
  Look look_;
  bool header_;
  Table table_;
  std::size_t count_ = 0;
};

/** One record as lines with titles. */
class DetailsWriter : public RecordWriter {
public:
  DetailsWriter(const Context &context, std::vector<FieldInfo> fields)
      : context_(context), fields_(std::move(fields)) {}

  void add(const std::vector<Cell> &record) override {
    const Look look = look_of(context_.options, context_.out);
    Table table({{.title = "", .style = Style::faint}, {.title = ""}});
    std::string below;
    for (std::size_t i = 0; i < record.size(); ++i) {
      const FieldInfo &field = fields_[i];
      if (!is_shown(field, record[i].value))
        continue;
      const std::string title = title_of(field);
      if (field.place == Place::below)
        below += "\n" + title + ":\n" + safe_text(for_people(record[i]), Lines::keep) + "\n";
      else
        table.add({{title}, {for_people(record[i]), record[i].link}});
    }
    Look unlimited = look;
    unlimited.width = 0;
    context_.out.write(table.text(unlimited, false) + below);
  }

private:
  [[nodiscard]] bool is_shown(const FieldInfo &field, const Value &value) const {
    const auto *number = std::get_if<std::int64_t>(&value.content());
    const bool zero = number != nullptr && *number == 0;
    if (value.is_empty() || (zero && field.place == Place::line_unless_zero))
      return false;
    return field.place != Place::nowhere || context_.arguments.has("--fields");
  }

  const Context &context_;
  std::vector<FieldInfo> fields_;
};

/** Tab-separated values; a tab, a line feed and a backslash in them are \t, \n and \\. */
class TsvWriter : public RecordWriter {
public:
  TsvWriter(const Context &context, const std::vector<FieldInfo> &fields) : out_(context.out) {
    std::vector<std::string> names;
    names.reserve(fields.size());
    for (const FieldInfo &field : fields)
      names.push_back(field.name);
    if (!context.arguments.has("--no-header"))
      out_.write(joined(names, "\t") + "\n");
  }

  void add(const std::vector<Cell> &record) override {
    std::string line;
    for (const Cell &cell : record) {
      if (&cell != &record.front())
        line += '\t';
      line += safe_text(escaped(text_for_scripts(cell.value)));
    }
    out_.write(line + "\n");
  }

private:
  static std::string escaped(const std::string &text) {
    std::string result;
    for (const char letter : text) {
      if (letter == '\t')
        result += "\\t";
      else if (letter == '\n')
        result += "\\n";
      else if (letter == '\r')
        result += "\\r";
      else if (letter == '\\')
        result += "\\\\";
      else
        result += letter;
    }
    return result;
  }

  Output &out_;
};

std::string object_of(const std::vector<FieldInfo> &fields, const std::vector<Cell> &record) {
  Json json;
  json.begin_object();
  for (std::size_t i = 0; i < fields.size(); ++i)
    add_to(json, fields[i].name.c_str(), record[i].value);
  return json.end_object().compact();
}

/** An object per line and nothing else. */
class NdjsonWriter : public RecordWriter {
public:
  NdjsonWriter(const Context &context, std::vector<FieldInfo> fields)
      : out_(context.out), fields_(std::move(fields)) {}
  void add(const std::vector<Cell> &record) override {
    out_.write(object_of(fields_, record) + "\n");
  }

private:
  Output &out_;
  std::vector<FieldInfo> fields_;
};

/** One document; the records of a list come as they are made, a line each. */
class JsonWriter : public RecordWriter {
public:
  JsonWriter(const Context &context, std::vector<FieldInfo> fields, const Result &result)
      : out_(context.out), document_(std::move(fields), context.command.record->shape) {
    out_.write(document_.head(context.name, result));
  }

  void add(const std::vector<Cell> &record) override { out_.write(document_.record(record)); }
  void finish() override { out_.write(document_.tail()); }

private:
  Output &out_;
  JsonDocument document_;
};

}  // namespace

JsonDocument::JsonDocument(std::vector<FieldInfo> fields, RecordInfo::Shape shape)
    : fields_(std::move(fields)), list_(shape != RecordInfo::Shape::one) {}

std::string JsonDocument::head(const std::string &name, const Result &result) const {
  Json json;
  json.begin_object().member("schema", "velkorctl." + name).member("version", format_version);
  json.member("code", static_cast<int>(result.code)).member("message", result.message);
  for (const auto &[fact, value] : result.facts)
    add_to(json, fact.c_str(), value);
  std::string head = json.end_object().compact();
  head.pop_back();
  return head + (list_ ? ",\"items\":[" : ",\"item\":");
}

std::string JsonDocument::record(const std::vector<Cell> &record) {
  const char *before = list_ ? (empty_ ? "\n" : ",\n") : "";
  empty_ = false;
  return before + object_of(fields_, record);
}

std::string JsonDocument::tail() const {
  if (!list_)
    return "}\n";
  return empty_ ? "]}\n" : "\n]}\n";
}

std::string title_of(const FieldInfo &field) {
  if (!field.title.empty())
    return field.title;
  return field.name == "id" ? "ID" : words_of_name(field.name);
}

std::unique_ptr<RecordWriter> record_writer(const Context &context, std::vector<FieldInfo> fields,
                                            const Result &result) {
  if (context.command.record->shape != RecordInfo::Shape::events)
    context.out.page();
  switch (format_of(context.arguments)) {
  case Format::tsv:
    return std::make_unique<TsvWriter>(context, fields);
  case Format::json:
    return std::make_unique<JsonWriter>(context, std::move(fields), result);
  case Format::ndjson:
    return std::make_unique<NdjsonWriter>(context, std::move(fields));
  default:
    break;
  }
  if (context.command.record->shape == RecordInfo::Shape::list)
    return std::make_unique<TableWriter>(context, fields);
  return std::make_unique<DetailsWriter>(context, std::move(fields));
}

std::vector<std::size_t> chosen_fields(const std::vector<FieldInfo> &fields,
                                       const Context &context) {
  std::vector<std::size_t> places;
  if (const auto named = context.arguments.value("--fields")) {
    for (const std::string &name : words_of(*named))
      places.push_back(static_cast<std::size_t>(std::ranges::find(fields, name, &FieldInfo::name) -
                                                fields.begin()));
    return places;
  }
  const bool as_table = format_of(context.arguments) == Format::table &&
                        context.command.record->shape == RecordInfo::Shape::list;
  for (std::size_t place = 0; place < fields.size(); ++place)
    if (!as_table || fields[place].rank > 0)
      places.push_back(place);
  return places;
}

Order order_of(const Arguments &arguments) {
  std::optional<std::size_t> limit;
  if (const auto given = arguments.value("--limit"))
    limit = static_cast<std::size_t>(*whole_number(*given));
  return {arguments.value("--sort"), arguments.has("--reverse"), limit};
}

}  // namespace velkor::ctl
