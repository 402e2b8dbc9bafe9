/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The stand-in server's requests: their parts to the endpoints and the control port, or their bytes
 * over a connection. Whatever is asked, replies are of the form that they claim. */
#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include <arpa/inet.h>
#include <json-glib/json-glib.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/descriptor.h"
#include "support/xml.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/session.h"
#include "zox-server/control/control.h"
#include "zox-server/http/dispatcher.h"
#include "zox-server/http/http_server.h"

namespace velkor::fuzz {
namespace {

using namespace velkor::server;

constexpr std::int64_t now = 1'700'000'000;

ServiceSettings settings_for(const std::filesystem::path &database) {
  ServiceSettings settings;
  settings.database = database;
  settings.pinned_time = now;
  settings.auth_rule = find_auth_rule("plain");
  settings.postings_per_dump = 3;
  return settings;
}

bool is_json(const std::string &text) {
  const OwnedObject<JsonParser> parser(json_parser_new());
  return json_parser_load_from_data(parser.get(), text.data(), static_cast<gssize>(text.size()),
                                    nullptr) != FALSE;
}

bool is_encoded(const Reply &reply) {
  return std::ranges::any_of(
      reply.headers, [](const Parameter &header) { return header.name == "Content-Encoding"; });
}

void check(const Reply &reply) {
  constexpr std::array statuses{200U, 400U, 403U, 404U, 405U, 407U};
  if (reply.type == "application/json")
    require(is_json(reply.body), "JSON can be parsed");
  if (reply.status == 200 && reply.type.starts_with("text/xml") && !is_encoded(reply))
    require(xml::parse(reply.body) != nullptr, "XML is well-formed");
  require(std::ranges::find(statuses, reply.status) != statuses.end(), "the status is a known one");
}

/** A database with sample data, which take far longer to make than to copy. */
std::filesystem::path make_sample() {
  std::filesystem::path file = cache_directory() / "sample.db";
  Service service(settings_for(file));
  service.accounts.put({"demo", "demo", false}, now);
  SampleData(service, 1).fill(4);
  return file;
}

std::filesystem::path copy_of_sample() {
  static const std::filesystem::path sample = make_sample();
  std::filesystem::path copy = cache_directory() / "server.db";
  for (const char *suffix : {"-wal", "-shm"})
    std::filesystem::remove(copy.string() + suffix);
  std::filesystem::copy_file(sample, copy, std::filesystem::copy_options::overwrite_existing);
  return copy;
}

/** A server as it has just been started, without its listeners. */
struct Server {
  /** The reply, which is in order unless the server was told to make faults. */
  Reply answer_soundly(const Request &request) {
    const bool faulty = !dispatcher.faults().all().empty();
    Reply reply = request.listener == Listener::control
                      ? answer_control({service, dispatcher, sample_data}, request)
                      : dispatcher.answer(request);
    if (!faulty)
      check(reply);
    return reply;
  }

  Service service{settings_for(copy_of_sample())};
  SampleData sample_data{service, 1};
  Dispatcher dispatcher{service, std::nullopt, false};
};

constexpr std::array paths{
    "/3.7.3/xml.php",       "/3.7.3/dumps/",       "/3.7.3/xml-groups.php",
    "/3.7.3/xml-posts.php", "/3.7.3/xml-dyn.php",  "/3.7.3/xml-findpost.php",
    "/3.7.3/xml-forum.php", "/3.7.3/xml-mail.php", "/3.7.3/xml-wlist.php",
    "/3.7.3/xml-kudos.php", "/3.7.3/xml-warn.php", "/3.7.3/xml-user.php",
    "/3.7.3/xml-myzox.php", "/3.7.3/xml-post.php", "/3.7.3/xml-signup.php",
};
constexpr std::array control_paths{
    "/commands", "/status",  "/advance", "/posting",  "/fault",   "/faults",
    "/requests", "/account", "/message", "/reaction", "/address", "/signup-pause",
};
constexpr std::array methods{"GET", "POST", "DELETE", "HEAD"};

/** The parts of a request as HTTP would have given them. */
Request take_request(Input &input) {
  Request request;
  request.listener = input.flag() ? Listener::control : Listener::main;
  const bool control = request.listener == Listener::control;
  request.method = methods[input.below(methods.size())];
  request.path =
      control ? control_paths[input.below(control_paths.size())] : paths[input.below(paths.size())];
  request.path += input.view();
  const std::string query = input.text();
  request.parameters = parse_query(query);
  request.host = "127.0.0.1:80";
  request.url = "http://" + request.host + request.path + "?" + query;
  request.accepts_gzip = input.flag();
  request.for_loopback = true;
  request.client_address = "127.0.0.1";
  if (!input.flag())
    request.credentials = Credentials{"demo", "demo"};
  return request;
}

/** Large numbers of postings would be slow rather than telling. */
bool asks_for_much(const Request &request) {
  constexpr std::array<std::string_view, 5> counts{"new", "updated", "deleted", "removed",
                                                   "newsgroups"};
  constexpr std::size_t most_digits = 2;
  return std::ranges::any_of(request.parameters, [&](const Parameter &parameter) {
    return parameter.value.size() > most_digits &&
           std::ranges::find(counts, parameter.name) != counts.end();
  });
}

void check_parts(Input &input) {
  Server server;
  while (!input.empty()) {
    const Request request = take_request(input);
    if (!asks_for_much(request))
      server.answer_soundly(request);
  }
}

/** A listener that hands requests to the server of the moment. */
class Wire {
public:
  /** Sends the bytes over a connection of their own and waits for its end. */
  void carry(Server &server, std::string_view bytes) {
    server_ = &server;
    const Descriptor client = connect();
    while (!bytes.empty() && write_some(client, bytes))
      serve();
    shutdown(client.get(), SHUT_WR);
    while (read_some(client))
      serve();
    server_ = nullptr;
    serve();
  }

private:
  [[nodiscard]] Descriptor connect() const {
    const std::string url = listener_.url();
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(url.substr(url.rfind(':') + 1))));
    Descriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    require(::connect(client.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) ==
                0,
            "the server can be reached");
    return client;
  }

  static void serve() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE)
      ;
  }

  /** False when the server takes no more. */
  static bool write_some(const Descriptor &client, std::string_view &bytes) {
    const ssize_t length =
        send(client.get(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (length < 0)
      return errno == EAGAIN;
    bytes.remove_prefix(static_cast<std::size_t>(length));
    return true;
  }

  /** False when the connection has ended. */
  static bool read_some(const Descriptor &client) {
    std::array<char, 65536> block{};
    pollfd poll_client{client.get(), POLLIN, 0};
    poll(&poll_client, 1, 1);
    const ssize_t length = recv(client.get(), block.data(), block.size(), MSG_DONTWAIT);
    return length > 0 || (length < 0 && errno == EAGAIN);
  }

  Server *server_ = nullptr;
  HttpServer listener_{Listener::main,
                       ListenAddress{"127.0.0.1"},
                       {},
                       [this](const Request &request) { return server_->answer_soundly(request); }};
};

void check_bytes(Input &input) {
  static Wire wire;
  Server server;
  wire.carry(server, input.rest());
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_without_core();
  fuzz::Input input(data, size);
  if (input.flag())
    fuzz::check_bytes(input);
  else
    fuzz::check_parts(input);
  return 0;
}
