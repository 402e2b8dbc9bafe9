/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Start-up and shut-down of the whole library. */
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/velkor.h>

#include "support/owned.h"
#include "tests/support/child_process.h"
#include "tests/support/log_capture.h"
#include "tests/support/private_bus.h"
#include "tests/support/sandbox.h"

namespace {

using namespace velkor;
using namespace velkor::test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/** A home without a bus; whatever is still running is shut down. */
class StartTest : public testing::Test {
protected:
  ~StartTest() override {
    stop();
    zox_file_free_lib_dir();
  }

  /** Starts with the cache in this home; GLib remembers the first home that it was asked for. */
  gint32 start() const {
    return zox_app_core_init(nullptr, sandbox.cache().c_str(), nullptr, nullptr, 0, nullptr,
                             nullptr);
  }
  /** Shuts down; the mail, which shut-down leaves alone, is released. */
  static void stop() {
    GSList *mail = core == nullptr ? nullptr : core->mail;
    zox_app_core_cleanup();
    zox_mail_free(mail);
  }

  void write_cache(const std::string &name, const std::string &content) const {
    std::filesystem::create_directories(sandbox.cache());
    write_file(sandbox.cache() / name, content);
  }

  Sandbox sandbox;
  EnvironmentVariable display{"DISPLAY", std::nullopt};
  EnvironmentVariable runtime{"XDG_RUNTIME_DIR", sandbox.home().string()};
  EnvironmentVariable address{"DBUS_SESSION_BUS_ADDRESS",
                              "unix:path=" + (sandbox.home() / "absent").string()};
  LogCapture log;
};

std::string text_of(char *text) {
  return OwnedText(text).get();
}

TEST_F(StartTest, FillsTheCore) {
  EXPECT_EQ(start(), 1);
  ASSERT_NE(core, nullptr);
  EXPECT_NE(core->config, nullptr);
  EXPECT_NE(core->eventlist, nullptr);
  ASSERT_NE(core->filterlist, nullptr);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 16U);
  EXPECT_GT(g_slist_length(core->categories), 4U);
  EXPECT_EQ(g_slist_length(core->tags), 157U);
  EXPECT_EQ(core->groups, nullptr);
  EXPECT_EQ(core->mail, nullptr);
  EXPECT_EQ(core->watchlistUnchanged, 0U);
  EXPECT_EQ(core->watcherNoHits, 0U);
}

TEST_F(StartTest, PutsTheCacheInOrder) {
  write_cache("velkor.mail.tijdelijk-aB3xY9", "half");
  std::filesystem::permissions(sandbox.cache(), std::filesystem::perms{0755});
  EXPECT_EQ(start(), 1);
  EXPECT_FALSE(std::filesystem::exists(sandbox.cache() / "velkor.mail.tijdelijk-aB3xY9"));
  EXPECT_EQ(std::filesystem::status(sandbox.cache()).permissions(), std::filesystem::perms{0700});
  EXPECT_THAT(log.warnings(), testing::Contains(StartsWith("zox_app_core_init(): ook anderen")));
}

TEST_F(StartTest, RunsOnWithoutABus) {
  char *message = nullptr;
  gint32 ok = -1;
  EXPECT_EQ(
      zox_app_core_init(nullptr, sandbox.cache().c_str(), nullptr, "argument", 1, &message, &ok),
      1);
  EXPECT_EQ(ok, 0);
  EXPECT_THAT(text_of(message), StartsWith("Maken van verbinding met DBus mislukt:"));
  EXPECT_EQ(zox_dbus_get_object(), nullptr);
}

TEST_F(StartTest, UsesTheDefaultDirectories) {
  zox_app_core_init(nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr);
  EXPECT_EQ(text_of(zox_file_parse_cache_filename(nullptr, 0)), sandbox.cache().string());
  EXPECT_TRUE(std::filesystem::is_directory(sandbox.cache()));
  EXPECT_EQ(text_of(zox_file_parse_data_dir(nullptr)), "/usr/share/velkor");
  EXPECT_EQ(text_of(zox_file_parse_lib_dir(nullptr)), "/usr/lib64");
}

TEST_F(StartTest, UsesTheDirectoriesGiven) {
  const std::string cache = (sandbox.home() / "elsewhere").string();
  zox_app_core_init("/data", cache.c_str(), "/lib/velkor", nullptr, 0, nullptr, nullptr);
  EXPECT_EQ(text_of(zox_file_parse_cache_filename(nullptr, 0)), cache);
  EXPECT_EQ(text_of(zox_file_parse_data_dir(nullptr)), "/data");
  EXPECT_EQ(text_of(zox_file_parse_lib_dir(nullptr)), "/lib/velkor");
  EXPECT_FALSE(std::filesystem::exists(sandbox.cache()));
}

TEST_F(StartTest, MissingFilesAreNoFailure) {
  start();
  EXPECT_THAT(log.warnings(), ElementsAre(StartsWith("zox_config_load(): cannot load configfile")));
  EXPECT_THAT(log.criticals(), IsEmpty());
}

