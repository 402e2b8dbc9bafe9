/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A request as the endpoints see it and the reply that they give. */
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

/** The address at which a request arrived. */
enum class Entrance { main, dumps, control };

struct Request {
  Entrance entrance = Entrance::main;
  std::string method;
  /** The complete URL for which the client asked, credentials excluded. */
  std::string url;
  std::string host;
  std::string path;
  std::vector<Parameter> parameters;
  std::optional<Credentials> credentials;
  std::optional<Credentials> proxy_credentials;
  /** Whether the target was a whole URL, as a proxy is asked. */
  bool proxied = false;
  bool accepts_gzip = false;
  /** Whether a page in a browser sent it rather than a program. */
  bool from_browser_page = false;
  /** From where the request came, without its port. */
  std::string client_address;

  [[nodiscard]] bool has(std::string_view name) const { return find(name) != nullptr; }
  /** The value of the last parameter of that name, empty when there is none. */
  [[nodiscard]] std::string value(std::string_view name) const;
  /** The decimal number with which that value starts, else 0. */
  [[nodiscard]] std::int64_t number(std::string_view name) const;

private:
  [[nodiscard]] const Parameter *find(std::string_view name) const;
};

/** How the bytes of a reply go over the wire; all but the first break the rules of HTTP. */
enum class Delivery {
  regular,
  close,         // closed without a byte
  reset,         // connection reset without a byte
  stall,         // nothing, but the connection stays open
  drop,          // closed after half of the body
  drip,          // a few bytes at a time
  length_short,  // Content-Length says less than is sent
  length_long,   // Content-Length says more than is sent
};

struct Reply {
  unsigned status = 200;
  std::string type = "text/plain; charset=utf-8";
  std::string body;
  std::vector<Parameter> headers;
  Delivery delivery = Delivery::regular;
  /** For a dripping reply. */
  std::int64_t bytes_per_second = 0;
};

Reply text_reply(std::string body);
Reply xml_reply(std::string document);
/** A reply that is an HTTP failure, with its reason in the body. */
Reply failure(unsigned status, std::string reason);

/** The parameters of an encoded query text, in order. */
std::vector<Parameter> parse_query(std::string_view query);

}  // namespace velkor::server

#endif
