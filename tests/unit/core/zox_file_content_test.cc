/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Loading, saving and copying whole files. */
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "support/text.h"
#include "tests/support/core_fixture.h"
#include "tests/support/full_disk.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Optional;
using testing::StrEq;

constexpr std::size_t block = 32766;  // what one read takes at most

std::string operator""_text(const char *characters, std::size_t length) {
  return {characters, length};
}

class ZoxFileContent : public test::CoreTest {
protected:
  static std::optional<std::string> load(bool compressed) {
    const OwnedString text(zox_file_load("cache", compressed ? 1 : 0));
    return text ? std::optional<std::string>(view_of(text.get())) : std::nullopt;
  }

  static gint32 save(const std::string &content, bool compressed) {
    const OwnedString text(g_string_new_len(content.data(), static_cast<gssize>(content.size())));
    return zox_file_save("cache", text.get(), compressed ? 1 : 0);
  }

  fs::path plain = cache_file("cache");
  fs::path gzip = cache_file("cache.gz");
};

TEST_F(ZoxFileContent, IsNullWithoutAPlainFile) {
  EXPECT_EQ(load(false), std::nullopt);
}

TEST_F(ZoxFileContent, IsEmptyWithoutACompressedFile) {
  EXPECT_THAT(load(true), Optional(StrEq("")));
}

TEST_F(ZoxFileContent, IsReadWhole) {
  const std::string content = "een\r\ntwee\n\n" + std::string(100000, 'x') + "\nlaatste";
  test::write_file(plain, content);
  EXPECT_THAT(load(false), Optional(content));
  fs::remove(plain);
  test::write_gzip(gzip, content);
  EXPECT_THAT(load(true), Optional(content));
}

TEST_F(ZoxFileContent, TakesAPlainFileForACompressedNameAndDeletesIt) {
  test::write_file(plain, "oud\n");
  test::write_gzip(gzip, "nieuw");
  const std::string compressed = test::read_file(gzip);
  EXPECT_THAT(load(true), Optional(StrEq("oud\n")));
  EXPECT_FALSE(fs::exists(plain));
  EXPECT_EQ(test::read_file(gzip), compressed);
  EXPECT_THAT(load(true), Optional(StrEq("nieuw")));
}

TEST_F(ZoxFileContent, KeepsAPlainFileThatIsAskedForAsSuch) {
  test::write_file(plain, "oud");
  EXPECT_THAT(load(false), Optional(StrEq("oud")));
  EXPECT_TRUE(fs::exists(plain));
}

TEST_F(ZoxFileContent, DeletesNothingThatCouldNotBeRead) {
  fs::create_symlink("/proc/self/mem", plain);  // can be opened, but nothing is at its start
  EXPECT_THAT(load(true), Optional(StrEq("")));
  EXPECT_TRUE(fs::is_symlink(plain));
}

TEST_F(ZoxFileContent, LosesTheRestOfALineBehindAZeroByte) {
  test::write_file(plain, "een\0weg\ntwee\0\0\n\0\ndrie"_text);
  EXPECT_THAT(load(false), Optional(StrEq("eentweedrie")));
}

TEST_F(ZoxFileContent, LosesThePieceOfALongLineBehindAZeroByte) {
  // The line arrives in pieces: only the one with the zero byte is cut.
  test::write_file(plain, std::string(10, 'a') + '\0' + std::string(block - 11, 'b') + "rest\n");
  EXPECT_THAT(load(false), Optional(StrEq(std::string(10, 'a') + "rest\n")));
}

TEST_F(ZoxFileContent, LosesTheRestOfACompressedBlockBehindAZeroByte) {
  const std::string first = std::string(10, 'a') + '\0' + std::string(block - 11, 'b');
  test::write_gzip(gzip, first + std::string(block, 'c') + "d\0e"_text);
  EXPECT_THAT(load(true), Optional(StrEq(std::string(10, 'a') + std::string(block, 'c') + "d")));
}

TEST_F(ZoxFileContent, TakesACompressedNameThatIsNotCompressed) {
  test::write_file(gzip, "gewone tekst");
  EXPECT_THAT(load(true), Optional(StrEq("gewone tekst")));
}

TEST_F(ZoxFileContent, EndsWhereTheCompressedDataBreaksOff) {
  std::string content;
  for (int i = 0; i < 100000; ++i)
    content += std::to_string(i * 7919) + ' ';
  test::write_gzip(gzip, content);
  fs::resize_file(gzip, fs::file_size(gzip) / 2);
  const auto text = load(true);
  ASSERT_TRUE(text);
  EXPECT_GT(text->size(), block);
  EXPECT_TRUE(content.starts_with(*text));
}

TEST_F(ZoxFileContent, GainsALineFeedWhenItIsSavedPlain) {
  EXPECT_EQ(save("tekst", false), 0);
  EXPECT_EQ(test::read_file(plain), "tekst\n");
  EXPECT_EQ(save("", false), 0);
  EXPECT_EQ(test::read_file(plain), "\n");
}