TEST_F(StartTest, IsTheFirstTimeUntilNameAndPasswordAreKnown) {
  start();
  EXPECT_EQ(zox_app_core_is_first_time(), 1U);
  stop();
  write_cache("velkor.conf", "username=gebruiker\n");
  start();
  EXPECT_EQ(zox_app_core_is_first_time(), 1U);
  stop();
  write_cache("velkor.conf", "username=gebruiker\npassword=geheim\n");
  start();
  EXPECT_EQ(zox_app_core_is_first_time(), 0U);
}

constexpr const char *one_filter =
    "<Filters><Filter><filterNaam>Films</filterNaam><cat>0</cat><sCat>-1</sCat></Filter></Filters>";
constexpr const char *one_group =
    "<Groups><Group ID=\"17\"><Name>alt.binaries.tv</Name></Group></Groups>";
constexpr const char *one_message =
    "<Mail><Event Code=\"1\"><From>lezer</From><Subject>hallo</Subject><Body>dag</Body>"
    "<Stamp>1234567890</Stamp></Event></Mail>";
constexpr const char *one_posting =
    "<Events><Event><PostID>4711</PostID><Stamp>1234567890</Stamp><Status>0</Status>"
    "<Title>Titel</Title><Groups>|17|</Groups><Cat>0</Cat><SCat>3</SCat></Event></Events>";

TEST_F(StartTest, LoadsWhatIsInTheCache) {
  write_cache("velkor.filters", one_filter);
  write_cache("velkor.mail", one_message);
  std::filesystem::create_directories(sandbox.cache());
  write_gzip(sandbox.cache() / "velkor.groups.gz", one_group);
  write_gzip(sandbox.cache() / "velkor.posts.gz", one_posting);
  start();
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 1U);
  EXPECT_EQ(g_slist_length(core->categories), 5U);
  EXPECT_EQ(g_slist_length(core->groups), 1U);
  EXPECT_EQ(zox_mail_get_num_messages(), 1U);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 1U);
  // Filters and categories stood before the postings came: those were counted.
  EXPECT_EQ(zox_category_get_parent(0)->count, 1);
  EXPECT_EQ(zox_category_get_parent(1)->count, 0);
}

TEST_F(StartTest, BrokenFilesAreNoFailure) {
  for (const char *name : {"velkor.filters", "velkor.mail", "velkor.groups.gz", "velkor.posts.gz"})
    write_cache(name, "geen document");
  testing::internal::CaptureStderr();
  EXPECT_EQ(start(), 1);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("empty document!"));
  EXPECT_EQ(core->filterlist->filters, nullptr);
  EXPECT_EQ(core->groups, nullptr);
  EXPECT_EQ(core->mail, nullptr);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
}

TEST_F(StartTest, StartsAgainAfterShutDown) {
  start();
  zox_watchlist_add(42);
  stop();
  EXPECT_EQ(core, nullptr);
  EXPECT_EQ(start(), 1);
  EXPECT_TRUE(zox_watchlist_is_in_list(42));
}

TEST_F(StartTest, ShutDownWithoutCoreDoesNothing) {
  zox_app_core_cleanup();
  EXPECT_EQ(core, nullptr);
}

TEST_F(StartTest, ShutDownSavesTheSettings) {
  start();
  core->config->lastCheck = 1234567890;
  stop();
  EXPECT_THAT(read_file(sandbox.cache() / "velkor.conf"), HasSubstr("\nlastCheck=1234567890\n"));
}

TEST_F(StartTest, ShutDownLeavesTheMailAlone) {
  write_cache("velkor.mail", one_message);
  start();
  GSList *mail = zox_mail_get();
  g_string_assign(static_cast<ZoxBericht *>(mail->data)->subject, "iets anders");
  zox_app_core_cleanup();
  EXPECT_EQ(read_file(sandbox.cache() / "velkor.mail"), one_message);
  EXPECT_STREQ(static_cast<ZoxBericht *>(mail->data)->subject->str, "iets anders");
  zox_mail_free(mail);
}

TEST_F(StartTest, ShutDownKeepsTheLibraryDirectory) {
  start();
  stop();
  EXPECT_EQ(text_of(zox_file_parse_lib_dir("/plugin")), "/usr/lib64/plugin");
}

/** What of the core is still there. */
std::string state_of_core() {
  std::string state;
  const auto note = [&state](const char *name, bool there) {
    if (there)
      state += std::string(state.empty() ? "" : " ") + name;
  };
  note("config", core->config != nullptr);
  note("tags", core->tags != nullptr);
  note("categories", core->categories != nullptr);
  note("groups", core->groups != nullptr);
  note("cache", !text_of(zox_file_parse_cache_filename(nullptr, 0)).empty());
  note("data", !text_of(zox_file_parse_data_dir(nullptr)).empty());
  return state;
}

