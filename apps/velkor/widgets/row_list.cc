/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/row_list.h"

#include <algorithm>
#include <utility>

namespace velkor::app {
namespace {

/** What fills a screen. */
constexpr guint first_rows = 40;
constexpr guint slice_rows = 12;
/** More items than this one are looked through for those that no widget shows any more. */
constexpr std::size_t many_items = 1000;
/** Up to this one, rows from the top on have widgets. */
constexpr guint widget_rows = 264;
/** Longer than between two keys. */
constexpr unsigned pause_ms = 300;
/** Behind drawing. */
constexpr int growth_priority = GDK_PRIORITY_REDRAW + 10;

}  // namespace

RowItem::RowItem(SharedSnapshot snapshot, Row row)
    : Glib::ObjectBase("VelkorRowItem"), snapshot_(std::move(snapshot)), row_(row) {}

Glib::RefPtr<RowItem> RowItem::create(SharedSnapshot snapshot, Row row) {
  return Glib::make_refptr_for_instance(new RowItem(std::move(snapshot), row));
}

void RowItem::show(SharedSnapshot snapshot, Row row) {
  snapshot_ = std::move(snapshot);
  row_ = row;
}

RowList::RowList() : Glib::ObjectBase("VelkorRowList") {}

Glib::RefPtr<RowList> RowList::create() {
  return Glib::make_refptr_for_instance(new RowList());
}

RowList::~RowList() {
  growth_.disconnect();
}

/**
 * A list throws away the widgets of rows that go and makes new ones for those that come, which
 * takes longer than a person who types should wait. So the items stay in their places and show
 * other rows; only the end of the list comes and goes. Where there are no widgets yet, it gets at
 * first what fills a screen, and the rest in slices when there is time.
 */
void RowList::set_view(SharedView view, Pace pace) {
  growth_.disconnect();
  view_ = std::move(view);
  const guint wanted = wanted_size();
  if (size_ > wanted)
    set_size(wanted);
  show_rows();
  set_size(size_ >= widget_rows ? wanted : std::max(size_, std::min(wanted, first_rows)));
  if (size_ == wanted)
    complete_.emit();
  else if (pace == Pace::at_once)
    grow_soon();
  else
    growth_ = Glib::signal_timeout().connect(
        [this] {
          grow_soon();
          return false;
        },
        pause_ms);
}

/** Has the items that are left show what stands in their places now. */
void RowList::show_rows() {
  forget_unused();
  for (const auto &[place, item] : items_)
    if (place < view_->rows.size())
      item->show(view_->snapshot, view_->rows[place]);
  shown_.emit();
}

void RowList::forget_unused() {
  std::erase_if(items_, [](const auto &entry) { return entry.second->gobj()->ref_count == 1; });
}

void RowList::grow_soon() {
  growth_ = Glib::signal_idle().connect([this] { return grow(); }, growth_priority);
}

guint RowList::wanted_size() const noexcept {
  return view_ ? static_cast<guint>(view_->rows.size()) : 0;
}

/** @return whether rows are left */
bool RowList::grow() {
  const bool in_slices = size_ < widget_rows;
  set_size(in_slices ? std::min(size_ + slice_rows, wanted_size()) : wanted_size());
  if (size_ < wanted_size())
    return true;
  complete_.emit();
  return false;
}

void RowList::set_size(guint size) {
  const guint earlier = std::exchange(size_, size);
  if (size > earlier)
    items_changed(earlier, 0, size - earlier);
  else if (size < earlier)
    items_changed(size, earlier - size, 0);
}

GType RowList::get_item_type_vfunc() {
  return G_TYPE_OBJECT;
}

guint RowList::get_n_items_vfunc() {
  return size_;
}

gpointer RowList::get_item_vfunc(guint position) {
  if (position >= size_)
    return nullptr;
  if (items_.size() > many_items)
    forget_unused();
  Glib::RefPtr<RowItem> &item = items_[position];
  if (item)
    item->show(view_->snapshot, view_->rows[position]);  // an item that was out of the list is late
  else
    item = RowItem::create(view_->snapshot, view_->rows[position]);
  item->reference();  // the caller's
  return item->gobj();
}

}  // namespace velkor::app
