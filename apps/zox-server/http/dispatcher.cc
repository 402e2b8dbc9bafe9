/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/dispatcher.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "zox-server/endpoints/endpoints.h"
#include "zox-server/support/gzip.h"

namespace velkor::server {

enum class Access { members, everyone };

struct Route {
  /** A path that ends with a slash covers everything below it. */
  std::string_view path;
  Access access;
  Reply (*handler)(Service &, const Request &, const Account &);
  /** A parameter whose value is kept out of the log; empty for none. */
  std::string_view hidden_parameter;
};

namespace {

constexpr std::array routes{
    Route{"/3.7.3/xml.php", Access::members, endpoints::availability, ""},
    Route{"/3.7.3/dumps/", Access::everyone, endpoints::dump, ""},
    Route{"/3.7.3/xml-groups.php", Access::members, endpoints::newsgroups, ""},
    Route{"/3.7.3/xml-findpost.php", Access::members, endpoints::find_posting, ""},
    Route{"/3.7.3/xml-posts.php", Access::members, endpoints::posting_details, ""},
    Route{"/3.7.3/xml-dyn.php", Access::members, endpoints::forum, ""},
    Route{"/3.7.3/xml-forum.php", Access::members, endpoints::react, ""},
    Route{"/3.7.3/xml-wlist.php", Access::members, endpoints::watchlist, ""},
    Route{"/3.7.3/xml-mail.php", Access::members, endpoints::mail, ""},
    Route{"/3.7.3/xml-kudos.php", Access::members, endpoints::kudos, ""},
    Route{"/3.7.3/xml-warn.php", Access::members, endpoints::warn, ""},
    Route{"/3.7.3/xml-user.php", Access::members, endpoints::profile, ""},
    Route{"/3.7.3/xml-myzox.php", Access::members, endpoints::myzox, ""},
    Route{"/3.7.3/xml-post.php", Access::members, endpoints::new_spot, ""},
    Route{"/3.7.3/xml-signup.php", Access::everyone, endpoints::signup, "p"},
};

/** Smaller replies do not gain from compression. */
constexpr std::size_t min_size_to_compress = 512;

bool covers(const Route &route, std::string_view path) {
  return route.path.ends_with('/') ? path.starts_with(route.path) : path == route.path;
}

/** The route of a path, null when there is none. */
const Route *find_route(std::string_view path) {
  const auto *found =
      std::ranges::find_if(routes, [path](const Route &route) { return covers(route, path); });
  return found == routes.end() ? nullptr : found;
}

/** The real time counts, wherever the clock of the service stands. */
bool use_up(Service &service, const std::string &secret, const Account &account) {
  const std::optional<Salt> salt = salt_of(secret);
  return salt && service.nonces.use(account.name, salt->nonce, salt->time, std::time(nullptr));
}

bool has_valid_secret(Service &service, const Request &request, const Account &account) {
  const AuthRule &rule = *service.settings.auth_rule;
  const std::string &sent = request.credentials->secret;
  return !account.password.empty() &&
         equal_secrets(sent, rule.secret(sent, request.url, account.password)) &&
         (!rule.once || use_up(service, sent, account));
}

/** The account of the member who sent the request; nothing when its credentials are not valid. */
std::optional<Account> authenticate(Service &service, const Request &request) {
  if (!request.credentials)
    return std::nullopt;
  std::optional<Account> account = service.accounts.find(request.credentials->user);
  return account && has_valid_secret(service, request, *account) ? account : std::nullopt;
}

Reply proxy_authentication_required() {
  Reply reply = failure(407, "This proxy requires a name and a password.");
  reply.headers.push_back({"Proxy-Authenticate", "Basic realm=\"zox-server\""});
  return reply;
}

void compress_for(const Request &request, Reply &reply) {
  if (!request.accepts_gzip || !reply.type.starts_with("text/") ||
      reply.body.size() < min_size_to_compress)
    return;
  reply.body = gzip(reply.body);
  reply.headers.push_back({"Content-Encoding", "gzip"});
}

}  // namespace

Dispatcher::Dispatcher(Service &service, std::optional<Credentials> proxy, bool separate_dumps)
    : service_(service), proxy_(std::move(proxy)), separate_dumps_(separate_dumps) {}

Reply Dispatcher::answer(const Request &request) noexcept {
  RequestLog::Outcome outcome;
  Reply reply;
  try {
    reply = answer_or_throw(request, outcome);
  } catch (const DatabaseError &error) {
    g_warning("%s: %s", request.path.c_str(), error.what());
    reply = text_reply("Could not connect to the database");
  } catch (const std::exception &error) {
    g_warning("%s: %s", request.path.c_str(), error.what());
    reply = failure(500, "Internal Server Error");
  }
  outcome.status = reply.status;
  log_.add(request, outcome);
  return reply;
}

Reply Dispatcher::answer_or_throw(const Request &request, RequestLog::Outcome &outcome) {
  if (request.proxied && !may_use_proxy(request))
    return proxy_authentication_required();
  const Route *route = find_route(request.path);
  if (route != nullptr)
    outcome.hidden_parameter = route->hidden_parameter;
  const std::optional<Fault> fault = faults_.take(request.path);
  Reply reply = fault && !fault->kind->executes ? Reply() : execute(request, route);
  if (fault) {
    outcome.fault = fault->kind->name;
    fault->kind->apply(reply, fault->argument);
  } else {
    compress_for(request, reply);
  }
  return reply;
}

Reply Dispatcher::execute(const Request &request, const Route *route) {
  const bool is_dump = request.path.starts_with(endpoints::dump_directory);
  const bool wrong_listener = request.listener == Listener::dumps
                                  ? !is_dump
                                  : is_dump && separate_dumps_ && !request.proxied;
  if (route == nullptr || wrong_listener)
    return failure(404, "There is nothing at this address.");
  if (request.method != "GET" && request.method != "HEAD")
    return failure(405, "Only GET and HEAD are supported.");
  if (route->access == Access::everyone)
    return route->handler(service_, request, Account());
  return authorize(request, *route);
}

Reply Dispatcher::authorize(const Request &request, const Route &route) {
  const std::optional<Account> account = authenticate(service_, request);
  if (!account)
    return text_reply("UNAUTH");
  if (account->banned)
    return text_reply("BAN");
  service_.accounts.mark_seen(account->name, service_.clock.now());
  service_.addresses.mark_seen(request.client_address, service_.clock.now());
  return route.handler(service_, request, *account);
}

bool Dispatcher::may_use_proxy(const Request &request) const {
  if (!proxy_)
    return true;
  return request.proxy_credentials && request.proxy_credentials->user == proxy_->user &&
         equal_secrets(request.proxy_credentials->secret, proxy_->secret);
}

}  // namespace velkor::server
