/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/shortcuts.h"

#include <array>
#include <string>

#include "widgets/translation.h"

namespace velkor::app {
namespace {

struct Shortcut {
  const char *action;  // null for keys that a widget handles itself
  const char *keys;    // as GTK writes them, several apart by blanks
  const char *title;
};

struct Group {
  const char *title;
  std::array<Shortcut, 9> shortcuts;
};

const std::array<Group, 4> groups{
    {{N_("General"),
      {{{"win.update", "F5 <Control>r", N_("Fetch what is new")},
        {"win.stop-update", "<Control>period", N_("Stop the update")},
        {"win.undo", "<Control>z", N_("Undo what the line at the bottom tells about")},
        {"win.show-help-overlay", "<Control>question F1", N_("Show the keys")},
        {"win.close", "<Control>w", N_("Close the window")},
        {"app.quit", "<Control>q", N_("Quit")},
        {}}}},
     {N_("Spots"),
      {{{"win.search", "<Control>f", N_("Search in the titles")},
        {"win.filter", "<Control><Shift>f", N_("Narrow the list by period, state and names")},
        {"win.save-list", "<Control>s", N_("Save the list in a file")},
        {"win.focus-categories", "<Alt>1", N_("Go to the categories")},
        {"win.focus-list", "<Alt>2", N_("Go to the list")},
        {nullptr, "Return", N_("Open the chosen spot")},
        {}}}},
     {N_("Spot"),
      {{{"win.close-posting", "Escape", N_("Close the spot")},
        {"win.watch", "<Control>d", N_("Put the spot on the watchlist, or take it off")},
        {"win.kudos", "<Control>k", N_("Give kudos")},
        {"win.warn", "<Control><Shift>m", N_("Warn the moderators")},
        {"win.profile", "<Control>p", N_("Show the profile of the poster")},
        {"win.open-link", "<Control>l", N_("Open the link in the browser")},
        {"win.open-image", "<Control>i", N_("Open the image in the browser")},
        {"win.reactions", "<Alt>3", N_("Go to the reactions")},
        {nullptr, "<Control>Return", N_("Send the reaction")}}}},
     {N_("Pages"),
      {{{"win.messages", "<Control>m", N_("Open the messages")},
        {nullptr, "<Control>n", N_("Write a message")},
        {"win.watchlist", "<Control><Shift>d", N_("Open the watchlist")},
        {"win.own-spots", "<Control><Shift>p", N_("Open your own spots")},
        {"win.cache", "<Control><Shift>c", N_("Open the files of the cache")},
        {"win.settings", "<Control>comma", N_("Open the settings")},
        {nullptr, "<Control>s", N_("Save the settings")},
        {nullptr, "Escape", N_("Go back to the spots")},
        {}}}}}};

std::vector<Glib::ustring> words_of(const std::string &text) {
  std::vector<Glib::ustring> words;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    words.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return words;
}

/** The window is made from a description: its parts have no other way in. */
Glib::ustring description() {
  Glib::ustring xml = "<interface><object class=\"GtkShortcutsWindow\" id=\"keys\">"
                      "<property name=\"modal\">1</property><child>"
                      "<object class=\"GtkShortcutsSection\">"
                      "<property name=\"section-name\">keys</property>";
  const auto property = [&](const char *name, const Glib::ustring &value) {
    xml += Glib::ustring("<property name=\"") + name + "\">" + Glib::Markup::escape_text(value) +
           "</property>";
  };
  for (const Group &group : groups) {
    xml += "<child><object class=\"GtkShortcutsGroup\">";
    property("title", _(group.title));
    for (const Shortcut &shortcut : group.shortcuts) {
      if (shortcut.keys == nullptr)
        continue;
      xml += "<child><object class=\"GtkShortcutsShortcut\">";
      property("accelerator", shortcut.keys);
      property("title", _(shortcut.title));
      xml += "</object></child>";
    }
    xml += "</object></child>";
  }
  return xml + "</object></child></object></interface>";
}

}  // namespace

void set_accelerators(Gtk::Application &application) {
  for (const Group &group : groups)
    for (const Shortcut &shortcut : group.shortcuts)
      if (shortcut.action != nullptr)
        application.set_accels_for_action(shortcut.action, words_of(shortcut.keys));
}

void add_shortcuts_window(Gtk::ApplicationWindow &window) {
  const auto builder = Gtk::Builder::create_from_string(description());
  window.set_help_overlay(*builder->get_widget<Gtk::ShortcutsWindow>("keys"));
}

}  // namespace velkor::app
