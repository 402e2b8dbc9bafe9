/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writing a cache file through libxml2. */
#ifndef VELKOR_CORE_XML_FILE_H
#define VELKOR_CORE_XML_FILE_H

#include <libxml/tree.h>

namespace velkor {

enum class SaveFailure { warned, silent };

/**
 * Saves a whole document with indentation: plain, or gzip at level 9. libxml2's process-wide
 * compression mode is set to match, since it is part of how documents are saved.
 * @param caller  the function of the interface that warnings name
 * @param failure  whether a failure is logged as a warning
 * @return the number of bytes before compression, as libxml2 counts them, or -1
 */
int save_document(xmlDoc *document, const char *cache_name, bool compressed, const char *caller,
                  SaveFailure failure = SaveFailure::warned) noexcept;

}  // namespace velkor

#endif
