/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/category_list.h"

#include <algorithm>

#include "widgets/accessible_name.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

Glib::ustring name_of(const TreeEntry &entry) {
  if (entry.kind == TreeEntry::Kind::everything)
    return _("All spots");
  return entry.name.empty() ? Glib::ustring(_("(no name)")) : Glib::ustring(entry.name);
}

Glib::ustring accessible_name_of(const TreeEntry &entry) {
  Glib::ustring name = name_of(entry) + ", " + counted("%1 spot", "%1 spots", entry.count);
  if (entry.new_count > 0)
    name += ", " + counted("%1 new", "%1 new", entry.new_count);
  return name;
}

Gtk::Label *label(const Glib::ustring &text, const char *style) {
  auto *made = Gtk::make_managed<Gtk::Label>(text);
  made->add_css_class(style);
  made->set_valign(Gtk::Align::CENTER);
  return made;
}

}  // namespace

CategoryList::CategoryList() {
  list_.set_selection_mode(Gtk::SelectionMode::BROWSE);
  list_.add_css_class("navigation-sidebar");
  set_accessible_name(list_, _("Categories"));
  list_.signal_row_selected().connect([this](const Gtk::ListBoxRow *row) {
    if (row != nullptr && !filling_)
      selected_.emit(static_cast<std::size_t>(row->get_index()));
  });
  set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  set_child(list_);
}

void CategoryList::set_tree(const std::vector<TreeEntry> &tree, std::size_t entry) {
  filling_ = true;
  while (Gtk::ListBoxRow *row = list_.get_row_at_index(0))
    list_.remove(*row);
  for (const TreeEntry &one : tree)
    add_row(one);
  if (Gtk::ListBoxRow *row = list_.get_row_at_index(static_cast<int>(entry)))
    list_.select_row(*row);
  filling_ = false;
}

void CategoryList::add_row(const TreeEntry &entry) {
  auto *line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 6);
  auto *name = Gtk::make_managed<Gtk::Label>(name_of(entry));
  name->set_ellipsize(Pango::EllipsizeMode::END);
  name->set_hexpand(true);
  name->set_xalign(0);
  if (entry.kind == TreeEntry::Kind::filter)
    name->set_margin_start(18);
  else
    name->add_css_class("heading");
  line->append(*name);
  if (entry.new_count > 0)
    line->append(*label(number_text(entry.new_count), "new-count"));
  line->append(*label(number_text(entry.count), "count"));
  auto *row = Gtk::make_managed<Gtk::ListBoxRow>();
  row->set_child(*line);
  set_accessible_name(*row, accessible_name_of(entry));
  list_.append(*row);
}

std::size_t CategoryList::selected() {
  const Gtk::ListBoxRow *row = list_.get_selected_row();
  return row == nullptr ? 0 : static_cast<std::size_t>(std::max(row->get_index(), 0));
}

void CategoryList::select_first() {
  if (Gtk::ListBoxRow *row = list_.get_row_at_index(0))
    list_.select_row(*row);
}

void CategoryList::focus_list() {
  if (Gtk::ListBoxRow *row = list_.get_selected_row())
    row->grab_focus();
}

}  // namespace velkor::app
