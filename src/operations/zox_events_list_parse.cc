/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading the server's reply about what is available. */
#include <velkor/zox_events_parse.h>

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_xml_parse.h>

#include "core/core_lock.h"
#include "core/xml_diagnosis.h"
#include "operations/update_bounds.h"
#include "posting/event_fields.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** Appends to a list that exists already, walking it only once. */
class Appender {
public:
  explicit Appender(GSList **list) noexcept : list_(list), last_(g_slist_last(*list)) {}

  void append(gpointer item) noexcept {
    GSList *cell = g_slist_prepend(nullptr, item);
    (last_ == nullptr ? *list_ : last_->next) = cell;
    last_ = cell;
  }

private:
  GSList **list_;
  GSList *last_;
};

/** The known newsgroups, to which new ones are added. */
class Groups {
public:
  Groups() noexcept {
    for (const ZoxGroup *group : Items<const ZoxGroup>(core->groups))
      known_.insert(group->id);
  }

  void add(guint32 id, OwnedString name) noexcept {
    if (!known_.insert(id).second)
      return;
    ZoxGroup *group = zox_group_new();
    group->id = id;
    replace_string(group->groupName, name.release());
    groups_.append(group);
  }

private:
  std::unordered_set<guint32> known_;
  Appender groups_{&core->groups};
};

/** Acts on the records of one reply. */
class Reply {
public:
  Reply(xmlDoc *document, gint64 *stamp, GSList **chunks) noexcept
      : document_(document), stamp_(stamp), chunks_(chunks) {}

  /** Takes one record over; a message when the reply cannot be used. */
  OwnedText take(xmlNode *record) noexcept {
    const gint32 code = zox_xml_parse_int_attr(document_, record, "Code");
    switch (code) {
    case 0:
      take_stamp(record);
      return nullptr;
    case 4:
      return take_group(record);
    case 5:
      take_statistics(record);
      return nullptr;
    case 7:
      return take_chunks(record);
    default:
      return OwnedText(g_strdup_printf("zox_events_parse: Unknown numcode %d", code));
    }
  }

private:
  /** Calls `act` for every child element of that name. */
  template <typename Act>
  static void for_each(xmlNode *record, std::string_view name, Act act) noexcept {
    for (xmlNode *node : xml::Siblings(record->children)) {
      if (xml::is_named_exactly(node, name))
        act(node);
    }
  }

  [[nodiscard]] OwnedString text_of(xmlNode *node) const noexcept {
    return OwnedString(zox_xml_parse_string(document_, node));
  }

  void take_stamp(xmlNode *record) const noexcept {
    for_each(record, "Stamp", [this](xmlNode *node) {
      if (stamp_ != nullptr)
        *stamp_ = zox_xml_parse_int(document_, node);
    });
  }

  OwnedText take_group(xmlNode *record) noexcept {
    gint32 id = 0;
    OwnedString name;
    for_each(record, "GroupID", [&](xmlNode *node) { id = zox_xml_parse_int(document_, node); });
    for_each(record, "Name", [&](xmlNode *node) { name = text_of(node); });
    if (id == 0 || !name)
      return OwnedText(g_strdup("zox_events_parse(): groupID == 0 || name == NULL\n"));
    groups_.add(static_cast<guint32>(id), std::move(name));
    return nullptr;
  }

  void take_statistics(xmlNode *record) const noexcept {
    ZOX_ASSERT_IN(zox_events_list_parse, core->config, "core->config");
    for_each(record, "T", [this](xmlNode *node) {
      const CoreWriter guard;
      core->config->ledenCount = static_cast<guint32>(zox_xml_parse_int(document_, node));
    });
    for_each(record, "N", [this](xmlNode *node) {
      const CoreWriter guard;
      replace_string(core->config->usersOnline, text_of(node).release());
    });
  }

  OwnedText take_chunks(xmlNode *record) noexcept {
    bool taken = true;
    for_each(record, "Chunks", [&](xmlNode *node) {
      if (const OwnedString names = text_of(node); names && taken)
        taken = append_names(view_of(names.get()));
    });
    return OwnedText(
        taken
            ? nullptr
            : g_strdup_printf("zox_events_list_parse(): more than %zu names of dumps", max_dumps));
  }

  /** Every piece is a name, an empty one too; false when they are too many. */
  bool append_names(std::string_view names) noexcept {
    const auto count = static_cast<std::size_t>(std::ranges::count(names, '|')) + 1;
    if (count > names_left_)
      return false;
    names_left_ -= count;
    char **pieces = g_strsplit(names.data(), "|", -1);
    for (char **piece = pieces; *piece != nullptr; ++piece)
      chunks_.append(*piece);
    g_free(pieces);  // the names themselves are the list's now
    return true;
  }

  xmlDoc *document_;
  gint64 *stamp_;
  Appender chunks_;
  std::size_t names_left_ = max_dumps;
  Groups groups_;
};

bool is_record(const xmlNode *node) noexcept {
  return xml::is_named_exactly(node, event_element) &&
         xmlHasProp(node, xml::chars("Code")) != nullptr;
}

/** Why the document cannot be a reply at all; null when it can. */
const char *wrong_kind(const xmlNode *root) noexcept {
  if (xml::name_of(root) != root_element)
    return "zox_events_list_parse(): document of the wrong type, root node != Events";
  if (root->children == nullptr)
    return "zox_events_list_parse(): no children of root-node!";
  return nullptr;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_events_list_parse(const ZoxString *buffer, gint64 *retStamp, GSList **retChunks,
                                   char **retError) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  ZOX_ASSERT(retChunks);
  ZOX_ASSERT(retError);
  *retError = nullptr;
  thread_local bool handler_installed = false;
  begin_diagnosis(handler_installed);
  const xml::Document document = xml::parse(view_of(buffer));
  xmlNode *root = xmlDocGetRootElement(document.get());
  if (root == nullptr) {
    *retError = take_diagnosis().release();
    return ZOX_RESULT_NOT_PARSED;
  }
  if (const char *message = wrong_kind(root)) {
    *retError = g_strdup(message);
    return ZOX_RESULT_NOT_PARSED;
  }
  Reply reply(document.get(), retStamp, retChunks);
  for (xmlNode *node : xml::Siblings(root->children)) {
    if (!is_record(node))
      continue;
    if (OwnedText message = reply.take(node)) {
      *retError = message.release();
      return ZOX_RESULT_NOT_PARSED;
    }
  }
  return ZOX_RESULT_SUCCESS;
}

}  // extern "C"
