/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A list of entries with two lines each, of which one can be chosen. */
#ifndef VELKOR_APP_WIDGETS_ENTRY_LIST_H
#define VELKOR_APP_WIDGETS_ENTRY_LIST_H

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include <gtkmm.h>

namespace velkor::app {

struct ListEntry {
  std::uint64_t id = 0;
  Glib::ustring title{};
  Glib::ustring detail{};
  Glib::ustring mark{};  // a word such as "Unread", which makes the title bold; or empty
};

class EntryList : public Gtk::ScrolledWindow {
public:
  /** @param name  what a screen reader calls the list */
  explicit EntryList(const Glib::ustring &name);
  ~EntryList() override;
  EntryList(const EntryList &) = delete;
  EntryList &operator=(const EntryList &) = delete;

  /** Shows other entries. The one that was chosen stays so, if it is among them. */
  void set_entries(const std::vector<ListEntry> &entries);
  /** Takes the mark off an entry. */
  void unmark(std::uint64_t id);
  /** Chooses the entry at that place, or the last one when there are fewer. */
  void choose(guint place);
  void focus_list();

  [[nodiscard]] std::optional<std::uint64_t> chosen() const;
  /** The place of the entry that is chosen; 0 without one. */
  [[nodiscard]] guint place() const;

  /** Another entry is chosen, or none. */
  sigc::signal<void()> &signal_chosen() { return chosen_; }
  /** Enter, or a double click. */
  sigc::signal<void()> &signal_opened() { return opened_; }
  /** The key Delete. */
  sigc::signal<void()> &signal_delete() { return delete_; }

private:
  class Item;
  class Row;

  void build(const Glib::ustring &name);

  std::set<std::uint64_t> unmarked_;
  std::set<Row *> rows_;  // that are on the screen
  Glib::RefPtr<Gio::ListStoreBase> items_;
  Glib::RefPtr<Gtk::SingleSelection> selection_;
  sigc::connection selected_;
  Gtk::ListView list_;
  bool filling_ = false;
  sigc::signal<void()> chosen_;
  sigc::signal<void()> opened_;
  sigc::signal<void()> delete_;
};

}  // namespace velkor::app

#endif
