/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/message_editor.h"

#include "widgets/input.h"
#include "widgets/page.h"
#include "widgets/translation.h"

namespace velkor::app {
MessageEditor::MessageEditor()
    : Gtk::Box(Gtk::Orientation::VERTICAL, 6), send_button_(_("_Send"), true),
      discard_button_(_("_Discard"), true) {
  build_fields();
  build_buttons();
  name_by_label_alone(send_button_);
  name_by_label_alone(discard_button_);
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&fields_, &scroller_, &failure_, &buttons_})
    append(*part);
  add_css_class("posting");
}

void MessageEditor::build_fields() {
  fields_.set_row_spacing(6);
  fields_.set_column_spacing(12);
  fields_.attach(*field_label(_("_To"), to_), 0, 0);
  fields_.attach(to_, 1, 0);
  fields_.attach(*field_label(_("Su_bject"), subject_), 0, 1);
  fields_.attach(subject_, 1, 1);
  to_.set_hexpand(true);
  prepare_text_field(scroller_, body_, _("Text of the message"));
  scroller_.set_vexpand(true);
  failure_.add_css_class("error");
  failure_.set_wrap(true);
  failure_.set_xalign(0);
  failure_.set_visible(false);
}

void MessageEditor::build_buttons() {
  send_button_.add_css_class("suggested-action");
  send_button_.set_tooltip_text(_("Send the message (Ctrl+Enter)"));
  send_button_.signal_clicked().connect([this] { send(); });
  discard_button_.set_tooltip_text(_("Throw away what was written"));
  discard_button_.signal_clicked().connect([this] { discard_.emit(); });
  buttons_.set_halign(Gtk::Align::END);
  buttons_.append(discard_button_);
  buttons_.append(send_button_);
  add_key(*this, "<Control>Return", [this] { send(); });
}

void MessageEditor::begin(const Draft &draft) {
  to_.set_text(draft.to);
  subject_.set_text(draft.subject);
  const auto text = body_.get_buffer();
  text->set_text(draft.body);
  text->place_cursor(text->begin());
  show_failure("");
  if (draft.to.empty())
    to_.grab_focus();
  else
    body_.grab_focus();
}

bool MessageEditor::has_text() const {
  return body_.get_buffer()->get_char_count() > 0 || subject_.get_text_length() > 0 ||
         to_.get_text_length() > 0;
}

void MessageEditor::send() {
  if (sending_)
    return;
  if (to_.get_text().empty()) {
    show_failure(_("Enter the name of a user of the service."));
    to_.grab_focus();
    return;
  }
  sending_ = true;
  set_sensitive(false);
  send_.emit(
      {to_.get_text().raw(), subject_.get_text().raw(), body_.get_buffer()->get_text().raw()});
}

void MessageEditor::show_sent(const Glib::ustring &failure) {
  sending_ = false;
  set_sensitive(true);
  if (failure.empty())
    return begin({});
  show_failure(failure);
  body_.grab_focus();
}

void MessageEditor::show_failure(const Glib::ustring &failure) {
  failure_.set_text(failure);
  failure_.set_visible(!failure.empty());
}

}  // namespace velkor::app
