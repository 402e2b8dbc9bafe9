/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Reads postings from text that is laid out just as a save writes it, several times as fast as an
 * XML parser can. Whatever looks different is left to EventReader, which decides what it means.
 */
#ifndef VELKOR_STORE_SECTION_SCANNER_H
#define VELKOR_STORE_SECTION_SCANNER_H

#include <optional>
#include <string_view>
#include <vector>

#include "posting/packed_event.h"
#include "posting/shared_parts.h"

namespace velkor {

/** The postings of a text that consists of their elements; nothing when it is laid out otherwise.
 */
std::optional<std::vector<PackedEvent>> scan_elements(std::string_view text,
                                                      SharedParts &parts) noexcept;

}  // namespace velkor

#endif
