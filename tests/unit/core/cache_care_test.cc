/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/cache_care.h"

#include <csignal>
#include <filesystem>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <velkor/zox_file.h>

#include "core/atomic_file.h"
#include "tests/support/core_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Form = AtomicFile::Form;

unsigned mode_of(const fs::path &path) {
  return static_cast<unsigned>(fs::status(path).permissions());
}

void make_file(const fs::path &path, unsigned mode) {
  test::write_file(path, "inhoud");
  fs::permissions(path, fs::perms{mode});
}

class CacheCare : public test::CoreTest {
protected:
  void leave(std::string_view name) const { test::write_file(cache_file(name), "half"); }

  static std::set<std::string> names_in(const fs::path &directory) {
    std::set<std::string> names;
    for (const auto &entry : fs::directory_iterator(directory))
      names.insert(entry.path().filename());
    return names;
  }
  [[nodiscard]] std::set<std::string> names() const { return names_in(sandbox.cache()); }

  test::LogCapture log;
};

using Leftovers = CacheCare;

TEST_F(Leftovers, AreRemovedBesideEveryFileOfTheLibrary) {
  for (const char *file :
       {"velkor.conf", "velkor.filters", "velkor.groups", "velkor.groups.gz", "velkor.mail",
        "velkor.posts", "velkor.posts.gz", "velkor.mail.antwoord-20260101-120000"})
    leave(std::string(file) + ".tijdelijk-aB3xY9");
  leave("velkor.conf");
  remove_leftovers();
  EXPECT_THAT(names(), ElementsAre("velkor.conf"));
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(Leftovers, OfOtherNamesStay) {
  for (const char *name :
       {"velkor.conf.backup", "velkor.conf.aB3xY9", "velkor.conf.tijdelijk",
        "notes.tijdelijk-aB3xY9", "velkor.conf.tijdelijk-aB3xY", "velkor.conf.tijdelijk-aB3xY9z",
        "velkor.conf.tijdelijk-aB3.Y9", ".tijdelijk-aB3xY9", "velkor.confuus.tijdelijk-aB3xY9"})
    leave(name);
  const auto before = names();
  remove_leftovers();
  EXPECT_EQ(names(), before);
}

TEST_F(Leftovers, OfOtherKindsStay) {
  leave("elsewhere");
  fs::create_symlink("elsewhere", cache_file("velkor.conf.tijdelijk-link00"));
  fs::create_directory(cache_file("velkor.conf.tijdelijk-direct"));
  ASSERT_EQ(mkfifo(cache_file("velkor.conf.tijdelijk-fifo00").c_str(), 0600), 0);
  const auto before = names();
  remove_leftovers();
  EXPECT_EQ(names(), before);
}

TEST_F(Leftovers, OfAnotherUserStay) {
  if (geteuid() != 0)
    GTEST_SKIP() << "only root can give a file away";
  leave("velkor.conf.tijdelijk-aB3xY9");
  ASSERT_EQ(chown(cache_file("velkor.conf.tijdelijk-aB3xY9").c_str(), 65534, 65534), 0);
  remove_leftovers();
  EXPECT_THAT(names(), ElementsAre("velkor.conf.tijdelijk-aB3xY9"));
}

TEST_F(Leftovers, OfALivingWriterAreNone) {
  for (const Form form : {Form::plain, Form::gzip}) {
    AtomicFile file(cache_file("velkor.posts.gz"), form);
    file.write("inhoud");
    remove_leftovers();
    EXPECT_EQ(names().size(), 1U);
    EXPECT_TRUE(file.commit("test"));
    fs::remove(cache_file("velkor.posts.gz"));
  }
}

TEST_F(Leftovers, OfAKilledProcessAreRemoved) {
  const pid_t child = fork();
  if (child == 0) {
    AtomicFile file(cache_file("velkor.posts.gz"), Form::gzip);
    file.write("inhoud");
    std::raise(SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(names().size(), 1U);
  remove_leftovers();
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Leftovers, AreRemovedWhereALinkLeadsTo) {
  const fs::path elsewhere = sandbox.home() / "elsewhere";
  fs::create_directory(elsewhere);
  fs::create_symlink(elsewhere / "settings", cache_file("velkor.conf"));
  make_file(elsewhere / "settings.tijdelijk-aB3xY9", 0600);
  make_file(elsewhere / "velkor.conf.tijdelijk-aB3xY9", 0600);
  remove_leftovers();
  EXPECT_THAT(names_in(elsewhere), ElementsAre("velkor.conf.tijdelijk-aB3xY9"));
}

TEST_F(Leftovers, StayWhileNothingMayChange) {
  leave("velkor.conf.tijdelijk-aB3xY9");
  read_only_from_now_on();
  remove_leftovers();
  EXPECT_THAT(names(), ElementsAre("velkor.conf.tijdelijk-aB3xY9"));
}

TEST_F(Leftovers, AreNotLookedForWithoutADirectory) {
  fs::remove(sandbox.cache());
  remove_leftovers();
  narrow_permissions("test");
  EXPECT_FALSE(fs::exists(sandbox.cache()));
  EXPECT_THAT(log.warnings(), IsEmpty());
}

using Permissions = CacheCare;

TEST_F(Permissions, AreTakenFromOthersWithOneWarning) {
  fs::permissions(sandbox.cache(), fs::perms{0755});
  make_file(cache_file("velkor.conf"), 0644);
  make_file(cache_file("velkor.mail"), 0660);
  make_file(cache_file("velkor.posts.gz"), 0600);
  make_file(cache_file("velkor.conf.onleesbaar-20260101-120000"), 0604);
  make_file(cache_file("notes"), 0644);
  narrow_permissions("test");
  EXPECT_EQ(mode_of(sandbox.cache()), 0700U);
  EXPECT_EQ(mode_of(cache_file("velkor.conf")), 0600U);
  EXPECT_EQ(mode_of(cache_file("velkor.mail")), 0600U);
  EXPECT_EQ(mode_of(cache_file("velkor.conf.onleesbaar-20260101-120000")), 0600U);
  EXPECT_EQ(mode_of(cache_file("notes")), 0644U);
  ASSERT_EQ(log.warnings().size(), 1U);
  EXPECT_THAT(log.warnings().front(),
              testing::AllOf(testing::StartsWith("test(): ook anderen dan de eigenaar hadden "
                                                 "toegang tot " +
                                                 sandbox.cache().string() + ", "),
                             testing::HasSubstr(cache_file("velkor.conf").string()),
                             testing::HasSubstr(cache_file("velkor.mail").string()),
                             testing::EndsWith("; nu niet meer"),
                             testing::Not(testing::HasSubstr("velkor.posts.gz"))));
  narrow_permissions("test");
  EXPECT_EQ(log.warnings().size(), 1U);
}

TEST_F(Permissions, OfTheOwnerStay) {
  make_file(cache_file("velkor.conf"), 0444);
  narrow_permissions("test");
  EXPECT_EQ(mode_of(cache_file("velkor.conf")), 0400U);
}

TEST_F(Permissions, AreTakenFromWhatALinkLeadsTo) {
  make_file(sandbox.home() / "settings", 0644);
  fs::create_symlink(sandbox.home() / "settings", cache_file("velkor.conf"));
  narrow_permissions("test");
  EXPECT_EQ(mode_of(sandbox.home() / "settings"), 0600U);
}

TEST_F(Permissions, OfADirectoryWithOtherContentStay) {
  const fs::path shared = sandbox.home() / "shared";
  fs::create_directory(shared);
  make_file(shared / "velkor.conf", 0644);
  make_file(shared / "notes", 0644);
  fs::permissions(shared, fs::perms{0755});
  zox_file_set_cache_dir(shared.c_str());
  narrow_permissions("test");
  EXPECT_EQ(mode_of(shared), 0755U);
  EXPECT_EQ(mode_of(shared / "velkor.conf"), 0600U);
  fs::remove(shared / "notes");
  narrow_permissions("test");
  EXPECT_EQ(mode_of(shared), 0700U);
  fs::permissions(shared, fs::perms{01777});
  narrow_permissions("test");
  EXPECT_EQ(mode_of(shared), 01777U);
}

TEST_F(Permissions, StayWhileNothingMayChange) {
  fs::permissions(sandbox.cache(), fs::perms{0755});
  make_file(cache_file("velkor.conf"), 0644);
  read_only_from_now_on();
  narrow_permissions("test");
  EXPECT_EQ(mode_of(sandbox.cache()), 0755U);
  EXPECT_EQ(mode_of(cache_file("velkor.conf")), 0644U);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

}  // namespace
}  // namespace velkor
