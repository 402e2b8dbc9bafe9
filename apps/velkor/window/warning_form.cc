/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/warning_form.h"

#include "widgets/accessible_name.h"
#include "widgets/translation.h"

namespace velkor::app {

WarningForm::WarningForm()
    : Gtk::Box(Gtk::Orientation::VERTICAL, 6), send_button_(_("Send the _warning"), true),
      cancel_button_(_("Cancel")) {
  reason_.set_placeholder_text(_("What is wrong with this spot?"));
  set_accessible_name(reason_, _("What is wrong with this spot?"));
  reason_.set_hexpand(true);
  reason_.signal_activate().connect([this] { send(); });
  reason_.signal_changed().connect(
      [this] { send_button_.set_sensitive(!sending_ && !reason_.get_text().empty()); });
  send_button_.signal_clicked().connect([this] { send(); });
  cancel_button_.signal_clicked().connect([this] { set_visible(false); });
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&reason_, &send_button_, &cancel_button_})
    line_.append(*part);
  refusal_.add_css_class("error");
  refusal_.set_wrap(true);
  refusal_.set_xalign(0);
  append(line_);
  append(refusal_);
  set_visible(false);
}

void WarningForm::begin() {
  sending_ = false;
  reason_.set_text("");
  send_button_.set_sensitive(false);
  refusal_.set_visible(false);
  set_visible(true);
  reason_.grab_focus();
}

void WarningForm::send() {
  const std::string reason = reason_.get_text().raw();
  if (sending_ || reason.empty())
    return;
  sending_ = true;
  send_button_.set_sensitive(false);
  send_.emit(reason);
}

void WarningForm::show_sent(const Glib::ustring &refusal) {
  sending_ = false;
  send_button_.set_sensitive(true);
  refusal_.set_text(refusal);
  refusal_.set_visible(!refusal.empty());
  if (refusal.empty())
    set_visible(false);
}

}  // namespace velkor::app
