/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Opening a core of chosen parts, for writing or for reading only. */
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/velkor.h>

#include "support/owned.h"
#include "tests/support/child_process.h"
#include "tests/support/log_capture.h"
#include "tests/support/private_bus.h"
#include "tests/support/sandbox.h"
#include "tests/support/stub_server.h"

namespace {

using namespace velkor;
using namespace velkor::test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

constexpr guint32 all_files = ZOX_CORE_ALL - ZOX_CORE_BUS;

std::string text_of(char *text) {
  const OwnedText owned(text);
  return owned ? owned.get() : "none";
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
    "<Title>Titel</Title><Poster>ik</Poster><Groups>|17|</Groups><Cat>0</Cat><SCat>3</SCat></"
    "Event></Events>";

class OpenTest : public testing::Test {
protected:
  ~OpenTest() override { zox_app_core_close(); }

  ZoxCoreResult open(guint32 parts, bool for_reading = false) {
    ZoxCoreOptions options{};
    options.cacheDir = cache.c_str();
    options.parts = parts;
    options.readOnly = for_reading ? 1 : 0;
    char *text = nullptr;
    const ZoxCoreResult result = zox_app_core_open(&options, &text);
    message = text_of(text);
    return result;
  }

  /** Expects that opening fails so and leaves nothing behind. */
  void expect_refused(ZoxCoreResult result, const std::string &words, bool for_reading = false) {
    EXPECT_EQ(open(all_files, for_reading), result);
    EXPECT_EQ(message, words);
    EXPECT_EQ(core, nullptr);
    EXPECT_THAT(log.warnings(), IsEmpty());
  }

  void fill_cache() const {
    fs::create_directories(cache);
    write_file(cached("velkor.conf"), "username=u\npassword=p\n");
    write_file(cached("velkor.filters"), one_filter);
    write_file(cached("velkor.mail"), one_message);
    write_gzip(cached("velkor.groups.gz"), one_group);
    write_gzip(cached("velkor.posts.gz"), one_posting);
  }

  [[nodiscard]] fs::path cached(const char *name) const { return fs::path(cache) / name; }

  Sandbox sandbox;
  std::string cache = sandbox.cache();
  std::string message;
  LogCapture log;
};

TEST_F(OpenTest, LoadsAllParts) {
  fill_cache();
  EXPECT_EQ(open(all_files), ZOX_CORE_OPENED);
  EXPECT_EQ(message, "none");
  EXPECT_STREQ(core->config->username->str, "u");
  EXPECT_EQ(zox_app_core_is_first_time(), 0U);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 1U);
  EXPECT_EQ(g_slist_length(core->categories), 5U);
  EXPECT_EQ(g_slist_length(core->tags), 157U);
  EXPECT_EQ(g_slist_length(core->groups), 1U);
  EXPECT_EQ(g_slist_length(core->mail), 1U);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 1U);
  EXPECT_EQ(zox_category_get_parent(0)->count, 1);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(OpenTest, APartThatIsNotAskedForIsEmpty) {
  fill_cache();
  EXPECT_EQ(open(0), ZOX_CORE_OPENED);
  EXPECT_EQ(core->config->username, nullptr);
  EXPECT_EQ(core->config->ratingScale, 100);
  EXPECT_EQ(core->filterlist->filters, nullptr);
  EXPECT_EQ(g_slist_length(core->categories), 4U);
  EXPECT_EQ(core->tags, nullptr);
  EXPECT_EQ(core->groups, nullptr);
  EXPECT_EQ(core->mail, nullptr);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
  EXPECT_EQ(zox_file_last_error()->path, nullptr);
}

TEST_F(OpenTest, EachPartLoadsWithoutTheOthers) {
  fill_cache();
  const std::map<guint32, std::string> files{{ZOX_CORE_SETTINGS, "velkor.conf"},
                                             {ZOX_CORE_FILTERS, "velkor.filters"},
                                             {ZOX_CORE_TABLES, "velkor.groups.gz"},
                                             {ZOX_CORE_MAIL, "velkor.mail"},
                                             {ZOX_CORE_POSTINGS, "velkor.posts.gz"}};
  for (const auto &[part, name] : files) {
    EXPECT_EQ(open(part), ZOX_CORE_OPENED);
    EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE) << name;
    EXPECT_EQ(zox_file_last_error()->path, cached(name.c_str()).string());
    EXPECT_EQ(core->config->username != nullptr, part == ZOX_CORE_SETTINGS);
    EXPECT_EQ(core->filterlist->filters != nullptr, part == ZOX_CORE_FILTERS);
    EXPECT_EQ(core->groups != nullptr, part == ZOX_CORE_TABLES);
    EXPECT_EQ(core->tags != nullptr, part == ZOX_CORE_TABLES);
    EXPECT_EQ(core->mail != nullptr, part == ZOX_CORE_MAIL);
    EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), part == ZOX_CORE_POSTINGS ? 1U : 0U);
    zox_app_core_close();
  }
}

