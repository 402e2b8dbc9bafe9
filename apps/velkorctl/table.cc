/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

constexpr int gap = 2;
constexpr int min_flexible_width = 10;

std::vector<std::string> titles(const std::vector<Column> &columns) {
  std::vector<std::string> result;
  result.reserve(columns.size());
  for (const Column &column : columns)
    result.push_back(column.title);
  return result;
}

void widen(std::vector<int> &widths, const std::vector<std::string> &cells) {
  for (std::size_t i = 0; i < widths.size(); ++i)
    widths[i] = std::max(widths[i], display_width(cells[i]));
}

int line_width(const std::vector<int> &widths) {
  return std::accumulate(widths.begin(), widths.end(), 0) +
         gap * (static_cast<int>(widths.size()) - 1);
}

void pad(std::string &text, int cells) {
  text.append(static_cast<std::size_t>(std::max(cells, 0)), ' ');
}

void strip_trailing_blanks(std::string &text) {
  text.erase(text.find_last_not_of(' ') + 1);
}

}  // namespace

Table::Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

void Table::add(std::vector<std::string> cells) {
  for (std::string &cell : cells)
    cell = safe_text(cell);
  cells.resize(columns_.size());
  rows_.push_back(std::move(cells));
}

std::vector<int> Table::widths(int limit, bool header) const {
  std::vector<int> result(columns_.size(), 0);
  if (header)
    widen(result, titles(columns_));
  for (const auto &row : rows_)
    widen(result, row);
  for (std::size_t i = result.size(); limit > 0 && i-- > 0;) {
    const int excess = line_width(result) - limit;
    if (excess > 0 && columns_[i].flexible)
      result[i] = std::max(result[i] - excess, std::min(result[i], min_flexible_width));
  }
  return result;
}

std::string Table::line(const std::vector<std::string> &cells,
                        const std::vector<int> &widths) const {
  std::string result;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string cell = fit(cells[i], widths[i]);
    const int missing = widths[i] - display_width(cell);
    if (i > 0)
      pad(result, gap);
    if (columns_[i].align == Column::Align::right)
      pad(result, missing);
    result += cell;
    if (columns_[i].align == Column::Align::left)
      pad(result, missing);
  }
  strip_trailing_blanks(result);
  return result;
}

std::string Table::text(int width, bool header) const {
  const std::vector<int> column_widths = widths(width, header);
  std::string result;
  const auto append = [&](const std::vector<std::string> &cells) {
    const std::string whole = line(cells, column_widths);
    result += width > 0 ? fit(whole, width) : whole;
    result += '\n';
  };
  if (header)
    append(titles(columns_));
  for (const auto &row : rows_)
    append(row);
  return result;
}

}  // namespace velkor::ctl
