/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a loader finds in a cache file, reported to the caller and to the next save of that file.
 */
#ifndef VELKOR_CORE_CACHE_READING_H
#define VELKOR_CORE_CACHE_READING_H

#include <string>

#include "support/xml.h"

namespace velkor {

/** Why libxml2 refused the document that this thread read last. */
std::string xml_fault() noexcept;

/** Why a root element of another name than `expected` is refused. */
std::string root_fault(const char *expected) noexcept;

/** What is wrong with `document` when `root` is the one expected, or null; empty for nothing. */
std::string document_fault(const xml::Document &document, const xmlNode *root,
                           const char *expected) noexcept;

/**
 * Ends the loading of a file that zox_file_load() has read: a fault of the content makes it a
 * damaged one. Of a file that is not good, the next save makes a backup.
 * @param fault  what is wrong with the content; empty for nothing
 */
void finish_reading(const char *cache_name, bool compressed, const std::string &fault) noexcept;

}  // namespace velkor

#endif