TEST_F(OpenTest, UsesTheDirectoriesGiven) {
  ZoxCoreOptions options{};
  const std::string elsewhere = sandbox.home() / "elsewhere";
  options.cacheDir = elsewhere.c_str();
  options.dataDir = "/data";
  options.libDir = "/lib/velkor";
  ASSERT_EQ(zox_app_core_open(&options, nullptr), ZOX_CORE_OPENED);
  EXPECT_EQ(text_of(zox_file_parse_cache_filename(nullptr, 0)), elsewhere);
  EXPECT_EQ(text_of(zox_file_parse_data_dir(nullptr)), "/data");
  EXPECT_EQ(text_of(zox_file_parse_lib_dir(nullptr)), "/lib/velkor");
  EXPECT_EQ(fs::status(elsewhere).permissions(), fs::perms{0700});
}

TEST_F(OpenTest, HasDefaultsForTheDirectories) {
  ZoxCoreOptions options{};
  ASSERT_EQ(zox_app_core_open(&options, nullptr), ZOX_CORE_OPENED);
  EXPECT_EQ(text_of(zox_file_parse_cache_filename(nullptr, 0)), cache);
  EXPECT_EQ(text_of(zox_file_parse_data_dir(nullptr)), "/usr/share/velkor");
  EXPECT_EQ(text_of(zox_file_parse_lib_dir(nullptr)), "/usr/lib64");
}

TEST_F(OpenTest, AWritingCoreStartsANewUserWithoutAWarning) {
  EXPECT_EQ(open(all_files), ZOX_CORE_OPENED);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 16U);
  EXPECT_TRUE(fs::exists(cached("velkor.filters")));
  EXPECT_TRUE(fs::exists(cached("velkor.mail")));
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  EXPECT_EQ(zox_file_last_error()->path, cached("velkor.posts.gz").string());
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(OpenTest, ClosingReleasesEverythingAndSavesNothing) {
  fill_cache();
  ASSERT_EQ(open(all_files), ZOX_CORE_OPENED);
  core->config->lastCheck = 1234567890;
  zox_app_core_close();
  EXPECT_EQ(core, nullptr);
  EXPECT_EQ(read_file(cached("velkor.conf")), "username=u\npassword=p\n");
  EXPECT_EQ(open(all_files), ZOX_CORE_OPENED);
  zox_app_core_close();
  zox_app_core_close();  // harmless without a core
}

/** A cache that a killed process left, and that others may look into. */
void neglect(const fs::path &cache) {
  write_file(cache / "velkor.posts.gz.tijdelijk-aB3xY9", "half");
  fs::permissions(cache / "velkor.conf", fs::perms{0644});
  fs::permissions(cache, fs::perms{0755});
}

