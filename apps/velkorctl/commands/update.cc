/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl update: fetches what is new into the cache. */
#include "velkorctl/commands.h"
#include "velkorctl/consent.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/update_run.h"

namespace velkor::ctl {
namespace {

using Extent = UpdateRun::Extent;

Exit run(const Context &context) {
  const Arguments &arguments = context.arguments;
  const CoreSession session(context.options, CoreSession::Access::write, Load::postings);
  session.require_account();
  require_ageing(arguments);
  UpdateRun update(arguments.has("--recursive") ? Extent::all_new : Extent::as_set);
  const bool something_new = update.run();
  const Exit exit = something_new || !arguments.has("--exit-code") ? Exit::ok : Exit::nothing_new;
  print_update(context, update, exit);
  return exit;
}

}  // namespace

Command update_command() {
  return with_output({"update",
                      "Fetch what is new from the server",
                      {},
                      {{"-r,--recursive", "", "Repeat until the server has no more postings"},
                       yes_option(),
                       {"--exit-code", "", "End with exit code 5 when there is nothing new"}},
                      run},
                     update_record());
}

}  // namespace velkor::ctl
