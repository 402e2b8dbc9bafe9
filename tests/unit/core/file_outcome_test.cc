/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What zox_file_last_error() tells, and what a core for reading only leaves alone. */
#include "core/file_outcome.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "core/app_core.h"
#include "support/owned.h"
#include "tests/support/core_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::StrEq;

constexpr gint32 read_only_refusal = ZOX_FILE_READ_ONLY;

class FileOutcomeTest : public test::CoreTest {
protected:
  static void load(bool compressed) {
    const OwnedString text(zox_file_load("cache", compressed ? 1 : 0));
  }
  static gint32 save(bool compressed) {
    const OwnedString text(zox_string_new("tekst"));
    return zox_file_save("cache", text.get(), compressed ? 1 : 0);
  }

  /** Expects the last outcome; without a message when that is null. */
  static void expect_last(ZoxFileStatus status, int error, const fs::path &path,
                          const char *message) {
    const ZoxFileError *last = zox_file_last_error();
    EXPECT_EQ(last->status, status);
    EXPECT_EQ(last->errorNumber, error);
    EXPECT_STREQ(last->path, path.c_str());
    EXPECT_STREQ(last->message, message);
  }

  fs::path plain = cache_file("cache");
  fs::path gzip = cache_file("cache.gz");
  test::LogCapture log;
};

TEST_F(FileOutcomeTest, NamesAFileThatIsMissing) {
  load(false);
  expect_last(ZOX_FILE_MISSING, ENOENT, plain, ("there is no file " + plain.string()).c_str());
  load(true);
  expect_last(ZOX_FILE_MISSING, ENOENT, gzip, ("there is no file " + gzip.string()).c_str());
}

TEST_F(FileOutcomeTest, TellsAnEmptyFileFromAMissingOne) {
  test::write_file(plain, "");
  load(false);
  expect_last(ZOX_FILE_EMPTY, 0, plain, (plain.string() + " is empty").c_str());
  fs::remove(plain);
  test::write_gzip(gzip, "");
  load(true);
  expect_last(ZOX_FILE_EMPTY, 0, gzip, (gzip.string() + " is empty").c_str());
}

TEST_F(FileOutcomeTest, NamesAFileThatCannotBeRead) {
  fs::create_directory(plain);
  load(false);
  expect_last(ZOX_FILE_UNREADABLE, EISDIR, plain,
              ("cannot read " + plain.string() + ": Is a directory").c_str());
  fs::remove(plain);
  fs::create_directory(gzip);
  load(true);
  expect_last(ZOX_FILE_UNREADABLE, EISDIR, gzip,
              ("cannot read " + gzip.string() + ": Is a directory").c_str());
}

TEST_F(FileOutcomeTest, NamesACompressedFileThatBreaksOff) {
  test::write_gzip(gzip, std::string(100000, 'x'));
  fs::resize_file(gzip, fs::file_size(gzip) - 4);
  load(true);
  expect_last(ZOX_FILE_DAMAGED, 0, gzip,
              ("cannot read " + gzip.string() + ": unexpected end of file").c_str());
}

TEST_F(FileOutcomeTest, NamesACompressedFileWithAWrongCheckSum) {
  test::write_gzip(gzip, "tekst");
  std::string bytes = test::read_file(gzip);
  bytes[bytes.size() - 6] = static_cast<char>(~bytes[bytes.size() - 6]);
  test::write_file(gzip, bytes);
  load(true);
  expect_last(ZOX_FILE_DAMAGED, 0, gzip,
              ("cannot read " + gzip.string() + ": incorrect data check").c_str());
}

TEST_F(FileOutcomeTest, NamesTheFileThatWasReadWell) {
  test::write_gzip(gzip, "tekst");
  load(true);
  expect_last(ZOX_FILE_FINE, 0, gzip, nullptr);
  test::write_file(plain, "tekst");
  load(true);
  expect_last(ZOX_FILE_FINE, 0, plain, nullptr);
}

TEST_F(FileOutcomeTest, NamesAFileThatCouldNotBeWritten) {
  for (const fs::path &path : {plain, gzip})
    fs::create_directory(path);
  for (const bool compressed : {false, true}) {
    const fs::path &path = compressed ? gzip : plain;
    EXPECT_EQ(save(compressed), compressed ? 0 : -1);
    expect_last(ZOX_FILE_NOT_WRITTEN, EISDIR, path,
                ("cannot write " + path.string() + ": Is a directory").c_str());
  }
}

TEST_F(FileOutcomeTest, IsForgottenAtTheNextOperation) {
  fs::create_directory(plain);
  save(false);
  save(true);
  expect_last(ZOX_FILE_FINE, 0, gzip, nullptr);
  save(false);
  zox_config_save();
  expect_last(ZOX_FILE_FINE, 0, cache_file("velkor.conf"), nullptr);
  save(false);
  zox_config_create_dummy();
  expect_last(ZOX_FILE_FINE, 0, cache_file("velkor.conf"), nullptr);
}

