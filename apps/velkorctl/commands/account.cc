/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl signup and account: creating an account on the service, and choosing the one to use. */
#include <unistd.h>

#include <velkor/zox_keyring.h>
#include <velkor/zox_signup.h>

#include "support/owned.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/settings.h"
#include "velkorctl/terminal.h"

namespace velkor::ctl {
namespace {

using Access = CoreSession::Access;

Option password_option() {
  return {"--password-stdin", "", "Read the password from standard input instead of the terminal"};
}

/** A password is never an argument, which others can see; without a terminal the option is needed.
 */
std::string read_password(const Arguments &arguments) {
  if (!arguments.has("--password-stdin") && isatty(STDIN_FILENO) == 0)
    throw usage_error("there is no terminal to ask for the password; see --password-stdin");
  std::string password = read_secret("password: ");
  if (password.empty())
    throw usage_error("the password is empty");
  return password;
}

void use_account(CoreSession &session, const std::string &user, const std::string &password) {
  assign(setting_called("username"), {user});
  assign(setting_called("password"), {password});
  session.save_settings();
}

Exit run_set(const Context &context) {
  const std::string user = context.arguments.required("USER");
  const std::string password = read_password(context.arguments);
  CoreSession session(context.options, Access::write, Load::settings);
  use_account(session, user, password);
  return Exit::ok;
}

/** The account that a sign-up makes. */
struct Account {
  std::string user;
  std::string email;
  bool in_use = false;
};

Fields<Account> account_fields() {
  using A = const Account &;
  return {
      {{.name = "name", .type = type::text()}, [](A account) -> Value { return account.user; }},
      {{.name = "email", .type = type::text()}, [](A account) -> Value { return account.email; }},
      {{.name = "inUse", .type = type::flag()}, [](A account) -> Value { return account.in_use; }}};
}

Exit run_signup(const Context &context) {
  const bool use = context.arguments.has("--use");
  const std::string user = context.arguments.required("USER");
  const std::string email = context.arguments.required("EMAIL");
  const std::string password = read_password(context.arguments);
  CoreSession session(context.options, use ? Access::write : Access::read, Load::settings);
  call("creating the account", zox_signup_register, user.c_str(), password.c_str(), email.c_str());
  say("the account " + user + " has been created");
  if (use)
    use_account(session, user, password);
  if (wants_records(context.arguments))
    print_record(context, account_fields(), {user, email, use});
  return Exit::ok;
}

Exit run_keep(const Context &context) {
  const std::string place = context.arguments.required("PLACE");
  if (place != "keyring" && place != "file")
    throw usage_error("the password can be kept in the keyring or the file, not in " + place);
  const CoreSession session(context.options, Access::write, Load::settings);
  char *text = nullptr;
  const gint32 kept = zox_keyring_keep_password(
      place == "keyring" ? ZOX_PASSWORD_IN_KEYRING : ZOX_PASSWORD_IN_FILE, &text);
  const OwnedText message(text);
  if (kept == 0)
    throw Failure(Exit::failed, std::string("the password stays where it is: ") + message.get());
  return Exit::ok;
}

}  // namespace

std::vector<Command> account_commands() {
  return {{"set",
           "Store the user name and the password of the account to use",
           {{"USER", "The name of the account"}},
           {password_option()},
           run_set},
          {"keep",
           "Choose where the password is kept",
           {{"PLACE", "keyring (of the desktop) or file (velkor.conf)"}},
           {},
           run_keep}};
}

Command signup_command() {
  return with_output(
      {"signup",
       "Create a new account on the service",
       {{"USER", "The name of the account"}, {"EMAIL", "Your e-mail address"}},
       {password_option(), {"--use", "", "Use the account from now on, as account set does"}},
       run_signup},
      one_record(account_fields()));
}

}  // namespace velkor::ctl
