/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl kudos, warn and profile. */
#include <string>

#include <velkor/zox_kudos.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_profile.h>

#include "support/owned_records.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"

namespace velkor::ctl {
namespace {

/** What the service takes. */
gint32 kudos_of(const std::string &text) {
  constexpr gint32 most = 10;
  const auto kudos = static_cast<gint32>(number_in_range(text, -most, most, "--give"));
  if (kudos == 0)
    throw usage_error("--give: the number of kudos cannot be 0");
  return kudos;
}

struct Kudos {
  gint32 id;
  gint32 first = 0;
  gint32 second = 0;

  bool operator==(const Kudos &other) const = default;
};

Fields<Kudos> kudos_fields() {
  using K = const Kudos &;
  return {
      {{.name = "id", .type = type::number()}, [](K kudos) -> Value { return kudos.id; }},
      {{.name = "first", .type = type::number()}, [](K kudos) -> Value { return kudos.first; }},
      {{.name = "second", .type = type::number()}, [](K kudos) -> Value { return kudos.second; }},
  };
}

Kudos fetch_kudos(gint32 id) {
  Kudos kudos{id};
  call("asking for the kudos", zox_kudos_get, id, &kudos.first, &kudos.second);
  return kudos;
}

/** The server's reply does not tell whether it has counted the kudos; its counts do. */
Kudos give_kudos(gint32 id, gint32 number) {
  const Kudos before = fetch_kudos(id);
  call("giving kudos", zox_kudos_give, id, number);
  const Kudos after = fetch_kudos(id);
  const std::string counts = std::to_string(after.first) + " and " + std::to_string(after.second);
  if (before == after)
    throw Failure(Exit::failed,
                  "the server has not counted the kudos: its counts are still " + counts);
  say("the kudos have been given; the counts are now " + counts);
  return after;
}

Exit run_kudos(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  const auto given = context.arguments.value("--give");
  const gint32 number = given ? kudos_of(*given) : 0;
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  const Kudos kudos = given ? give_kudos(id, number) : fetch_kudos(id);
  if (wants_records(context.arguments))
    print_record(context, kudos_fields(), kudos);
  else if (!given)
    context.out.write(std::to_string(kudos.first) + " " + std::to_string(kudos.second) + "\n");
  return Exit::ok;
}

struct Warning {
  gint32 posting = 0;
  gint32 reaction = 0;
  gint32 number = 0;
};

Fields<Warning> warning_fields() {
  using W = const Warning &;
  return {
      {{.name = "posting", .type = type::number()},
       [](W warning) -> Value { return warning.posting; }},
      {{.name = "reaction", .type = type::number()},
       [](W warning) { return unless_zero(warning.reaction); }},
      {{.name = "number", .type = type::number()},
       [](W warning) -> Value { return warning.number; }},
  };
}

Exit run_warn(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  const std::string reason = context.arguments.required("REASON");
  const auto given = context.arguments.value("--reaction");
  const gint32 reaction = given ? posting_id(*given) : 0;
  if (reason.empty())
    throw usage_error("the reason is empty");
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  Warning warning{id, reaction};
  call("sending the warning", zox_modje_send, id, reaction, reason.c_str(), &warning.number);
  say("the warning has been sent; its number is " + std::to_string(warning.number));
  if (wants_records(context.arguments))
    print_record(context, warning_fields(), warning);
  return Exit::ok;
}

OwnedProfile fetch_profile(const std::string &user) {
  ZoxProfile *profile = nullptr;
  const LibraryResult result =
      try_call("asking for the profile", zox_profile_get, user.c_str(), &profile);
  OwnedProfile owned(profile);
  require_success(result);
  return owned;
}

template <guint32 ZoxProfile::*number>
Field<ZoxProfile> number_field(const char *name) {
  return {{.name = name, .type = type::number()},
          [](const ZoxProfile &profile) -> Value { return profile.*number; }};
}

template <char *ZoxProfile::*text>
Field<ZoxProfile> text_field(const char *name, const char *title = "") {
  return {{.name = name, .type = type::text(), .title = title},
          [](const ZoxProfile &profile) -> Value { return profile.*text; }};
}

Fields<ZoxProfile> profile_fields() {
  return {
      text_field<&ZoxProfile::name>("name"),
      number_field<&ZoxProfile::rank>("rank"),
      number_field<&ZoxProfile::status>("status"),
      number_field<&ZoxProfile::profileStatus>("profileStatus"),
      number_field<&ZoxProfile::posts>("posts"),
      number_field<&ZoxProfile::spots>("spots"),
      number_field<&ZoxProfile::kudos>("kudos"),
      number_field<&ZoxProfile::kudosGiven>("kudosGiven"),
      number_field<&ZoxProfile::kudosReceived>("kudosReceived"),
      text_field<&ZoxProfile::email>("email", "E-mail"),
      text_field<&ZoxProfile::info>("info"),
      text_field<&ZoxProfile::avatar>("avatar"),
      text_field<&ZoxProfile::site>("site"),
      text_field<&ZoxProfile::im>("im", "Messenger"),
      text_field<&ZoxProfile::isp>("isp", "Provider"),
      text_field<&ZoxProfile::newsServer>("newsServer"),
      text_field<&ZoxProfile::hobby>("hobby"),
      {{.name = "date", .type = type::moment(), .title = "Since"},
       [](const ZoxProfile &profile) { return moment_or_nothing(profile.stamp); }},
  };
}

Exit run_profile(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  const OwnedProfile profile = fetch_profile(context.arguments.required("USER"));
  print_record(context, profile_fields(), *profile);
  return Exit::ok;
}

}  // namespace

Command kudos_command() {
  return with_output({"kudos",
                      "Print the two kudos counts of a posting, or give kudos",
                      {posting_argument()},
                      {{"--give", "N", "Give the posting N kudos instead"}},
                      run_kudos},
                     one_record(kudos_fields()));
}

Command warn_command() {
  return with_output({"warn",
                      "Warn the moderators about a posting or a reaction",
                      {posting_argument(), {"REASON", "What is wrong with it"}},
                      {{"--reaction", "N", "Warn about reaction N to the posting"}},
                      run_warn},
                     one_record(warning_fields()));
}

Command profile_command() {
  return with_output({"profile",
                      "Print the profile of a user",
                      {{"USER", "The name of the user"}},
                      {},
                      run_profile},
                     one_record(profile_fields()));
}

}  // namespace velkor::ctl
