/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Prints records in the format, with the fields and in the order that the options ask for. */
#ifndef VELKORCTL_RECORD_PRINTER_H
#define VELKORCTL_RECORD_PRINTER_H

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "velkorctl/formats.h"
#include "velkorctl/record.h"

namespace velkor::ctl {

/** What a JSON document says besides its records. */
struct Result {
  Exit code = Exit::ok;
  std::string message = {};
  std::vector<std::pair<std::string, Value>> facts = {};
};

/** The value of one field, with the address that it is a link to. */
struct Cell {
  Value value;
  std::string link = {};
};

/** One way of printing records, each given as the cells of its fields. */
class RecordWriter {
public:
  RecordWriter() = default;
  virtual ~RecordWriter() = default;
  RecordWriter(const RecordWriter &) = delete;
  RecordWriter &operator=(const RecordWriter &) = delete;

  virtual void add(const std::vector<Cell> &record) = 0;
  virtual void finish() {}
};

/** A JSON document in the pieces that are printed one after the other. */
class JsonDocument {
public:
  JsonDocument(std::vector<FieldInfo> fields, RecordInfo::Shape shape);

  /** `name`: the whole name of the command with dots. */
  [[nodiscard]] std::string head(const std::string &name, const Result &result) const;
  std::string record(const std::vector<Cell> &record);
  [[nodiscard]] std::string tail() const;

private:
  std::vector<FieldInfo> fields_;
  bool list_;
  bool empty_ = true;
};

template <typename Item>
std::vector<Cell> cells_of(const Fields<Item> &fields, const Item &item) {
  std::vector<Cell> record;
  record.reserve(fields.size());
  for (const Field<Item> &field : fields)
    record.push_back({field.value(item), field.link ? field.link(item) : std::string()});
  return record;
}

/** The whole document that the command `name` prints about a list with --format json. */
template <typename Item>
std::string json_list(const std::string &name, const Fields<Item> &fields,
                      const std::vector<Item> &items) {
  JsonDocument document(infos_of(fields), RecordInfo::Shape::list);
  std::string text = document.head(name, {});
  for (const Item &item : items)
    text += document.record(cells_of(fields, item));
  return text + document.tail();
}

/** A writer for the format of the options. There must be a record in the context. */
std::unique_ptr<RecordWriter> record_writer(const Context &context, std::vector<FieldInfo> fields,
                                            const Result &result);

/** The places of the fields that the options ask for: by --fields, or what the format has. */
std::vector<std::size_t> chosen_fields(const std::vector<FieldInfo> &fields,
                                       const Context &context);

/** Prints records one at a time. */
template <typename Item>
class RecordPrinter {
public:
  RecordPrinter(const Context &context, const Fields<Item> &fields, const Result &result = {})
      : fields_(chosen(fields, context)),
        writer_(record_writer(context, infos_of(fields_), result)) {}

  void add(const Item &item) { writer_->add(cells_of(fields_, item)); }
  void finish() { writer_->finish(); }

private:
  static Fields<Item> chosen(const Fields<Item> &fields, const Context &context) {
    Fields<Item> result;
    for (const std::size_t place : chosen_fields(infos_of(fields), context))
      result.push_back(fields[place]);
    return result;
  }

  Fields<Item> fields_;
  std::unique_ptr<RecordWriter> writer_;
};

/** --sort, --reverse and --limit. */
struct Order {
  std::optional<std::string> sort;
  bool reverse = false;
  std::optional<std::size_t> limit;
};
Order order_of(const Arguments &arguments);

template <typename Item>
const Field<Item> &field_named(const Fields<Item> &fields, const std::string &name) {
  return *std::ranges::find_if(fields,
                               [&name](const auto &field) { return field.info.name == name; });
}

/** Reverses and limits items that are sorted already. */
template <typename Item>
void reverse_and_limit(std::vector<Item> &items, const Order &order) {
  if (order.reverse)
    std::ranges::reverse(items);
  if (order.limit && items.size() > *order.limit)
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(*order.limit), items.end());
}

/** Sorts by `key_of`, a function from an item to the value that --sort asks for. */
template <typename Item, typename KeyOf>
void arrange_by(std::vector<Item> &items, const Order &order, KeyOf key_of) {
  if (order.sort) {
    std::vector<std::pair<SortKey, std::size_t>> keys;
    keys.reserve(items.size());
    for (const Item &item : items)
      keys.emplace_back(SortKey(key_of(item)), keys.size());
    std::ranges::sort(keys);  // equal ones by their place, which keeps their order
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const auto &[key, place] : keys)
      sorted.push_back(std::move(items[place]));
    items = std::move(sorted);
  }
  reverse_and_limit(items, order);
}

/** The items in the order and number that the options ask for. */
template <typename Item>
std::vector<Item> arranged(std::vector<Item> items, const Fields<Item> &fields,
                           const Context &context) {
  const Order order = order_of(context.arguments);
  arrange_by(items, order,
             [&](const Item &item) { return field_named(fields, *order.sort).value(item); });
  return items;
}

/** Prints a list of records, arranged. */
template <typename Item>
void print_records(const Context &context, const Fields<Item> &fields,
                   const std::vector<Item> &items, const Result &result = {}) {
  RecordPrinter<Item> printer(context, fields, result);
  for (const Item &item : arranged(items, fields, context))
    printer.add(item);
  printer.finish();
}

/** Prints the one record of a command. */
template <typename Item>
void print_record(const Context &context, const Fields<Item> &fields, const Item &item,
                  const Result &result = {}) {
  RecordPrinter<Item> printer(context, fields, result);
  printer.add(item);
  printer.finish();
}

}  // namespace velkor::ctl

#endif
