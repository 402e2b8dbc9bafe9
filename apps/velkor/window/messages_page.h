/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The private messages: reading, writing, deleting, and fetching what waits on the server. */
#ifndef VELKOR_APP_WINDOW_MESSAGES_PAGE_H
#define VELKOR_APP_WINDOW_MESSAGES_PAGE_H

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtkmm.h>

#include "library/mailbox.h"
#include "library/session.h"
#include "model/read_marks.h"
#include "widgets/entry_list.h"
#include "widgets/message_editor.h"
#include "widgets/notice.h"
#include "widgets/page.h"
#include "widgets/status_line.h"

namespace velkor::app {

class MessagesPage : public Page {
public:
  /** @param marks_file  where it is kept which messages have been read */
  MessagesPage(Session &session, Notice &notice, const std::filesystem::path &marks_file);
  ~MessagesPage() override;
  MessagesPage(const MessagesPage &) = delete;
  MessagesPage &operator=(const MessagesPage &) = delete;

  void begin() override;
  /** Begins a message to that user. */
  void write_to(const std::string &user);

private:
  using Step = std::function<MailResult()>;

  void build_title_line();
  void build_message();
  /** Runs a step on the core's thread. */
  void run(Step step, MailFunction done);
  /** What takes the messages that a request brings, before `done` is called. */
  MailFunction taking(MailFunction done);
  void keep(SharedCancellation request);
  void take(const std::vector<Message> &messages);
  void fetch();
  void show_received(std::uint32_t count);
  void write(const Draft &draft);
  void answer();
  void send(const Draft &draft);
  void discard();
  void remove();
  void restore(const DeletedMessage &message);
  [[nodiscard]] const Message *chosen() const;
  void show_chosen();
  void show_state();

  Session &session_;
  Notice &notice_;
  ReadMarks marks_;
  std::vector<SharedCancellation> requests_;
  bool read_ = false;
  std::vector<Message> messages_;
  bool writing_ = false;
  Gtk::Button fetch_;
  Gtk::Button write_;
  Gtk::Button answer_;
  Gtk::Button delete_;
  StatusLine status_;
  Gtk::Paned split_{Gtk::Orientation::HORIZONTAL};
  EntryList list_;
  Gtk::Stack stack_;
  Gtk::Label *hint_;
  Gtk::ScrolledWindow scroller_;
  Gtk::Box message_{Gtk::Orientation::VERTICAL, 12};
  Gtk::Label subject_;
  Gtk::Label facts_;
  Gtk::Label body_;
  MessageEditor editor_;
};

}  // namespace velkor::app

#endif
