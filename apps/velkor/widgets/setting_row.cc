/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/setting_row.h"

#include <utility>
#include <vector>

#include "support/numbers.h"
#include "widgets/page.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

using Kind = SettingField::Kind;
using Values = std::vector<std::string>;

Values one_or_none(const std::string &text) {
  return text.empty() ? Values{} : Values{text};
}

Glib::ustring days_text(std::int64_t days) {
  return counted("%1 day", "%1 days", days);
}

Glib::ustring range_of(const SettingField &field) {
  switch (field.kind) {
  case Kind::time:
    return _("A time such as 2026-11-21 14:05, or empty for never.");
  case Kind::list:
    if (field.has_range())
      return Glib::ustring::compose(_("Numbers from %1 to %2, one a line."), field.lowest,
                                    field.highest);
    return _("One a line.");
  case Kind::server:
    return _("[https://]HOST[:PORT]; empty for the server of the service.");
  case Kind::number:
    if (field.has_range())
      return Glib::ustring::compose(_("A number from %1 to %2."), field.lowest, field.highest);
    return "";
  default:
    return "";
  }
}

Glib::ustring default_of(const SettingField &field) {
  if (field.read_only)
    return _("The server tells this; it cannot be changed.");
  if (field.kind == Kind::server)
    return "";
  if (!field.initial || field.initial->empty() || field.kind == Kind::time)
    return _("Empty by default.");
  if (field.kind == Kind::flag)
    return *field.initial == "1" ? _("On by default.") : _("Off by default.");
  const auto number = static_cast<std::size_t>(leading_number(*field.initial));
  const Glib::ustring value =
      number < field.days.size() ? days_text(field.days[number]) : Glib::ustring(*field.initial);
  return Glib::ustring::compose(_("%1 by default."), value);
}

Gtk::Label &small(Gtk::Label &label, const char *style) {
  label.set_xalign(0);
  label.set_wrap(true);
  label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
  label.set_max_width_chars(70);
  label.add_css_class("caption");
  label.add_css_class(style);
  return label;
}

void mark_invalid(Gtk::Widget &widget, bool invalid) {
  if (invalid)
    widget.add_css_class("error");
  else
    widget.remove_css_class("error");
  gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_INVALID,
                              invalid ? GTK_ACCESSIBLE_INVALID_TRUE : GTK_ACCESSIBLE_INVALID_FALSE,
                              -1);
}

void describe(Gtk::Widget &widget, const Glib::ustring &text) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                 text.c_str(), -1);
}

}  // namespace

Glib::ustring explanation_of(const SettingField &field) {
  Glib::ustring text = field.description.empty() ? "" : _(field.description.c_str());
  for (const Glib::ustring &sentence : {range_of(field), default_of(field)})
    if (!sentence.empty())
      text += (text.empty() ? "" : " ") + sentence;
  return text;
}

Glib::ustring words_for(const SettingRefusal &refusal, const SettingField &field) {
  if (refusal.why == SettingRefusal::Why::no_server)
    return _("This is not a server: it is written as HOST or HOST:PORT, with https:// in front for "
             "HTTPS.");
  if (refusal.why != SettingRefusal::Why::out_of_range)
    return refusal.reason;
  if (field.kind == Kind::time)
    return _("This is not a time: it is written as 2026-11-21 14:05.");
  return Glib::ustring::compose(_("Not taken: a number from %1 to %2 is needed."), field.lowest,
                                field.highest);
}

/** What a kind of setting is changed with. */
class SettingRow::Editor {
public:
  Editor() = default;
  virtual ~Editor() = default;
  Editor(const Editor &) = delete;
  Editor &operator=(const Editor &) = delete;

  virtual Gtk::Widget &widget() = 0;
  virtual Gtk::Widget &focus() { return widget(); }
  [[nodiscard]] virtual Values values() const = 0;
  virtual void show(const SettingField &field) = 0;
  virtual void on_change(const std::function<void()> &function) = 0;
  /** Whether the editor says its name itself. */
  [[nodiscard]] virtual bool has_name() const { return false; }
};

class SettingRow::TextEditor : public Editor {
public:
  Gtk::Widget &widget() override { return entry_; }
  [[nodiscard]] Values values() const override { return one_or_none(entry_.get_text().raw()); }
  void show(const SettingField &field) override { entry_.set_text(field.value()); }
  void on_change(const std::function<void()> &function) override {
    entry_.signal_changed().connect(function);
  }

protected:
  Gtk::Entry entry_;
};

class SettingRow::TimeEditor : public TextEditor {
public:
  [[nodiscard]] Values values() const override { return {time_of_text(entry_.get_text().raw())}; }
  void show(const SettingField &field) override { entry_.set_text(text_of_time(field.value())); }
};

class SettingRow::SecretEditor : public Editor {
public:
  SecretEditor() { entry_.set_show_peek_icon(true); }
  Gtk::Widget &widget() override { return entry_; }
  [[nodiscard]] Values values() const override { return one_or_none(entry_.get_text().raw()); }
  void show(const SettingField &field) override { entry_.set_text(field.value()); }
  void on_change(const std::function<void()> &function) override {
    entry_.signal_changed().connect(function);
  }

private:
  Gtk::PasswordEntry entry_;
};

