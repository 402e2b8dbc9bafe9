/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The commands that every setting with a list of texts has: add, remove and list. */
#ifndef VELKORCTL_SETTING_LISTS_H
#define VELKORCTL_SETTING_LISTS_H

#include <string>
#include <vector>

#include "velkorctl/record_printer.h"

namespace velkor::ctl {

struct SettingList {
  /** The key of the setting. */
  std::string key;
  /** What the help says about the texts, and about each command. */
  std::string texts_help;
  std::string add_summary;
  std::string remove_summary;
  std::string list_summary;
};

std::vector<Command> setting_list_commands(const SettingList &list);

/** A list of texts. */
RecordInfo text_records();

/** Prints texts as records when the options ask for them, and a text per line otherwise. */
void print_texts(const Context &context, const std::vector<std::string> &texts,
                 const Result &result = {});

/** Adds texts to the setting, which is not saved; those that are there already are reported. */
void add_texts(const SettingList &list, const std::vector<std::string> &added);

/** The texts that the setting has now. */
std::vector<std::string> texts_of(const SettingList &list);

}  // namespace velkor::ctl

#endif
