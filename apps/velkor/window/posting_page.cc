/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/posting_page.h"

#include <utility>

#include "widgets/accessible_name.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

void remove_children(Gtk::Box &box) {
  while (Gtk::Widget *child = box.get_first_child())
    box.remove(*child);
}

void remove_children(Gtk::Grid &grid) {
  while (Gtk::Widget *child = grid.get_first_child())
    grid.remove(*child);
}

Gtk::Label *selectable(const Glib::ustring &text) {
  auto *label = Gtk::make_managed<Gtk::Label>(text);
  label->set_selectable(true);
  label->set_focusable(false);
  label->set_wrap(true);
  label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
  label->set_xalign(0);
  return label;
}

template <typename Texts>
Glib::ustring joined(const Texts &texts) {
  Glib::ustring words;
  for (const auto &text : texts)
    words += (words.empty() ? "" : ", ") + Glib::ustring(text);
  return words;
}

}  // namespace

PostingPage::PostingPage()
    : Gtk::Box(Gtk::Orientation::VERTICAL), kudos_(_("Give _kudos"), true),
      warn_(_("Wa_rn…"), true), profile_(_("P_rofile"), true), link_(_("Open _link"), true),
      image_(_("Open _image"), true), hidden_button_(_("Show it in the list")) {
  build_header();
  facts_.set_column_spacing(18);
  facts_.set_row_spacing(4);
  facts_.set_valign(Gtk::Align::START);
  texts_.set_hexpand(true);
  columns_.append(facts_);
  columns_.append(texts_);
  failure_.add_css_class("error");
  failure_.set_wrap(true);
  failure_.set_xalign(0);
  refusal_.add_css_class("error");
  refusal_.set_wrap(true);
  refusal_.set_xalign(0);
  hidden_text_.set_wrap(true);
  hidden_text_.set_xalign(0);
  hidden_text_.add_css_class("dim-label");
  hidden_button_.set_action_name("win.show-in-list");
  hidden_.append(hidden_text_);
  hidden_.append(hidden_button_);
  body_.add_css_class("posting");
  for (Gtk::Widget *part : std::initializer_list<Gtk::Widget *>{&title_, &hidden_, &refusal_,
                                                                &warning_, &failure_, &columns_})
    body_.append(*part);
  scroller_.set_child(body_);
  scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  stack_.add(scroller_, "posting", _("Spot"));
  stack_.add(reactions_, "reactions", _("Reactions"));
  stack_.set_vexpand(true);
  switcher_.set_stack(stack_);
  append(header_);
  append(stack_);
  add_css_class("posting-page");
}

void PostingPage::build_header() {
  title_.add_css_class("title-3");
  title_.set_wrap(true);
  title_.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
  title_.set_xalign(0);
  title_.set_selectable(true);
  title_.set_focusable(false);
  watch_.set_label(_("_Watch"));
  watch_.set_use_underline(true);
  watch_.set_tooltip_text(_("Keep this spot on the watchlist (Ctrl+D)"));
  watch_.set_action_name("win.watch");
  kudos_.set_action_name("win.kudos");
  warn_.set_action_name("win.warn");
  warn_.set_tooltip_text(_("Tell the moderators what is wrong with this spot"));
  profile_.set_action_name("win.profile");
  profile_.set_tooltip_text(_("Show the profile of the poster (Ctrl+P)"));
  link_.set_action_name("win.open-link");
  image_.set_action_name("win.open-image");
  close_.set_icon_name("window-close-symbolic");
  close_.set_tooltip_text(_("Close the spot (Escape)"));
  close_.set_action_name("win.close-posting");
  set_accessible_name(close_, _("Close the spot"));
  close_.add_css_class("flat");
  auto *gap = Gtk::make_managed<Gtk::Box>();
  gap->set_hexpand(true);
  header_.add_css_class("posting-header");
  for (Gtk::Widget *part :
       std::initializer_list<Gtk::Widget *>{&switcher_, &spinner_, gap, &watch_, &kudos_, &warn_,
                                            &profile_, &link_, &image_, &close_})
    header_.append(*part);
}

void PostingPage::begin(std::int32_t id) {
  details_ = {.id = id};
  title_.set_text(Glib::ustring::compose(_("Posting %1"), id));
  failure_.set_visible(false);
  show_refusal("");
  warning_.set_visible(false);
  link_.set_visible(false);
  image_.set_visible(false);
  remove_children(facts_);
  remove_children(texts_);
  spinner_.start();
  stack_.set_visible_child("posting");
  scroller_.get_vadjustment()->set_value(0);
  reactions_.begin(id);
}