class SettingRow::FlagEditor : public Editor {
public:
  explicit FlagEditor(const Glib::ustring &name) : button_(name) { name_by_label_alone(button_); }
  Gtk::Widget &widget() override { return button_; }
  [[nodiscard]] Values values() const override { return {button_.get_active() ? "1" : "0"}; }
  void show(const SettingField &field) override { button_.set_active(field.value() != "0"); }
  void on_change(const std::function<void()> &function) override {
    button_.signal_toggled().connect(function);
  }
  [[nodiscard]] bool has_name() const override { return true; }

private:
  Gtk::CheckButton button_;
};

class SettingRow::ChoiceEditor : public Editor {
public:
  explicit ChoiceEditor(const std::vector<std::int32_t> &days) {
    const auto texts = Gtk::StringList::create({});
    for (const std::int32_t number : days)
      texts->append(days_text(number));
    choices_.set_model(texts);
  }
  Gtk::Widget &widget() override { return choices_; }
  [[nodiscard]] Values values() const override {
    const guint chosen = choices_.get_selected();
    return chosen == GTK_INVALID_LIST_POSITION ? unknown_ : Values{std::to_string(chosen)};
  }
  void show(const SettingField &field) override {
    const auto number = static_cast<std::size_t>(leading_number(field.value()));
    unknown_ = field.values;
    choices_.set_selected(number < field.days.size() ? static_cast<guint>(number)
                                                     : GTK_INVALID_LIST_POSITION);
  }
  void on_change(const std::function<void()> &function) override {
    choices_.property_selected().signal_changed().connect(function);
  }

private:
  Gtk::DropDown choices_;
  Values unknown_;  // what the file holds when it is none of the choices
};

class SettingRow::ListEditor : public Editor {
public:
  ListEditor() {
    text_.set_accepts_tab(false);
    text_.set_top_margin(6);
    text_.set_bottom_margin(6);
    text_.set_left_margin(6);
    text_.set_right_margin(6);
    scroller_.set_child(text_);
    scroller_.set_min_content_height(84);
    scroller_.add_css_class("editor");
  }
  Gtk::Widget &widget() override { return scroller_; }
  Gtk::Widget &focus() override { return text_; }
  [[nodiscard]] Values values() const override {
    return items_of_lines(text_.get_buffer()->get_text().raw());
  }
  void show(const SettingField &field) override {
    text_.get_buffer()->set_text(lines_of_items(field.values));
  }
  void on_change(const std::function<void()> &function) override {
    text_.get_buffer()->signal_changed().connect(function);
  }

private:
  Gtk::ScrolledWindow scroller_;
  Gtk::TextView text_;
};

std::unique_ptr<SettingRow::Editor> SettingRow::make_editor(const SettingField &field,
                                                            const Glib::ustring &name) {
  switch (field.kind) {
  case Kind::secret:
    return std::make_unique<SecretEditor>();
  case Kind::time:
    return std::make_unique<TimeEditor>();
  case Kind::flag:
    return std::make_unique<FlagEditor>(name);
  case Kind::choice:
    return std::make_unique<ChoiceEditor>(field.days);
  case Kind::list:
    return std::make_unique<ListEditor>();
  default:
    return std::make_unique<TextEditor>();
  }
}

SettingRow::SettingRow(const SettingField &field, const Glib::ustring &name)
    : Gtk::Box(Gtk::Orientation::VERTICAL, 4), key_(field.key), name_(name),
      editor_(make_editor(field, name)), explanation_(explanation_of(field)) {
  name_.set_xalign(0);
  name_.set_size_request(200, -1);
  name_.set_wrap(true);
  name_.set_valign(Gtk::Align::START);
  name_.set_mnemonic_widget(editor_->focus());
  if (!editor_->has_name())
    line_.append(name_);
  editor_->widget().set_hexpand(true);
  line_.append(editor_->widget());
  describe(editor_->focus(), explanation_.get_text());
  append(line_);
  append(small(explanation_, "dim-label"));
  append(small(consequence_, "warning"));
  append(small(refusal_, "error"));
  add_css_class("setting");
  editor_->widget().set_sensitive(!field.read_only);
  show_values(field);
  show_consequence("");
  editor_->on_change([this] { changed_.emit(); });
}

SettingRow::~SettingRow() = default;

SettingChange SettingRow::wanted() const {
  return {key_, editor_->values()};
}

void SettingRow::show_values(const SettingField &field) {
  editor_->show(field);
  show_refusal("");
}

void SettingRow::show_refusal(const Glib::ustring &reason) {
  refusal_.set_text(reason);
  refusal_.set_visible(!reason.empty());
  mark_invalid(editor_->focus(), !reason.empty());
}

void SettingRow::show_consequence(const Glib::ustring &text) {
  consequence_.set_text(text);
  consequence_.set_visible(!text.empty());
}

void SettingRow::focus_editor() {
  editor_->focus().grab_focus();
}

}  // namespace velkor::app