TEST_F(FileOutcomeTest, IsThatOfTheOwnThread) {
  load(false);
  std::thread([] {
    EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
    EXPECT_EQ(zox_file_last_error()->path, nullptr);
    EXPECT_EQ(zox_file_last_error()->message, nullptr);
    save(true);
  }).join();
  expect_last(ZOX_FILE_MISSING, ENOENT, plain, ("there is no file " + plain.string()).c_str());
}

TEST_F(FileOutcomeTest, TellsOfTheSettings) {
  const fs::path path = cache_file("velkor.conf");
  zox_config_load();
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  test::write_file(path, "");
  zox_config_load();
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_EMPTY);
  test::write_file(path, "username=u\n");
  zox_config_load();
  expect_last(ZOX_FILE_FINE, 0, path, nullptr);
  fs::remove(path);
  fs::create_directory(path);
  zox_config_load();
  expect_last(ZOX_FILE_UNREADABLE, EISDIR, path,
              ("cannot read " + path.string() + ": Is a directory").c_str());
  for (void (*const write)() : {zox_config_save, zox_config_create_dummy}) {
    write();
    expect_last(ZOX_FILE_NOT_WRITTEN, EISDIR, path,
                ("cannot write " + path.string() + ": Is a directory").c_str());
  }
}

TEST_F(FileOutcomeTest, TellsWhichSideOfACopyFailed) {
  test::write_file(plain, "tekst");
  const fs::path missing = cache_file("missing") / "file";
  EXPECT_EQ(zox_file_copy(missing.c_str(), gzip.c_str()), 1);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  EXPECT_EQ(zox_file_copy(plain.c_str(), missing.c_str()), 1);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  EXPECT_EQ(zox_file_copy(plain.c_str(), gzip.c_str()), 0);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
}

TEST_F(FileOutcomeTest, OfTwoStepsTheWorseStays) {
  load(false);
  {
    const JoinedOutcome joined;
    save(true);
  }
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  fs::create_directory(plain);
  {
    const JoinedOutcome joined;
    save(false);
  }
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
}

class ReadOnlyCore : public FileOutcomeTest {
protected:
  ReadOnlyCore() { read_only_from_now_on(); }
};

TEST_F(ReadOnlyCore, RefusesEverySaveWithoutAWarning) {
  const std::string refusal = ": the library is open for reading only";
  EXPECT_EQ(save(false), -1);
  expect_last(ZOX_FILE_READ_ONLY, 0, plain, ("cannot write " + plain.string() + refusal).c_str());
  EXPECT_EQ(save(true), 0);
  expect_last(ZOX_FILE_READ_ONLY, 0, gzip, ("cannot write " + gzip.string() + refusal).c_str());
  for (void (*const write)() : {zox_config_save, zox_config_create_dummy}) {
    begin_file_operation();
    write();
    EXPECT_EQ(zox_file_last_error()->status, read_only_refusal);
  }
  EXPECT_THAT(log.warnings(), IsEmpty());
  EXPECT_TRUE(fs::is_empty(sandbox.cache()));
}

TEST_F(ReadOnlyCore, CopiesNoFile) {
  test::write_file(plain, "tekst");
  EXPECT_EQ(zox_file_copy(plain.c_str(), gzip.c_str()), 1);
  EXPECT_EQ(zox_file_last_error()->status, read_only_refusal);
  EXPECT_FALSE(fs::exists(gzip));
}

TEST_F(ReadOnlyCore, ReadsAPlainFileBesideACompressedOneAndLeavesBoth) {
  test::write_file(plain, "oud");
  test::write_gzip(gzip, "nieuw");
  const OwnedString text(zox_file_load("cache", 1));
  EXPECT_THAT(text->str, StrEq("oud"));
  EXPECT_EQ(test::read_file(plain), "oud");
  EXPECT_EQ(test::read_gzip(gzip), "nieuw");
}

TEST_F(ReadOnlyCore, NeitherMakesNorProbesTheDirectory) {
  fs::create_directory(cache_file("test.dat"));  // would refuse the probe
  EXPECT_EQ(zox_file_init_cache_dir(), 0);
  fs::remove_all(sandbox.cache());
  EXPECT_EQ(zox_file_init_cache_dir(), 0);
  EXPECT_FALSE(fs::exists(sandbox.cache()));
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ReadOnlyCore, TellsOfADirectoryThatCannotBeRead) {
  fs::remove_all(sandbox.cache());
  fs::create_symlink(sandbox.cache(), sandbox.cache());  // refused even to root
  EXPECT_EQ(zox_file_init_cache_dir(), -5);
  EXPECT_THAT(log.warnings(), testing::ElementsAre(
                                  "zox_file_init_cache_dir(): de map " + sandbox.cache().string() +
                                  " kan niet worden gelezen: Too many levels of symbolic links\n"));
}

TEST_F(ReadOnlyCore, EndsWithTheCore) {
  release_settings();
  free_core();
  make_core();
  EXPECT_EQ(save(false), 0);
}

}  // namespace
}  // namespace velkor
