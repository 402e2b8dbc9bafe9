/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/messages_page.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "library/ask.h"
#include "widgets/input.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

constexpr int list_width = 320;

Glib::ustring subject_of(const Message &message) {
  return message.subject.empty() ? Glib::ustring(_("(no subject)"))
                                 : Glib::ustring(message.subject);
}

Glib::ustring facts_of(const Message &message) {
  return Glib::ustring::compose(message.sent ? _("To %1") : _("From %1"),
                                Glib::ustring(message.other)) +
         " — " + moment_text(message.stamp);
}

Glib::ustring failure_of(const MailResult &result) {
  return result.unknown_addressee ? Glib::ustring(_("The server knows no user of this name."))
                                  : Glib::ustring(result.failure);
}

}  // namespace

MessagesPage::MessagesPage(Session &session, Notice &notice,
                           const std::filesystem::path &marks_file)
    : Page(_("Messages")), session_(session), notice_(notice), marks_(marks_file),
      fetch_(_("_Fetch"), true), write_(_("_New message"), true), answer_(_("_Answer"), true),
      delete_(_("_Delete"), true), list_(_("Messages")), hint_(hint_label("")) {
  build_title_line();
  build_message();
  list_.signal_chosen().connect([this] { show_chosen(); });
  editor_.signal_send().connect([this](const Draft &draft) { send(draft); });
  editor_.signal_discard().connect([this] { discard(); });
  split_.set_start_child(list_);
  split_.set_end_child(stack_);
  split_.set_resize_start_child(false);
  split_.set_shrink_start_child(false);
  split_.set_shrink_end_child(false);
  split_.set_position(list_width);
  split_.set_vexpand(true);
  list_.set_size_request(list_width / 2, -1);
  append(status_);
  append(split_);
  show_state();
}

MessagesPage::~MessagesPage() {
  for (const SharedCancellation &request : requests_)
    request->cancel();
}

void MessagesPage::build_title_line() {
  fetch_.set_tooltip_text(_("Fetch the messages that wait on the server"));
  write_.set_tooltip_text(_("Write a message (Ctrl+N)"));
  delete_.set_tooltip_text(_("Delete the message (Delete)"));
  fetch_.signal_clicked().connect([this] { fetch(); });
  write_.signal_clicked().connect([this] { write({}); });
  answer_.signal_clicked().connect([this] { answer(); });
  delete_.signal_clicked().connect([this] { remove(); });
  for (Gtk::Button *button : {&fetch_, &write_, &answer_, &delete_}) {
    name_by_label_alone(*button);
    add_to_title_line(*button);
  }
  add_key(*this, "<Control>n", [this] { write({}); });
  list_.signal_delete().connect([this] { remove(); });
}

void MessagesPage::build_message() {
  subject_.add_css_class("title-3");
  facts_.add_css_class("dim-label");
  for (Gtk::Label *label : {&subject_, &facts_, &body_}) {
    label->set_xalign(0);
    label->set_wrap(true);
    label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label->set_selectable(true);
    label->set_focusable(false);
    message_.append(*label);
  }
  message_.add_css_class("posting");
  scroller_.set_child(message_);
  scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  stack_.add(*hint_, "hint");
  stack_.add(scroller_, "message");
  stack_.add(editor_, "editor");
}

MailFunction MessagesPage::taking(MailFunction done) {
  return [this, done = std::move(done)](const MailResult &result) {
    take(result.messages);
    done(result);
    if (!result.not_saved.empty())
      status_.tell_failure(Glib::ustring::compose(_("The messages could not be saved: %1"),
                                                  Glib::ustring(result.not_saved)));
  };
}

void MessagesPage::keep(SharedCancellation request) {
  std::erase_if(requests_, [](const auto &kept) { return kept.use_count() == 1; });
  requests_.push_back(std::move(request));
}

void MessagesPage::run(Step step, MailFunction done) {
  keep(ask(session_, std::move(step), taking(std::move(done))));
}

void MessagesPage::begin() {
  if (!writing_)
    list_.focus_list();
  run([] { return MailResult{.messages = read_messages()}; },
      [this](const MailResult & /*result*/) {
        if (!writing_)
          list_.focus_list();
      });
}

