/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/account_page.h"

#include "widgets/translation.h"

namespace velkor::app {
namespace {

Gtk::Label *label_for(const Glib::ustring &text, Gtk::Widget &field) {
  auto *label = Gtk::make_managed<Gtk::Label>(text, true);
  label->set_mnemonic_widget(field);
  label->set_xalign(1);
  return label;
}

}  // namespace

AccountPage::AccountPage()
    : Gtk::Box(Gtk::Orientation::VERTICAL, 18), title_(_("Welcome to Velkor")),
      text_(_("The ZOX service needs to know who is asking. Enter the name and the password of "
              "your account there.")),
      button_(_("_Continue"), true) {
  title_.add_css_class("title-1");
  text_.set_wrap(true);
  text_.set_max_width_chars(50);
  text_.set_justify(Gtk::Justification::CENTER);
  form_.set_row_spacing(6);
  form_.set_column_spacing(12);
  form_.set_halign(Gtk::Align::CENTER);
  form_.attach(*label_for(_("User _name"), name_), 0, 0);
  form_.attach(name_, 1, 0);
  form_.attach(*label_for(_("_Password"), password_), 0, 1);
  form_.attach(password_, 1, 1);
  password_.set_show_peek_icon(true);
  name_.set_width_chars(28);
  failure_.add_css_class("error");
  failure_.set_wrap(true);
  failure_.set_visible(false);
  button_.set_halign(Gtk::Align::CENTER);
  button_.add_css_class("suggested-action");
  button_.add_css_class("pill");
  button_.set_sensitive(false);
  const auto complete = [this] {
    button_.set_sensitive(!name_.get_text().empty() && !password_.get_text().empty());
  };
  name_.signal_changed().connect(complete);
  password_.signal_changed().connect(complete);
  name_.signal_activate().connect([this] { password_.grab_focus(); });
  password_.property_activates_default() = true;
  button_.signal_clicked().connect([this] { accept(); });
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&title_, &text_, &form_, &failure_, &button_})
    append(*part);
  set_valign(Gtk::Align::CENTER);
  add_css_class("hint");
}

void AccountPage::focus_name() {
  if (auto *window = dynamic_cast<Gtk::Window *>(get_root()))
    window->set_default_widget(button_);
  name_.grab_focus();
}

void AccountPage::accept() {
  if (!button_.get_sensitive())
    return;
  button_.set_sensitive(false);
  failure_.set_visible(false);
  account_.emit(name_.get_text().raw(), password_.get_text().raw());
}

void AccountPage::show_failure(const Glib::ustring &failure) {
  failure_.set_text(failure);
  failure_.set_visible(true);
  button_.set_sensitive(true);
}

}  // namespace velkor::app
