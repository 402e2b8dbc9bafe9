/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The hosts that requests go to. zox_http_set_hosts wins over the environment variables
 * VELKOR_MAIN_HOST and VELKOR_STATIC_HOST, and those win over the build settings of these names. A
 * host may carry a port, and "https://" in front. Any thread may ask.
 */
#ifndef VELKOR_CORE_HOSTS_H
#define VELKOR_CORE_HOSTS_H

#include <string>

namespace velkor {

/** The host that answers in XML, for messages. */
std::string main_host() noexcept;
/** The same as the beginning of a URL: "http://HOST", or "https://HOST" where it is set so. */
std::string main_address() noexcept;
/** The beginning of a URL at the host that holds the dumps. */
std::string static_address() noexcept;

/**
 * The file of the certificate authorities to trust, from zox_http_set_ca_file or VELKOR_CA_FILE;
 * empty for those of the system.
 */
std::string ca_file() noexcept;

}  // namespace velkor

#endif
