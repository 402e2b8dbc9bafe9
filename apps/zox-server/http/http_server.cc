/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/http_server.h"

#include <stdexcept>

namespace velkor::server {
namespace {

/** Where the address of a client keeps the socket of its connection. */
constexpr const char *socket_key = "zox-server-socket";

std::string header_of(SoupServerMessage *message, const char *name) {
  const char *value =
      soup_message_headers_get_list(soup_server_message_get_request_headers(message), name);
  return value == nullptr ? std::string() : value;
}

/** The user and the secret in a "Basic ..." header. */
std::optional<Credentials> credentials_in(const std::string &header) {
  constexpr std::string_view scheme = "Basic ";
  if (g_ascii_strncasecmp(header.c_str(), scheme.data(), scheme.size()) != 0)
    return std::nullopt;
  gsize length = 0;
  const std::unique_ptr<guchar, ReleaseWith<g_free>> bytes(
      g_base64_decode(header.c_str() + scheme.size(), &length));
  const std::string text(reinterpret_cast<const char *>(bytes.get()), length);
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos)
    return std::nullopt;
  return Credentials{text.substr(0, colon), text.substr(colon + 1)};
}

using OwnedUri = std::unique_ptr<GUri, ReleaseWith<g_uri_unref>>;

int default_port(GUri *uri) {
  return std::string_view(g_uri_get_scheme(uri)) == "https" ? 443 : 80;
}

int port_of(GUri *uri) {
  const int port = g_uri_get_port(uri);
  return port < 0 ? default_port(uri) : port;
}

GInetSocketAddress *local_address(SoupServerMessage *message) {
  return reinterpret_cast<GInetSocketAddress *>(soup_server_message_get_local_address(message));
}

bool is_loopback(const char *host) {
  if (host == nullptr)
    return false;
  if (g_ascii_strcasecmp(host, "localhost") == 0)
    return true;
  const OwnedObject<GInetAddress> address(g_inet_address_new_from_string(host));
  return address && g_inet_address_get_is_loopback(address.get()) != FALSE;
}

/** Both the target and the Host header count, since an absolute target would hide the header. */
bool is_for_loopback(SoupServerMessage *message, GUri *uri) {
  const int port = g_inet_socket_address_get_port(local_address(message));
  const auto matches = [port](GUri *named) {
    return named != nullptr && port_of(named) == port && is_loopback(g_uri_get_host(named));
  };
  const std::string header = header_of(message, "Host");
  if (header.empty())
    return matches(uri);
  const OwnedUri named(g_uri_parse(("http://" + header).c_str(), G_URI_FLAGS_NONE, nullptr));
  return matches(uri) && matches(named.get());
}

/** Whether the URL names the address that received the request. */
bool names_own_address(SoupServerMessage *message, GUri *uri) {
  GInetSocketAddress *local = local_address(message);
  const OwnedText address(g_inet_address_to_string(g_inet_socket_address_get_address(local)));
  const std::string_view host = g_uri_get_host(uri);
  return port_of(uri) == g_inet_socket_address_get_port(local) &&
         (host == address.get() || host == "localhost");
}

/**
 * Requests to a proxy have an absolute URL as their target. libsoup makes every target absolute, so
 * they are recognised by headers that only proxies get, or by a foreign host.
 */
bool is_proxied(SoupServerMessage *message, GUri *uri) {
  return !header_of(message, "Proxy-Connection").empty() ||
         !header_of(message, "Proxy-Authorization").empty() || !names_own_address(message, uri);
}

std::string host_of(GUri *uri) {
  std::string host = g_uri_get_host(uri);
  if (host.find(':') != std::string::npos)
    host = "[" + host + "]";
  return port_of(uri) == default_port(uri) ? host : host + ":" + std::to_string(port_of(uri));
}

/** The IP address of the client; empty when it is not connected over TCP. */
std::string client_of(SoupServerMessage *message) {
  const char *host = soup_server_message_get_remote_host(message);
  return host == nullptr ? std::string() : host;
}

/** Connections that are not accepted by libsoup itself do not give their sockets. */
OwnedObject<GSocket> socket_of(SoupServerMessage *message) {
  GSocketAddress *remote = soup_server_message_get_remote_address(message);
  return OwnedObject<GSocket>(
      G_SOCKET(g_object_ref(g_object_get_data(G_OBJECT(remote), socket_key))));
}

Request read_request(SoupServerMessage *message, Listener listener) {
  GUri *uri = soup_server_message_get_uri(message);
  const char *query = g_uri_get_query(uri);
  Request request;
  request.listener = listener;
  request.method = soup_server_message_get_method(message);
  request.url = OwnedText(g_uri_to_string_partial(uri, G_URI_HIDE_USERINFO)).get();
  request.host = host_of(uri);
  request.path = g_uri_get_path(uri);
  request.parameters = parse_query(query == nullptr ? "" : query);
  request.credentials = credentials_in(header_of(message, "Authorization"));
  request.proxy_credentials = credentials_in(header_of(message, "Proxy-Authorization"));
  request.proxied = is_proxied(message, uri);
  request.accepts_gzip = header_of(message, "Accept-Encoding").find("gzip") != std::string::npos;
  request.for_loopback = is_for_loopback(message, uri);
  request.from_web_page = !header_of(message, "Origin").empty();
  request.client_address = client_of(message);
  return request;
}

void send_reply(SoupServerMessage *message, const Reply &reply) {
  SoupMessageHeaders *headers = soup_server_message_get_response_headers(message);
  for (const Parameter &header : reply.headers)
    soup_message_headers_append(headers, header.name.c_str(), header.value.c_str());
  soup_server_message_set_status(message, reply.status, nullptr);
  soup_server_message_set_response(message, reply.type.c_str(), SOUP_MEMORY_COPY, reply.body.data(),
                                   reply.body.size());
}

}  // namespace

