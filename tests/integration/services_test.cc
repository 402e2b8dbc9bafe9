/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The services of the library as members of the stand-in server meet them. */
#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include <velkor/velkor.h>

#include "posting/event_record.h"
#include "services/profile_document.h"
#include "support/slist.h"
#include "support/text.h"
#include "tests/support/layer_fixtures.h"
#include "tests/support/log_capture.h"
#include "tests/support/server_process.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<gint32> steps;

gint note_step(gint32 step) {
  steps.push_back(step);
  return 0;
}

std::string text_of(const ZoxString *text) {
  return text == nullptr ? "(geen)" : text->str;
}

std::vector<std::string> texts_of(GSList *list) {
  std::vector<std::string> texts;
  for (const ZoxString *text : Items<const ZoxString>(list))
    texts.push_back(text_of(text));
  return texts;
}

/** What a service says to its caller besides the code. */
class Said {
public:
  ~Said() { g_free(text_); }
  Said() = default;
  Said(const Said &) = delete;
  Said &operator=(const Said &) = delete;
  /** The place to be filled. */
  char **place() {
    g_free(std::exchange(text_, nullptr));
    return &text_;
  }
  [[nodiscard]] std::string text() const { return text_ == nullptr ? "(niets)" : text_; }

private:
  char *text_ = nullptr;
};

/** The library with its tables, and the member "demo" logged in; "anna" is another member. */
class Services : public LibraryTest {
protected:
  Services() : server({"--postings", "20", "--chunk-size", "15"}) {
    zox_file_set_lib_dir(ServerProcess::plugin_directory());
    zox_http_set_hosts(server.host().c_str(), server.dump_host().c_str());
    server.add_account("anna", "kwartel");
    core->filterlist = zox_filterlist_new();
    zox_filterlist_load(core->filterlist);
    zox_categories_init();
    zox_tags_init();
    core->eventlist = zox_eventlist_new();
    become(ServerProcess::user, ServerProcess::password);
  }
  ~Services() override { zox_http_set_hosts(nullptr, nullptr); }

  static void become(const char *name, const char *password) {
    replace_string(core->config->username, zox_string_new(name));
    replace_string(core->config->password, zox_string_new(password));
  }
  static void become_anna() { become("anna", "kwartel"); }
  static void become_demo() { become(ServerProcess::user, ServerProcess::password); }

  ZoxErrorCode update() {
    return zox_events_fetch(nullptr, nullptr, nullptr, said.place(), nullptr);
  }

  static OwnedEvent cached(gint32 postId) {
    return OwnedEvent(zox_eventlist_lookup_id(core->eventlist, postId));
  }

  static bool are_cached(const std::vector<std::int64_t> &ids) {
    return std::ranges::all_of(
        ids, [](std::int64_t id) { return cached(static_cast<gint32>(id)) != nullptr; });
  }

  gint32 add_posting(const ServerProcess::Parameters &fields) {
    return static_cast<gint32>(server.add_posting(fields));
  }

  /** A posting of anna's that is in the cache. */
  gint32 cached_posting() {
    const gint32 id = add_posting({{"Title", "Van anna"}, {"Poster", "anna"}, {"Kudos", "12"}});
    EXPECT_EQ(zox_eventinfo_fetch(id, said.place()), 0U);
    return id;
  }

  ServerProcess server;
  Said said;
};

TEST_F(Services, UpdatesBringEverythingAndThenWhatIsNew) {
  ASSERT_EQ(update(), 0U);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 20U);
  EXPECT_EQ(update(), 5U);
  const ChangedData changed = server.advance({.added = 2, .seconds = 60});
  ASSERT_EQ(update(), 0U);
  EXPECT_TRUE(are_cached(changed.added));
}

/** Stops a transfer once the server has seen the second request, which is that of a dump. */
gint stop_at_the_dump(gint64, gint64, gpointer data) {
  return static_cast<ServerProcess *>(data)->requests().size() > 1 ? 1 : 0;
}

TEST_F(Services, AStoppedUpdateLeavesEverythingToTheNextOne) {
  ASSERT_EQ(update(), 0U);
  const gint64 last_check = core->config->lastCheck;
  const ChangedData changed = server.advance({.added = 2, .seconds = 60});
  server.fault("/3.7.3/dumps/", "stall", 1);
  server.forget_requests();
  zox_http_set_transfer_callback(stop_at_the_dump, &server);
  EXPECT_EQ(update(), 1U);
  zox_http_set_transfer_callback(nullptr, nullptr);
  EXPECT_EQ(core->config->lastCheck, last_check);
  EXPECT_FALSE(are_cached(changed.added));
  ASSERT_EQ(update(), 0U);
  EXPECT_TRUE(are_cached(changed.added));
}

