/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Rows of text in aligned columns; widths are counted in terminal cells. */
#ifndef VELKORCTL_TABLE_H
#define VELKORCTL_TABLE_H

#include <string>
#include <vector>

namespace velkor::ctl {

struct Column {
  std::string title;
  enum class Align { left, right } align = Align::left;
  /** The column is cut, to no less than ten cells, when the table is too wide. */
  bool flexible = false;
};

class Table {
public:
  explicit Table(std::vector<Column> columns);

  /** Adds a row, one text per column; the texts are made safe for a terminal. */
  void add(std::vector<std::string> cells);

  /** The table as text; lines have at most `width` cells, any number if it is 0. */
  [[nodiscard]] std::string text(int width, bool header) const;

private:
  [[nodiscard]] std::vector<int> widths(int limit, bool header) const;
  [[nodiscard]] std::string line(const std::vector<std::string> &cells,
                                 const std::vector<int> &widths) const;

  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace velkor::ctl

#endif
