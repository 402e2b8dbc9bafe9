/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/reactions_page.h"

#include <algorithm>
#include <utility>

#include "widgets/accessible_name.h"
#include "widgets/input.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

constexpr int indent = 24;
constexpr int deepest = 8;  // further answers are not moved in any more

class ReactionItem : public Glib::Object {
public:
  explicit ReactionItem(Reaction reaction)
      : Glib::ObjectBase("VelkorReactionItem"), reaction_(std::move(reaction)) {}

  [[nodiscard]] const Reaction &reaction() const noexcept { return reaction_; }

private:
  Reaction reaction_;
};

/** The widget of one reaction. */
class ReactionRow : public Gtk::Box {
public:
  ReactionRow() : Gtk::Box(Gtk::Orientation::VERTICAL, 4) {
    head_.set_xalign(0);
    head_.add_css_class("caption-heading");
    body_.set_xalign(0);
    body_.set_wrap(true);
    body_.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    body_.set_selectable(true);
    body_.set_focusable(false);
    append(head_);
    append(body_);
    add_css_class("reaction");
  }

  void show(const Reaction &reaction) {
    const Glib::ustring author =
        reaction.author.empty() ? Glib::ustring(_("(unknown)")) : Glib::ustring(reaction.author);
    Glib::ustring head = author + " — " + moment_text(reaction.stamp);
    if (reaction.edited > 0)
      head += " " + Glib::ustring::compose(_("(edited %1)"), moment_text(reaction.edited));
    if (reaction.kudos > 0)
      head += " — " + counted("%1 kudos", "%1 kudos", reaction.kudos);
    head_.set_text(head);
    body_.set_text(reaction.body);
    set_margin_start(indent * std::min(reaction.depth, deepest));
    if (Gtk::Widget *row = get_parent())
      set_accessible_name(*row, head + ": " + reaction.body);
  }

private:
  Gtk::Label head_;
  Gtk::Label body_;
};

}  // namespace

ReactionsPage::ReactionsPage()
    : Gtk::Box(Gtk::Orientation::VERTICAL), items_(Gio::ListStore<ReactionItem>::create()),
      send_button_(_("_Send"), true) {
  build_list();
  build_editor();
  append(stack_);
  append(failure_);
  append(editor_);
}

void ReactionsPage::build_list() {
  const auto factory = Gtk::SignalListItemFactory::create();
  factory->signal_setup().connect(
      [](const auto &place) { place->set_child(*Gtk::make_managed<ReactionRow>()); });
  factory->signal_bind().connect([](const auto &place) {
    const auto item = std::dynamic_pointer_cast<ReactionItem>(place->get_item());
    dynamic_cast<ReactionRow &>(*place->get_child()).show(item->reaction());
  });
  list_.set_model(Gtk::NoSelection::create(items_));
  list_.set_factory(factory);
  set_accessible_name(list_, _("Reactions"));
  scroller_.set_child(list_);
  hint_.set_wrap(true);
  hint_.add_css_class("dim-label");
  stack_.add(scroller_, "list");
  stack_.add(hint_, "hint");
  stack_.set_vexpand(true);
}

void ReactionsPage::build_editor() {
  failure_.add_css_class("error");
  failure_.set_wrap(true);
  failure_.set_visible(false);
  prepare_text_field(text_scroller_, text_, _("Your reaction"));
  text_scroller_.set_hexpand(true);
  text_scroller_.set_min_content_height(60);
  send_button_.set_valign(Gtk::Align::END);
  send_button_.add_css_class("suggested-action");
  send_button_.set_tooltip_text(_("Send the reaction (Ctrl+Enter)"));
  send_button_.set_sensitive(false);
  send_button_.signal_clicked().connect([this] { send(); });
  text_.get_buffer()->signal_changed().connect(
      [this] { send_button_.set_sensitive(text_.get_buffer()->get_char_count() > 0); });
  add_key(text_, "<Control>Return", [this] { send(); });
  editor_.append(text_scroller_);
  editor_.append(send_button_);
  editor_.add_css_class("reaction-editor");
}

void ReactionsPage::begin(std::int32_t id) {
  id_ = id;
  items_->remove_all();
  failure_.set_visible(false);
  text_.get_buffer()->set_text("");
  editor_.set_visible(false);
  show_hint(_("Asking the server…"));
}

void ReactionsPage::show_reactions(const std::vector<Reaction> &reactions, bool closed) {
  std::vector<Glib::RefPtr<ReactionItem>> items;
  items.reserve(reactions.size());
  for (const Reaction &reaction : reactions)
    items.push_back(Glib::make_refptr_for_instance(new ReactionItem(reaction)));
  const auto store = std::dynamic_pointer_cast<Gio::ListStore<ReactionItem>>(items_);
  store->splice(0, store->get_n_items(), items);
  editor_.set_visible(!closed);
  if (!reactions.empty())
    stack_.set_visible_child("list");
  else
    show_hint(closed ? _("This spot is closed for reactions.")
                     : _("No reactions yet. Write the first one below."));
}

void ReactionsPage::show_failure(const Glib::ustring &message) {
  show_hint(message);
}

void ReactionsPage::focus_editor() {
  text_.grab_focus();
}

void ReactionsPage::show_hint(const Glib::ustring &text) {
  hint_.set_text(text);
  stack_.set_visible_child("hint");
}

void ReactionsPage::send() {
  const Glib::ustring text = text_.get_buffer()->get_text();
  if (text.empty() || !text_.get_editable())
    return;
  text_.set_editable(false);
  send_button_.set_sensitive(false);
  send_.emit(id_, text.raw());
}

void ReactionsPage::show_sent(const Glib::ustring &failure) {
  text_.set_editable(true);
  failure_.set_text(failure);
  failure_.set_visible(!failure.empty());
  if (failure.empty())
    text_.get_buffer()->set_text("");
  send_button_.set_sensitive(!failure.empty());
}

}  // namespace velkor::app