TEST_F(OpenTest, PutsTheCacheInOrder) {
  fill_cache();
  neglect(cache);
  EXPECT_EQ(open(0), ZOX_CORE_OPENED);
  EXPECT_FALSE(fs::exists(cached("velkor.posts.gz.tijdelijk-aB3xY9")));
  EXPECT_EQ(fs::status(cached("velkor.conf")).permissions(), fs::perms{0600});
  EXPECT_EQ(fs::status(cache).permissions(), fs::perms{0700});
  EXPECT_THAT(log.warnings(), testing::ElementsAre(StartsWith("zox_app_core_open(): ")));
}

TEST_F(OpenTest, IsShutDownByCleanupAsWell) {
  fill_cache();
  ASSERT_EQ(open(all_files - ZOX_CORE_MAIL), ZOX_CORE_OPENED);
  core->config->lastCheck = 1234567890;
  zox_app_core_cleanup();
  EXPECT_EQ(core, nullptr);
  EXPECT_THAT(read_file(cached("velkor.conf")), HasSubstr("lastCheck=1234567890"));
}

TEST_F(OpenTest, ADirectoryThatCannotBeMadeIsRefused) {
  cache = sandbox.home() / "missing" / "deep";
  expect_refused(ZOX_CORE_NO_DIRECTORY, "cannot make " + cache + ": No such file or directory");
}

TEST_F(OpenTest, WhatIsNoDirectoryIsRefused) {
  write_file(cache, "");
  for (const bool for_reading : {false, true})
    expect_refused(ZOX_CORE_NOT_A_DIRECTORY, "cannot use " + cache + ": Not a directory",
                   for_reading);
}

TEST_F(OpenTest, ADirectoryThatCannotBeWrittenIsRefused) {
  fs::create_directories(cached("test.dat"));  // refuses the probe even to root
  expect_refused(ZOX_CORE_NOT_WRITABLE, "cannot write in " + cache + ": Is a directory");
  EXPECT_EQ(open(all_files, true), ZOX_CORE_OPENED);
}

TEST_F(OpenTest, ADirectoryThatCannotBeReadIsRefused) {
  fs::create_symlink(cache, cache);  // refused even to root
  expect_refused(ZOX_CORE_NOT_READABLE,
                 "cannot read " + cache + ": Too many levels of symbolic links", true);
}

TEST_F(OpenTest, DefaultsNeverReplaceSettingsThatCannotBeRead) {
  fs::create_directories(cached("velkor.conf"));
  for (const bool for_reading : {false, true})
    expect_refused(ZOX_CORE_SETTINGS_UNREADABLE,
                   "cannot read " + cached("velkor.conf").string() + ": Is a directory",
                   for_reading);
  EXPECT_FALSE(fs::exists(cached("velkor.filters")));
  EXPECT_EQ(open(all_files - ZOX_CORE_SETTINGS), ZOX_CORE_OPENED);
}

TEST_F(OpenTest, TheMessageIsOptional) {
  ZoxCoreOptions options{};
  const std::string deep = sandbox.home() / "missing" / "deep";
  options.cacheDir = deep.c_str();
  EXPECT_EQ(zox_app_core_open(&options, nullptr), ZOX_CORE_NO_DIRECTORY);
}

/** Every file of a directory with content and time of the last change. */
std::map<std::string, std::pair<std::string, fs::file_time_type>> state_of(const fs::path &path) {
  std::map<std::string, std::pair<std::string, fs::file_time_type>> files;
  for (const auto &entry : fs::directory_iterator(path))
    files[entry.path().filename()] = {read_file(entry.path()), entry.last_write_time()};
  return files;
}

