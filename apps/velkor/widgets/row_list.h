/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The rows of a view as a list model. An item is made when the list shows it, not before. */
#ifndef VELKOR_APP_WIDGETS_ROW_LIST_H
#define VELKOR_APP_WIDGETS_ROW_LIST_H

#include <unordered_map>

#include <gtkmm.h>

#include "model/view_maker.h"

namespace velkor::app {

/** What stands at one place of the list while a widget shows it. */
class RowItem : public Glib::Object {
public:
  static Glib::RefPtr<RowItem> create(SharedSnapshot snapshot, Row row);

  [[nodiscard]] const Snapshot &snapshot() const noexcept { return *snapshot_; }
  [[nodiscard]] Row row() const noexcept { return row_; }
  [[nodiscard]] std::int32_t id() const noexcept { return snapshot_->table.id(row_); }

  /** Another row stands there from now on. */
  void show(SharedSnapshot snapshot, Row row);

private:
  RowItem(SharedSnapshot snapshot, Row row);

  SharedSnapshot snapshot_;
  Row row_;
};

class RowList : public Gio::ListModel, public Glib::Object {
public:
  static Glib::RefPtr<RowList> create();

  ~RowList() override;
  RowList(const RowList &) = delete;
  RowList &operator=(const RowList &) = delete;

  enum class Pace { at_once, after_a_pause };

  /**
   * Shows other rows from now on: those for which there are widgets at once, signal_shown() tells
   * of that; then the others, signal_complete() tells when all are there.
   * @param pace  whether the others wait for a moment, since the next view may be on its way
   */
  void set_view(SharedView view, Pace pace);
  [[nodiscard]] const SharedView &view() const noexcept { return view_; }

  sigc::signal<void()> &signal_shown() { return shown_; }
  sigc::signal<void()> &signal_complete() { return complete_; }

protected:
  RowList();

  GType get_item_type_vfunc() override;
  guint get_n_items_vfunc() override;
  gpointer get_item_vfunc(guint position) override;

private:
  void show_rows();
  void forget_unused();
  void set_size(guint size);
  void grow_soon();
  bool grow();
  [[nodiscard]] guint wanted_size() const noexcept;

  SharedView view_;
  /** The items that have been asked for since they were last looked through, by their places. */
  std::unordered_map<guint, Glib::RefPtr<RowItem>> items_;
  guint size_ = 0;  // how many rows have been told of
  sigc::connection growth_;
  sigc::signal<void()> shown_;
  sigc::signal<void()> complete_;
};

}  // namespace velkor::app

#endif
