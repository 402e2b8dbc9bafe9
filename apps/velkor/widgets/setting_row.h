/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One setting in a form: its editor, what it is for, and why a value was refused. */
#ifndef VELKOR_APP_WIDGETS_SETTING_ROW_H
#define VELKOR_APP_WIDGETS_SETTING_ROW_H

#include <memory>
#include <string>

#include <gtkmm.h>

#include "model/setting.h"

namespace velkor::app {

class SettingRow : public Gtk::Box {
public:
  SettingRow(const SettingField &field, const Glib::ustring &name);
  ~SettingRow() override;
  SettingRow(const SettingRow &) = delete;
  SettingRow &operator=(const SettingRow &) = delete;

  [[nodiscard]] const std::string &key() const noexcept { return key_; }
  /** The values in the editor, in the form of the file. */
  [[nodiscard]] SettingChange wanted() const;
  /** Puts the field's values into the editor and forgets a refusal. */
  void show_values(const SettingField &field);
  /** Says at the field why its value is refused; an empty text says nothing. */
  void show_refusal(const Glib::ustring &reason);
  /** Says what the value in the editor would do; an empty text says nothing. */
  void show_consequence(const Glib::ustring &text);
  void focus_editor();

  sigc::signal<void()> &signal_changed() { return changed_; }

private:
  class Editor;
  class TextEditor;
  class SecretEditor;
  class TimeEditor;
  class FlagEditor;
  class ChoiceEditor;
  class ListEditor;

  static std::unique_ptr<Editor> make_editor(const SettingField &field, const Glib::ustring &name);

  std::string key_;
  Gtk::Box line_{Gtk::Orientation::HORIZONTAL, 12};
  Gtk::Label name_;
  std::unique_ptr<Editor> editor_;
  Gtk::Label explanation_;
  Gtk::Label consequence_;
  Gtk::Label refusal_;
  sigc::signal<void()> changed_;
};

/** What is to be known about the field: its purpose, its range and its default. */
Glib::ustring explanation_of(const SettingField &field);

/** Why the field's value was refused. */
Glib::ustring words_for(const SettingRefusal &refusal, const SettingField &field);

}  // namespace velkor::app

#endif