class ReadOnlyTest : public OpenTest {
protected:
  /** Saves everything that can be saved; the codes that zox_file_last_error() gives. */
  static std::vector<ZoxFileStatus> save_everything() {
    std::vector<ZoxFileStatus> codes;
    const auto note = [&codes] { codes.push_back(zox_file_last_error()->status); };
    zox_config_save();
    note();
    zox_filterlist_save(core->filterlist);
    note();
    EXPECT_EQ(zox_group_save(), -1);
    note();
    EXPECT_EQ(zox_mail_save(), -1);
    note();
    EXPECT_EQ(zox_eventlist_save(core->eventlist), 0);
    note();
    return codes;
  }
};

TEST_F(ReadOnlyTest, ChangesNoFileWhateverIsSaved) {
  fill_cache();
  write_file(cached("velkor.posts"), one_posting);
  write_file(cached("velkor.groups"), one_group);
  const auto before = state_of(cache);
  ASSERT_EQ(open(all_files, true), ZOX_CORE_OPENED);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 1U);
  EXPECT_EQ(g_slist_length(core->groups), 1U);
  EXPECT_THAT(save_everything(), testing::Each(ZOX_FILE_READ_ONLY));
  zox_mail_free(std::exchange(core->mail, nullptr));  // the clean-up leaves it to the front end
  zox_app_core_cleanup();
  EXPECT_EQ(state_of(cache), before);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ReadOnlyTest, BacksUpNothingThatIsDamaged) {
  fill_cache();
  for (const char *name : {"velkor.filters", "velkor.mail", "velkor.groups.gz", "velkor.posts.gz"})
    write_file(cached(name), "geen document");
  const auto before = state_of(cache);
  testing::internal::CaptureStderr();
  ASSERT_EQ(open(all_files, true), ZOX_CORE_OPENED);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("empty document!"));
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_DAMAGED);
  EXPECT_THAT(save_everything(), testing::Each(ZOX_FILE_READ_ONLY));
  EXPECT_EQ(state_of(cache), before);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ReadOnlyTest, LeavesTheCacheInDisorder) {
  fill_cache();
  neglect(cache);
  const auto before = state_of(cache);
  ASSERT_EQ(open(all_files, true), ZOX_CORE_OPENED);
  EXPECT_EQ(state_of(cache), before);
  EXPECT_EQ(fs::status(cached("velkor.conf")).permissions(), fs::perms{0644});
  EXPECT_EQ(fs::status(cache).permissions(), fs::perms{0755});
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ReadOnlyTest, MakesNeitherDirectoryNorFiles) {
  ASSERT_EQ(open(all_files, true), ZOX_CORE_OPENED);
  EXPECT_EQ(g_slist_length(core->filterlist->filters), 16U);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  EXPECT_THAT(save_everything(), testing::Each(ZOX_FILE_READ_ONLY));
  EXPECT_FALSE(fs::exists(cache));
  zox_filterlist_load(core->filterlist);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  EXPECT_EQ(zox_mail_load(), 0);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ReadOnlyTest, TheNextCoreMayWriteAgain) {
  ASSERT_EQ(open(0, true), ZOX_CORE_OPENED);
  zox_app_core_close();
  ASSERT_EQ(open(0), ZOX_CORE_OPENED);
  zox_config_save();
  EXPECT_TRUE(fs::exists(cached("velkor.conf")));
}

gint note_result(ZoxErrorCode result, gint32, char *message, gpointer place) {
  const OwnedText owner(message);
  *static_cast<std::optional<ZoxErrorCode> *>(place) = result;
  return 0;
}

/** With a server that never answers, and a fetch in the background that waits for it. */
class ShutDownTest : public OpenTest {
protected:
  ShutDownTest() {
    server.reply("/3.7.3/xml-posts.php", StubReply{.claim_length = 100, .stall = true});
    zox_http_set_hosts(server.host().c_str(), nullptr);
    fill_cache();
  }
  ~ShutDownTest() override { zox_http_set_hosts(nullptr, nullptr); }

