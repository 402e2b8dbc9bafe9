/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/input.h"

#include <utility>

#include "widgets/accessible_name.h"

namespace velkor::app {

void add_key(Gtk::Widget &widget, const char *keys, std::function<void()> action) {
  const auto controller = Gtk::ShortcutController::create();
  controller->add_shortcut(Gtk::Shortcut::create(
      Gtk::ShortcutTrigger::parse_string(keys),
      Gtk::CallbackAction::create(
          [action = std::move(action)](Gtk::Widget & /*widget*/, const Glib::VariantBase & /*v*/) {
            action();
            return true;
          })));
  widget.add_controller(controller);
}

Gtk::Label *field_label(const Glib::ustring &text, Gtk::Widget &field) {
  auto *label = Gtk::make_managed<Gtk::Label>(text, true);
  label->set_mnemonic_widget(field);
  label->set_xalign(1);
  return label;
}

void prepare_text_field(Gtk::ScrolledWindow &scroller, Gtk::TextView &text,
                        const Glib::ustring &name) {
  constexpr int margin = 6;
  text.set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
  text.set_accepts_tab(false);
  text.set_top_margin(margin);
  text.set_bottom_margin(margin);
  text.set_left_margin(margin);
  text.set_right_margin(margin);
  set_accessible_name(text, name);
  scroller.set_child(text);
  scroller.add_css_class("editor");
}

}  // namespace velkor::app
