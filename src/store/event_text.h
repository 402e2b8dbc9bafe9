/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A posting as text: as the cache file holds it, and as bytes that tell equal postings. */
#ifndef VELKOR_STORE_EVENT_TEXT_H
#define VELKOR_STORE_EVENT_TEXT_H

#include <cstddef>
#include <string>

#include <velkor/zox_event.h>

#include "support/byte_buffer.h"

namespace velkor {

/**
 * Appends the posting's element with its line breaks and indentation: the bytes that libxml2 saves
 * for what zox_events_xml_add_basic() makes. The posting must be one that can be written.
 */
void append_element(std::string &text, const ZoxEvent &event) noexcept;

/** About how many bytes append_element() appends. */
std::size_t element_size(const ZoxEvent &event) noexcept;

/**
 * Appends what makes up the posting in the cache file, so that two postings have the same bytes
 * exactly if all that the file keeps of them is the same, numbers beyond 32 bits and null texts
 * included.
 */
void append_identity(ByteBuffer &bytes, const ZoxEvent &event) noexcept;

/**
 * Why the posting cannot be written so that a reader takes it back, as a warning names it; null
 * when it can.
 */
const char *writing_fault(const ZoxEvent &event) noexcept;

/** Warns that the posting is left out. */
void warn_of_unwritable(gint32 postId, const char *fault) noexcept;

}  // namespace velkor

#endif
