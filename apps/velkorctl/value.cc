/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/value.h"

#include <tuple>

#include "support/owned.h"
#include "velkorctl/moment.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

/** Makes one function of several, for std::visit. */
template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

struct Words {
  const char *yes;
  const char *no;
  std::string (*moment)(std::int64_t seconds);
};

std::string text_of(const Value &value, const Words &words) {
  return std::visit(Overloaded{[](std::monostate) { return std::string(); },
                               [&](bool flag) { return std::string(flag ? words.yes : words.no); },
                               [](std::int64_t number) { return std::to_string(number); },
                               [&](Moment moment) { return words.moment(moment.seconds); },
                               [](const std::string &text) { return text; },
                               [&](const Value::List &list) {
                                 std::vector<std::string> texts;
                                 texts.reserve(list.size());
                                 for (const Value &item : list)
                                   texts.push_back(text_of(item, words));
                                 return joined(texts);
                               },
                               [](const Value::Object &object) { return object.text; }},
                    value.content());
}

template <typename Content>
void put(Json &json, const char *member, const Content &content) {
  if (member == nullptr)
    json.value(content);
  else
    json.member(member, content);
}

void put_nothing(Json &json, const char *member) {
  if (member == nullptr)
    json.null();
  else
    json.null_member(member);
}

void put_list(Json &json, const char *member, const Value::List &list) {
  json.begin_array(member);
  for (const Value &item : list)
    add_to(json, nullptr, item);
  json.end_array();
}

void put_object(Json &json, const char *member, const Value::Object &object) {
  json.begin_object(member);
  for (const auto &[name, value] : object.members)
    add_to(json, name.c_str(), value);
  json.end_object();
}

std::string collation_key(const std::string &text) {
  const OwnedText valid = valid_utf8(text);
  const OwnedText folded(g_utf8_casefold(valid.get(), -1));
  return OwnedText(g_utf8_collate_key(folded.get(), -1)).get();
}

}  // namespace

Value::Value(const char *text) {
  if (text != nullptr)
    content_ = std::string(text);
}

Value::Value(const GString *text) {
  if (text != nullptr)
    content_ = std::string(view_of(text));
}

bool Value::is_empty() const noexcept {
  if (const auto *text = std::get_if<std::string>(&content_))
    return text->empty();
  if (const auto *list = std::get_if<List>(&content_))
    return list->empty();
  return std::holds_alternative<std::monostate>(content_);
}

Value text_or_nothing(std::string text) {
  return text.empty() ? Value() : Value(std::move(text));
}

Value moment_or_nothing(std::int64_t seconds) {
  return seconds > 0 ? Value(Moment{seconds}) : Value();
}

Value unless_zero(std::int64_t number) {
  return number != 0 ? Value(number) : Value();
}

std::string text_for_people(const Value &value) {
  return text_of(value, {"yes", "no", show_moment});
}

std::string text_for_scripts(const Value &value) {
  return text_of(value, {"true", "false", iso_moment});
}

void add_to(Json &json, const char *member, const Value &value) {
  std::visit(Overloaded{[&](std::monostate) { put_nothing(json, member); },
                        [&](Moment moment) { put(json, member, iso_moment(moment.seconds)); },
                        [&](const std::string &text) { put(json, member, text); },
                        [&](const Value::List &list) { put_list(json, member, list); },
                        [&](const Value::Object &object) { put_object(json, member, object); },
                        [&](auto plain) { put(json, member, plain); }},
             value.content());
}

SortKey::SortKey(const Value &value) : something_(!value.is_empty()) {
  if (const auto *number = std::get_if<std::int64_t>(&value.content()))
    number_ = *number;
  else if (const auto *moment = std::get_if<Moment>(&value.content()))
    number_ = moment->seconds;
  else if (const bool *flag = std::get_if<bool>(&value.content()))
    number_ = *flag ? 1 : 0;
  else
    text_ = collation_key(text_for_people(value));
}

std::strong_ordering SortKey::operator<=>(const SortKey &other) const noexcept {
  return std::tie(something_, number_, text_) <=>
         std::tie(other.something_, other.number_, other.text_);
}

}  // namespace velkor::ctl
