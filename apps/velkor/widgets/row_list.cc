/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/row_list.h"

#include <utility>

namespace velkor::app {

RowItem::RowItem(SharedSnapshot snapshot, Row row)
    : Glib::ObjectBase("VelkorRowItem"), snapshot_(std::move(snapshot)), row_(row) {}

Glib::RefPtr<RowItem> RowItem::create(SharedSnapshot snapshot, Row row) {
  return Glib::make_refptr_for_instance(new RowItem(std::move(snapshot), row));
}

RowList::RowList() : Glib::ObjectBase("VelkorRowList") {}

Glib::RefPtr<RowList> RowList::create() {
  return Glib::make_refptr_for_instance(new RowList());
}

/** As two changes: told that all items were replaced at once, a list asks for every one of them. */
void RowList::set_view(SharedView view) {
  const guint removed = size();
  const SharedView earlier = std::exchange(view_, nullptr);
  if (removed > 0)
    items_changed(0, removed, 0);
  view_ = std::move(view);
  if (const guint added = size(); added > 0)
    items_changed(0, 0, added);
}

GType RowList::get_item_type_vfunc() {
  return G_TYPE_OBJECT;
}

guint RowList::get_n_items_vfunc() {
  return size();
}

gpointer RowList::get_item_vfunc(guint position) {
  if (position >= size())
    return nullptr;
  const Glib::RefPtr<RowItem> item = RowItem::create(view_->snapshot, view_->rows[position]);
  item->reference();  // the caller's
  return item->gobj();
}

}  // namespace velkor::app
