/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl update: fetches what is new into the cache. */
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "velkorctl/commands.h"
#include "velkorctl/consent.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/hook.h"
#include "velkorctl/notifications.h"
#include "velkorctl/update_run.h"
#include "velkorctl/watcher_hits.h"

namespace velkor::ctl {
namespace {

using Extent = UpdateRun::Extent;

/** What the update leaves for those who are to be told. */
struct Ended {
  UpdateRun::Outcome outcome;
  std::vector<WatcherHit> hits{};
  std::string document{};
};

/** The cache is free again when this returns, so that a command may use velkorctl. */
Ended update(const Context &context) {
  const Arguments &arguments = context.arguments;
  const CoreSession session(context.options, CoreSession::Access::write, Load::postings);
  session.require_account();
  require_ageing(arguments);
  UpdateRun update(arguments.has("--recursive") ? Extent::all_new : Extent::as_set);
  if (!update.run())
    return {update.outcome()};
  std::vector<WatcherHit> hits = hits_of_update();
  std::string document = document_of(hits);
  return {update.outcome(), std::move(hits), std::move(document)};
}

/** The failure of the command, if it fails. */
std::optional<Failure> hand_over(const Hook &hook, const Ended &ended) {
  try {
    hook.run(ended.document);
  } catch (const Failure &failure) {
    return failure;
  }
  return std::nullopt;
}

Exit run(const Context &context) {
  const Arguments &arguments = context.arguments;
  std::optional<Hook> hook;
  if (const auto line = arguments.value("--exec"))
    hook.emplace(*line);
  const Ended ended = update(context);
  const bool something_new = ended.outcome.nothing_new.empty();
  Exit exit = something_new || !arguments.has("--exit-code") ? Exit::ok : Exit::nothing_new;
  if (arguments.has("--notify"))
    show_notifications(ended.hits);
  std::optional<Failure> failure;
  if (hook && !ended.hits.empty())
    failure = hand_over(*hook, ended);
  if (failure)
    exit = failure->exit();
  print_update(context, ended.outcome, exit);
  if (failure)
    throw Failure(*failure);
  return exit;
}

}  // namespace

Command update_command() {
  return with_output(
      {"update",
       "Fetch what is new from the server",
       {},
       {{"-r,--recursive", "", "Repeat until the server has no more postings"},
        yes_option(),
        {"--exit-code", "", "End with exit code 5 when there is nothing new"},
        {"--notify", "", "Show the postings that a watcher matches as desktop notifications"},
        {"--exec", "CMD",
         "Run a command, without a shell, when a watcher matches new postings; they are its "
         "standard input, as JSON"}},
       run},
      update_record());
}

}  // namespace velkor::ctl