void PostingPage::show_reply(const PostingReply &reply, const Vocabulary &words) {
  const bool failed = reply.stage == PostingReply::Stage::failed;
  if (failed || reply.stage == PostingReply::Stage::complete)
    spinner_.stop();
  if (failed) {
    failure_.set_text(reply.failure);
    failure_.set_visible(true);
    reactions_.show_failure(reply.failure);
    return;
  }
  details_ = reply.details;
  show_details(words);
  if (reply.stage == PostingReply::Stage::complete)
    reactions_.show_reactions(details_.reactions, details_.closed);
}

void PostingPage::show_details(const Vocabulary &words) {
  title_.set_text(details_.title);
  link_.set_visible(!details_.link.empty());
  link_.set_tooltip_text(details_.link);
  image_.set_visible(!details_.image.empty());
  image_.set_tooltip_text(details_.image);
  remove_children(facts_);
  fact_count_ = 0;
  add_fact(_("Category"), details_.category);
  for (const TagGroup &group : details_.tags)
    add_fact(group.name.empty() ? Glib::ustring(_("Tags")) : Glib::ustring(group.name),
             joined(group.tags));
  add_fact(_("Own tag"), details_.free_tag);
  add_fact(_("Poster"), details_.poster);
  add_fact(_("Date"), moment_text(details_.stamp));
  add_fact(_("Status"), details_.status);
  add_fact(_("Removed because"), details_.reason);
  add_fact(_("Rating"), details_.rating == 0 ? "" : number_text(details_.rating));
  add_fact(_("Kudos"), details_.kudos == 0 ? "" : number_text(details_.kudos));
  add_fact(_("Views"), details_.views == 0 ? "" : number_text(details_.views));
  add_fact(_("Newsgroups"), newsgroup_names(words));
  add_fact(_("File name"), details_.file_name);
  add_fact(_("Files"), details_.files == 0 ? "" : number_text(details_.files));
  add_fact(_("Par files"), details_.par_files == 0 ? "" : number_text(details_.par_files));
  remove_children(texts_);
  add_text(_("Announcement"), details_.announcement);
  add_text(_("Description"), details_.description);
  add_tracks();
  add_text(_("Signature"), details_.signature);
}

/** Nothing is said about what is not known. */
void PostingPage::add_fact(const Glib::ustring &name, const Glib::ustring &value) {
  if (value.empty())
    return;
  auto *label = Gtk::make_managed<Gtk::Label>(name);
  label->add_css_class("dim-label");
  label->set_xalign(1);
  label->set_valign(Gtk::Align::START);
  facts_.attach(*label, 0, fact_count_);
  Gtk::Label *text = selectable(value);
  text->set_max_width_chars(32);
  facts_.attach(*text, 1, fact_count_++);
}

void PostingPage::add_text(const Glib::ustring &name, const std::string &text) {
  if (text.empty())
    return;
  auto *heading = Gtk::make_managed<Gtk::Label>(name);
  heading->add_css_class("heading");
  heading->set_xalign(0);
  texts_.append(*heading);
  texts_.append(*selectable(text));
}

void PostingPage::add_tracks() {
  std::string lines;
  for (const std::string &track : details_.tracks)
    lines += (lines.empty() ? "" : "\n") + track;
  add_text(_("Tracks"), lines);
}

Glib::ustring PostingPage::newsgroup_names(const Vocabulary &words) const {
  std::vector<std::string> names;
  for (const std::string &number : details_.newsgroups) {
    const auto place = words.newsgroups.find(number);
    names.push_back(place == words.newsgroups.end() ? number : place->second);
  }
  return joined(names);
}

void PostingPage::show_reactions() {
  stack_.set_visible_child("reactions");
  reactions_.focus_editor();
}

void PostingPage::show_hidden(const Glib::ustring &reason) {
  hidden_text_.set_text(reason);
  hidden_.set_visible(!reason.empty());
}

void PostingPage::show_refusal(const Glib::ustring &refusal) {
  refusal_.set_text(refusal);
  refusal_.set_visible(!refusal.empty());
}

void PostingPage::begin_warning() {
  stack_.set_visible_child("posting");
  scroller_.get_vadjustment()->set_value(0);
  warning_.begin();
}

void PostingPage::set_watched(bool watched) {
  watch_.set_active(watched);
}

}  // namespace velkor::app