TEST_F(Services, DetailsOfAPostingThatIsNotCached) {
  const gint32 id = add_posting({{"Title", "Lang & breed"},
                                 {"Poster", "anna"},
                                 {"Cat", "1"},
                                 {"Ann", "straks"},
                                 {"Des", "Een ]]> beschrijving"},
                                 {"Sig", "Groet"},
                                 {"Files", "7"}});
  ASSERT_EQ(zox_eventinfo_fetch(id, said.place()), 0U);
  const OwnedEvent event = cached(id);
  ASSERT_NE(event, nullptr);
  EXPECT_EQ(text_of(event->title), "Lang & breed");
  EXPECT_EQ(event->cat, 1);
  EXPECT_EQ(text_of(event->ann), "straks");
  EXPECT_EQ(text_of(event->des), "Een ]]> beschrijving");
  EXPECT_EQ(text_of(event->sig), "Groet");
  EXPECT_EQ(event->files, 7);
  EXPECT_TRUE(std::filesystem::exists(cache_file("velkor.posts.gz")));
}

TEST_F(Services, AFailedFetchLeavesTheCachedPosting) {
  const gint32 id = cached_posting();
  server.change_posting(id, {{"Des", "Nieuw"}});
  server.fault("/3.7.3/xml-posts.php", "message", 1, "Onderhoud");
  EXPECT_EQ(zox_eventinfo_fetch(id, said.place()), 29U);
  EXPECT_THAT(said.text(), HasSubstr("Onderhoud"));
  EXPECT_EQ(cached(id)->des, nullptr);
  EXPECT_EQ(zox_eventinfo_fetch(id, said.place()), 0U);
  EXPECT_EQ(text_of(cached(id)->des), "Nieuw");
}

TEST_F(Services, APostingThatNobodyHasIsGone) {
  const LogCapture log;
  EXPECT_EQ(zox_eventinfo_fetch(99999, said.place()), 30U);
}

using ServicesForum = Services;

TEST_F(ServicesForum, AReactionAppearsInTheNextFetch) {
  const gint32 id = cached_posting();
  ASSERT_EQ(zox_events_forum_post("een <b>\ntwee", id, 0, said.place()), 0U);
  ASSERT_EQ(zox_events_forum_fetch(id, 0, said.place()), 0U);
  const OwnedEvent event = cached(id);
  ASSERT_NE(event->forum, nullptr);
  EXPECT_EQ(event->kudos, 12);
  ASSERT_EQ(g_slist_length(event->forum->reactions), 1U);
  const auto *reaction = static_cast<const ZoxReactie *>(event->forum->reactions->data);
  EXPECT_EQ(text_of(reaction->author), "demo");
  EXPECT_THAT(text_of(reaction->body), ::testing::MatchesRegex("een <b>\r?\ntwee"));
  EXPECT_GT(reaction->stamp, 0);
  EXPECT_EQ(reaction->edit, 0);
}

/** "author: body", with "> N" for the reaction that is answered. */
std::vector<std::string> reactions_of(const ZoxEvent &event) {
  std::vector<std::string> texts;
  for (const ZoxReactie *reaction : Items<const ZoxReactie>(event.forum->reactions)) {
    const std::string answered =
        reaction->reply == 0 ? "" : " > " + std::to_string(reaction->reply);
    texts.push_back(text_of(reaction->author) + ": " + text_of(reaction->body) + answered);
  }
  return texts;
}

/** The ids of the reactions as a fetch brings them, in decimal. */
std::vector<std::string> fetched_reactions(gint32 id) {
  EXPECT_EQ(zox_events_forum_fetch(id, 0, nullptr), 0U);
  const OwnedEvent event(zox_eventlist_lookup_id(core->eventlist, id));
  std::vector<std::string> ids;
  for (const ZoxReactie *reaction : Items<const ZoxReactie>(event->forum->reactions))
    ids.push_back(std::to_string(reaction->messId));
  return ids;
}

