/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/own_spots_page.h"

#include <string>

#include "widgets/translation.h"

namespace velkor::app {
namespace {

Glib::ustring facts_of(const OwnSpot &spot) {
  Glib::ustring facts = Glib::ustring(spot.status) + " — " + Glib::ustring(spot.category) + " — " +
                        moment_text(spot.stamp) + " — " +
                        counted("%1 kudos", "%1 kudos", spot.kudos) + " — " +
                        counted("%1 reaction", "%1 reactions", spot.reactions);
  return spot.can_edit ? facts + " — " + _("can still be changed") : facts;
}

ListEntry entry_of(const OwnSpot &spot) {
  return {.id = static_cast<std::uint64_t>(spot.id),
          .title = Glib::ustring(spot.title),
          .detail = facts_of(spot)};
}

}  // namespace

OwnSpotsPage::OwnSpotsPage(Session &session)
    : Page(_("My spots")), session_(session), fetch_button_(_("_Fetch"), true),
      refresh_button_(_("_Refresh"), true), open_button_(_("_Open"), true),
      hint_(hint_label(_("The spots that you have placed are listed here as soon as the server has "
                         "told of them. Fetch asks it."))),
      list_(_("My spots")) {
  build_title_line();
  list_.signal_chosen().connect([this] { enable(); });
  list_.signal_opened().connect([this] { open(); });
  stack_.add(*hint_, "hint");
  stack_.add(list_, "list");
  stack_.set_vexpand(true);
  append(status_);
  append(stack_);
  enable();
}

OwnSpotsPage::~OwnSpotsPage() {
  if (request_)
    request_->cancel();
}

void OwnSpotsPage::build_title_line() {
  fetch_button_.set_tooltip_text(_("Ask the server for your spots"));
  refresh_button_.set_tooltip_text(_("Ask the server to refresh the chosen spot"));
  open_button_.set_tooltip_text(_("Open the chosen spot (Enter)"));
  fetch_button_.signal_clicked().connect([this] { fetch(); });
  refresh_button_.signal_clicked().connect([this] { refresh(); });
  open_button_.signal_clicked().connect([this] { open(); });
  for (Gtk::Button *button : {&fetch_button_, &refresh_button_, &open_button_}) {
    name_by_label_alone(*button);
    add_to_title_line(*button);
  }
}

/** What is on its way when the user comes back goes on; it brings the list as well. */
void OwnSpotsPage::begin() {
  fetch_button_.grab_focus();
  if (!refreshing_)
    fetch();
}

void OwnSpotsPage::fetch() {
  if (request_)
    request_->cancel();
  status_.tell(_("Asking the server…"));
  request_ = fetch_own_spots(session_, [this](const OwnSpotsReply &reply) { take(reply); });
}

/** What was known before stays on the screen when the server does not answer. */
void OwnSpotsPage::take(const OwnSpotsReply &reply) {
  if (!reply.failure.empty())
    return status_.tell_failure(reply.failure);
  status_.tell(counted("%1 spot", "%1 spots", static_cast<std::int64_t>(reply.spots.size())));
  show_spots(reply.spots);
}

void OwnSpotsPage::show_spots(const std::vector<OwnSpot> &spots) {
  std::vector<ListEntry> entries;
  entries.reserve(spots.size());
  for (const OwnSpot &spot : spots)
    entries.push_back(entry_of(spot));
  list_.set_entries(entries);
  if (entries.empty())
    hint_->set_text(_("The server knows no spots of yours. Those that you place with “velkorctl "
                      "post” are listed here."));
  stack_.set_visible_child(entries.empty() ? "hint" : "list");
  enable();
  if (!entries.empty() && get_mapped())
    list_.focus_list();
}

void OwnSpotsPage::refresh() {
  const std::optional<std::int32_t> id = chosen();
  if (!id)
    return;
  if (request_)
    request_->cancel();
  refreshing_ = true;
  enable();
  status_.tell(_("Asking the server…"));
  request_ =
      refresh_own_spot(session_, *id, [this](const std::string &failure) { refreshed(failure); });
}

void OwnSpotsPage::refreshed(const std::string &failure) {
  refreshing_ = false;
  enable();
  if (!failure.empty())
    return status_.tell_failure(failure);
  request_ = fetch_own_spots(session_, [this](const OwnSpotsReply &reply) {
    take(reply);
    if (reply.failure.empty())
      status_.tell(_("The server has been asked to refresh the spot."));
  });
}

void OwnSpotsPage::open() {
  if (const std::optional<std::int32_t> id = chosen())
    open_.emit(*id);
}

std::optional<std::int32_t> OwnSpotsPage::chosen() const {
  const std::optional<std::uint64_t> id = list_.chosen();
  return id ? std::optional(static_cast<std::int32_t>(*id)) : std::nullopt;
}

/** Another question would take the place of the refresh, and nobody would know what came of it. */
void OwnSpotsPage::enable() {
  const bool is_chosen = chosen().has_value();
  open_button_.set_sensitive(is_chosen);
  refresh_button_.set_sensitive(is_chosen && !refreshing_);
  fetch_button_.set_sensitive(!refreshing_);
}

}  // namespace velkor::app