HttpServer::HttpServer(Listener listener, ListenAddress address, const ConnectionLimits &limits,
                       Handler handler)
    : listener_(listener), handler_(std::move(handler)),
      certificate_(std::move(address.certificate)),
      server_(soup_server_new("raw-paths", TRUE, "server-header", "zox-server", nullptr)),
      acceptor_(address.address, address.port, limits, [this](GSocket *socket) { serve(socket); }) {
  soup_server_add_early_handler(server_.get(), nullptr, prepare, this, nullptr);
  soup_server_add_handler(server_.get(), nullptr, handle, this, nullptr);
}

HttpServer::~HttpServer() {
  soup_server_disconnect(server_.get());
}

/** Null when there is no such stream. */
OwnedObject<GIOStream> HttpServer::stream_over(GSocket *socket) const {
  OwnedObject<GIOStream> stream(G_IO_STREAM(g_socket_connection_factory_create_connection(socket)));
  if (!certificate_)
    return stream;
  // The handshake comes with the first read.
  return OwnedObject<GIOStream>(
      g_tls_server_connection_new(stream.get(), certificate_.get(), nullptr));
}

void HttpServer::serve(GSocket *socket) {
  const OwnedObject<GIOStream> stream = stream_over(socket);
  const OwnedObject<GSocketAddress> local(g_socket_get_local_address(socket, nullptr));
  const OwnedObject<GSocketAddress> remote(g_socket_get_remote_address(socket, nullptr));
  // A client that is already gone has no address; its connection closes with the last reference.
  if (!stream || !local || !remote)
    return;
  g_object_set_data_full(G_OBJECT(remote.get()), socket_key, g_object_ref(socket), g_object_unref);
  soup_server_accept_iostream(server_.get(), stream.get(), local.get(), remote.get(), nullptr);
}

/** No endpoint reads request bodies, so they are discarded as they arrive. */
void HttpServer::prepare(SoupServer *, SoupServerMessage *message, const char *, GHashTable *,
                         gpointer) {
  soup_message_body_set_accumulate(soup_server_message_get_request_body(message), FALSE);
}

void HttpServer::handle(SoupServer *, SoupServerMessage *message, const char *, GHashTable *,
                        gpointer self) {
  static_cast<HttpServer *>(self)->answer(message);
}

void HttpServer::answer(SoupServerMessage *message) {
  const Request request = read_request(message, listener_);
  const Reply reply = handler_(request);
  if (reply.delivery == Delivery::regular)
    send_reply(message, reply);
  else
    answer_raw(message, reply, request.method == "HEAD");
}

void HttpServer::answer_raw(SoupServerMessage *message, const Reply &reply, bool head_only) {
  raw_.remove_if([](const RawConnection &connection) { return connection.is_closed(); });
  raw_.emplace_back(message, socket_of(message), reply, head_only);
}

}  // namespace velkor::server
