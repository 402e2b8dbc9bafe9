/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** zox-server: a stand-in for the ZOX server. */
#include <array>
#include <csignal>
#include <iostream>

#include <glib.h>
#include <sys/stat.h>

#include "support/json.h"
#include "zox-server/control/control.h"
#include "zox-server/http/dispatcher.h"
#include "zox-server/http/http_server.h"
#include "zox-server/options.h"
#include "zox-server/support/event_source.h"

namespace velkor::server {
namespace {

std::unique_ptr<Service> open_service(const ServiceSettings &settings) {
  try {
    return std::make_unique<Service>(settings);
  } catch (const DatabaseError &error) {
    throw std::runtime_error("cannot use the database " + settings.database + ": " + error.what());
  }
}

std::string generate_password() {
  const OwnedText uuid(g_uuid_string_random());
  return std::string(uuid.get()).substr(0, 8);
}

/** Without any account nobody could log in, so a demo account is created then. */
void create_accounts(Service &service, const std::vector<Account> &accounts) {
  for (const Account &account : accounts)
    service.accounts.put(account, service.clock.now());
  if (!service.accounts.with_password().empty())
    return;
  const Account demo{"demo", generate_password(), false};
  service.accounts.put(demo, service.clock.now());
  std::cout << "zox-server: account " << demo.name << " with the password " << demo.password
            << '\n';
}

/** Null for plain HTTP. */
OwnedObject<GTlsCertificate> read_certificate(const Options &options) {
  if (options.tls_certificate.empty())
    return nullptr;
  GError *error = nullptr;
  OwnedObject<GTlsCertificate> certificate(g_tls_certificate_new_from_files(
      options.tls_certificate.c_str(), options.tls_key.c_str(), &error));
  if (const OwnedError failed{error})
    throw std::runtime_error("cannot use the certificate " + options.tls_certificate + ": " +
                             failed->message);
  return certificate;
}

/** The listeners that the options ask for. */
class Listeners {
public:
  Listeners(const Options &options, Dispatcher &dispatcher, const ControlContext &context) {
    const auto answer = [&dispatcher](const Request &request) {
      return dispatcher.answer(request);
    };
    const auto listening_at = [&options](unsigned port) {
      return ListenAddress{options.listen, port, read_certificate(options)};
    };
    main_.emplace(Listener::main, listening_at(options.port), options.limits, answer);
    if (options.static_port)
      dumps_.emplace(Listener::dumps, listening_at(*options.static_port), options.limits, answer);
    if (options.control_port)
      control_.emplace(
          Listener::control, ListenAddress{"127.0.0.1", *options.control_port}, options.limits,
          [context](const Request &request) { return answer_control(context, request); });
  }

  /** The line about the main listener comes last: it tells that the server is ready. */
  void announce() const {
    if (dumps_)
      std::cout << "zox-server: dumps on " << dumps_->url() << '\n';
    if (control_)
      std::cout << "zox-server: control on " << control_->url() << '\n';
    std::cout << "zox-server: listening on " << main_->url() << std::endl;
  }

  void write_ready_file(const std::string &file) const {
    Json json;
    json.begin_object().member("main", main_->url());
    if (dumps_)
      json.member("dumps", dumps_->url());
    if (control_)
      json.member("control", control_->url());
    const std::string document = json.end_object().pretty();
    GError *error = nullptr;
    g_file_set_contents(file.c_str(), document.data(), static_cast<gssize>(document.size()),
                        &error);
    if (const OwnedError failed{error})
      throw std::runtime_error(failed->message);
  }

private:
  std::optional<HttpServer> main_;
  std::optional<HttpServer> dumps_;
  std::optional<HttpServer> control_;
};

/** Runs until SIGTERM or SIGINT; signals are caught from construction on. */
class MainLoop {
public:
  MainLoop() : loop_(g_main_loop_new(nullptr, FALSE)) {}
  void run() const { g_main_loop_run(loop_.get()); }

private:
  [[nodiscard]] EventSource quit_on(int signal) const {
    return EventSource::signal(signal, [loop = loop_.get()] {
      g_main_loop_quit(loop);
      return true;
    });
  }

  std::unique_ptr<GMainLoop, ReleaseWith<g_main_loop_unref>> loop_;
  std::array<EventSource, 2> signals_{quit_on(SIGTERM), quit_on(SIGINT)};
};

void serve(const Options &options) {
  const MainLoop loop;
  const std::unique_ptr<Service> service = open_service(options.service);
  create_accounts(*service, options.accounts);
  SampleData sample_data(*service, options.seed);
  if (service->postings.count() == 0)
    sample_data.fill(options.postings);
  Dispatcher dispatcher(*service, options.proxy, options.static_port.has_value());
  for (const Fault &fault : options.faults)
    dispatcher.faults().add(fault);
  const Listeners listeners(options, dispatcher, {*service, dispatcher, sample_data});
  if (!options.ready_file.empty())
    listeners.write_ready_file(options.ready_file);
  listeners.announce();
  loop.run();
}

}  // namespace
}  // namespace velkor::server

int main(int argc, char **argv) {
  using namespace velkor::server;
  // The database contains passwords.
  umask(S_IRWXG | S_IRWXO);
  int exit_status = 0;
  const std::optional<Options> options = read_options(argc, argv, exit_status);
  if (!options)
    return exit_status;
  try {
    serve(*options);
    return 0;
  } catch (const std::exception &error) {
    std::cerr << "zox-server: " << error.what() << '\n';
    return 1;
  }
}