TEST_F(ServicesForum, AnswersEditsAndWithdrawalsAreSeen) {
  const gint32 id = cached_posting();
  ASSERT_EQ(zox_events_forum_post("eerste", id, 0, said.place()), 0U);
  become_anna();
  ASSERT_EQ(zox_events_forum_post("tweede", id, 0, said.place()), 0U);
  const std::vector<std::string> ids = fetched_reactions(id);
  ASSERT_EQ(ids.size(), 2U);
  server.command(
      "POST", "/reaction",
      {{"posting", std::to_string(id)}, {"user", "anna"}, {"body", "derde"}, {"reply", ids[0]}});
  ASSERT_EQ(zox_events_forum_fetch(id, 0, said.place()), 0U);
  EXPECT_THAT(reactions_of(*cached(id)),
              ElementsAre("demo: eerste", "anna: tweede", "anna: derde > " + ids[0]));
  server.command("DELETE", "/reaction", {{"id", ids[1]}});
  server.command("POST", "/reaction", {{"id", ids[0]}, {"body", "verbeterd"}});
  ASSERT_EQ(zox_events_forum_fetch(id, 0, said.place()), 0U);
  const OwnedEvent event = cached(id);
  EXPECT_THAT(reactions_of(*event), ElementsAre("demo: verbeterd", "anna: derde > " + ids[0]));
  EXPECT_GT(static_cast<const ZoxReactie *>(event->forum->reactions->data)->edit, 0);
  const auto *last = static_cast<const ZoxReactie *>(g_slist_last(event->forum->reactions)->data);
  EXPECT_GE(last->kudos, 12U) << "the author's kudos";
}

using ServicesWatchlist = Services;

TEST_F(ServicesWatchlist, ComesBackWithItsPostings) {
  const gint32 own = add_posting({{"Title", "Volgen"}, {"Poster", "anna"}});
  zox_watchlist_add(1);
  zox_watchlist_add(own);
  ASSERT_EQ(zox_watchlist_upload(said.place()), 0U);
  zox_watchlist_clear();
  zox_watchlist_add(2);
  ASSERT_EQ(zox_watchlist_download(said.place()), 0U);
  EXPECT_THAT(texts_of(zox_watchlist_get()), ElementsAre("2", "1", std::to_string(own)));
  EXPECT_EQ(text_of(cached(own)->title), "Volgen");
}

TEST_F(ServicesWatchlist, IsOneForEachMember) {
  zox_watchlist_add(1);
  ASSERT_EQ(zox_watchlist_upload(said.place()), 0U);
  zox_watchlist_clear();
  become_anna();
  EXPECT_EQ(zox_watchlist_download(said.place()), 0U);
  EXPECT_EQ(zox_watchlist_get(), nullptr);
}

TEST_F(ServicesWatchlist, PassesOverAPostingThatIsGone) {
  const LogCapture log;
  zox_watchlist_add(99999);
  zox_watchlist_add(1);
  ASSERT_EQ(zox_watchlist_upload(said.place()), 0U);
  zox_watchlist_clear();
  EXPECT_EQ(zox_watchlist_download(said.place()), 0U);
  EXPECT_THAT(texts_of(zox_watchlist_get()), ElementsAre("1"));
  EXPECT_THAT(log.warnings(), ::testing::Contains(HasSubstr("posting 99999 valt niet")));
}

class ServicesMail : public Services {
protected:
  /** Another member at another machine. */
  void forget_mail() {
    zox_mail_free(std::exchange(core->mail, nullptr));
    std::filesystem::remove(cache_file("velkor.mail"));
  }
  ZoxErrorCode send(const char *to, const char *subject, const char *body) {
    ZoxBericht *message = zox_mail_bericht_new(to, subject, body, 0);
    const ZoxErrorCode code = zox_mail_post(message, said.place());
    if (code != 0)
      zox_mail_bericht_free(message);
    return code;
  }
  guint32 waiting() {
    guint32 waiting = 2;
    EXPECT_EQ(zox_mail_check(&waiting, said.place()), 0U);
    return waiting;
  }
};

TEST_F(ServicesMail, GoesFromOneMemberToTheOther) {
  EXPECT_EQ(send("anna", "", "een ]]>\ntwee & drie"), 0U);
  ASSERT_EQ(zox_mail_get_num_messages(), 1U);
  const auto *sent = static_cast<const ZoxBericht *>(zox_mail_get()->data);
  EXPECT_EQ(text_of(sent->body), "een ]]>\r\n<BR />twee & drie");
  EXPECT_EQ(sent->code, 2U);
  EXPECT_EQ(waiting(), 0U);

  become_anna();
  forget_mail();
  EXPECT_EQ(waiting(), 1U);
  guint32 count = 0;
  ASSERT_EQ(zox_mail_fetch(&count, said.place()), 0U);
  EXPECT_EQ(count, 1U);
  ASSERT_EQ(zox_mail_get_num_messages(), 1U);
  const auto *received = static_cast<const ZoxBericht *>(zox_mail_get()->data);
  EXPECT_EQ(text_of(received->from), "demo");
  EXPECT_EQ(text_of(received->subject), "");
  EXPECT_EQ(text_of(received->body), "een ]]>\ntwee & drie");
  EXPECT_EQ(received->code, 1U);
  EXPECT_GT(received->stamp, 0);

  EXPECT_EQ(waiting(), 0U);
  EXPECT_EQ(zox_mail_fetch(&count, said.place()), 11U) << "the server keeps nothing that was read";
  EXPECT_EQ(zox_mail_get_num_messages(), 1U);
}

