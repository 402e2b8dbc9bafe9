/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The tree of categories with the user's filters, and how many postings each holds. */
#ifndef VELKOR_APP_WIDGETS_CATEGORY_LIST_H
#define VELKOR_APP_WIDGETS_CATEGORY_LIST_H

#include <cstddef>
#include <vector>

#include <gtkmm.h>

#include "model/snapshot.h"

namespace velkor::app {

class CategoryList : public Gtk::ScrolledWindow {
public:
  CategoryList();

  /** Shows the entries of another snapshot and selects `entry`, without telling. */
  void set_tree(const std::vector<TreeEntry> &tree, std::size_t entry);
  [[nodiscard]] std::size_t selected();
  /** Selects the entry that holds everything. */
  void select_first();
  void focus_list();

  sigc::signal<void(std::size_t entry)> &signal_selected() { return selected_; }

private:
  void add_row(const TreeEntry &entry);

  Gtk::ListBox list_;
  bool filling_ = false;
  sigc::signal<void(std::size_t)> selected_;
};

}  // namespace velkor::app

#endif
