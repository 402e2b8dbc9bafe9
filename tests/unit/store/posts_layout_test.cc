/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/posts_layout.h"

#include <gtest/gtest.h>

#include "store/deflate.h"
#include "tests/unit/store/sectioned_file.h"

namespace velkor {
namespace {

PostsLayout some_layout(std::size_t sections) {
  PostsLayout layout{0x0123456789abcdef, 40, 20, {}};
  for (std::uint32_t number = 0; number < sections; ++number)
    layout.sections.push_back({number + 7, 3 * number, ~number, std::uint64_t{number} << 40});
  return layout;
}

void expect_equal(const PostsLayout &left, const PostsLayout &right) {
  EXPECT_EQ(left.seed, right.seed);
  EXPECT_EQ(left.first_size, right.first_size);
  EXPECT_EQ(left.last_size, right.last_size);
  ASSERT_EQ(left.sections.size(), right.sections.size());
  for (std::size_t number = 0; number < left.sections.size(); ++number) {
    EXPECT_EQ(left.sections[number].compressed_size, right.sections[number].compressed_size);
    EXPECT_EQ(left.sections[number].text_size, right.sections[number].text_size);
    EXPECT_EQ(left.sections[number].checksum, right.sections[number].checksum);
    EXPECT_EQ(left.sections[number].digest, right.sections[number].digest);
  }
}

TEST(PostsLayoutTest, TableComesBackFromTheHeader) {
  for (const std::size_t sections :
       {std::size_t{0}, std::size_t{1}, std::size_t{500}, max_sections}) {
    const PostsLayout layout = some_layout(sections);
    const std::string header = encode_header(layout);
    EXPECT_EQ(header.size(), header_size(sections));
    const auto decoded = decode_header(header + "what follows");
    ASSERT_TRUE(decoded) << sections;
    expect_equal(*decoded, layout);
  }
}

TEST(PostsLayoutTest, HeaderHasRoomForOverThreeThousandSections) {
  EXPECT_GT(max_sections, 3000U);
  EXPECT_LE(header_size(max_sections), 10U + 2 + 65535);
}

TEST(PostsLayoutTest, DamagedHeaderHasNoTable) {
  const std::string header = encode_header(some_layout(3));
  for (std::size_t place = 0; place < header.size(); ++place) {
    std::string damaged = header;
    damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
    EXPECT_FALSE(decode_header(damaged)) << place;
  }
}

TEST(PostsLayoutTest, CutHeaderHasNoTable) {
  const std::string header = encode_header(some_layout(3));
  for (std::size_t size = 0; size < header.size(); ++size)
    EXPECT_FALSE(decode_header(header.substr(0, size))) << size;
}

TEST(PostsLayoutTest, OrdinaryGzipHeaderHasNoTable) {
  EXPECT_FALSE(
      decode_header(std::string("\x1f\x8b\x08\0\0\0\0\0\x02\x03", 10) + std::string(100, 'x')));
}

TEST(PostsLayoutTest, SizeIsThatOfTheFile) {
  const std::string bytes = test::sectioned_file({{"een"}, {"twee"}});
  EXPECT_EQ(file_size(test::layout_of(bytes)), bytes.size());
}

TEST(DeflateTest, PartComesBack) {
  Deflater deflater;
  Inflater inflater;
  for (const auto kind : {Deflater::Part::inner, Deflater::Part::last}) {
    for (const std::string &text : {std::string("a"), std::string(100'000, 'b') + "c"}) {
      std::string back = "before ";
      EXPECT_TRUE(inflater.append(deflater.part(text, kind), text.size(), kind, back));
      EXPECT_EQ(back, "before " + text);
    }
  }
}

TEST(DeflateTest, TextWithoutCharactersHasNoBytes) {
  std::string back;
  EXPECT_EQ(Deflater().part("", Deflater::Part::inner), "");
  EXPECT_TRUE(Inflater().append("", 0, Deflater::Part::inner, back));
  EXPECT_EQ(back, "");
}

TEST(DeflateTest, PartOfAnotherSizeOrKindIsRefused) {
  const std::string part = Deflater().part("twaalf tekens", Deflater::Part::inner);
  Inflater inflater;
  std::string back;
  for (const std::size_t size : {0U, 1U, 12U, 14U, 1000U})
    EXPECT_FALSE(inflater.append(part, size, Deflater::Part::inner, back)) << size;
  EXPECT_FALSE(inflater.append(part, 13, Deflater::Part::last, back));
  EXPECT_FALSE(inflater.append(part + "x", 13, Deflater::Part::inner, back));
  EXPECT_FALSE(inflater.append(part.substr(0, 5), 13, Deflater::Part::inner, back));
  EXPECT_FALSE(inflater.append("\xff\xff\xff", 13, Deflater::Part::inner, back));
}

}  // namespace
}  // namespace velkor
