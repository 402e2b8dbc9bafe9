/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Details and forum of one posting that are fetched at the same time: the posting gets both. */
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_http_curl.h>

#include <functional>
#include <utility>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

constexpr const char *details_path = "/3.7.3/xml-posts.php";
constexpr const char *forum_path = "/3.7.3/xml-dyn.php";
constexpr gint32 posting = 5;

/** Does something once, in the middle of the first transfer after it was made. */
class Meanwhile {
public:
  explicit Meanwhile(std::function<void()> action) : action_(std::move(action)) {
    zox_http_set_transfer_callback(act, this);
  }
  ~Meanwhile() { zox_http_set_transfer_callback(nullptr, nullptr); }
  Meanwhile(const Meanwhile &) = delete;
  Meanwhile &operator=(const Meanwhile &) = delete;

private:
  static gint act(gint64, gint64, gpointer self) {
    if (const auto action = std::exchange(static_cast<Meanwhile *>(self)->action_, nullptr))
      action();
    return 0;
  }

  std::function<void()> action_;
};

class JoinedFetch : public ServiceTest {
protected:
  JoinedFetch() {
    cache(posting);
    server.reply(details_path,
                 "<PostInfo><Post><Ann>nieuws</Ann><Des>tekst</Des></Post></PostInfo>");
    server.reply(forum_path,
                 "<Forum><Event Code=\"0\"><View>9</View><Reason>dubbel</Reason></Event>"
                 "<Event Code=\"1\"><MessID>3</MessID><Author>anna</Author></Event>"
                 "</Forum>");
  }

  static void fetch_details() { EXPECT_EQ(zox_eventinfo_fetch(posting, nullptr), 0U); }
  static void fetch_forum() { EXPECT_EQ(zox_events_forum_fetch(posting, 0, nullptr), 0U); }

  static void expect_both() {
    const OwnedEvent event = cached(posting);
    EXPECT_EQ(text_of(event->ann), "nieuws");
    EXPECT_EQ(text_of(event->des), "tekst");
    EXPECT_EQ(event->view, 9);
    EXPECT_EQ(text_of(event->reason), "dubbel");
    ASSERT_NE(event->forum, nullptr);
    EXPECT_EQ(g_slist_length(event->forum->reactions), 1U);
  }
};

TEST_F(JoinedFetch, DetailsKeepTheForumThatCameMeanwhile) {
  const Meanwhile meanwhile(fetch_forum);
  fetch_details();
  expect_both();
}

TEST_F(JoinedFetch, AForumKeepsTheDetailsThatCameMeanwhile) {
  const Meanwhile meanwhile(fetch_details);
  fetch_forum();
  expect_both();
}

TEST_F(JoinedFetch, TheRestOfThePostingStaysAsItCameMeanwhile) {
  const auto change_title = [] {
    const OwnedEvent event = cached(posting);
    replace_string(event->title, zox_string_new("Nieuwe titel"));
    event->status = ZOX_STATUS_UNSUPPORTED;
    zox_eventlist_add_or_replace_event(core->eventlist, event.get());
  };
  for (const auto &fetch : {fetch_details, fetch_forum}) {
    cache(posting);
    const Meanwhile meanwhile(change_title);
    fetch();
    EXPECT_EQ(text_of(cached(posting)->title), "Nieuwe titel");
    EXPECT_EQ(cached(posting)->status, ZOX_STATUS_UNSUPPORTED);
  }
}

TEST_F(JoinedFetch, APostingThatLeftTheListMeanwhileIsAddedAgain) {
  const Meanwhile meanwhile([] {
    const OwnedEvent event = cached(posting);
    event->status = ZOX_STATUS_REMOVED;
    zox_eventlist_add_or_replace_event(core->eventlist, event.get());
    zox_eventlist_purge_deleted(core->eventlist);
  });
  fetch_details();
  EXPECT_EQ(text_of(cached(posting)->ann), "nieuws");
}

}  // namespace
}  // namespace velkor::test
