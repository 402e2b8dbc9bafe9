/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/stub_server.h"

#include <algorithm>
#include <stdexcept>

#include <gio/gfiledescriptorbased.h>
#include <sys/socket.h>

namespace velkor::test {
namespace {

/** Makes the context that of the calling thread: libsoup attaches its sources to it. */
class ThreadContext {
public:
  explicit ThreadContext(GMainContext *context) : context_(context) {
    g_main_context_push_thread_default(context_);
  }
  ~ThreadContext() { g_main_context_pop_thread_default(context_); }
  ThreadContext(const ThreadContext &) = delete;
  ThreadContext &operator=(const ThreadContext &) = delete;

private:
  GMainContext *context_;
};

/** Listens on a free port of loopback. @return "127.0.0.1:PORT" */
std::string listen_on_loopback(GSocketService *service) {
  const OwnedObject<GSocketAddress> wanted(g_inet_socket_address_new_from_string("127.0.0.1", 0));
  GSocketAddress *address = nullptr;
  GError *error = nullptr;
  g_socket_listener_add_address(G_SOCKET_LISTENER(service), wanted.get(), G_SOCKET_TYPE_STREAM,
                                G_SOCKET_PROTOCOL_TCP, nullptr, &address, &error);
  if (const OwnedError failure{error})
    throw std::runtime_error(std::string("the stub server cannot listen: ") + failure->message);
  const OwnedObject<GSocketAddress> owned(address);
  return "127.0.0.1:" +
         std::to_string(g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(address)));
}

/** libsoup's own listener never releases the sockets that it accepts, hence this one. */
gboolean pass_on(GSocketService *, GSocketConnection *connection, GObject *, gpointer server) {
  const OwnedObject<GSocketAddress> local(
      g_socket_connection_get_local_address(connection, nullptr));
  const OwnedObject<GSocketAddress> remote(
      g_socket_connection_get_remote_address(connection, nullptr));
  soup_server_accept_iostream(SOUP_SERVER(server), G_IO_STREAM(connection), local.get(),
                              remote.get(), nullptr);
  return TRUE;
}

std::vector<std::pair<std::string, std::string>> parameters_of(const std::string &query) {
  std::vector<std::pair<std::string, std::string>> parameters;
  GUriParamsIter iterator;
  g_uri_params_iter_init(&iterator, query.c_str(), -1, "&", G_URI_PARAMS_NONE);
  char *name = nullptr;
  char *value = nullptr;
  while (g_uri_params_iter_next(&iterator, &name, &value, nullptr) != FALSE)
    parameters.emplace_back(OwnedText(name).get(), OwnedText(value).get());
  return parameters;
}

void record_header(const char *name, const char *value, gpointer headers) {
  const OwnedText lower(g_ascii_strdown(name, -1));
  static_cast<std::map<std::string, std::string> *>(headers)->emplace(lower.get(), value);
}

StubRequest request_of(SoupServerMessage *message, const std::string &own_host) {
  GUri *uri = soup_server_message_get_uri(message);
  const char *query = g_uri_get_query(uri);
  StubRequest request;
  request.method = soup_server_message_get_method(message);
  request.path = g_uri_get_path(uri);
  request.target = OwnedText(g_uri_to_string(uri)).get();
  if (const std::string own = "http://" + own_host; request.target.starts_with(own + "/"))
    request.target.erase(0, own.size());
  request.parameters = parameters_of(query == nullptr ? "" : query);
  soup_message_headers_foreach(soup_server_message_get_request_headers(message), record_header,
                               &request.headers);
  return request;
}

bool has_header(const StubReply &reply, std::string_view name) {
  return std::ranges::any_of(reply.headers,
                             [&](const auto &header) { return header.first == name; });
}

/** Whether libsoup would not send the reply as it is scripted. */
bool is_broken(const StubReply &reply) {
  return reply.close_at_once || reply.send_only || reply.claim_length || reply.stall ||
         reply.reset || has_header(reply, "Content-Length");
}

void send_reply(SoupServerMessage *message, const StubReply &reply) {
  SoupMessageHeaders *headers = soup_server_message_get_response_headers(message);
  for (const auto &[name, value] : reply.headers)
    soup_message_headers_append(headers, name.c_str(), value.c_str());
  if (!reply.keep_alive)
    soup_message_headers_append(headers, "Connection", "close");
  soup_server_message_set_status(message, static_cast<guint>(reply.status), "Scripted");
  soup_message_body_append(soup_server_message_get_response_body(message), SOUP_MEMORY_COPY,
                           reply.body.data(), reply.body.size());
}

/** A broken reply as it goes over the wire. */
std::string bytes_of(const StubReply &reply) {
  if (reply.close_at_once)
    return {};
  std::string bytes = "HTTP/1.1 " + std::to_string(reply.status) + " Scripted\r\n";
  for (const auto &[name, value] : reply.headers)
    bytes += name + ": " + value + "\r\n";
  bytes +=
      "Content-Length: " + std::to_string(reply.claim_length.value_or(reply.body.size())) + "\r\n";
  bytes += "Connection: close\r\n\r\n";
  return bytes + reply.body.substr(0, reply.send_only.value_or(reply.body.size()));
}

/** Whether the client holds the connection open without using it. */
bool is_idle(GSocket *socket) {
  return g_socket_is_closed(socket) == FALSE &&
         g_socket_condition_check(socket, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP)) == 0;
}

