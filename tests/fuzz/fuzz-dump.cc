/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* A downloaded dump: uncompressed input is returned unchanged, and never contains a zero byte. */
#include <cstring>

#include <fcntl.h>

#include "operations/dump_file.h"
#include "support/text.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString input = fuzz::text_of(data, size);
  const std::string path = fuzz::write_cache_file("dump.gz", view_of(input.get()));
  const OwnedString text = read_dump(Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)));

  const bool has_zero = std::memchr(input->str, '\0', input->len) != nullptr;
  const bool may_be_gzip = size >= 2 && data[0] == 0x1f && data[1] == 0x8b;
  if (!may_be_gzip && !has_zero)
    fuzz::require(fuzz::same_text(text.get(), input.get()), "a plain file is taken as it stands");
  if (text)
    fuzz::require(std::strlen(text->str) == text->len, "zero bytes cut their block short");
  return 0;
}
