/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/integration/peers.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/descriptor.h"

namespace velkor::test {
namespace {

namespace fs = std::filesystem;

/** The user "nobody" of every Debian system. */
constexpr const char *nobody = "65534";

sockaddr_in loopback(unsigned port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool accepts_connections(unsigned port) {
  const Descriptor connection(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = loopback(port);
  return connect(connection.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) ==
         0;
}

void give_to_nobody(const fs::path &directory) {
  const auto owner = static_cast<uid_t>(std::stoul(nobody));
  const auto give = [owner](const fs::path &path) {
    if (chown(path.c_str(), owner, owner) != 0)
      throw std::runtime_error("cannot give away " + path.string());
  };
  give(directory);
  for (const fs::directory_entry &entry : fs::recursive_directory_iterator(directory))
    give(entry.path());
}

/** @throws std::runtime_error when the condition does not become true in half a minute */
void wait_until(const std::string &what, const std::function<bool()> &condition) {
  using namespace std::chrono_literals;
  for (int tries = 0; tries < 3000; ++tries) {
    if (condition())
      return;
    std::this_thread::sleep_for(10ms);
  }
  throw std::runtime_error("waited in vain until " + what);
}

std::vector<std::string> lines_of(const std::string &text) {
  std::istringstream input(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(input, line);)
    lines.push_back(line);
  return lines;
}

}  // namespace

ReservedPort::ReservedPort() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  // With this, one who sets it as well may bind the port again and listen.
  const int yes = 1;
  setsockopt(socket_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  if (bind(socket_, reinterpret_cast<const sockaddr *>(&address), size) != 0 ||
      getsockname(socket_, reinterpret_cast<sockaddr *>(&address), &size) != 0)
    throw std::runtime_error("cannot reserve a port");
  port_ = ntohs(address.sin_port);
}

ReservedPort::~ReservedPort() {
  close(socket_);
}

void ReservedPort::wait_for_listener() const {
  wait_until("somebody listens on port " + number(), [this] { return accepts_connections(port_); });
}

void Peer::start(std::vector<std::string> command) {
  if (geteuid() == 0) {
    give_to_nobody(directory_.path());
    command.insert(command.begin(), {"setpriv", "--reuid", nobody, "--regid", nobody,
                                     "--clear-groups", "--pdeathsig", "KILL"});
  }
  process_.emplace(command, ProcessOptions{.input = "", .capture_errors = true});
  try {
    port_.wait_for_listener();
  } catch (const std::runtime_error &error) {
    process_->send_signal(SIGKILL);
    const ProcessResult result = process_->finish();
    throw std::runtime_error(error.what() + std::string(": ") + result.out + result.err);
  }
}

void Peer::stop() {
  if (!process_)
    return;
  process_->send_signal(SIGTERM);
  process_->wait();
  process_.reset();
}

FileServer::FileServer(const Files &files, const Options &options) {
  for (const auto &[path, content] : files) {
    const fs::path place = file("files" + path);
    fs::create_directories(place.parent_path());
    write_file(place, content);
  }
  std::string lines = "daemon off;\nmaster_process off;\npid pid;\nevents {}\nhttp {\n";
  for (const char *module : {"client_body", "proxy", "fastcgi", "uwsgi", "scgi"})
    lines += std::string(module) + "_temp_path " + module + ";\n";
  lines += "log_format short '$status $uri $http_authorization';\naccess_log requests short;\n"
           "server {\nroot files;\n" +
           options.configuration + "listen " + host();
  if (options.certificate) {
    // The server reads them as another user.
    write_file(file("certificate"), read_file(options.certificate->certificate));
    write_file(file("key"), read_file(options.certificate->key));
    lines += " ssl;\nssl_certificate " + file("certificate").string() + ";\nssl_certificate_key " +
             file("key").string();
  }
  write_file(file("conf"), lines + ";\n}\n}\n");
  const std::string directory = file("").string();
  start({"/usr/sbin/nginx", "-p", directory, "-e", "errors", "-c", file("conf")});
}

std::vector<std::string> FileServer::requests(std::size_t count) const {
  std::vector<std::string> lines;
  wait_until("the file server has answered", [&] {
    lines = lines_of(read_file(file("requests")));
    return lines.size() >= count;
  });
  return lines;
}

HttpProxy::HttpProxy(const ProxyAccount &account) {
  std::string lines = "Listen 127.0.0.1\nPort " + port() +
                      "\nTimeout 60\nAllow 127.0.0.1\nMaxClients 20\nLogLevel Connect\nLogFile \"" +
                      file("log").string() + "\"\n";
  if (!account.user.empty())
    lines += "BasicAuth " + account.user + " " + account.password + "\n";
  write_file(file("conf"), lines);
  start({"tinyproxy", "-d", "-c", file("conf")});
}

SocksProxy::SocksProxy(const ProxyAccount &account) {
  std::vector<std::string> command{"microsocks", "-i", "127.0.0.1", "-p", port()};
  if (!account.user.empty())
    command.insert(command.end(), {"-u", account.user, "-P", account.password});
  start(command);
}

}  // namespace velkor::test
