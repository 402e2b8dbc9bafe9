/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/server_process.h"

#include <csignal>
#include <ctime>
#include <memory>
#include <stdexcept>

#include <json-glib/json-glib.h>

#include "tests/support/http_client.h"

namespace velkor::test {
namespace {

struct Release {
  void operator()(JsonParser *parser) const { g_object_unref(parser); }
  void operator()(char *text) const { g_free(text); }
};

/** Owns a JSON document while its parts are read. */
class Json {
public:
  explicit Json(const std::string &text) : parser_(json_parser_new()) {
    if (json_parser_load_from_data(parser_.get(), text.c_str(), static_cast<gssize>(text.size()),
                                   nullptr) == FALSE)
      throw std::runtime_error("the server's control address answers: " + text);
  }
  [[nodiscard]] JsonObject *object() const {
    return json_node_get_object(json_parser_get_root(parser_.get()));
  }
  [[nodiscard]] JsonArray *array() const {
    return json_node_get_array(json_parser_get_root(parser_.get()));
  }

private:
  std::unique_ptr<JsonParser, Release> parser_;
};

std::vector<std::string> full_command(const std::vector<std::string> &options) {
  std::vector<std::string> command{ZOX_SERVER_PROGRAM,
                                   "--port",
                                   "0",
                                   "--control",
                                   "0",
                                   "--account",
                                   std::string(ServerProcess::user) + "=-"};
  command.insert(command.end(), options.begin(), options.end());
  return command;
}

std::vector<std::int64_t> ids_of(JsonObject *object, const char *name) {
  std::vector<std::int64_t> ids;
  JsonArray *array = json_object_get_array_member(object, name);
  for (guint place = 0; place < json_array_get_length(array); ++place)
    ids.push_back(json_array_get_int_element(array, place));
  return ids;
}

ServerProcess::Parameters parameters_of(JsonObject *request) {
  ServerProcess::Parameters parameters;
  JsonArray *array = json_object_get_array_member(request, "parameters");
  for (guint place = 0; place < json_array_get_length(array); ++place) {
    JsonObject *parameter = json_array_get_object_element(array, place);
    parameters.emplace_back(json_object_get_string_member(parameter, "name"),
                            json_object_get_string_member(parameter, "value"));
  }
  return parameters;
}

LoggedRequest request_of(JsonObject *request) {
  const auto text = [request](const char *name) {
    return std::string(json_object_get_string_member(request, name));
  };
  const auto truth = [request](const char *name) {
    return json_object_get_boolean_member(request, name) != FALSE;
  };
  return {text("method"),
          text("path"),
          parameters_of(request),
          text("host"),
          text("listener"),
          truth("credentials"),
          truth("proxied"),
          truth("proxyCredentials"),
          json_object_get_int_member(request, "status"),
          text("fault")};
}

}  // namespace

const char *ServerProcess::plugin_directory() {
  return ZOX_PLUGIN_DIRECTORY;
}

ServerProcess::ServerProcess(const std::vector<std::string> &options)
    : process_(full_command(options)) {
  process_.write_line(password);
  wait_until_ready();
}

ServerProcess::~ServerProcess() {
  if (running_)
    process_.send_signal(SIGTERM);
}

void ServerProcess::wait_until_ready() {
  constexpr std::string_view before_host = "://";
  while (main_.empty()) {
    const std::optional<std::string> line = process_.read_line();
    if (!line)
      throw std::runtime_error("zox-server does not start");
    const std::size_t place = line->find(before_host);
    if (place == std::string::npos)
      continue;
    const std::string address = line->substr(place + before_host.size());
    (line->find("dumps") < place     ? dumps_
     : line->find("control") < place ? control_
                                     : main_) = address;
  }
  if (dumps_.empty())
    dumps_ = main_;
}

std::string ServerProcess::port() const {
  return main_.substr(main_.rfind(':') + 1);
}

std::string ServerProcess::command(const std::string &method, const std::string &path,
                                   const Parameters &parameters) {
  const HttpReply reply =
      send({.url = with_parameters("http://" + control_ + path, parameters), .method = method});
  if (reply.result != 0 || reply.status != 200)
    throw std::runtime_error("the server's control address refuses " + path + ": " + reply.body);
  return reply.body;
}

ChangedData ServerProcess::advance(const DataChange &change) {
  const Json json(command("POST", "/advance",
                          {{"new", std::to_string(change.added)},
                           {"updated", std::to_string(change.updated)},
                           {"deleted", std::to_string(change.deleted)},
                           {"removed", std::to_string(change.removed)},
                           {"newsgroups", std::to_string(change.newsgroups)},
                           {"seconds", std::to_string(change.seconds)}}));
  JsonObject *object = json.object();
  return {ids_of(object, "new"), ids_of(object, "updated"), ids_of(object, "deleted"),
          ids_of(object, "removed"), json_object_get_int_member(object, "stamp")};
}

std::int64_t ServerProcess::add_posting(const Parameters &fields) {
  return json_object_get_int_member(Json(command("POST", "/posting", fields)).object(), "id");
}

void ServerProcess::change_posting(std::int64_t id, const Parameters &fields) {
  Parameters parameters{{"id", std::to_string(id)}};
  parameters.insert(parameters.end(), fields.begin(), fields.end());
  command("POST", "/posting", parameters);
}

void ServerProcess::fault(const std::string &path, const std::string &kind, std::int64_t times,
                          const std::string &argument) {
  command(
      "POST", "/fault",
      {{"path", path}, {"kind", kind}, {"times", std::to_string(times)}, {"argument", argument}});
}

void ServerProcess::clear_faults() {
  command("DELETE", "/faults");
}

std::vector<LoggedRequest> ServerProcess::requests(const std::string &path) {
  const Json json(command("GET", "/requests"));
  std::vector<LoggedRequest> requests;
  for (guint place = 0; place < json_array_get_length(json.array()); ++place) {
    LoggedRequest request = request_of(json_array_get_object_element(json.array(), place));
    if (path.empty() || request.path == path)
      requests.push_back(std::move(request));
  }
  return requests;
}

void ServerProcess::forget_requests() {
  command("DELETE", "/requests");
}

void ServerProcess::add_account(const std::string &name, const std::string &secret, bool banned) {
  command("POST", "/account",
          {{"user", name}, {"password", secret}, {"banned", banned ? "1" : "0"}});
}

int ServerProcess::stop() {
  process_.send_signal(SIGTERM);
  running_ = false;
  return process_.wait();
}

std::string keyed_hash(const std::string &text, const std::string &password) {
  const std::unique_ptr<char, Release> hash(g_compute_hmac_for_string(
      G_CHECKSUM_SHA256, reinterpret_cast<const guchar *>(password.data()), password.size(),
      text.data(), static_cast<gssize>(text.size())));
  return hash.get();
}

std::string server_secret(const std::string &url, const std::string &password,
                          std::int64_t clock_error) {
  const std::unique_ptr<char, Release> uuid(g_uuid_string_random());
  std::string nonce = uuid.get();
  std::erase(nonce, '-');
  const std::string salt = std::to_string(std::time(nullptr) + clock_error) + "." + nonce + ".";
  return salt + keyed_hash(salt + url, password);
}

}  // namespace velkor::test
