/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Shared by the fuzz targets: a core that lasts for the whole run, in tolerant mode, with its files
 * in a temporary home and warnings switched off.
 */
#ifndef VELKOR_TESTS_FUZZ_SESSION_H
#define VELKOR_TESTS_FUZZ_SESSION_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/owned.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace velkor::fuzz {

/** Creates the core on the first call. */
void start_session();

/** For targets that open and close cores of their own: makes everything but the core. */
void start_without_core();

OwnedString text_of(const std::uint8_t *data, std::size_t size);

/** The cache directory of the session. */
std::filesystem::path cache_directory();

/** Removes every file of the cache, so that no input finds what an earlier one left. */
void clear_cache();

/** Gives every setting its default, except for an account, without which no request is made. */
void reset_settings();

/** Writes a file in the cache directory without using the library, and returns its path. */
std::string write_cache_file(const char *name, std::string_view content);

/** Aborts the run unless the property holds, and prints the property. */
void require(bool holds, const char *property);

/** Whether both are null or hold the same text. */
bool same_text(const GString *left, const GString *right) noexcept;

/** Whether two lists of texts hold the same texts in the same order. */
bool same_texts(const GSList *left, const GSList *right) noexcept;

}  // namespace velkor::fuzz

#endif
