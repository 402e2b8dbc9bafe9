/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The hosts that requests go to. zox_http_set_hosts wins over the environment variables
 * VELKOR_MAIN_HOST and VELKOR_STATIC_HOST, and those win over the build settings of these names. A
 * host may carry a port. Any thread may ask.
 */
#ifndef VELKOR_CORE_HOSTS_H
#define VELKOR_CORE_HOSTS_H

#include <string>

namespace velkor {

/** The host that answers in XML. */
std::string main_host() noexcept;
/** The host that holds the dumps. */
std::string static_host() noexcept;

}  // namespace velkor

#endif