void MessagesPage::take(const std::vector<Message> &messages) {
  read_ = true;
  messages_ = messages;
  std::vector<ListEntry> entries;
  entries.reserve(messages.size());
  for (const Message &message : messages)
    entries.push_back({message.id, subject_of(message), facts_of(message),
                       marks_.is_unread(message) ? _("Unread") : ""});
  list_.set_entries(entries);
  show_state();
}

const Message *MessagesPage::chosen() const {
  const std::optional<std::uint64_t> id = list_.chosen();
  const auto place = id ? std::ranges::find(messages_, *id, &Message::id) : messages_.end();
  return place == messages_.end() ? nullptr : &*place;
}

void MessagesPage::fetch() {
  fetch_.set_sensitive(false);
  status_.tell(_("Asking the server…"));
  keep(fetch_messages(session_, taking([this](const MailResult &result) {
                        fetch_.set_sensitive(true);
                        if (!result.failure.empty())
                          status_.tell_failure(failure_of(result));
                        else if (result.received == 0)
                          status_.tell(_("No new messages."));
                        else
                          show_received(result.received);
                      })));
}

void MessagesPage::show_received(std::uint32_t count) {
  status_.tell(counted("%1 new message.", "%1 new messages.", count));
  if (!writing_)
    list_.focus_list();
}

void MessagesPage::write_to(const std::string &user) {
  write({.to = user});
}

/** What has been begun is not thrown away for another message. */
void MessagesPage::write(const Draft &draft) {
  writing_ = true;
  show_state();
  if (!editor_.has_text())
    editor_.begin(draft);
  else if (draft != Draft{})
    status_.tell(_("You have begun another message: send or discard it first."));
}

void MessagesPage::answer() {
  if (const Message *message = chosen())
    write(answer_to(*message));
}

void MessagesPage::send(const Draft &draft) {
  const auto sent = [this](const MailResult &result) {
    const Glib::ustring failure = failure_of(result);
    editor_.show_sent(failure);
    if (!failure.empty())
      return;
    writing_ = false;
    status_.tell(_("The message has been sent."));
    show_state();
    list_.focus_list();
  };
  keep(send_message(session_, draft, taking(sent)));
}

void MessagesPage::discard() {
  writing_ = false;
  editor_.begin({});
  show_state();
  list_.focus_list();
}

void MessagesPage::remove() {
  const Message *message = chosen();
  if (!message)
    return;
  const guint place = list_.place();
  const auto deleted = std::make_shared<std::optional<DeletedMessage>>();
  run(
      [id = message->id, deleted] {
        Deletion deletion = delete_message(id);
        *deleted = std::move(deletion.message);
        return std::move(deletion.result);
      },
      [this, place, deleted](const MailResult &result) {
        list_.choose(place);
        if (!result.failure.empty())
          return status_.tell_failure(result.failure);
        if (*deleted)
          notice_.show_text(_("The message is deleted"),
                            [this, message = **deleted] { restore(message); });
      });
}

void MessagesPage::restore(const DeletedMessage &message) {
  run([message] { return restore_message(message); }, [](const MailResult & /*result*/) {});
}

void MessagesPage::show_chosen() {
  writing_ = false;  // what was begun is kept
  const Message *message = chosen();
  if (message) {
    if (const std::string failure = marks_.add(*message); !failure.empty())
      status_.tell_failure(failure);
    list_.unmark(message->id);
    subject_.set_text(subject_of(*message));
    facts_.set_text(facts_of(*message));
    body_.set_text(message->body);
  }
  show_state();
}

void MessagesPage::show_state() {
  const bool is_chosen = list_.chosen().has_value();
  answer_.set_sensitive(is_chosen);
  delete_.set_sensitive(is_chosen);
  if (writing_)
    return stack_.set_visible_child("editor");
  if (is_chosen)
    return stack_.set_visible_child("message");
  if (!read_)
    hint_->set_text(_("Reading the messages…"));
  else if (!messages_.empty())
    hint_->set_text(_("Choose a message on the left to read it."));
  else
    hint_->set_text(_("No messages yet. Fetch asks the server for those that wait; New message "
                      "writes one."));
  stack_.set_visible_child("hint");
}

}  // namespace velkor::app
