/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl update: brings the cache up to date. */
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/update_run.h"

namespace velkor::ctl {
namespace {

using Extent = UpdateRun::Extent;

Exit run(const Context &context) {
  const Arguments &arguments = context.arguments;
  const CoreSession session(context.options, CoreSession::Access::write, Load::postings);
  session.require_account();
  UpdateRun update(session, arguments.has("--recursive") ? Extent::all_new : Extent::as_set);
  const bool something_new = update.run();
  return something_new || !arguments.has("--exit-code") ? Exit::ok : Exit::nothing_new;
}

Exit run_resync(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::write, Load::postings);
  session.require_account();
  UpdateRun(session, Extent::everything).run();
  return Exit::ok;
}

}  // namespace

Command update_command() {
  return {"update",
          "Fetch what is new from the server",
          {},
          {{"-r,--recursive", "", "Go on asking until the server has nothing more"},
           {"--exit-code", "", "End with exit code 5 when nothing was new"}},
          run};
}

Command cache_resync_command() {
  return {"cache resync", "Fetch everything that the server has once more", {}, {}, run_resync};
}

}  // namespace velkor::ctl
