/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A request as the endpoints see it, and their reply. */
#ifndef ZOX_SERVER_HTTP_MESSAGE_H
#define ZOX_SERVER_HTTP_MESSAGE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::server {

struct Parameter {
  std::string name;
  std::string value;
};

struct Credentials {
  std::string user;
  std::string secret;
};

/** What a request was received by. */
enum class Listener { main, dumps, control };

struct Request {
  Listener listener = Listener::main;
  std::string method;
  /** The complete URL that the client requested, without credentials. */
  std::string url;
  std::string host;
  std::string path;
  std::vector<Parameter> parameters;
  std::optional<Credentials> credentials;
  std::optional<Credentials> proxy_credentials;
  /** Whether the server was used as a proxy. */
  bool proxied = false;
  bool accepts_gzip = false;
  /** Whether the host is a loopback name or address with the port of this listener. */
  bool for_loopback = false;
  /** Whether a web page sent it (it has an Origin header). */
  bool from_web_page = false;
  /** The IP address of the client, without the port. */
  std::string client_address;

  [[nodiscard]] bool has(std::string_view name) const { return find(name) != nullptr; }
  /** The value of the last parameter with that name, empty when there is none. */
  [[nodiscard]] std::string value(std::string_view name) const;
  /** The decimal number at the start of that value, else 0. */
  [[nodiscard]] std::int64_t number(std::string_view name) const;

private:
  [[nodiscard]] const Parameter *find(std::string_view name) const;
};

/** How a reply is sent; all but the first violate HTTP. */
enum class Delivery {
  regular,
  close,         // closed without a byte
  reset,         // connection reset without a byte
  stall,         // nothing, but the connection stays open
  drop,          // closed after half of the body
  drip,          // a few bytes at a time
  length_short,  // Content-Length is less than is sent
  length_long,   // Content-Length is more than is sent
};

struct Reply {
  unsigned status = 200;
  std::string type = "text/plain; charset=utf-8";
  std::string body;
  std::vector<Parameter> headers;
  Delivery delivery = Delivery::regular;
  /** For Delivery::drip. */
  std::int64_t bytes_per_second = 0;
};

Reply text_reply(std::string body);
Reply xml_reply(std::string document);
/** An HTTP error with its reason as the body. */
Reply failure(unsigned status, std::string reason);

/** The parameters of an encoded query string, in order. */
std::vector<Parameter> parse_query(std::string_view query);

}  // namespace velkor::server

#endif
