/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl kudos, warn and profile. */
#include <limits>
#include <memory>
#include <string>

#include <velkor/zox_kudos.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_profile.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/json.h"
#include "velkorctl/messages.h"
#include "velkorctl/moment.h"

namespace velkor::ctl {
namespace {

using OwnedProfile = std::unique_ptr<ZoxProfile, ReleaseWith<zox_profile_free>>;

constexpr gint32 lowest = std::numeric_limits<gint32>::min();
constexpr gint32 highest = std::numeric_limits<gint32>::max();

void give_kudos(gint32 id, const std::string &text) {
  const auto kudos = static_cast<gint32>(number_in_range(text, lowest, highest, "--give"));
  char *place = nullptr;
  const ZoxErrorCode result = zox_kudos_give(id, kudos, &place);
  require_success(result, OwnedText(place));
  say("the kudos are given");
}

void print_kudos(gint32 id, const Context &context) {
  gint32 first = 0;
  gint32 second = 0;
  char *place = nullptr;
  const ZoxErrorCode result = zox_kudos_get(id, &first, &second, &place);
  require_success(result, OwnedText(place));
  Json json;
  json.begin_object().number("id", id).number("first", first).number("second", second);
  if (wants_json(context.arguments))
    context.out.write(json.end_object().compact() + "\n");
  else
    context.out.write(std::to_string(first) + " " + std::to_string(second) + "\n");
}

Exit run_kudos(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  if (const auto given = context.arguments.value("--give"))
    give_kudos(id, *given);
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
  char *place = nullptr;
  const ZoxErrorCode result = zox_modje_send(id, reaction, reason.c_str(), &number, &place);
  require_success(result, OwnedText(place));
  say("the warning has number " + std::to_string(number));
  return Exit::ok;
}

OwnedProfile fetch_profile(const std::string &user) {
  ZoxProfile *profile = nullptr;
  char *place = nullptr;
  const ZoxErrorCode result = zox_profile_get(user.c_str(), &profile, &place);
  OwnedProfile owned(profile);
  require_success(result, OwnedText(place));
  return owned;
}

/** A field of the profile: its title, its name in JSON and the one of its two forms it has. */
struct ProfileField {
  const char *title;
  const char *member;
  char *ZoxProfile::*text;
  guint32 ZoxProfile::*number;
};

constexpr ProfileField profile_fields[] = {
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
};

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

void print_profile_json(const ZoxProfile &profile, Output &out) {
  Json json;
  json.begin_object().number("stamp", profile.stamp);
  for (const ProfileField &field : profile_fields) {
    if (field.number != nullptr)
      json.number(field.member, profile.*field.number);
    else if (profile.*field.text != nullptr)
      json.text(field.member, profile.*field.text);
    else
      json.null(field.member);
  }
  out.write(json.end_object().compact() + "\n");
}

Exit run_profile(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  const OwnedProfile profile = fetch_profile(context.arguments.required("USER"));
  if (wants_json(context.arguments))
    print_profile_json(*profile, context.out);
  else
    print_profile(*profile, context.out);
  return Exit::ok;
}

}  // namespace

Command kudos_command() {
  return {"kudos",
          "Print the two kudos counts of a posting, or give kudos",
          {{"ID", "The number of the posting"}},
          {{"--give", "N", "Give so many kudos instead"}, format_option()},
          run_kudos};
}

Command warn_command() {
  return {"warn",
          "Warn the moderators about a posting or a reaction",
          {{"ID", "The number of the posting"}, {"REASON", "What is wrong with it"}},
          {{"--reaction", "N", "It is about this reaction to the posting"}},
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
