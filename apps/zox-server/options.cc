/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/options.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include <CLI/CLI.hpp>

namespace velkor::server {
namespace {

constexpr const char *password_variable = "ZOX_SERVER_PASSWORD";
/** Clients read times as signed 32-bit numbers, and sample data starts some months before now. */
constexpr std::int64_t earliest_time = 100'000'000;
constexpr std::int64_t latest_time = 2'000'000'000;

/** Options as given on the command line, before they are interpreted. */
struct RawOptions {
  std::vector<std::string> accounts;
  std::vector<std::string> faults;
  std::string auth_rule = auth_rules().front().name;
  std::string proxy_user;
  std::string proxy_password_file;
  bool list_faults = false;
};

/** The first line of a file, or of standard input for "-". */
std::string read_password(const std::string &file) {
  std::ifstream opened;
  if (file != "-")
    opened.open(file);
  std::istream &input = file == "-" ? std::cin : opened;
  std::string password;
  if (!std::getline(input, password) || password.empty())
    throw std::runtime_error("there is no password to read in " + file);
  return password;
}

/** Parses NAME=FILE, where FILE contains the password. */
Account read_account(const std::string &text) {
  const std::size_t equals = text.find('=');
  if (equals == 0 || equals == std::string::npos || text.find(':') < equals)
    throw std::runtime_error("--account: " + text + " does not have the form NAME=PASSWORDFILE");
  return {text.substr(0, equals), read_password(text.substr(equals + 1)), false};
}

Fault read_fault(const std::string &text) {
  const std::optional<Fault> fault = parse_fault(text);
  if (!fault)
    throw std::runtime_error(
        "--fault: " + text +
        " does not have the form PATH=KIND[:TIMES[:ARGUMENT]] with a KIND from "
        "--list-faults");
  return *fault;
}

std::vector<std::string> rule_names() {
  std::vector<std::string> names;
  for (const AuthRule &rule : auth_rules())
    names.emplace_back(rule.name);
  return names;
}

void add_listener_options(CLI::App &app, Options &options) {
  app.add_option("--listen", options.listen, "IP address to listen on")->capture_default_str();
  app.add_option("--port", options.port, "port to listen on, 0 for any free port")
      ->capture_default_str()
      ->check(CLI::Range(0, 65535));
  app.add_option("--static-port", options.static_port,
                 "serve the dumps on a separate port, 0 for any free port")
      ->check(CLI::Range(0, 65535));
  app.add_option("--control", options.control_port,
                 "accept control commands on this port of 127.0.0.1, 0 for any free port")
      ->check(CLI::Range(0, 65535));
  app.add_option("--max-connections", options.limits.max_connections,
                 "maximum number of open connections per listener")
      ->capture_default_str()
      ->check(CLI::Range(1, 100'000));
  app.add_option("--idle-timeout", options.limits.idle_timeout_seconds,
                 "close connections without traffic after this many seconds, 0 for never")
      ->capture_default_str()
      ->check(CLI::Range(0, 86'400));
  CLI::Option *certificate = app.add_option(
      "--tls-certificate", options.tls_certificate,
      "serve over HTTPS with the certificate in this PEM file; the control port stays at HTTP");
  CLI::Option *key = app.add_option("--tls-key", options.tls_key, "PEM file of its private key");
  certificate->needs(key);
  key->needs(certificate);
  app.add_option("--ready-file", options.ready_file,
                 "write the addresses to this file, as JSON, when ready");
}

void add_data_options(CLI::App &app, Options &options) {
  app.add_option("--database", options.service.database,
                 "SQLite file for all data; without it the data is lost on exit");
  app.add_option("--seed", options.seed, "seed of the generated sample data")
      ->capture_default_str();
  app.add_option("--postings", options.postings, "number of postings to generate in a new database")
      ->capture_default_str()
      ->check(CLI::Range(0, 10'000'000));
  app.add_option("--now", options.service.pinned_time,
                 "stop the clock at this time, in seconds since 1970")
      ->check(CLI::Range(earliest_time, latest_time));
  app.add_option("--chunk-size", options.service.postings_per_dump,
                 "maximum number of postings in a dump")
      ->capture_default_str()
      ->check(CLI::Range(1, 1'000'000));
  app.add_option("--chunks-per-reply", options.service.dumps_per_reply,
                 "maximum number of dumps named in one reply")
      ->capture_default_str()
      ->check(CLI::Range(1, 100'000));
}

void add_access_options(CLI::App &app, RawOptions &raw, Options &options) {
  app.add_option(
      "--account", raw.accounts,
      "NAME=FILE: add an account whose password is the first line of FILE (- for standard "
      "input); may be repeated");
  app.add_option("--auth-rule", raw.auth_rule, "how clients derive the secret of a request")
      ->capture_default_str()
      ->check(CLI::IsMember(rule_names()));
  CLI::Option *user =
      app.add_option("--proxy-user", raw.proxy_user, "require this user name from proxy clients");
  app.add_option("--proxy-password-file", raw.proxy_password_file,
                 "file whose first line is the password of that user")
      ->needs(user);
  user->needs("--proxy-password-file");
  app.add_option("--signup-pause", options.service.signup_pause_hours,
                 "hours before an address from which a member came can sign up another; 0 for none")
      ->capture_default_str()
      ->check(CLI::Range(0, 100'000));
}

void add_fault_options(CLI::App &app, RawOptions &raw) {
  app.add_option(
      "--fault", raw.faults,
      "PATH=KIND[:TIMES[:ARGUMENT]]: inject a fault into replies for PATH; may be repeated");
  app.add_flag("--list-faults", raw.list_faults, "print the kinds of faults and exit");
}

void print_faults() {
  std::size_t width = 0;
  for (const FaultKind &kind : fault_kinds())
    width = std::max(width, std::string_view(kind.name).size());
  for (const FaultKind &kind : fault_kinds()) {
    const std::string name = kind.name;
    std::cout << name << std::string(width + 2 - name.size(), ' ') << kind.description << '\n';
  }
}

void interpret(const RawOptions &raw, Options &options) {
  options.service.auth_rule = find_auth_rule(raw.auth_rule);
  for (const std::string &account : raw.accounts)
    options.accounts.push_back(read_account(account));
  if (const char *password = std::getenv(password_variable);
      password != nullptr && *password != '\0')
    options.accounts.push_back({"demo", password, false});
  for (const std::string &fault : raw.faults)
    options.faults.push_back(read_fault(fault));
  if (!raw.proxy_user.empty())
    options.proxy = Credentials{raw.proxy_user, read_password(raw.proxy_password_file)};
}

}  // namespace

std::optional<Options> read_options(int argc, char **argv, int &exit_status) {
  CLI::App app(
      "A stand-in for the ZOX server: its whole HTTP interface with generated sample data.",
      "zox-server");
  Options options;
  RawOptions raw;
  app.set_version_flag("--version", std::string("zox-server ") + ZOX_SERVER_VERSION);
  add_listener_options(app, options);
  add_data_options(app, options);
  add_access_options(app, raw, options);
  add_fault_options(app, raw);
  try {
    app.parse(argc, argv);
    interpret(raw, options);
  } catch (const CLI::ParseError &error) {
    exit_status = app.exit(error) == 0 ? 0 : 2;
    return std::nullopt;
  } catch (const std::exception &error) {
    std::cerr << "zox-server: " << error.what() << '\n';
    exit_status = 2;
    return std::nullopt;
  }
  if (!raw.list_faults)
    return options;
  print_faults();
  exit_status = 0;
  return std::nullopt;
}

}  // namespace velkor::server
