/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The newsgroups document, which the service's reply and the cache file share. */
#include <velkor/zox_groups.h>

#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>
#include <velkor/zox_xml_parse.h>

#include "core/cache_reading.h"
#include "core/file_outcome.h"
#include "core/xml_file.h"
#include "support/assertion.h"
#include "support/text.h"
#include "support/xml.h"
#include "taxonomy/group_index.h"
#include "taxonomy/group_record.h"

namespace velkor {
namespace {

constexpr const char *cache_name = "velkor.groups";
constexpr const char *root_name = "Groups";

OwnedGroup read_group(xmlNode *element) noexcept {
  OwnedGroup group(zox_group_parse_group(element->doc, element->children));
  group->id = static_cast<guint32>(zox_xml_parse_int_attr(element->doc, element, "ID"));
  return group;
}

/** Appends the newsgroups that the table does not know. What is wrong with the text; else empty. */
std::string read_groups(const ZoxString *text, GroupList &groups) noexcept {
  const xml::Document document = xml::parse(view_of(text));
  const xmlNode *root = xml::root_named(document, root_name, "zox_group_parse");
  if (root == nullptr)
    return document_fault(document, root, root_name);
  GroupIndex known;
  for (xmlNode *child : xml::Siblings(root->children)) {
    if (!xml::is_named(child, "Group"))
      continue;
    OwnedGroup group = read_group(child);
    if (known.find(group->id) == nullptr)
      groups.append(group.release());
  }
  return {};
}

void add_group(xmlNode *root, const ZoxGroup &group) noexcept {
  xmlNode *element = xml::add_element(root, "Group");
  xmlNewProp(element, xml::chars("ID"), xml::chars(std::to_string(group.id).c_str()));
  if (group.groupName != nullptr)
    xml::add_text(element, "Name", xml::storable(view_of(group.groupName)).c_str());
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxGroup *zox_group_parse_group(xmlDocPtr doc, xmlNodePtr firstChild) {
  OwnedGroup group(zox_group_new());
  for (xmlNode *child : xml::Siblings(firstChild)) {
    if (xml::is_named(child, "Name"))
      replace_string(group->groupName, zox_xml_parse_string(doc, child));
  }
  return group.release();
}

GSList *zox_group_parse(const ZoxString *buffer) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  GroupList groups;
  read_groups(buffer, groups);
  return groups.release();
}

void zox_group_load(void) {
  ZOX_ASSERT(core);
  const OwnedString text(zox_file_load(cache_name, 1));
  if (!text || text->len == 0) {
    finish_reading(cache_name, true, {});
    return;
  }
  zox_group_free_all();
  GroupList groups;
  finish_reading(cache_name, true, read_groups(text.get(), groups));
  core->groups = groups.release();
}

gint32 zox_group_save(void) {
  ZOX_ASSERT(core);
  begin_file_operation();
  const xml::Document document = xml::new_document(root_name);
  for (const ZoxGroup *group : Items<ZoxGroup>(core->groups))
    add_group(xmlDocGetRootElement(document.get()), *group);
  return save_document(document.get(), cache_name, true, __func__);
}

}  // extern "C"
