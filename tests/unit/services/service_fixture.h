/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the tests of the services share: requests as texts, out messages, cached postings. */
#ifndef VELKOR_TESTS_UNIT_SERVICES_SERVICE_FIXTURE_H
#define VELKOR_TESTS_UNIT_SERVICES_SERVICE_FIXTURE_H

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include <velkor/zox_category.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_string.h>

#include "posting/event_record.h"
#include "support/xml.h"
#include "tests/support/layer_fixtures.h"
#include "tests/support/log_capture.h"

namespace velkor::test {

/** A text as a value to compare. */
inline std::string text_of(const GString *text) {
  return text == nullptr ? "(null)" : std::string(text->str, text->len);
}
inline std::string text_of(const char *text) {
  return text == nullptr ? "(null)" : text;
}
/** The same of a text that is the caller's to free. */
inline std::string taken(ZoxString *text) {
  const OwnedString owned(text);
  return text_of(text);
}
inline OwnedString string_of(const std::string &text) {
  return OwnedString(g_string_new(text.c_str()));
}

/** The place that a service fills with a message. */
class OutMessage {
public:
  OutMessage() = default;
  ~OutMessage() { release(); }
  OutMessage(const OutMessage &) = delete;
  OutMessage &operator=(const OutMessage &) = delete;

  /** The place for a call; it holds "(voorheen)" until it is filled. */
  operator char **() {
    release();
    return &value_;
  }
  [[nodiscard]] std::string text() const { return text_of(value_); }

private:
  void release() {
    if (value_ != before_.data())
      g_free(std::exchange(value_, before_.data()));
  }

  std::string before_ = "(voorheen)";
  char *value_ = before_.data();
};

/** libxml2 keeps its diagnoses to itself on this thread while it lives. */
class QuietXml {
public:
  QuietXml() { xmlSetGenericErrorFunc(nullptr, ignore); }
  ~QuietXml() { xmlSetGenericErrorFunc(nullptr, nullptr); }
  QuietXml(const QuietXml &) = delete;
  QuietXml &operator=(const QuietXml &) = delete;

private:
  static void ignore(void *, const char *, ...) {}
};

/** The tolerant mode while it lives. */
class Tolerance {
public:
  Tolerance() { zox_set_tolerant(1); }
  ~Tolerance() { zox_set_tolerant(0); }
  Tolerance(const Tolerance &) = delete;
  Tolerance &operator=(const Tolerance &) = delete;
};

/** What `action` prints on standard error or standard output. */
template <typename Action>
std::string standard_error_of(const Action &action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}
template <typename Action>
std::string standard_output_of(const Action &action) {
  testing::internal::CaptureStdout();
  action();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

/** A request as "path name=value name=value", in the order sent. */
inline std::string shown(const StubRequest &request) {
  std::string text = request.path;
  for (const auto &[name, value] : request.parameters)
    text.append(" ").append(name).append("=").append(value);
  return text;
}

/** A core with a scripted server, an empty event list and the categories. */
class ServiceTest : public LibraryServerTest {
protected:
  ServiceTest() {
    core->filterlist = zox_filterlist_new();
    core->eventlist = zox_eventlist_new();
    zox_categories_init();
  }

  /** All requests so far, each as shown() tells it. */
  [[nodiscard]] std::vector<std::string> sent() const {
    std::vector<std::string> texts;
    for (const StubRequest &request : server.requests())
      texts.push_back(shown(request));
    return texts;
  }

  /** Puts a posting with a title into the event list. */
  static void cache(gint32 postId, const char *title = "Titel") {
    const OwnedEvent event(zox_event_new());
    event->postId = postId;
    event->title = zox_string_new(title);
    event->poster = zox_string_new("plaatser");
    zox_eventlist_add_or_replace_event(core->eventlist, event.get());
  }

  [[nodiscard]] static OwnedEvent cached(gint32 postId) {
    return OwnedEvent(zox_eventlist_lookup_id(core->eventlist, postId));
  }

  OutMessage message;
  QuietXml quiet;
};

}  // namespace velkor::test

#endif
