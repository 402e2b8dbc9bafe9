/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Runs a fuzz target over saved inputs: each file given, and each file in a directory given. */
#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/fuzz/session.h"
#include "tests/support/sandbox.h"

namespace {

int replay(const std::filesystem::path &path) {
  if (std::filesystem::is_directory(path)) {
    int inputs = 0;
    for (const auto &entry : std::filesystem::directory_iterator(path))
      inputs += replay(entry.path());
    return inputs;
  }
  const std::string input = velkor::test::read_file(path);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
  return 1;
}

}  // namespace

int main(int argc, char **argv) {
  int inputs = 0;
  for (int argument = 1; argument < argc; ++argument)
    inputs += replay(argv[argument]);
  std::printf("%d inputs\n", inputs);
  return inputs > 0 ? 0 : 1;
}