/** Lets closing the connection send a reset. */
void close_by_reset(GOutputStream *socket) {
  const linger none{.l_onoff = 1, .l_linger = 0};
  setsockopt(g_file_descriptor_based_get_fd(G_FILE_DESCRIPTOR_BASED(socket)), SOL_SOCKET, SO_LINGER,
             &none, sizeof none);
}

}  // namespace

std::string StubRequest::parameter(std::string_view name) const {
  const auto found =
      std::ranges::find(parameters, name, &std::pair<std::string, std::string>::first);
  return found == parameters.end() ? "" : found->second;
}

StubServer::StubServer()
    : context_(g_main_context_new()), server_(soup_server_new("raw-paths", TRUE, nullptr)) {
  listen();
  thread_ = std::jthread([this](const std::stop_token &stop) { serve(stop); });
}

StubServer::~StubServer() {
  thread_.request_stop();
  g_main_context_wakeup(context_.get());
  thread_.join();
}

void StubServer::listen() {
  const ThreadContext context(context_.get());
  service_.reset(g_socket_service_new());
  host_ = listen_on_loopback(service_.get());
  g_signal_connect(service_.get(), "incoming", G_CALLBACK(pass_on), server_.get());
  soup_server_add_handler(server_.get(), nullptr, handle, this, nullptr);
}

void StubServer::serve(const std::stop_token &stop) {
  const ThreadContext context(context_.get());
  while (!stop.stop_requested())
    g_main_context_iteration(context_.get(), TRUE);
  stalled_.clear();
  kept_.clear();
  g_socket_service_stop(service_.get());
  soup_server_disconnect(server_.get());
  while (g_main_context_iteration(context_.get(), FALSE) != FALSE)
    continue;
}

void StubServer::reply(const std::string &path, StubReply reply) {
  const std::lock_guard lock(mutex_);
  scripts_[path].standing = std::move(reply);
}

void StubServer::reply(const std::string &path, std::string body) {
  reply(path, StubReply{.body = std::move(body)});
}

void StubServer::reply_once(const std::string &path, StubReply reply) {
  const std::lock_guard lock(mutex_);
  scripts_[path].once.push_back(std::move(reply));
}

void StubServer::reply_once(const std::string &path, std::string body) {
  reply_once(path, StubReply{.body = std::move(body)});
}

std::vector<StubRequest> StubServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

int StubServer::clients_kept_waiting() const {
  const std::lock_guard lock(mutex_);
  return clients_kept_waiting_;
}

std::vector<StubRequest> StubServer::requests(std::string_view path) const {
  std::vector<StubRequest> found = requests();
  std::erase_if(found, [&](const StubRequest &request) { return request.path != path; });
  return found;
}

void StubServer::handle(SoupServer *, SoupServerMessage *message, const char *, GHashTable *,
                        gpointer self) noexcept {
  auto *server = static_cast<StubServer *>(self);
  server->count_waiting_client(soup_server_message_get_socket(message));
  const StubReply reply = server->take_reply(request_of(message, server->host_));
  if (is_broken(reply))
    server->send_raw(message, reply);
  else
    send_reply(message, reply);
  if (reply.keep_alive)
    server->kept_.emplace_back(
        static_cast<GSocket *>(g_object_ref(soup_server_message_get_socket(message))));
}

void StubServer::count_waiting_client(GSocket *socket) {
  const bool waiting = std::ranges::any_of(
      kept_, [&](const auto &kept) { return kept.get() != socket && is_idle(kept.get()); });
  const std::lock_guard lock(mutex_);
  clients_kept_waiting_ += waiting ? 1 : 0;
}

void StubServer::send_raw(SoupServerMessage *message, const StubReply &reply) {
  OwnedObject<GIOStream> connection(soup_server_message_steal_connection(message));
  GOutputStream *output = g_io_stream_get_output_stream(connection.get());
  const std::string bytes = bytes_of(reply);
  // The client may have left already.
  g_output_stream_write_all(output, bytes.data(), bytes.size(), nullptr, nullptr, nullptr);
  if (reply.reset)
    close_by_reset(output);
  if (reply.stall)
    stalled_.push_back(std::move(connection));
  else
    g_io_stream_close(connection.get(), nullptr, nullptr);
}

StubReply StubServer::take_reply(const StubRequest &request) {
  const std::lock_guard lock(mutex_);
  requests_.push_back(request);
  const auto script = scripts_.find(request.path);
  if (script == scripts_.end())
    return {.status = 404};
  auto &[once, standing] = script->second;
  if (once.empty())
    return standing.value_or(StubReply{.status = 404});
  StubReply reply = std::move(once.front());
  once.pop_front();
  return reply;
}

}  // namespace velkor::test
