/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/settings.h"

#include <cstdlib>
#include <utility>

#include <velkor/zox_splitted_list.h>

#include "support/owned.h"
#include "support/text.h"

namespace velkor::settings {
namespace {

// What is done with the fields, a kind at a time.
struct Reader {
  ZoxConfig &config;
  const char *value;
  void operator()(const Text &field) const noexcept {
    const bool none = *value == '\0' && field.empty == Empty::none;
    replace_string(config.*field.member, none ? nullptr : g_string_new(value));
  }
  void operator()(const Time &field) const noexcept {
    config.*field.member = std::strtoll(value, nullptr, 10);
  }
  void operator()(const Count &field) const noexcept {
    config.*field.member = static_cast<guint32>(leading_integer(value));
  }
  void operator()(const Number &field) const noexcept {
    config.*field.member = leading_integer(value);
  }
  void operator()(const SplitList &field) const noexcept {
    zox_splitted_list_free(&(config.*field.member));
    config.*field.member = zox_splitted_list_split(value);
  }
  void operator()(const TextList &field) const noexcept { add(field.member, g_string_new(value)); }
  void operator()(const NumberList &field) const noexcept {
    add(field.member, GINT_TO_POINTER(leading_integer(value)));
  }

private:
  void add(GSList *ZoxConfig::*member, gpointer item) const noexcept {
    config.*member = g_slist_prepend(config.*member, item);
  }
};

struct Completion {
  ZoxConfig &config;
  void operator()(const TextList &field) const noexcept { turn(field.member); }
  void operator()(const NumberList &field) const noexcept { turn(field.member); }
  void operator()(const auto &) const noexcept {}

private:
  void turn(GSList *ZoxConfig::*member) const noexcept {
    config.*member = g_slist_reverse(config.*member);
  }
};

struct Release {
  ZoxConfig &config;
  void operator()(const Text &field) const noexcept {
    replace_string(config.*field.member, nullptr);
  }
  void operator()(const SplitList &field) const noexcept {
    zox_splitted_list_free(&(config.*field.member));
  }
  void operator()(const TextList &field) const noexcept {
    zox_splitted_list_free(&(config.*field.member));
  }
  void operator()(const NumberList &field) const noexcept {
    g_slist_free(std::exchange(config.*field.member, nullptr));
  }
  void operator()(const auto &) const noexcept {}
};

}  // namespace

void set_defaults(ZoxConfig &config) noexcept {
  config.firstTime = 1;
  for (const Setting &setting : table())
    set_default(config, setting);
}

void set_default(ZoxConfig &config, const Setting &setting) noexcept {
  std::visit(Release{config}, setting.field);
  if (setting.facts.defaultText != nullptr)
    read(config, setting, setting.facts.defaultText);
}

void read(ZoxConfig &config, const Setting &setting, const char *value) noexcept {
  std::visit(Reader{config, value}, setting.field);
}

void complete(ZoxConfig &config) noexcept {
  for (const Setting &setting : table())
    complete(config, setting);
}

void complete(ZoxConfig &config, const Setting &setting) noexcept {
  std::visit(Completion{config}, setting.field);
}

void release(ZoxConfig &config) noexcept {
  for (const Setting &setting : table())
    std::visit(Release{config}, setting.field);
}

}  // namespace velkor::settings
