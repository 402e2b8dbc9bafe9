/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/dispatcher.h"

#include "zox-server/http/routes.h"
#include "zox-server/support/gzip.h"

namespace velkor::server {
namespace {

/** Below this, compression makes a reply no smaller. */
constexpr std::size_t worth_compressing = 512;

bool knows_secret(const Service &service, const Request &request, const Account &account) {
  return !account.password.empty() &&
         equal_secrets(request.credentials->secret,
                       service.settings.auth_rule->secret(request.url, account.password));
}

/** The account whose member sent the request; nothing when its credentials prove nobody. */
std::optional<Account> member_of(Service &service, const Request &request) {
  if (!request.credentials)
    return std::nullopt;
  std::optional<Account> account = service.accounts.find(request.credentials->user);
  return account && knows_secret(service, request, *account) ? account : std::nullopt;
}

Reply proxy_refusal() {
  Reply reply = failure(407, "This proxy asks for a name and a password.");
  reply.headers.push_back({"Proxy-Authenticate", "Basic realm=\"zox-server\""});
  return reply;
}

void compress_for(const Request &request, Reply &reply) {
  if (!request.accepts_gzip || !reply.type.starts_with("text/") ||
      reply.body.size() < worth_compressing)
    return;
  reply.body = gzip(reply.body);
  reply.headers.push_back({"Content-Encoding", "gzip"});
}

}  // namespace

Dispatcher::Dispatcher(Service &service, std::optional<Credentials> proxy, bool dumps_apart)
    : service_(service), proxy_(std::move(proxy)), dumps_apart_(dumps_apart) {}

Reply Dispatcher::answer(const Request &request) noexcept {
  RequestLog::Outcome outcome;
  Reply reply;
  try {
    reply = answer_or_fail(request, outcome);
  } catch (const DatabaseError &error) {
    g_warning("%s: %s", request.path.c_str(), error.what());
    reply = text_reply("Could not connect to the database");
  } catch (const std::exception &error) {
    g_warning("%s: %s", request.path.c_str(), error.what());
    reply = failure(500, "Internal Server Error");
  }
  outcome.status = reply.status;
  log.add(request, outcome);
  return reply;
}

Reply Dispatcher::answer_or_fail(const Request &request, RequestLog::Outcome &outcome) {
  if (request.proxied && !may_use_proxy(request))
    return proxy_refusal();
  const Route *route = find_route(request.path);
  if (route != nullptr)
    outcome.hidden_parameter = route->hidden_parameter;
  const std::optional<Fault> fault = faults.take(request.path);
  Reply reply = fault && !fault->kind->carried_out ? Reply() : carry_out(request, route);
  if (fault) {
    outcome.fault = fault->kind->name;
    fault->kind->spoil(reply, fault->argument);
  } else {
    compress_for(request, reply);
  }
  return reply;
}

Reply Dispatcher::carry_out(const Request &request, const Route *route) {
  const bool is_dump = is_dump_path(request.path);
  const bool wrong_entrance =
      request.entrance == Entrance::dumps ? !is_dump : is_dump && dumps_apart_ && !request.proxied;
  if (route == nullptr || wrong_entrance)
    return failure(404, "There is nothing at this address.");
  if (request.method != "GET" && request.method != "HEAD")
    return failure(405, "Only GET is answered here.");
  if (route->access == Access::everyone)
    return route->handler(service_, request, Account());
  return admit(request, *route);
}

Reply Dispatcher::admit(const Request &request, const Route &route) {
  const std::optional<Account> account = member_of(service_, request);
  if (!account)
    return text_reply("UNAUTH");
  if (account->banned)
    return text_reply("BAN");
  service_.accounts.seen(account->name, service_.clock.now());
  service_.addresses.seen(request.client_address, service_.clock.now());
  return route.handler(service_, request, *account);
}

bool Dispatcher::may_use_proxy(const Request &request) const {
  if (!proxy_)
    return true;
  return request.proxy_credentials && request.proxy_credentials->user == proxy_->user &&
         equal_secrets(request.proxy_credentials->secret, proxy_->secret);
}

}  // namespace velkor::server
