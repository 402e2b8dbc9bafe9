/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/reply_document.h"

#include "support/text.h"

namespace velkor {

ReplyDocument::ReplyDocument(const ZoxString *text, const DocumentRule &rule) noexcept
    : document_(xml::parse(view_of(text), rule.most_nodes)), fault_(examine(rule)) {}

DocumentFault ReplyDocument::examine(const DocumentRule &rule) noexcept {
  const xmlNode *root = xml::root_named(document_, rule.root, rule.reader, rule.complaint);
  if (root == nullptr)
    return document_ ? DocumentFault::wrong_root : DocumentFault::empty;
  first_child_ = root->children;
  if (first_child_ != nullptr)
    return DocumentFault::none;
  if (rule.childless_logged)
    g_warning("%s(): no children of root-node!\n", rule.reader);
  return DocumentFault::no_children;
}

}  // namespace velkor
