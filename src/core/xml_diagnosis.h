/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * What libxml2 reports while a document of postings is read. libxml2 keeps its handler of errors
 * per thread, so the text is kept per thread too: readers on different threads never mix theirs.
 */
#ifndef VELKOR_CORE_XML_DIAGNOSIS_H
#define VELKOR_CORE_XML_DIAGNOSIS_H

#include "support/owned.h"

/** libxml2's generic error handler: adds the formatted message to the text, behind a blank. */
extern "C" void xml_parser_error_func(void *context, const char *format, ...) G_GNUC_PRINTF(2, 3);

namespace velkor {

/**
 * Forgets the text and, if this thread's `installed` is not set yet, installs the handler. Each
 * reader has an `installed` of its own.
 */
void begin_diagnosis(bool &installed) noexcept;

/** The text since begin_diagnosis, or null when libxml2 said nothing; it is forgotten here. */
OwnedText take_diagnosis() noexcept;

}  // namespace velkor

#endif
