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

int line_width(const std::vector<int> &widths) {
  return std::accumulate(widths.begin(), widths.end(), 0) +
         gap * (static_cast<int>(widths.size()) - 1);
}

std::string blanks(int cells) {
  return std::string().append(static_cast<std::size_t>(std::max(cells, 0)), ' ');
}

void strip_trailing_blanks(std::string &text) {
  text.erase(text.find_last_not_of(' ') + 1);
}

}  // namespace

Table::Table(std::vector<Column> columns) : columns_(std::move(columns)) {
  titles_.reserve(columns_.size());
  for (const Column &column : columns_)
    titles_.push_back({column.title});
}

void Table::add(std::vector<TableCell> cells) {
  for (TableCell &cell : cells)
    cell.text = safe_text(cell.text);
  cells.resize(columns_.size());
  rows_.push_back(std::move(cells));
}

/**
 * Columns are left out until the others fit when the flexible ones are cut to ten cells; then the
 * flexible ones are cut, from the last to the first, and in the end the widest as far as is needed.
 */
Table::Layout Table::layout(int limit, bool header) const {
  Layout result{std::vector<std::size_t>(columns_.size()), std::vector<int>(columns_.size(), 0)};
  std::iota(result.places.begin(), result.places.end(), 0U);
  std::vector<int> &widths = result.widths;
  const auto widen = [&widths](const std::vector<TableCell> &cells) {
    for (std::size_t i = 0; i < widths.size(); ++i)
      widths[i] = std::max(widths[i], display_width(cells[i].text));
  };
  if (header)
    widen(titles_);
  for (const auto &row : rows_)
    widen(row);
  if (limit > 0) {
    leave_out_columns(result, limit);
    cut_columns(result, limit);
    cut_widest_columns(result, limit);
  }
  return result;
}

void Table::leave_out_columns(Layout &layout, int limit) const {
  const auto least_width = [&] {
    std::vector<int> widths = layout.widths;
    for (std::size_t i = 0; i < widths.size(); ++i)
      if (columns_[layout.places[i]].flexible)
        widths[i] = std::min(widths[i], min_flexible_width);
    return line_width(widths);
  };
  while (least_width() > limit) {
    const auto last =
        std::ranges::max_element(layout.places, std::ranges::less(),
                                 [this](std::size_t place) { return columns_[place].rank; });
    if (columns_[*last].rank <= 1)
      return;
    layout.widths.erase(layout.widths.begin() + (last - layout.places.begin()));
    layout.places.erase(last);
  }
}

void Table::cut_columns(Layout &layout, int limit) const {
  for (std::size_t i = layout.widths.size(); i-- > 0;) {
    const int excess = line_width(layout.widths) - limit;
    int &width = layout.widths[i];
    if (excess > 0 && columns_[layout.places[i]].flexible)
      width = std::max(width - excess, std::min(width, min_flexible_width));
  }
}

void Table::cut_widest_columns(Layout &layout, int limit) const {
  while (line_width(layout.widths) > limit) {
    int *widest = nullptr;
    for (std::size_t i = 0; i < layout.widths.size(); ++i)
      if (columns_[layout.places[i]].flexible && (widest == nullptr || layout.widths[i] > *widest))
        widest = &layout.widths[i];
    if (widest == nullptr || *widest <= 1)
      return;
    --*widest;
  }
}

std::string Table::line(const std::vector<TableCell> &cells, const Layout &layout, const Look &look,
                        bool is_header) const {
  std::string result;
  for (std::size_t i = 0; i < layout.places.size(); ++i) {
    const Column &column = columns_[layout.places[i]];
    const TableCell &cell = cells[layout.places[i]];
    const std::string text = fit(cell.text, layout.widths[i]);
    const std::string padding = blanks(layout.widths[i] - display_width(text));
    const Style style = is_header ? Style::strong : column.style;
    const std::string shown = linked(styled(text, style, look), cell.link, look);
    result += blanks(i > 0 ? gap : 0);
    result += column.align == Column::Align::right ? padding + shown : shown + padding;
  }
  strip_trailing_blanks(result);
  return result;
}

std::string Table::text(const Look &look, bool header) const {
  const Layout shown = layout(look.width, header);
  const bool too_wide = look.width > 0 && line_width(shown.widths) > look.width;
  const Look plain{.width = look.width};
  std::string result;
  const auto append = [&](const std::vector<TableCell> &cells, bool is_header) {
    result += too_wide ? fit(line(cells, shown, plain, is_header), look.width)
                       : line(cells, shown, look, is_header);
    result += '\n';
  };
  if (header)
    append(titles_, true);
  for (const auto &row : rows_)
    append(row, false);
  return result;
}

std::string Table::header_line(const Look &look) const {
  std::string result;
  for (const TableCell &title : titles_)
    result += (result.empty() ? "" : blanks(gap)) + styled(title.text, Style::strong, look);
  return result + "\n";
}

std::string Table::unpadded_line(const std::vector<TableCell> &cells, const Look &look) const {
  std::string result;
  for (std::size_t i = 0; i < cells.size(); ++i)
    result += blanks(i > 0 ? gap : 0) + styled(safe_text(cells[i].text), columns_[i].style, look);
  strip_trailing_blanks(result);
  return result + "\n";
}

}  // namespace velkor::ctl
