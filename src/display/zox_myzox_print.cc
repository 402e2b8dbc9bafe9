/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The overview of the user's own postings as a document for the display. */
#include <velkor/zox_myzox.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "services/myzox_fields.h"
#include "support/slist.h"
#include "support/xml.h"

namespace velkor {
namespace {

/** A member as it is printed: a number in decimal, a time as a date, a list in its stored form. */
OwnedText printed_value(gint32 number) noexcept {
  return OwnedText(g_string_free(zox_string_integer(number), FALSE));
}
OwnedText printed_value(guint32 number) noexcept {
  return printed_value(static_cast<gint32>(number));
}
OwnedText printed_value(gint64 seconds) noexcept {
  return OwnedText(zox_string_date(seconds));
}
OwnedText printed_value(const GString *text) noexcept {
  return OwnedText(g_strdup(zox_string_value(text)));
}
OwnedText printed_value(const char *text) noexcept {
  return OwnedText(g_strdup(text));
}
OwnedText printed_value(GSList *list) noexcept {
  return OwnedText(g_string_free(zox_splitted_list_concat(list), FALSE));
}

void print_post(xmlNode *root, const ZoxMyzoxPost &post) noexcept {
  xmlNode *element = xml::add_element(root, "Post");
  for (const Field<ZoxMyzoxPost> &field : myzox_fields) {
    const OwnedText value =
        std::visit([&](auto member) { return printed_value(post.*member); }, field.member);
    xml::add_text(element, field.printed, value.get());
  }
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

xmlDocPtr zox_myzox_print(GSList *list) {
  xml::Document document = xml::new_document("MyZOX");
  for (const ZoxMyzoxPost *post : Items<const ZoxMyzoxPost>(list))
    print_post(xmlDocGetRootElement(document.get()), *post);
  return document.release();
}

}  // extern "C"
