/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A downloaded dump in its temporary file. */
#ifndef VELKOR_OPERATIONS_DUMP_FILE_H
#define VELKOR_OPERATIONS_DUMP_FILE_H

#include <cstddef>

#include "support/descriptor.h"
#include "support/owned.h"

namespace velkor {

/** A dump holds some thousands of postings; a few kilobytes could decompress to any size. */
inline constexpr std::size_t max_dump_size = std::size_t{1} << 30;

/**
 * Decompresses a dump from its beginning in blocks of 1023 bytes; a zero byte cuts the block that
 * holds it. A file that is not gzip at all is taken as it stands.
 * @param max_size  how many bytes the text may have
 * @return the text; null when the gzip data is broken or incomplete, or makes too much
 */
OwnedString read_dump(Descriptor descriptor, std::size_t max_size = max_dump_size) noexcept;

}  // namespace velkor

#endif
