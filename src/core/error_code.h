/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Names for the result codes (`ZoxErrorCode`). */
#ifndef VELKOR_CORE_ERROR_CODE_H
#define VELKOR_CORE_ERROR_CODE_H

#include <velkor/zox_types.h>

namespace velkor::result {

inline constexpr ZoxErrorCode success = 0;
inline constexpr ZoxErrorCode unknown_error = 1;
inline constexpr ZoxErrorCode unauthorised = 2;
inline constexpr ZoxErrorCode banned = 3;
inline constexpr ZoxErrorCode database_down = 4;
inline constexpr ZoxErrorCode nothing_new = 5;
inline constexpr ZoxErrorCode no_modules = 6;
inline constexpr ZoxErrorCode plugin_not_loaded = 8;
inline constexpr ZoxErrorCode plugin_not_run = 9;
inline constexpr ZoxErrorCode unknown_reply = 10;
inline constexpr ZoxErrorCode not_parsed = 11;
inline constexpr ZoxErrorCode posting_not_cached = 12;
inline constexpr ZoxErrorCode no_data = 13;
inline constexpr ZoxErrorCode host_not_resolved = 14;
inline constexpr ZoxErrorCode proxy_not_resolved = 15;
inline constexpr ZoxErrorCode not_connected = 16;
inline constexpr ZoxErrorCode receive_failed = 17;
inline constexpr ZoxErrorCode send_failed = 18;
inline constexpr ZoxErrorCode timed_out = 19;
inline constexpr ZoxErrorCode no_transfer_handle = 24;
inline constexpr ZoxErrorCode update_required = 27;
inline constexpr ZoxErrorCode server_notice = 29;
inline constexpr ZoxErrorCode posting_gone = 30;

}  // namespace velkor::result

#endif
