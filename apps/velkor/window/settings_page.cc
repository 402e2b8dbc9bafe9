/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/settings_page.h"

#include <algorithm>
#include <ctime>
#include <optional>
#include <utility>

#include "library/ask.h"
#include "library/main_loop.h"
#include "library/settings_access.h"
#include "support/numbers.h"
#include "widgets/input.h"
#include "widgets/translation.h"

namespace velkor::app {
namespace {

constexpr std::string_view age_key = "verwijderPostsNaXDagen";
constexpr std::string_view bad_words_key = "badword";
constexpr int form_width = 640;

/** What the settings are after changes, and which of these were refused. */
struct Applied {
  Settings settings;
  SettingRefusals refusals;
};

bool has_value(const Settings &settings, std::string_view key) {
  const SettingField *field = find_setting(settings, key);
  return field != nullptr && !field->value().empty();
}

Glib::ustring lost_text(const LostSpots &lost) {
  Glib::ustring text = counted("%1 spot holds a new bad word. The next update or start drops it:",
                               "%1 spots hold a new bad word. The next update or start drops them:",
                               static_cast<std::int64_t>(lost.count));
  for (const std::string &title : lost.titles)
    text += "\n• " + Glib::ustring(title);
  if (lost.count > lost.titles.size())
    text += "\n" + counted("and %1 more", "and %1 more",
                           static_cast<std::int64_t>(lost.count - lost.titles.size()));
  return text;
}

}  // namespace

SettingsPage::SettingsPage(Session &session, Notice &notice, std::filesystem::path servers_file)
    : Page(_("Settings")), session_(session), notice_(notice),
      servers_file_(std::move(servers_file)), hint_(hint_label(_("Reading the settings…"))),
      save_(_("_Save"), true) {
  build();
}

SettingsPage::~SettingsPage() {
  for (const SharedCancellation &pending : {request_, preview_})
    if (pending)
      pending->cancel();
}

void SettingsPage::build() {
  save_.add_css_class("suggested-action");
  save_.set_tooltip_text(_("Save the settings (Ctrl+S)"));
  name_by_label_alone(save_);
  save_.set_sensitive(false);
  save_.signal_clicked().connect([this] { save(); });
  add_to_title_line(save_);
  add_key(*this, "<Control>s", [this] { save(); });
  failure_.add_css_class("error");
  failure_.set_wrap(true);
  failure_.set_visible(false);
  form_.set_halign(Gtk::Align::CENTER);
  form_.set_size_request(form_width, -1);
  form_.add_css_class("form");
  scroller_.set_child(form_);
  scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  stack_.add(*hint_, "hint");
  stack_.add(scroller_, "form");
  stack_.set_vexpand(true);
  append(failure_);
  append(stack_);
}

/** What was entered and not saved stays. */
void SettingsPage::begin() {
  if (settings_.empty() || changed_values(settings_, wanted()).empty())
    read();
  else if (!rows_.empty())
    rows_.front()->focus_editor();
}

void SettingsPage::read() {
  request_ = ask(
      session_, [file = servers_file_] { return read_settings(file); },
      [this](const Settings &settings) {
        take(settings);
        if (!rows_.empty())
          rows_.front()->focus_editor();
      });
}

void SettingsPage::take(Settings settings) {
  settings_ = std::move(settings);
  filling_ = true;
  if (rows_.empty())
    add_rows();
  for (SettingRow *one : rows_)
    one->show_values(*find_setting(settings_, one->key()));
  filling_ = false;
  stack_.set_visible_child("form");
  changed();
}

void SettingsPage::add_rows() {
  std::optional<SettingGroup> group;
  for (const SettingLabel &label : setting_labels()) {
    if (find_setting(settings_, label.key) == nullptr)
      continue;
    if (group != label.group)
      add_heading(label.group);
    group = label.group;
    add_row(label);
  }
}

void SettingsPage::add_heading(SettingGroup group) {
  auto *heading = Gtk::make_managed<Gtk::Label>(_(title_of(group)));
  heading->add_css_class("heading");
  heading->set_xalign(0);
  form_.append(*heading);
  if (group != SettingGroup::others)
    return;
  auto *text = Gtk::make_managed<Gtk::Label>(
      _("Other front ends that use the same settings act on these; this window does not."));
  text->add_css_class("dim-label");
  text->set_xalign(0);
  text->set_wrap(true);
  form_.append(*text);
}

void SettingsPage::add_row(const SettingLabel &label) {
  auto *made = Gtk::make_managed<SettingRow>(*find_setting(settings_, label.key), _(label.label));
  made->signal_changed().connect([this, made] {
    made->show_refusal("");
    changed();
  });
  rows_.push_back(made);
  form_.append(*made);
}

SettingChanges SettingsPage::wanted() const {
  SettingChanges changes;
  for (const SettingRow *one : rows_)
    changes.push_back(one->wanted());
  return changes;
}

SettingRow *SettingsPage::row(std::string_view key) {
  const auto place = std::ranges::find(rows_, key, &SettingRow::key);
  return place == rows_.end() ? nullptr : *place;
}

void SettingsPage::changed() {
  if (filling_)
    return;
  save_.set_sensitive(!changed_values(settings_, wanted()).empty());
  show_consequences();
}

void SettingsPage::save() {
  const SettingChanges changes = changed_values(settings_, wanted());
  if (changes.empty() || !save_.get_sensitive())
    return;
  const SettingChanges before = values_before(settings_, changes);
  apply(changes, [this, before](bool all_taken) {
    if (all_taken)
      notice_.show_text(_("The settings are saved"),
                        [this, before] { apply(before, [](bool /*all_taken*/) {}); });
  });
}

void SettingsPage::apply(const SettingChanges &changes,
                         const std::function<void(bool all_taken)> &done) {
  save_.set_sensitive(false);
  request_ = ask(
      session_,
      [changes, file = servers_file_] {
        SettingRefusals refusals = apply_settings(changes, file);
        return Applied{read_settings(file), std::move(refusals)};
      },
      [this, changes, done](const Applied &applied) {
        take_over(applied.settings, changes, applied.refusals);
        show_refusals(applied.refusals);
        saved_.emit(has_value(settings_, "username") && has_value(settings_, "password"));
        done(applied.refusals.empty());
      });
}

/** What was refused, and what was entered while the changes were on their way, stays. */
void SettingsPage::take_over(const Settings &settings, const SettingChanges &changes,
                             const SettingRefusals &refusals) {
  const Settings earlier = std::exchange(settings_, settings);
  filling_ = true;
  for (const SettingChange &change : changes) {
    SettingRow *one = row(change.key);
    const bool refused =
        std::ranges::find(refusals, change.key, &SettingRefusal::key) != refusals.end();
    const bool edited =
        one->wanted() != change && !changed_values(earlier, {one->wanted()}).empty();
    if (!refused && !edited)
      one->show_values(*find_setting(settings_, change.key));
  }
  filling_ = false;
  changed();
}

void SettingsPage::show_refusals(const SettingRefusals &refusals) {
  failure_.set_visible(false);
  SettingRow *first = nullptr;
  for (const SettingRefusal &refusal : refusals) {
    SettingRow *refused = row(refusal.key);
    if (refused == nullptr) {
      failure_.set_text(
          Glib::ustring::compose(_("The settings could not be saved: %1"), refusal.reason));
      failure_.set_visible(true);
      continue;
    }
    refused->show_refusal(words_for(refusal, *find_setting(settings_, refusal.key)));
    if (first == nullptr)
      first = refused;
  }
  if (first != nullptr)
    first->focus_editor();
}

void SettingsPage::set_snapshot(SharedSnapshot snapshot) {
  snapshot_ = std::move(snapshot);
  if (!rows_.empty())
    show_consequences();
}

void SettingsPage::show_consequences() {
  SettingRow *age = row(age_key);
  const SettingField *field = find_setting(settings_, age_key);
  if (age == nullptr || field == nullptr || !snapshot_)
    return;
  const SettingChange choice = age->wanted();
  const auto number =
      static_cast<std::size_t>(choice.values.empty() ? -1 : leading_number(choice.values.front()));
  if (number < field->days.size())
    age->show_consequence(
        counted("An update deletes older spots from the cache: %1 of those that are there now.",
                "An update deletes older spots from the cache: %1 of those that are there now.",
                static_cast<std::int64_t>(
                    spots_older_than(*snapshot_, field->days[number], std::time(nullptr)))));
  preview_bad_words();
}

/** A title is looked for in all others: the main loop does not wait for it. */
void SettingsPage::preview_bad_words() {
  if (preview_)
    preview_->cancel();
  SettingRow *words = row(bad_words_key);
  const SettingField *field = find_setting(settings_, bad_words_key);
  if (words == nullptr || field == nullptr)
    return;
  std::vector<std::string> added = words->wanted().values;
  std::erase_if(added, [field](const std::string &word) {
    return std::ranges::find(field->values, word) != field->values.end();
  });
  if (added.empty())
    return show_lost({});
  preview_ = std::make_shared<Cancellation>();
  previews_.post([this, wanted = preview_, snapshot = snapshot_, added = std::move(added)] {
    if (wanted->cancelled())
      return;
    run_on_main_loop([this, wanted, lost = spots_with_words(*snapshot, added)] {
      if (!wanted->cancelled())
        show_lost(lost);
    });
  });
}

void SettingsPage::show_lost(const LostSpots &lost) {
  row(bad_words_key)->show_consequence(lost.count == 0 ? Glib::ustring() : lost_text(lost));
}

}  // namespace velkor::app
