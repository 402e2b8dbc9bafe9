/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The command-line options. */
#ifndef ZOX_SERVER_OPTIONS_H
#define ZOX_SERVER_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "zox-server/http/acceptor.h"
#include "zox-server/http/faults.h"
#include "zox-server/http/message.h"
#include "zox-server/service.h"

namespace velkor::server {

struct Options {
  std::string listen = "127.0.0.1";
  unsigned port = 8080;
  std::optional<unsigned> static_port;
  std::optional<unsigned> control_port;
  ConnectionLimits limits;
  /** The files of the certificate and its key; empty for HTTP. */
  std::string tls_certificate;
  std::string tls_key;
  std::string ready_file;

  ServiceSettings service;
  std::uint64_t seed = 1;
  std::int64_t postings = 1000;
  std::vector<Account> accounts;
  std::optional<Credentials> proxy;
  std::vector<Fault> faults;
};

/**
 * Reads the command line, the environment and the password files that it names.
 * @return the options, or nothing when the program should exit with `exit_status`
 */
std::optional<Options> read_options(int argc, char **argv, int &exit_status);

}  // namespace velkor::server

#endif
