/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "operations/dump_file.h"

#include <random>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "support/text.h"
#include "tests/support/sandbox.h"

namespace velkor {
namespace {

class DumpFileTest : public testing::Test {
protected:
  [[nodiscard]] std::string path() const { return directory.path() / "dump.gz"; }
  [[nodiscard]] Descriptor opened() const {
    return Descriptor(open(path().c_str(), O_RDONLY | O_CLOEXEC));
  }
  [[nodiscard]] std::string read() const {
    const OwnedString text = read_dump(opened());
    return text ? std::string(view_of(text.get())) : "unreadable";
  }

  test::TemporaryDirectory directory;
};

/** Text that does not compress to nothing, so that a cut meets the middle of the data. */
std::string varied_text(std::size_t length) {
  std::mt19937 random(7);
  std::string text;
  while (text.size() < length)
    text += std::to_string(random()) + "\n";
  return text.substr(0, length);
}

TEST_F(DumpFileTest, GivesTheTextWhole) {
  for (const std::size_t length : {1U, 1022U, 1023U, 1024U, 100'000U}) {
    const std::string text = varied_text(length);
    test::write_gzip(path(), text);
    EXPECT_EQ(read(), text);
  }
}

TEST_F(DumpFileTest, NothingIsAnEmptyText) {
  test::write_gzip(path(), "");
  EXPECT_EQ(read(), "");
  test::write_file(path(), "");
  EXPECT_EQ(read(), "");
}

TEST_F(DumpFileTest, TakesWhatIsNotGzipAsItStands) {
  test::write_file(path(), "<html>geen dump</html>");
  EXPECT_EQ(read(), "<html>geen dump</html>");
}

TEST_F(DumpFileTest, RefusesDataThatBreaksOff) {
  const std::string text = varied_text(50'000);
  test::write_gzip(path(), text);
  const auto length = std::filesystem::file_size(path());
  for (const std::uintmax_t missing : {std::uintmax_t{1}, std::uintmax_t{8}, length / 2}) {
    std::filesystem::resize_file(path(), length - missing);
    EXPECT_EQ(read(), "unreadable") << missing;
  }
}

TEST_F(DumpFileTest, RefusesDamagedData) {
  test::write_gzip(path(), varied_text(50'000));
  const std::string whole = test::read_file(path());
  for (const std::size_t place : {whole.size() / 2, whole.size() - 6}) {
    std::string damaged = whole;
    damaged[place] = static_cast<char>(damaged[place] ^ 0x55);
    test::write_file(path(), damaged);
    EXPECT_EQ(read(), "unreadable");
  }
}

TEST_F(DumpFileTest, ZeroByteCutsItsBlock) {
  std::string text(3000, 'x');
  text[1500] = '\0';  // in the second block of 1023 bytes
  test::write_gzip(path(), text);
  EXPECT_EQ(read(), std::string(1500, 'x') + std::string(3000 - 2046, 'x'));
}

TEST_F(DumpFileTest, RefusesMoreThanItsLimit) {
  test::write_gzip(path(), std::string(1 << 20, ' '));
  EXPECT_EQ(read_dump(opened(), (1 << 20) - 1), nullptr);
  EXPECT_NE(read_dump(opened(), 1 << 20), nullptr);
  EXPECT_NE(read_dump(opened()), nullptr);
  EXPECT_EQ(max_dump_size, std::size_t{1} << 30);
}

TEST_F(DumpFileTest, MissingFileIsUnreadable) {
  EXPECT_EQ(read(), "unreadable");
}

TEST_F(DumpFileTest, IsReadFromItsBeginning) {
  test::write_gzip(path(), "tekst");
  Descriptor file = opened();
  ASSERT_GT(lseek(file.get(), 0, SEEK_END), 0);
  const OwnedString text = read_dump(std::move(file));
  ASSERT_NE(text, nullptr);
  EXPECT_STREQ(text->str, "tekst");
}

}  // namespace
}  // namespace velkor
