/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The callbacks through which libcurl delivers a reply. */
#include <velkor/zox_http_curl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

#include "support/assertion.h"

namespace {

/** No reply comes near this; a server that sends more is broken or hostile. */
constexpr size_t longest_reply = size_t{256} << 20;

}  // namespace

extern "C" {

size_t zox_curl_write_function(void *chunk, size_t size, size_t count, void *data) {
  ZOX_ASSERT(data);
  auto *text = static_cast<ZoxString *>(data);
  const size_t length = size * count;
  if (length > longest_reply || text->len > longest_reply - length)
    return 0;
  const char *bytes = static_cast<const char *>(chunk);
  g_string_append_len(text, bytes, static_cast<gssize>(strnlen(bytes, length)));
  return length;
}

size_t zox_curl_file_write_function(void *chunk, size_t size, size_t count, void *fp) {
  ZOX_ASSERT(fp);
  const size_t length = size * count;
  const ssize_t written = write(*static_cast<const int *>(fp), chunk, length);
  if (written < 0 || static_cast<size_t>(written) < length)
    std::printf("write(): error = %s (%i)", g_strerror(errno), errno);
  return length;
}

}  // extern "C"
