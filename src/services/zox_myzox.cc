/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The user's own postings: refreshing one, and reading the overview. */
#include <velkor/zox_myzox.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_xml_parse.h>

#include "core/app_core.h"
#include "core/reply_document.h"
#include "http/service_request.h"
#include "services/myzox_fields.h"
#include "support/assertion.h"
#include "support/slist.h"

namespace velkor {
namespace {

// The words are those of the newsgroup reader; they are kept.
constexpr DocumentRule overview_rule{.root = "MyZOX",
                                     .reader = "zox_group_parse",
                                     .complaint = {.other_root = "Groups"},
                                     .childless_logged = false};

using OwnedPost = std::unique_ptr<ZoxMyzoxPost, ReleaseWith<free_myzox_post>>;

/** Only the word "n" forbids editing; false when there is no word at all. */
bool read_permission(xmlDoc *doc, xmlNode *node, guint32 &canEdit) noexcept {
  const OwnedString tmp(zox_xml_parse_string(doc, node));
  ZOX_ASSERT_IN(zox_myzox_parse_event, tmp || tolerant(), "tmp");
  canEdit = view_of(tmp.get()) == "n" ? 0 : 1;
  return tmp != nullptr;
}

/** Fills an entry; false, with a warning, when an element makes it unusable. */
bool read_entry(xmlDoc *doc, xmlNode *first, ZoxMyzoxPost &post) noexcept {
  for (xmlNode *node : xml::Siblings(first)) {
    const auto *field = field_for<ZoxMyzoxPost>(node, myzox_fields);
    if (field == nullptr)
      continue;
    if (field->element != myzox_permission) {
      read_field(doc, node, *field, post);
    } else if (!read_permission(doc, node, post.canEdit)) {
      g_warning("zox_myzox_parse_event(): posting %i: Edit zonder tekst\n", post.postId);
      return false;
    }
  }
  return true;
}

/** The entry of a "Post" element; null when it has no valid id or cannot be used. */
OwnedPost read_post(xmlDoc *doc, xmlNode *node) noexcept {
  const gint32 postId = zox_xml_parse_int_attr(doc, node, "ID");
  if (postId <= 0)
    return nullptr;
  OwnedPost post(g_new0(ZoxMyzoxPost, 1));
  post->postId = postId;
  if (!read_entry(doc, node->children, *post))
    return nullptr;
  return post;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_myzox_update(gint32 postId, char **message) {
  const ServiceReply reply =
      send_request("/3.7.3/xml-myzox.php", {{"mode", "update"}, {"id", decimal(postId).c_str()}},
                   {.require_data = false});
  return reply.failed() ? report_failure(reply, message) : ZoxErrorCode{ZOX_RESULT_SUCCESS};
}

ZoxErrorCode zox_myzox_fetch(GSList **list, char **message) {
  *list = nullptr;
  const ServiceReply reply = send_request("/3.7.3/xml-myzox.php", {});
  if (reply.failed())
    return report_failure(reply, message);
  hand_over(message, nullptr);
  const auto fault = static_cast<DocumentFault>(zox_myzox_parse(reply.text.get(), list));
  // A user without postings has an overview without any.
  return fault == DocumentFault::none || fault == DocumentFault::no_children
             ? ZOX_RESULT_SUCCESS
             : ZOX_RESULT_NOT_PARSED;
}

void zox_myzox_post_free(ZoxMyzoxPost *post) {
  free_myzox_post(post);
}

void zox_myzox_free(GSList *list) {
  const OwnedCells cells(list);
  for (ZoxMyzoxPost *post : Items<ZoxMyzoxPost>(list))
    free_myzox_post(post);
}

gint32 zox_myzox_parse(const ZoxString *buffer, GSList **list) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  *list = nullptr;
  const ReplyDocument document(buffer, overview_rule);
  ListBuilder<ZoxMyzoxPost, free_myzox_post> posts;
  for (xmlNode *node : document.children()) {
    if (!xml::is_named(node, "Post"))
      continue;
    if (OwnedPost post = read_post(document.get(), node))
      posts.append(post.release());
  }
  *list = posts.release();
  return static_cast<gint32>(document.fault());
}

void zox_myzox_parse_event(xmlDocPtr doc, xmlNodePtr firstChild, ZoxMyzoxPost *post) {
  read_entry(doc, firstChild, *post);
}

}  // extern "C"