TEST_F(ServicesMail, StaysWithTheSenderWhenNobodyHasThatName) {
  EXPECT_EQ(send("niemand", "s", "b"), static_cast<ZoxErrorCode>(-1));
  EXPECT_EQ(zox_mail_get_num_messages(), 0U);
}

using ServicesCommunity = Services;

TEST_F(ServicesCommunity, KudosAreGivenAndCounted) {
  const gint32 id = cached_posting();
  ASSERT_EQ(zox_kudos_give(id, 3, said.place()), 0U);
  gint32 all = 0;
  gint32 own = 0;
  ASSERT_EQ(zox_kudos_get(id, &all, &own, said.place()), 0U);
  EXPECT_EQ(all, 15);
  EXPECT_EQ(own, 3);
}

TEST_F(ServicesCommunity, AWarningIsTakenOnce) {
  const gint32 id = cached_posting();
  ASSERT_EQ(zox_events_forum_post("reactie", id, 0, said.place()), 0U);
  const std::vector<std::string> reactions = fetched_reactions(id);
  ASSERT_EQ(reactions.size(), 1U);
  const gint32 reaction = leading_integer(reactions.front().c_str());
  gint32 number = 0;
  EXPECT_EQ(zox_modje_send(id, 0, "spam & zo", &number, said.place()), 0U);
  EXPECT_EQ(number, 1);
  EXPECT_EQ(zox_modje_send(id, 0, "spam & zo", &number, said.place()), 31U);
  EXPECT_EQ(zox_modje_send(id, reaction, "grof", &number, said.place()), 0U);
  EXPECT_EQ(number, 2);
  EXPECT_EQ(zox_modje_send(id, reaction, "grof", nullptr, said.place()), 32U);
  EXPECT_EQ(zox_modje_send(99999, 0, "weg", nullptr, said.place()), 4U);
}

TEST_F(ServicesCommunity, ProfilesTellWhatMembersTell) {
  server.command("POST", "/account",
                 {{"user", "anna"}, {"Info", "Één & ander"}, {"Rank", "4"}, {"Hobby", "lezen"}});
  cached_posting();
  ZoxProfile *read = nullptr;
  ASSERT_EQ(zox_profile_get("anna", &read, said.place()), 0U);
  const OwnedProfile profile(read);
  EXPECT_STREQ(profile->name, "anna");
  EXPECT_STREQ(profile->info, "Één & ander");
  EXPECT_STREQ(profile->hobby, "lezen");
  EXPECT_EQ(profile->rank, 4U);
  EXPECT_EQ(profile->spots, 1U);
  EXPECT_EQ(profile->kudosReceived, 12U);
  EXPECT_EQ(zox_profile_get("niemand", &read, said.place()), 33U);
  EXPECT_EQ(read, nullptr);
}

class ServicesSpot : public Services {
protected:
  static OwnedEvent spot() {
    OwnedEvent event(zox_event_new());
    event->title = zox_string_new("Een & ander");
    event->status = 0;
    event->groups = zox_splitted_list_split("|3|7|");
    event->cat = 1;
    event->sCat = 0;
    event->tags = zox_splitted_list_split("|a0|d3|");
    event->des = zox_string_new("Beschrijving");
    event->sig = zox_string_new("Groet");
    event->mp3Tracks = zox_splitted_list_split("|een|twee|");
    return event;
  }
};

TEST_F(ServicesSpot, AppearsInTheUpdateOfAnotherMember) {
  become_anna();
  ASSERT_EQ(update(), 0U);
  become_demo();
  const OwnedEvent event = spot();
  steps.clear();
  ASSERT_EQ(zox_post_send(event.get(), note_step), 0U);
  EXPECT_THAT(steps, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15));
  ASSERT_GT(event->postId, 0);
  EXPECT_EQ(cached(event->postId), nullptr);

  become_anna();
  ASSERT_EQ(update(), 0U);
  ASSERT_NE(cached(event->postId), nullptr);
  ASSERT_EQ(zox_eventinfo_fetch(event->postId, said.place()), 0U);
  const OwnedEvent seen = cached(event->postId);
  EXPECT_EQ(text_of(seen->title), "Een & ander");
  EXPECT_EQ(text_of(seen->poster), "demo");
  EXPECT_THAT(texts_of(seen->groups), ElementsAre("3", "7"));
  EXPECT_THAT(texts_of(seen->tags), ElementsAre("a0", "d3"));
  EXPECT_EQ(text_of(seen->des), "Beschrijving");
  EXPECT_EQ(text_of(seen->sig), "Groet");
  EXPECT_THAT(texts_of(seen->mp3Tracks), ElementsAre("een", "twee"));
  EXPECT_EQ(seen->files, 2);
}

