/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/profile_page.h"

#include "widgets/translation.h"

namespace velkor::app {
namespace {

void make_selectable(Gtk::Label &label) {
  label.set_xalign(0);
  label.set_wrap(true);
  label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
  label.set_selectable(true);
  label.set_focusable(false);
}

}  // namespace

ProfilePage::ProfilePage(Session &session)
    : Page(_("Profile")), session_(session), write_button_(_("_Write a message"), true),
      hint_(hint_label("")) {
  name_by_label_alone(write_button_);
  write_button_.signal_clicked().connect([this] { write_.emit(name_); });
  add_to_title_line(write_button_);
  title_.add_css_class("title-2");
  make_selectable(title_);
  make_selectable(info_);
  facts_.set_column_spacing(18);
  facts_.set_row_spacing(4);
  for (Gtk::Widget *part : std::initializer_list<Gtk::Widget *>{&title_, &facts_, &info_})
    body_.append(*part);
  body_.add_css_class("form");
  scroller_.set_child(body_);
  scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  stack_.add(*hint_, "hint");
  stack_.add(scroller_, "profile");
  stack_.set_vexpand(true);
  append(stack_);
}

ProfilePage::~ProfilePage() {
  if (request_)
    request_->cancel();
}

void ProfilePage::set_user(const std::string &name) {
  name_ = name;
}

void ProfilePage::begin() {
  if (request_)
    request_->cancel();
  show_hint(_("Asking the server…"));
  write_button_.grab_focus();
  request_ = fetch_profile(session_, name_, [this](const ProfileReply &reply) { take(reply); });
}

void ProfilePage::take(const ProfileReply &reply) {
  if (reply.unknown)
    show_hint(_("The server knows no user of this name."));
  else if (!reply.failure.empty())
    show_hint(reply.failure);
  else
    show_profile(reply.profile);
}

void ProfilePage::show_profile(const Profile &profile) {
  while (Gtk::Widget *child = facts_.get_first_child())
    facts_.remove(*child);
  fact_count_ = 0;
  title_.set_text(profile.name);
  add_count(_("Spots"), profile.spots);
  add_count(_("Posts"), profile.posts);
  add_count(_("Kudos"), profile.kudos);
  add_count(_("Kudos given"), profile.kudos_given);
  add_count(_("Kudos received"), profile.kudos_received);
  add_count(_("Rank"), profile.rank);
  add_fact(_("Date"), profile.stamp == 0 ? "" : moment_text(profile.stamp));
  add_fact(_("Web site"), profile.site);
  add_fact(_("E-mail"), profile.email);
  add_fact(_("Messenger"), profile.messenger);
  add_fact(_("Provider"), profile.provider);
  add_fact(_("News server"), profile.news_server);
  add_fact(_("Hobby"), profile.hobby);
  info_.set_text(profile.info);
  stack_.set_visible_child("profile");
}

/** Nothing is said about what is not known. */
void ProfilePage::add_fact(const Glib::ustring &name, const Glib::ustring &value) {
  if (value.empty())
    return;
  auto *label = Gtk::make_managed<Gtk::Label>(name);
  label->add_css_class("dim-label");
  label->set_xalign(1);
  auto *text = Gtk::make_managed<Gtk::Label>(value);
  make_selectable(*text);
  facts_.attach(*label, 0, fact_count_);
  facts_.attach(*text, 1, fact_count_++);
}

void ProfilePage::add_count(const Glib::ustring &name, std::uint32_t number) {
  add_fact(name, number_text(number));
}

void ProfilePage::show_hint(const Glib::ustring &text) {
  hint_->set_text(text);
  stack_.set_visible_child("hint");
}

}  // namespace velkor::app
