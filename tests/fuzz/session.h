/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * What the fuzz targets share: a core that lasts for the whole run, in tolerant mode, with its
 * files in a temporary home, and with warnings switched off.
 */
#ifndef VELKOR_TESTS_FUZZ_SESSION_H
#define VELKOR_TESTS_FUZZ_SESSION_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "support/owned.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace velkor::fuzz {

/** Makes the core on its first call. */
void start_session();

OwnedString text_of(const std::uint8_t *data, std::size_t size);

/** Writes a file of the cache directory directly, without the library, and gives its path. */
std::string write_cache_file(const char *name, std::string_view content);

/** Ends the run, naming the property that does not hold. */
void require(bool holds, const char *property);

/** Whether both are null or hold the same text. */
bool same_text(const GString *left, const GString *right) noexcept;

/** Whether two lists of texts hold the same texts in the same order. */
bool same_texts(const GSList *left, const GSList *right) noexcept;

}  // namespace velkor::fuzz

#endif