void note_end_of_filters(gpointer notes, GObject *) {
  static_cast<std::vector<std::string> *>(notes)->push_back("filters: " + state_of_core());
}

void note_end_of_events(gpointer notes, GObject *) {
  static_cast<std::vector<std::string> *>(notes)->push_back("events: " + state_of_core());
}

TEST_F(StartTest, ShutsDownInOrder) {
  std::filesystem::create_directories(sandbox.cache());
  write_gzip(sandbox.cache() / "velkor.groups.gz", one_group);
  start();
  std::vector<std::string> notes;
  g_object_weak_ref(G_OBJECT(core->filterlist), note_end_of_filters, &notes);
  g_object_weak_ref(G_OBJECT(core->eventlist), note_end_of_events, &notes);
  stop();
  EXPECT_THAT(notes, ElementsAre("filters: groups cache data", "events: groups cache data"));
}

TEST_F(StartTest, ObjectsOutliveShutDownInOtherHands) {
  start();
  const OwnedObject<ZOXEventlist> events(zox_eventlist_get());
  const OwnedObject<ZOXFilterlist> filters(zox_filterlist_get());
  stop();
  EXPECT_EQ(zox_eventlist_get_count(events.get(), 0), 0U);
  EXPECT_EQ(g_slist_length(filters->filters), 16U);
}

using StartDeathTest = StartTest;

TEST_F(StartDeathTest, StartingTwiceIsAnError) {
  start();
  EXPECT_DEATH(start(), "assertion failed: \\(core == NULL\\)");
}

TEST_F(StartDeathTest, AnUnusableCacheDirectoryEndsTheProcess) {
  write_file(sandbox.cache(), "");
  g_log_set_default_handler(g_log_default_handler, nullptr);
  EXPECT_DEATH(start(), "zox_file_set_cache_dir\\(\\): Aanmaken van .* is mislukt");
}

TEST_F(StartDeathTest, ShutDownReleasesTheOtherDirectories) {
  start();
  stop();
  EXPECT_DEATH(zox_file_parse_cache_filename(nullptr, 0), "assertion failed: \\(cache_dir\\)");
  EXPECT_DEATH(zox_file_parse_data_dir(nullptr), "assertion failed: \\(data_dir\\)");
}

/** Whole programs on a bus. */
class InstanceTest : public testing::Test {
protected:
  class FrontEnd : public ChildProcess {
  public:
    FrontEnd() : ChildProcess({VELKOR_START_FRONT_END}) {}
    std::string next() { return read_line().value_or("<end>"); }
  };

  Sandbox sandbox;
  PrivateBus bus;
};

TEST_F(InstanceTest, ASecondStartEndsAfterTheFirstCameToTheFront) {
  FrontEnd first;
  EXPECT_EQ(first.next(), "init 1 bus 1 message -");
  EXPECT_EQ(first.next(), "SIGPIPE default SIGCHLD default");
  FrontEnd second;
  EXPECT_EQ(second.read_rest(), "Velkor is reeds actief\n");
  EXPECT_EQ(second.wait(), 1);
  EXPECT_EQ(first.next(), "velkor_dbus_bring_to_front");
  EXPECT_EQ(first.next(), "signal bring_to_front");
}

TEST_F(InstanceTest, ASecondStartTouchesNoFile) {
  FrontEnd first;
  EXPECT_EQ(first.next(), "init 1 bus 1 message -");
  const EnvironmentVariable home("HOME", (sandbox.home() / "other").string());
  FrontEnd second;
  EXPECT_EQ(second.wait(), 1);
  EXPECT_FALSE(std::filesystem::exists(sandbox.home() / "other"));
}

TEST_F(InstanceTest, OpensAPostingByItsNumber) {
  FrontEnd first;
  EXPECT_EQ(first.next(), "init 1 bus 1 message -");
  EXPECT_EQ(first.next(), "SIGPIPE default SIGCHLD default");
  ChildProcess call({"gdbus", "call", "--session", "--dest=org.Velkor.Velkor",
                     "--object-path=/org/Velkor/Velkor/object",
                     "--method=org.Velkor.Velkor.openPosting", "42"});
  EXPECT_EQ(call.wait(), 0);
  EXPECT_EQ(first.next(), "velkor_dbus_open_posting(42)");
  EXPECT_EQ(first.next(), "signal open_posting 42");
}

TEST_F(InstanceTest, TheServiceStopsFirst) {
  FrontEnd first;
  EXPECT_EQ(first.next(), "init 1 bus 1 message -");
  EXPECT_EQ(first.next(), "SIGPIPE default SIGCHLD default");
  first.write_line("quit");
  EXPECT_EQ(first.next(), "service stopped, settings there");
  EXPECT_EQ(first.next(), "cleaned up");
  EXPECT_EQ(first.wait(), 0);
  FrontEnd next;
  EXPECT_EQ(next.next(), "init 1 bus 1 message -");
}

}  // namespace
