/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/entry_list.h"

#include <algorithm>
#include <utility>

#include "widgets/accessible_name.h"
#include "widgets/input.h"

namespace velkor::app {

class EntryList::Item : public Glib::Object {
public:
  explicit Item(ListEntry entry) : Glib::ObjectBase("VelkorListEntry"), entry_(std::move(entry)) {}

  [[nodiscard]] const ListEntry &entry() const noexcept { return entry_; }

private:
  ListEntry entry_;
};

class EntryList::Row : public Gtk::Box {
public:
  Row() : Gtk::Box(Gtk::Orientation::VERTICAL, 2) {
    for (Gtk::Label *label : {&title_, &detail_}) {
      label->set_xalign(0);
      label->set_ellipsize(Pango::EllipsizeMode::END);
      append(*label);
    }
    detail_.add_css_class("caption");
    detail_.add_css_class("dim-label");
    add_css_class("entry-row");
  }

  void show(const ListEntry &entry, bool marked) {
    entry_ = entry;
    title_.set_text(entry.title);
    detail_.set_text(entry.detail);
    show_mark(marked);
  }

  void show_mark(bool marked) {
    const bool is_marked = marked && !entry_.mark.empty();
    if (is_marked)
      title_.add_css_class("heading");
    else
      title_.remove_css_class("heading");
    if (Gtk::Widget *row = get_parent())
      set_accessible_name(*row, (is_marked ? entry_.mark + ": " : "") + entry_.title + ", " +
                                    entry_.detail);
  }

  [[nodiscard]] std::uint64_t id() const noexcept { return entry_.id; }

private:
  ListEntry entry_;
  Gtk::Label title_;
  Gtk::Label detail_;
};

EntryList::EntryList(const Glib::ustring &name)
    : items_(Gio::ListStore<Item>::create()), selection_(Gtk::SingleSelection::create(items_)) {
  build(name);
  add_key(list_, "Delete", [this] { delete_.emit(); });
}

EntryList::~EntryList() {
  selected_.disconnect();
}

void EntryList::build(const Glib::ustring &name) {
  selection_->set_autoselect(false);
  selection_->set_can_unselect(false);
  selected_ = selection_->property_selected().signal_changed().connect([this] {
    if (!filling_)
      chosen_.emit();
  });
  const auto factory = Gtk::SignalListItemFactory::create();
  factory->signal_setup().connect(
      [](const auto &place) { place->set_child(*Gtk::make_managed<Row>()); });
  factory->signal_bind().connect([this](const auto &place) {
    auto &row = dynamic_cast<Row &>(*place->get_child());
    const ListEntry &entry = std::dynamic_pointer_cast<Item>(place->get_item())->entry();
    row.show(entry, !unmarked_.contains(entry.id));
    rows_.insert(&row);
  });
  factory->signal_unbind().connect(
      [this](const auto &place) { rows_.erase(dynamic_cast<Row *>(place->get_child())); });
  list_.set_model(selection_);
  list_.set_factory(factory);
  list_.signal_activate().connect([this](guint place) {
    selection_->set_selected(place);
    opened_.emit();
  });
  set_accessible_name(list_, name);
  set_child(list_);
  set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
}

void EntryList::set_entries(const std::vector<ListEntry> &entries) {
  const std::optional<std::uint64_t> before = chosen();
  unmarked_.clear();
  std::vector<Glib::RefPtr<Item>> items;
  items.reserve(entries.size());
  for (const ListEntry &entry : entries)
    items.push_back(Glib::make_refptr_for_instance(new Item(entry)));
  filling_ = true;
  const auto store = std::dynamic_pointer_cast<Gio::ListStore<Item>>(items_);
  store->remove_all();
  store->splice(0, 0, items);
  const auto place = before ? std::ranges::find(entries, *before, &ListEntry::id) : entries.end();
  selection_->set_selected(place == entries.end() ? GTK_INVALID_LIST_POSITION
                                                  : static_cast<guint>(place - entries.begin()));
  filling_ = false;
  if (before && place == entries.end())
    chosen_.emit();
}

void EntryList::unmark(std::uint64_t id) {
  unmarked_.insert(id);
  for (Row *row : rows_)
    if (row->id() == id)
      row->show_mark(false);
}

void EntryList::choose(guint place) {
  if (const guint count = items_->get_n_items(); count > 0)
    selection_->set_selected(std::min(place, count - 1));
}

/** After an exchange of the entries, the list itself would take the focus to the first one. */
void EntryList::focus_list() {
  const std::optional<std::uint64_t> id = chosen();
  for (Row *row : rows_)
    if (id == row->id() && row->get_parent()->grab_focus())
      return;
  list_.grab_focus();
}

std::optional<std::uint64_t> EntryList::chosen() const {
  const auto item = std::dynamic_pointer_cast<const Item>(selection_->get_selected_item());
  return item ? std::optional(item->entry().id) : std::nullopt;
}

guint EntryList::place() const {
  const guint selected = selection_->get_selected();
  return selected == GTK_INVALID_LIST_POSITION ? 0 : selected;
}

}  // namespace velkor::app