TEST_F(ZoxFileContent, GainsNothingWhenItIsSavedCompressed) {
  EXPECT_EQ(save("tekst", true), 0);
  EXPECT_EQ(test::read_gzip(gzip), "tekst");
  EXPECT_EQ(save("", true), 0);
  EXPECT_EQ(test::read_gzip(gzip), "");
}

TEST_F(ZoxFileContent, IsSavedToItsFullLengthOnlyCompressed) {
  const std::string content = "een\0twee"_text;
  EXPECT_EQ(save(content, true), 0);
  EXPECT_EQ(test::read_gzip(gzip), content);
  EXPECT_EQ(save(content, false), 0);
  EXPECT_EQ(test::read_file(plain), "een\n");
}

TEST_F(ZoxFileContent, ComesBackAsItWasSaved) {
  const std::string content(1000000, 'x');
  EXPECT_EQ(save(content, true), 0);
  EXPECT_THAT(load(true), Optional(content));
}

TEST_F(ZoxFileContent, CannotReplaceADirectory) {
  const test::LogCapture log;
  fs::create_directory(plain);
  fs::create_directory(gzip);
  EXPECT_EQ(save("tekst", false), -1);
  EXPECT_EQ(save("tekst", true), 0);
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_file_save(): cannot write " + plain.string() + ": Is a directory",
                          "zox_file_save(): cannot write " + gzip.string() + ": Is a directory"));
}

TEST_F(ZoxFileContent, IsCopiedByteForByte) {
  const std::string content = std::string(100000, 'x') + "\0\xff\r\n"_text;
  const fs::path copy = sandbox.home() / "copy";
  test::write_file(plain, content);
  EXPECT_EQ(zox_file_copy(plain.c_str(), copy.c_str()), 0);
  EXPECT_EQ(test::read_file(copy), content);
  EXPECT_EQ(fs::status(copy).permissions(), fs::perms{0600});
  test::write_file(plain, "kort");
  EXPECT_EQ(zox_file_copy(plain.c_str(), copy.c_str()), 0);
  EXPECT_EQ(test::read_file(copy), "kort");
}

TEST_F(ZoxFileContent, IsCopiedOnlyBetweenFilesThatCanBeOpened) {
  const std::string missing = sandbox.home() / "missing" / "file";
  test::write_file(plain, "tekst");
  EXPECT_EQ(zox_file_copy(missing.c_str(), gzip.c_str()), 1);
  EXPECT_FALSE(fs::exists(gzip));
  EXPECT_EQ(zox_file_copy(plain.c_str(), missing.c_str()), 1);
}

TEST_F(ZoxFileContent, IsNotCopiedThroughALinkWhereOthersMayWrite) {
  const fs::path shared = sandbox.home() / "shared";
  test::write_file(plain, "tekst");
  test::write_file(sandbox.home() / "victim", "gegevens");
  fs::create_directory(shared);
  fs::create_symlink(sandbox.home() / "victim", shared / "copy");
  fs::permissions(shared, fs::perms{0777});
  EXPECT_EQ(zox_file_copy(plain.c_str(), (shared / "copy").c_str()), 1);
  EXPECT_EQ(zox_file_last_error()->errorNumber, ELOOP);
  EXPECT_EQ(test::read_file(sandbox.home() / "victim"), "gegevens");
}

TEST_F(ZoxFileContent, IsCopiedToAFullDiskWithoutComplaint) {
  test::write_file(plain, "tekst");
  EXPECT_EQ(zox_file_copy(plain.c_str(), "/dev/full"), 0);
}

using ZoxFileContentDeathTest = ZoxFileContent;

TEST_F(ZoxFileContentDeathTest, KeepsTheOldFileWhenTheDiskIsFull) {
  std::string content;
  for (unsigned i = 0; i < 100000; ++i)
    content += std::to_string(i * 2654435761U);
  test::write_file(plain, "oud");
  test::write_gzip(gzip, "oud");
  const auto save_on_full_disk = [&](bool compressed, gint32 expected) {
    test::fill_disk(1000);
    std::_Exit(save(content, compressed) == expected ? 0 : 1);
  };
  EXPECT_EXIT(save_on_full_disk(false, -1), testing::ExitedWithCode(0),
              "zox_file_save\\(\\): cannot write .*/cache: File too large");
  EXPECT_EXIT(save_on_full_disk(true, 0), testing::ExitedWithCode(0),
              "zox_file_save\\(\\): cannot write .*/cache.gz: File too large");
  EXPECT_EQ(test::read_file(plain), "oud");
  EXPECT_EQ(test::read_gzip(gzip), "oud");
}

TEST_F(ZoxFileContentDeathTest, NeedsANameAndAText) {
  EXPECT_DEATH(zox_file_load(nullptr, 0), "assertion failed: \\(filename\\)");
  const OwnedString text(zox_string_new(""));
  EXPECT_DEATH(zox_file_save(nullptr, text.get(), 0), "assertion failed: \\(filename\\)");
  EXPECT_DEATH(zox_file_save("cache", nullptr, 0), "assertion failed: \\(tekst\\)");
  zox_file_free_cache_dir();
  EXPECT_DEATH(zox_file_load("cache", 0), "assertion failed: \\(cache_dir\\)");
}

}  // namespace
}  // namespace velkor
