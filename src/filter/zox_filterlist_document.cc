/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The filters file: its document, read and written. */
#include <velkor/zox_filterlist.h>

#include <algorithm>
#include <array>
#include <utility>

#include <velkor/zox_file.h>
#include <velkor/zox_xml_parse.h>

#include "core/app_core.h"
#include "core/cache_reading.h"
#include "core/file_outcome.h"
#include "core/xml_file.h"
#include "filter/filter_record.h"
#include "support/assertion.h"
#include "support/object_type.h"
#include "support/rw_lock.h"
#include "support/text.h"
#include "support/xml.h"

namespace velkor {
namespace {

constexpr const char *cache_name = "velkor.filters";
constexpr const char *root_name = "Filters";

/** One "Filter" element being read. */
struct Reading {
  OwnedFilter filter{zox_filter_new_filter()};
  ListBuilder<ZoxString, free_string> tags;
};

struct Field {
  std::string_view element;
  void (*read)(Reading &reading, xmlNode *node);
};

constexpr std::array<Field, 5> fields{{
    {"filterNaam",
     [](Reading &reading, xmlNode *node) {
       replace_string(reading.filter->name, zox_xml_parse_string(node->doc, node));
     }},
    {"cat", [](Reading &reading,
               xmlNode *node) { reading.filter->cat = zox_xml_parse_int(node->doc, node); }},
    {"sCat", [](Reading &reading,
                xmlNode *node) { reading.filter->sCat = zox_xml_parse_int(node->doc, node); }},
    {"extra_tag",
     [](Reading &reading, xmlNode *node) {
       replace_string(reading.filter->extraTag, zox_xml_parse_string(node->doc, node));
     }},
    {"tag",
     [](Reading &reading, xmlNode *node) {
       if (ZoxString *code = zox_xml_parse_string(node->doc, node); code != nullptr)
         reading.tags.append(code);
     }},
}};

ZoxFilter *read_filter(xmlNode *element) noexcept {
  Reading reading;
  for (xmlNode *child : xml::Siblings(element->children)) {
    const auto *field = std::ranges::find_if(
        fields, [child](const Field &each) { return xml::is_named(child, each.element); });
    if (field != fields.end())
      field->read(reading, child);
  }
  reading.filter->tags = reading.tags.release();
  return reading.filter.release();
}

GSList *read_filters(const xmlNode *root) noexcept {
  FilterBuilder filters;
  for (xmlNode *child : xml::Siblings(root->children)) {
    if (xml::is_named(child, "Filter"))
      filters.append(read_filter(child));
  }
  return filters.release();
}

/** The filters in the text of the file; none when that is no document of filters. */
GSList *parse_filters(const ZoxString *text) noexcept {
  const xml::Document document = xml::parse(view_of(text));
  const xmlNode *root = xml::root_named(document, root_name, "zox_filter_parse");
  finish_reading(cache_name, false, document_fault(document, root, root_name));
  if (root == nullptr)
    return nullptr;
  if (root->children == nullptr)
    g_warning("zox_filter_parse(): no children of root-node!\n");
  return read_filters(root);
}

/** Fills the list from the file; false when there is no file that can be opened. */
bool replace_from_file(ZOXFilterlist &list) noexcept {
  const WriteLock lock(list.lock);
  free_filters(std::exchange(list.filters, nullptr));
  const OwnedString text(zox_file_load(cache_name, 0));
  if (!text) {
    finish_reading(cache_name, false, {});
    return false;
  }
  list.filters = parse_filters(text.get());
  return true;
}

void add_text(xmlNode *parent, const char *name, const ZoxString *text) noexcept {
  if (text != nullptr)
    xml::add_cdata(parent, name, xml::storable(view_of(text)));
}

void add_filter(xmlNode *root, const ZoxFilter &filter) noexcept {
  xmlNode *element = xml::add_element(root, "Filter");
  add_text(element, "filterNaam", filter.name);
  xml::add_number(element, "cat", filter.cat);
  xml::add_number(element, "sCat", filter.sCat);
  add_text(element, "extra_tag", filter.extraTag);
  for (const ZoxString *code : Items<ZoxString>(filter.tags))
    add_text(element, "tag", code);
}

/** The document of filters, of which none is null. */
xml::Document document_of(const GSList *filters) noexcept {
  xml::Document document = xml::new_document(root_name);
  for (const ZoxFilter *filter : Items<ZoxFilter>(filters))
    add_filter(xmlDocGetRootElement(document.get()), *filter);
  return document;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_filterlist_load(ZOXFilterlist *list) {
  g_return_if_fail(is_instance(list, zox_filterlist_get_type()));
  if (replace_from_file(*list))
    return;
  append_default_filters(list);
  if (read_only())
    return;
  const JoinedOutcome outcome;
  zox_filterlist_save(list);
}

void zox_filterlist_save(ZOXFilterlist *list) {
  g_return_if_fail(is_instance(list, zox_filterlist_get_type()));
  begin_file_operation();
  const ReadLock lock(list->lock);
  for (const ZoxFilter *filter : Items<ZoxFilter>(list->filters))
    ZOX_ASSERT(filter);
  save_document(document_of(list->filters).get(), cache_name, false, __func__, SaveFailure::silent);
}

gint32 zox_filterlist_parse(const ZoxString *document, GSList **filters) {
  ZOX_ASSERT(document);
  ZOX_ASSERT(filters);
  *filters = nullptr;
  const xml::Document parsed = xml::parse(view_of(document));
  if (!parsed)
    return 1;
  const xmlNode *root = xmlDocGetRootElement(parsed.get());
  if (!xml::is_named(root, root_name))
    return 2;
  *filters = read_filters(root);
  return 0;
}

ZoxString *zox_filterlist_print(const GSList *filters) {
  for (const ZoxFilter *filter : Items<ZoxFilter>(filters))
    ZOX_ASSERT(filter);
  xmlChar *text = nullptr;
  int length = 0;
  xmlDocDumpFormatMemory(document_of(filters).get(), &text, &length, 1);
  const xml::Chars owned(text);
  return g_string_new_len(xml::chars(text), length);
}

}  // extern "C"
