/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/account_page.h"

#include <algorithm>
#include <utility>

#include "library/ask.h"
#include "library/settings_access.h"
#include "model/setting_labels.h"
#include "widgets/input.h"
#include "widgets/page.h"
#include "widgets/translation.h"

namespace velkor::app {
AccountPage::AccountPage(Session &session, std::filesystem::path servers_file)
    : session_(session), servers_file_(std::move(servers_file)), title_(_("Welcome to Velkor")),
      text_(_("The ZOX service needs to know who is asking. Enter the name and the password of "
              "your account there.")),
      connection_(_("_Server and proxy"), true), button_(_("_Continue"), true) {
  build();
  build_connection();
  name_.signal_changed().connect([this] { enable(); });
  password_.signal_changed().connect([this] { enable(); });
  name_.signal_activate().connect([this] { password_.grab_focus(); });
  password_.property_activates_default() = true;
  button_.signal_clicked().connect([this] { accept(); });
}

AccountPage::~AccountPage() {
  if (request_)
    request_->cancel();
}

void AccountPage::build() {
  title_.add_css_class("title-1");
  text_.set_wrap(true);
  text_.set_max_width_chars(50);
  text_.set_justify(Gtk::Justification::CENTER);
  form_.set_row_spacing(6);
  form_.set_column_spacing(12);
  form_.set_halign(Gtk::Align::CENTER);
  form_.attach(*field_label(_("User _name"), name_), 0, 0);
  form_.attach(name_, 1, 0);
  form_.attach(*field_label(_("_Password"), password_), 0, 1);
  form_.attach(password_, 1, 1);
  password_.set_show_peek_icon(true);
  name_.set_width_chars(28);
  failure_.add_css_class("error");
  failure_.set_wrap(true);
  failure_.set_visible(false);
  name_by_label_alone(button_);
  button_.set_halign(Gtk::Align::CENTER);
  button_.add_css_class("suggested-action");
  button_.add_css_class("pill");
  button_.set_sensitive(false);
  for (Gtk::Widget *part : std::initializer_list<Gtk::Widget *>{&title_, &text_, &form_,
                                                                &connection_, &failure_, &button_})
    column_.append(*part);
  column_.set_valign(Gtk::Align::CENTER);
  column_.add_css_class("hint");
  auto *scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
  scroller->set_child(column_);
  scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scroller->set_expand(true);
  append(*scroller);
}

/** Most users need nothing of this. */
void AccountPage::build_connection() {
  connection_form_.set_margin_top(12);
  connection_.set_child(connection_form_);
  connection_.set_halign(Gtk::Align::CENTER);
  connection_.set_visible(false);
}

void AccountPage::begin() {
  if (auto *window = dynamic_cast<Gtk::Window *>(get_root()))
    window->set_default_widget(button_);
  name_.grab_focus();
  if (rows_.empty())
    request_ = ask(
        session_, [file = servers_file_] { return read_settings(file); },
        [this](const Settings &settings) { add_rows(settings); });
}

void AccountPage::add_rows(const Settings &settings) {
  settings_ = settings;
  for (const SettingLabel &label : setting_labels()) {
    const SettingField *field = find_setting(settings_, label.key);
    if (label.group != SettingGroup::connection || field == nullptr)
      continue;
    auto *row = Gtk::make_managed<SettingRow>(*field, _(label.label));
    row->signal_changed().connect([row] { row->show_refusal(""); });
    rows_.push_back(row);
    connection_form_.append(*row);
  }
  connection_.set_visible(true);
  enable();
}

void AccountPage::enable() {
  button_.set_sensitive(!rows_.empty() && !name_.get_text().empty() &&
                        !password_.get_text().empty());
}

void AccountPage::accept() {
  if (!button_.get_sensitive())
    return;
  button_.set_sensitive(false);
  failure_.set_visible(false);
  SettingChanges changes{{"username", {name_.get_text().raw()}},
                         {"password", {password_.get_text().raw()}}};
  for (const SettingRow *row : rows_)
    changes.push_back(row->wanted());
  request_ = ask(
      session_,
      [changes = changed_values(settings_, changes), file = servers_file_] {
        return apply_settings(changes, file);
      },
      [this](const SettingRefusals &refusals) {
        button_.set_sensitive(true);
        if (refusals.empty())
          done_.emit();
        else
          show_refusals(refusals);
      });
}

void AccountPage::show_refusals(const SettingRefusals &refusals) {
  for (const SettingRefusal &refusal : refusals) {
    const auto row = std::ranges::find(rows_, refusal.key, &SettingRow::key);
    if (row == rows_.end()) {
      failure_.set_text(refusal.reason);
      failure_.set_visible(true);
      continue;
    }
    (*row)->show_refusal(words_for(refusal, *find_setting(settings_, refusal.key)));
    connection_.set_expanded(true);
    (*row)->focus_editor();
  }
}

}  // namespace velkor::app
