/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A request whose reply goes into a temporary file without a name. */
#ifndef VELKOR_HTTP_FILE_REQUEST_H
#define VELKOR_HTTP_FILE_REQUEST_H

#include <velkor/zox_types.h>

#include "support/descriptor.h"

namespace velkor {

/**
 * Asks the server for `path` as zox_http_curl_execute() does with a temporary file. This one has no
 * name: nothing is left of it, however the process ends.
 * @param file  receives the file, open for reading and writing; its offset is behind the reply
 */
ZoxErrorCode request_into_file(const char *path, Descriptor &file) noexcept;

}  // namespace velkor

#endif