  void start() {
    ASSERT_EQ(open(all_files), ZOX_CORE_OPENED);
    zox_file_set_lib_dir(VELKOR_TEST_PLUGIN_DIRECTORY);
    zox_eventinfo_fetch_async(4711, note_result, &result);
    while (server.requests().empty())
      std::this_thread::yield();
  }

  void expect_failed_fetch() const {
    EXPECT_EQ(core, nullptr);
    EXPECT_EQ(result, std::nullopt);  // the callback comes on the main loop only
    while (!result)
      g_main_context_iteration(nullptr, TRUE);
    EXPECT_EQ(result, ZOX_RESULT_UNKNOWN_ERROR);
  }

  StubServer server;
  std::optional<ZoxErrorCode> result;
};

TEST_F(ShutDownTest, ClosingEndsAFetchInTheBackground) {
  start();
  zox_app_core_close();
  expect_failed_fetch();
}

TEST_F(ShutDownTest, CleaningUpEndsAFetchInTheBackground) {
  start();
  GSList *mail = core->mail;
  zox_app_core_cleanup();
  zox_mail_free(mail);  // which that leaves
  expect_failed_fetch();
}

/** With the D-Bus service. */
class OpenOnBus : public OpenTest {
protected:
  PrivateBus bus;
};

TEST_F(OpenOnBus, ARunningInstanceComesToTheFrontInstead) {
  ChildProcess first({VELKOR_START_FRONT_END});
  ASSERT_EQ(first.read_line(), "init 1 bus 1 message -");
  ASSERT_EQ(first.read_line(), "SIGPIPE default SIGCHLD default");
  EXPECT_EQ(open(ZOX_CORE_ALL), ZOX_CORE_ALREADY_ACTIVE);
  EXPECT_EQ(message, "another instance is running");
  EXPECT_EQ(core, nullptr);
  EXPECT_EQ(first.read_line(), "velkor_dbus_bring_to_front");
}

TEST_F(OpenOnBus, OwnsTheServiceUntilItCloses) {
  ZoxCoreOptions options{};
  options.cacheDir = cache.c_str();
  options.parts = ZOX_CORE_BUS;
  options.isGui = 7;
  ASSERT_EQ(zox_app_core_open(&options, nullptr), ZOX_CORE_OPENED);
  ASSERT_NE(zox_dbus_get_object(), nullptr);
  EXPECT_EQ(velkor_dbus_is_gui(zox_dbus_get_object()), 7);
}

TEST_F(OpenTest, RunsOnWithoutABusAndSaysWhy) {
  const EnvironmentVariable display("DISPLAY", std::nullopt);
  const EnvironmentVariable runtime("XDG_RUNTIME_DIR", sandbox.home().string());
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS",
                                    "unix:path=" + (sandbox.home() / "absent").string());
  EXPECT_EQ(open(ZOX_CORE_BUS), ZOX_CORE_OPENED);
  EXPECT_THAT(message, StartsWith("Maken van verbinding met DBus mislukt:"));
}

using OpenDeathTest = OpenTest;

TEST_F(OpenDeathTest, NeedsOptionsAndNoCore) {
  EXPECT_DEATH(zox_app_core_open(nullptr, nullptr), "assertion failed: \\(options\\)");
  ASSERT_EQ(open(0), ZOX_CORE_OPENED);
  EXPECT_DEATH(open(0), "assertion failed: \\(core == NULL\\)");
}

TEST_F(OpenDeathTest, ClosingForgetsEveryDirectory) {
  ASSERT_EQ(open(0), ZOX_CORE_OPENED);
  zox_app_core_close();
  EXPECT_DEATH(zox_file_parse_cache_filename(nullptr, 0), "assertion failed: \\(cache_dir\\)");
  EXPECT_DEATH(zox_file_parse_data_dir(nullptr), "assertion failed: \\(data_dir\\)");
  EXPECT_DEATH(zox_file_parse_lib_dir(nullptr), "assertion failed: \\(lib_dir\\)");
}

}  // namespace
