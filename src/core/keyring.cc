/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/keyring.h"

#include <string_view>
#include <utility>

#include <libsecret/secret.h>

#include "support/immortal.h"
#include "support/text.h"

namespace velkor::keyring {
namespace {

constexpr std::string_view token_mark = "keyring:";

struct State {
  std::string id;                    // of the entry in the keyring; empty while there is none
  std::optional<std::string> known;  // what the keyring holds, as far as it told
  std::string fault;
};

State &state() noexcept {
  return immortal<State>();
}

struct WipeSecret {
  void operator()(char *secret) const noexcept { secret_password_free(secret); }
};
using OwnedSecret = std::unique_ptr<char, WipeSecret>;

const SecretSchema &schema() noexcept {
  static const SecretSchema described = [] {
    SecretSchema made{};
    made.name = "org.velkor.Account";
    made.attributes[0] = {"id", SECRET_SCHEMA_ATTRIBUTE_STRING};
    return made;
  }();
  return described;
}

/**
 * libsecret keeps its connection to the session bus, which may go away while a front end runs, and
 * the keyring with it: each question begins anew.
 */
class Question {
public:
  Question() = default;
  ~Question() { secret_service_disconnect(); }
  Question(const Question &) = delete;
  Question &operator=(const Question &) = delete;
};

/** The id in a token; nothing when the text is none. */
std::optional<std::string> id_in(const ZoxString *text) noexcept {
  const std::string_view value = view_of(text);
  if (!value.starts_with(token_mark))
    return std::nullopt;
  std::string id(value.substr(token_mark.size()));
  return g_uuid_string_is_valid(id.c_str()) != FALSE ? std::optional(std::move(id)) : std::nullopt;
}

OwnedString new_string(std::string_view text) noexcept {
  return OwnedString(g_string_new_len(text.data(), static_cast<gssize>(text.size())));
}

/** The password under the id; otherwise `fault` says why there is none. */
std::optional<std::string> look_up(const std::string &id, std::string &fault) noexcept {
  const Question question;
  GError *place = nullptr;
  const OwnedSecret secret(
      secret_password_lookup_sync(&schema(), nullptr, &place, "id", id.c_str(), nullptr));
  const OwnedError error(place);
  if (secret)
    return std::string(secret.get());
  fault = error ? error->message : "the keyring has no password for this account";
  return std::nullopt;
}

/** Gives the keyring the password under the id; why that failed, or nothing. */
std::optional<std::string> store(const std::string &id, const ZoxConfig &config) noexcept {
  const Question question;
  const std::string label = "Velkor: " + std::string(view_of(config.username));
  GError *place = nullptr;
  const bool stored =
      secret_password_store_sync(&schema(), SECRET_COLLECTION_DEFAULT, label.c_str(),
                                 config.password->str, nullptr, &place, "id", id.c_str(), nullptr);
  const OwnedError error(place);
  if (stored)
    return std::nullopt;
  return error ? error->message : "the keyring does not take the password";
}

}  // namespace

void forget() noexcept {
  state() = {};
}

void resolve(ZoxConfig &config) noexcept {
  const auto id = id_in(config.password);
  if (!id)
    return;
  State &now = state();
  now.id = *id;
  now.known = look_up(*id, now.fault);
  replace_string(config.password, now.known ? new_string(*now.known).release() : nullptr);
  if (!now.known)
    g_warning("zox_config_load(): het wachtwoord is niet uit de sleutelbos te halen: %s",
              now.fault.c_str());
}

bool in_use() noexcept {
  return !state().id.empty();
}

const std::string &fault() noexcept {
  return state().fault;
}

OwnedString written_password(const ZoxConfig &config) noexcept {
  State &now = state();
  OwnedString token = new_string(std::string(token_mark) + now.id);
  const bool unchanged =
      config.password == nullptr ? !now.known : now.known && *now.known == view_of(config.password);
  if (unchanged)
    return token;
  if (config.password == nullptr) {
    remove(stop_using());
    return nullptr;
  }
  if (const auto refusal = store(now.id, config)) {
    g_warning("zox_config_save(): de sleutelbos neemt het wachtwoord niet aan, het staat weer in "
              "velkor.conf: %s",
              refusal->c_str());
    stop_using();
    return new_string(view_of(config.password));
  }
  now.known = std::string(view_of(config.password));
  return token;
}

std::optional<std::string> start_using(const ZoxConfig &config) noexcept {
  const OwnedText id(g_uuid_string_random());
  if (auto refusal = store(id.get(), config))
    return refusal;
  state() = {id.get(), std::string(view_of(config.password)), {}};
  return std::nullopt;
}

Entry stop_using() noexcept {
  return {std::exchange(state(), {}).id};
}

void use_again(const Entry &entry, const ZoxConfig &config) noexcept {
  state() = {entry.id, std::string(view_of(config.password)), {}};
}

void remove(const Entry &entry) noexcept {
  const Question question;
  // What is left without a token does no harm beyond its place in the keyring.
  secret_password_clear_sync(&schema(), nullptr, nullptr, "id", entry.id.c_str(), nullptr);
}

}  // namespace velkor::keyring
