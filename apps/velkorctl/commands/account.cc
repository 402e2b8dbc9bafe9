/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl signup and account: a new account on the service, and the one that is used here. */
#include <velkor/zox_app_core.h>
#include <velkor/zox_signup.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/passwords.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

void use_account(CoreSession &session, const std::string &user, const std::string &password) {
  assign(setting_called("username"), *core->config, {user});
  assign(setting_called("password"), *core->config, {password});
  session.save_settings();
}

Exit run_set(const Context &context) {
  const std::string user = context.arguments.required("USER");
  const std::string password = read_password(context.arguments);
  CoreSession session(context.options, Access::write, Load::settings);
  use_account(session, user, password);
  return Exit::ok;
}

Exit run_signup(const Context &context) {
  const bool use = context.arguments.has("--use");
  const std::string user = context.arguments.required("USER");
  const std::string email = context.arguments.required("EMAIL");
  const std::string password = read_password(context.arguments);
  CoreSession session(context.options, use ? Access::write : Access::read, Load::settings);
  char *place = nullptr;
  const ZoxErrorCode result =
      zox_signup_register(user.c_str(), password.c_str(), email.c_str(), &place);
  require_success(result, OwnedText(place));
  say("the account " + user + " is made");
  if (use)
    use_account(session, user, password);
  return Exit::ok;
}

}  // namespace

Command account_set_command() {
  return {"account set",
          "Store the user name and the password of the account to use",
          {{"USER", "The name of the account"}},
          {password_option()},
          run_set};
}

Command signup_command() {
  return {"signup",
          "Make a new account on the service",
          {{"USER", "The name of the account"}, {"EMAIL", "Your e-mail address"}},
          {password_option(), {"--use", "", "Use the account from now on, as account set does"}},
          run_signup};
}

}  // namespace velkor::ctl
