/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The list of postings: columns, sorting by their headers, selection. */
#ifndef VELKOR_APP_WIDGETS_SPOT_TABLE_H
#define VELKOR_APP_WIDGETS_SPOT_TABLE_H

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <gtkmm.h>

#include "model/order.h"
#include "model/remembered.h"
#include "model/view_maker.h"
#include "widgets/row_list.h"

namespace velkor::app {

class SpotTable : public Gtk::ScrolledWindow {
public:
  /** @param watched  the watchlist, which outlives the table */
  SpotTable(const Remembered &remembered, const std::unordered_set<std::int32_t> &watched);
  ~SpotTable() override;
  SpotTable(const SpotTable &) = delete;
  SpotTable &operator=(const SpotTable &) = delete;

  /** Shows other rows. Selection and place are kept if the query is the one before. */
  void set_view(SharedView view);

  /** What is shown; null before the first view. */
  [[nodiscard]] const SharedView &view() const noexcept { return rows_->view(); }
  [[nodiscard]] Sorting sorting() const;
  [[nodiscard]] std::optional<std::int32_t> selected_id() const;
  void select(std::int32_t id);
  void focus_list();
  /** Shows anew whether that posting is on the watchlist. */
  void watch_changed(std::int32_t id);
  void remember_widths(Remembered &remembered) const;

  sigc::signal<void(std::int32_t id)> &signal_open() { return open_; }
  sigc::signal<void()> &signal_sorted() { return sorted_; }
  sigc::signal<void()> &signal_selected() { return selected_; }

private:
  class ColumnSorter;
  using TextOf = Glib::ustring (*)(const RowItem &);

  void add_mark_column();
  void add_column(Column column, const Glib::ustring &title, int width, TextOf text_of);
  void show_cells();
  void bind_mark(Gtk::Inscription &cell, const RowItem &item);
  void name_row(Gtk::Widget &cell, const RowItem &item) const;
  [[nodiscard]] Glib::ustring marks_of(const RowItem &item) const;
  [[nodiscard]] Glib::ustring words_for_marks(const RowItem &item) const;
  [[nodiscard]] std::optional<std::int32_t> top_id() const;
  [[nodiscard]] double row_height() const;
  void restore();
  void scroll_to_row(std::size_t place);
  void scroll_to_top_of(std::int32_t id);

  sigc::signal<void(std::int32_t)> open_;
  sigc::signal<void()> sorted_;
  sigc::signal<void()> selected_;
  /** A cell with what it shows. */
  struct Cell {
    Glib::RefPtr<RowItem> item{};
    TextOf text_of = nullptr;  // null for the marks
  };
  std::unordered_map<Gtk::Inscription *, Cell> cells_;  // those that there are widgets for
  const std::unordered_set<std::int32_t> &watched_;
  std::vector<sigc::connection> connections_;  // to objects that may outlive the table
  // Until all rows of a new view are there.
  std::optional<std::int32_t> kept_selection_;
  std::optional<std::int32_t> kept_top_;
  Glib::RefPtr<RowList> rows_ = RowList::create();
  Glib::RefPtr<Gtk::SingleSelection> selection_;
  Gtk::ColumnView list_;
  Glib::RefPtr<Gtk::Sorter> sorter_;
  std::array<Glib::RefPtr<Gtk::ColumnViewColumn>, column_count> columns_;
};

}  // namespace velkor::app

#endif
