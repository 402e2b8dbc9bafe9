/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "widgets/notice.h"

#include <utility>

#include "widgets/translation.h"

namespace velkor::app {
namespace {

constexpr unsigned seconds_shown = 8;

}  // namespace

Notice::Notice() : undo_button_(_("_Undo"), true) {
  line_.add_css_class("notice");
  line_.add_css_class("osd");
  text_.set_wrap(true);
  text_.set_natural_wrap_mode(Gtk::NaturalWrapMode::NONE);
  undo_button_.add_css_class("flat");
  undo_button_.signal_clicked().connect([this] { undo(); });
  line_.append(text_);
  line_.append(undo_button_);
  set_child(line_);
  set_halign(Gtk::Align::CENTER);
  set_valign(Gtk::Align::END);
  set_transition_type(Gtk::RevealerTransitionType::CROSSFADE);
  set_can_target(false);
}

Notice::~Notice() {
  end_.disconnect();
}

void Notice::show_text(const Glib::ustring &text, std::function<void()> undo) {
  undo_ = std::move(undo);
  text_.set_text(text);
  undo_button_.set_visible(undo_ != nullptr);
  set_can_target(true);
  set_reveal_child(true);
  end_.disconnect();
  end_ = Glib::signal_timeout().connect_seconds(
      [this] {
        hide();
        return false;
      },
      seconds_shown);
}

void Notice::undo() {
  if (const auto undo = std::exchange(undo_, nullptr)) {
    hide();
    undo();
  }
}

void Notice::hide() {
  end_.disconnect();
  undo_ = nullptr;
  set_can_target(false);
  set_reveal_child(false);
}

}  // namespace velkor::app
