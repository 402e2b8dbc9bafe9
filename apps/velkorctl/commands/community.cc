/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl kudos, warn and profile. */
#include <array>
#include <memory>
#include <string>
#include <utility>

#include <velkor/zox_kudos.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_profile.h>

#include "support/owned_records.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/messages.h"
#include "velkorctl/moment.h"

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

using KudosCounts = std::pair<gint32, gint32>;

KudosCounts fetch_kudos(gint32 id) {
  KudosCounts counts;
  call("asking for the kudos", zox_kudos_get, id, &counts.first, &counts.second);
  return counts;
}

/** The server's reply does not tell whether it has counted the kudos; its counts do. */
void give_kudos(gint32 id, gint32 kudos) {
  const KudosCounts before = fetch_kudos(id);
  call("giving kudos", zox_kudos_give, id, kudos);
  const KudosCounts after = fetch_kudos(id);
  const std::string counts = std::to_string(after.first) + " and " + std::to_string(after.second);
  if (before == after)
    throw Failure(Exit::failed,
                  "the server has not counted the kudos: its counts are still " + counts);
  say("the kudos have been given; the counts are now " + counts);
}

void print_kudos(gint32 id, const Context &context) {
  const auto [first, second] = fetch_kudos(id);
  Json json;
  json.begin_object().member("id", id).member("first", first).member("second", second);
  if (wants_json(context.arguments))
    print(json.end_object(), context);
  else
    context.out.write(std::to_string(first) + " " + std::to_string(second) + "\n");
}

Exit run_kudos(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  const auto given = context.arguments.value("--give");
  const gint32 kudos = given ? kudos_of(*given) : 0;
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  if (given)
    give_kudos(id, kudos);
  else
    print_kudos(id, context);
  return Exit::ok;
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
  gint32 number = 0;
  call("sending the warning", zox_modje_send, id, reaction, reason.c_str(), &number);
  say("the warning has been sent; its number is " + std::to_string(number));
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

/** A field of the profile, either a text or a number. */
struct ProfileField {
  const char *title;
  const char *member;
  char *ZoxProfile::*text;
  guint32 ZoxProfile::*number;
};

constexpr auto profile_fields = std::to_array<ProfileField>({
    {"Name", "name", &ZoxProfile::name, nullptr},
    {"Rank", "rank", nullptr, &ZoxProfile::rank},
    {"Status", "status", nullptr, &ZoxProfile::status},
    {"Profile status", "profileStatus", nullptr, &ZoxProfile::profileStatus},
    {"Posts", "posts", nullptr, &ZoxProfile::posts},
    {"Spots", "spots", nullptr, &ZoxProfile::spots},
    {"Kudos", "kudos", nullptr, &ZoxProfile::kudos},
    {"Kudos given", "kudosGiven", nullptr, &ZoxProfile::kudosGiven},
    {"Kudos received", "kudosReceived", nullptr, &ZoxProfile::kudosReceived},
    {"E-mail", "email", &ZoxProfile::email, nullptr},
    {"Info", "info", &ZoxProfile::info, nullptr},
    {"Avatar", "avatar", &ZoxProfile::avatar, nullptr},
    {"Site", "site", &ZoxProfile::site, nullptr},
    {"Messenger", "im", &ZoxProfile::im, nullptr},
    {"Provider", "isp", &ZoxProfile::isp, nullptr},
    {"News server", "newsServer", &ZoxProfile::newsServer, nullptr},
    {"Hobby", "hobby", &ZoxProfile::hobby, nullptr},
});

void print_profile(const ZoxProfile &profile, Output &out) {
  Table table({{""}, {""}});
  for (const ProfileField &field : profile_fields) {
    if (field.number != nullptr)
      table.add({field.title, std::to_string(profile.*field.number)});
    else if (profile.*field.text != nullptr)
      table.add({field.title, profile.*field.text});
  }
  if (profile.stamp > 0)
    table.add({"Since", show_moment(profile.stamp)});
  out.write(table.text(0, false));
}

void print_profile_json(const ZoxProfile &profile, const Context &context) {
  Json json;
  json.begin_object().member("stamp", profile.stamp);
  for (const ProfileField &field : profile_fields) {
    if (field.number != nullptr)
      json.member(field.member, profile.*field.number);
    else if (profile.*field.text != nullptr)
      json.member(field.member, profile.*field.text);
    else
      json.null_member(field.member);
  }
  print(json.end_object(), context);
}

Exit run_profile(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  const OwnedProfile profile = fetch_profile(context.arguments.required("USER"));
  if (wants_json(context.arguments))
    print_profile_json(*profile, context);
  else
    print_profile(*profile, context.out);
  return Exit::ok;
}

}  // namespace

Command kudos_command() {
  return {"kudos",
          "Print the two kudos counts of a posting, or give kudos",
          {posting_argument()},
          {{"--give", "N", "Give the posting N kudos instead"}, format_option()},
          run_kudos};
}

Command warn_command() {
  return {"warn",
          "Warn the moderators about a posting or a reaction",
          {posting_argument(), {"REASON", "What is wrong with it"}},
          {{"--reaction", "N", "Warn about reaction N to the posting"}},
          run_warn};
}

Command profile_command() {
  return {"profile",
          "Print the profile of a user",
          {{"USER", "The name of the user"}},
          {format_option()},
          run_profile};
}

}  // namespace velkor::ctl
