/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Rows of text in columns; widths are counted in terminal cells. */
#ifndef VELKORCTL_TABLE_H
#define VELKORCTL_TABLE_H

#include <string>
#include <vector>

#include "velkorctl/look.h"

namespace velkor::ctl {

struct Column {
  std::string title;
  enum class Align { left, right } align = Align::left;
  /** The column is cut when the table is too wide. */
  bool flexible = false;
  /** 1: never left out; among others, the highest is left out first in a table too wide. */
  int rank = 1;
  Style style = Style::plain;
};

struct TableCell {
  std::string text;
  /** The web address that the text is a link to; empty for none. */
  std::string link = {};
};

class Table {
public:
  explicit Table(std::vector<Column> columns);

  /** Adds a row, one cell per column; the texts are made safe for a terminal. */
  void add(std::vector<TableCell> cells);

  /** The rows in aligned columns; lines have at most the width of the look, any number if 0. */
  [[nodiscard]] std::string text(const Look &look, bool header) const;

  /** The titles, and a row that has not been added, with two spaces between cells. */
  [[nodiscard]] std::string header_line(const Look &look) const;
  [[nodiscard]] std::string unpadded_line(const std::vector<TableCell> &cells,
                                          const Look &look) const;

private:
  /** What is shown: the places of the columns, and the width of each. */
  struct Layout {
    std::vector<std::size_t> places;
    std::vector<int> widths;
  };
  [[nodiscard]] Layout layout(int limit, bool header) const;
  void leave_out_columns(Layout &layout, int limit) const;
  void cut_columns(Layout &layout, int limit) const;
  void cut_widest_columns(Layout &layout, int limit) const;
  [[nodiscard]] std::string line(const std::vector<TableCell> &cells, const Layout &layout,
                                 const Look &look, bool is_header) const;

  std::vector<Column> columns_;
  std::vector<TableCell> titles_;
  std::vector<std::vector<TableCell>> rows_;
};

}  // namespace velkor::ctl

#endif