TEST_F(ServicesSpot, MayBeTakenWithAReservationOrRefused) {
  ASSERT_EQ(zox_post_send(spot().get(), nullptr), 0U);
  EXPECT_EQ(zox_post_send(spot().get(), nullptr), 26U) << "a title that was there lately";
  const OwnedEvent nowhere = spot();
  zox_splitted_list_free(&nowhere->groups);
  EXPECT_EQ(zox_post_send(nowhere.get(), nullptr), 25U);
}

/** The list that the overview reads as; its entries have no function of their own to free them. */
class Overview {
public:
  explicit Overview(const ZoxString *document) { result = zox_myzox_parse(document, &list); }
  ~Overview() {
    for (ZoxMyzoxPost *post : Items<ZoxMyzoxPost>(list)) {
      for (ZoxString *text : {post->title, post->fName, post->poster, post->link})
        g_string_free(text != nullptr ? text : g_string_new(nullptr), TRUE);
      zox_splitted_list_free(&post->groups);
      g_free(post);
    }
    g_slist_free(list);
  }
  Overview(const Overview &) = delete;
  Overview &operator=(const Overview &) = delete;

  gint32 result;
  GSList *list = nullptr;
};

TEST_F(ServicesSpot, IsInTheMembersOwnOverview) {
  const OwnedEvent event = spot();
  ASSERT_EQ(zox_post_send(event.get(), nullptr), 0U);
  ZoxString *reply = nullptr;
  ASSERT_EQ(zox_http_curl_execute("/3.7.3/xml-myzox.php", nullptr, 1, &reply, 1, nullptr, 1), 0U);
  const OwnedString document(reply);
  const Overview overview(document.get());
  ASSERT_EQ(overview.result, 0);
  ASSERT_EQ(g_slist_length(overview.list), 1U);
  const auto *own = static_cast<const ZoxMyzoxPost *>(overview.list->data);
  EXPECT_EQ(own->postId, event->postId);
  EXPECT_EQ(text_of(own->title), "Een & ander");
  EXPECT_EQ(own->canEdit, 1U);
}

TEST_F(ServicesSpot, IsToldAnewWhenItsPosterBringsItUp) {
  const OwnedEvent event = spot();
  ASSERT_EQ(zox_post_send(event.get(), nullptr), 0U);
  become_anna();
  ASSERT_EQ(update(), 0U);
  const gint64 before = cached(event->postId)->updated;
  become_demo();
  server.advance({.seconds = 60});
  ASSERT_EQ(zox_myzox_update(event->postId, said.place()), 0U);
  become_anna();
  ASSERT_EQ(update(), 0U);
  EXPECT_GT(cached(event->postId)->updated, before);
}

class ServicesSignup : public Services {
protected:
  ZoxErrorCode sign_up(const char *name, const char *email = "a@post.example") {
    return zox_signup_register(name, "wachtwoord", email, said.place());
  }
  void let_pass(const char *hours) { server.command("POST", "/signup-pause", {{"hours", hours}}); }
};

TEST_F(ServicesSignup, MakesAMemberWhoCanLogIn) {
  let_pass("0");
  ASSERT_EQ(sign_up("nieuw"), 0U);
  EXPECT_EQ(said.text(), "(niets)");
  become("nieuw", "wachtwoord");
  EXPECT_EQ(update(), 0U);
}

TEST_F(ServicesSignup, RefusesInItsOwnWords) {
  let_pass("0");
  EXPECT_EQ(sign_up("zonder adres", ""), 20U);
  EXPECT_EQ(sign_up("anna"), 21U);
  EXPECT_EQ(said.text(), "(niets)");
  server.command("POST", "/address", {{"address", "127.0.0.1"}, {"banned", "1"}});
  EXPECT_EQ(sign_up("nieuw"), 22U);
}

TEST_F(ServicesSignup, WaitsWhereAMemberWasLately) {
  EXPECT_EQ(sign_up("nieuw"), 0U);
  EXPECT_EQ(sign_up("nog een"), 23U);
  let_pass("0");
  EXPECT_EQ(sign_up("nog een"), 0U);
}

}  // namespace
}  // namespace velkor::test
