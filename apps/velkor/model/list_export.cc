/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/list_export.h"

#include <memory>
#include <string_view>

#include <glib.h>

#include "support/json.h"
#include "support/owned.h"

namespace velkor::app {
namespace {

using OwnedDateTime = std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>>;

std::string escaped(std::string_view text) {
  return OwnedText(g_markup_escape_text(text.data(), static_cast<gssize>(text.size()))).get();
}

std::string moment(std::int64_t stamp, const std::string &format) {
  const OwnedDateTime time(g_date_time_new_from_unix_local(stamp));
  const OwnedText text(time ? g_date_time_format(time.get(), format.c_str()) : nullptr);
  return text ? text.get() : "";
}

std::string cell_of(const Snapshot &snapshot, Row row, Column column, const PageWords &words) {
  const PostingTable &table = snapshot.table;
  switch (column) {
  case Column::title:
    return std::string(table.title(row));
  case Column::category:
    return snapshot.category_name(row);
  case Column::poster:
    return table.poster(row);
  case Column::date:
    return moment(table.stamp(row), words.time_format);
  case Column::rating:
    return table.rating(row) == 0 ? "" : std::to_string(table.rating(row));
  case Column::status:
    return snapshot.status_name(row);
  }
  return "";
}

template <typename TextOf>
void add_row(std::string &page, const char *element, const TextOf &text_of) {
  page += "<tr>";
  for (std::size_t place = 0; place < column_count; ++place)
    page += std::string("<") + element + ">" + escaped(text_of(place)) + "</" + element + ">";
  page += "</tr>\n";
}

}  // namespace

std::string list_as_json(const SpotView &view) {
  const Snapshot &snapshot = *view.snapshot;
  Json json;
  json.begin_object().begin_array("items");
  for (const Row row : view.rows)
    json.begin_object()
        .member("id", snapshot.table.id(row))
        .member("title", snapshot.table.title(row))
        .member("category", std::string_view(snapshot.category_name(row)))
        .member("poster", std::string_view(snapshot.table.poster(row)))
        .member("stamp", snapshot.table.stamp(row))
        .member("rating", snapshot.table.rating(row))
        .member("status", std::string_view(snapshot.status_name(row)))
        .end_object();
  json.end_array().end_object();
  return json.pretty();
}

std::string list_as_html(const SpotView &view, const PageWords &words) {
  std::string page = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" +
                     escaped(words.title) + "</title></head><body>\n<h1>" + escaped(words.title) +
                     "</h1>\n<table>\n";
  add_row(page, "th", [&](std::size_t place) { return words.columns[place]; });
  for (const Row row : view.rows)
    add_row(page, "td", [&](std::size_t place) {
      return cell_of(*view.snapshot, row, static_cast<Column>(place), words);
    });
  return page + "</table>\n</body></html>\n";
}

}  // namespace velkor::app
