/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef ZOX_SERVER_SUPPORT_GZIP_H
#define ZOX_SERVER_SUPPORT_GZIP_H

#include <string>
#include <string_view>

namespace velkor::server {

/** Compresses `content` to gzip. The same content gives the same bytes. */
std::string gzip(std::string_view content);

/** Whether a reader of gzip data meets an error in `packed`, rather than only its end too soon. */
bool is_corrupt_gzip(std::string_view packed);

}  // namespace velkor::server

#endif
