/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/program_files.h"

#include <gtest/gtest.h>

namespace velkor::test {
namespace {

namespace fs = std::filesystem;

fs::path program() {
  return fs::read_symlink("/proc/self/exe");
}

TEST(DirectoryFromProgram, StartsAtTheProgramsOwn) {
  EXPECT_EQ(directory_from_program(".."), (program().parent_path() / "..").lexically_normal());
}

TEST(DirectoryFromProgram, IsNothingWhereThereIsNone) {
  EXPECT_EQ(directory_from_program("no-such-directory"), std::nullopt);
}

TEST(DirectoryFromProgram, IsNothingWhereThereIsAFile) {
  EXPECT_EQ(directory_from_program(program().filename()), std::nullopt);
}

}  // namespace
}  // namespace velkor::test
