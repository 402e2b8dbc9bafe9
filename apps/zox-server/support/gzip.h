/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef ZOX_SERVER_SUPPORT_GZIP_H
#define ZOX_SERVER_SUPPORT_GZIP_H

#include <string>
#include <string_view>

namespace velkor::server {

/** Compresses `content` to gzip. The same content gives the same bytes. */
std::string gzip(std::string_view content);

}  // namespace velkor::server

#endif
