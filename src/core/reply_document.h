/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The XML document of a reply: its root is checked, and what is wrong with it is said. */
#ifndef VELKOR_CORE_REPLY_DOCUMENT_H
#define VELKOR_CORE_REPLY_DOCUMENT_H

#include <cstddef>

#include <velkor/zox_types.h>

#include "support/xml.h"

namespace velkor {

/** What is wrong with a document; the numbers are results of readers of the C interface. */
enum class DocumentFault : gint32 { none = 0, empty = 1, wrong_root = 2, no_children = 3 };

/** What a reader expects of the root, and how it tells of a document that differs. */
struct DocumentRule {
  /** Name of the root; letter case does not count. */
  const char *root = nullptr;
  /** The function that the messages name. */
  const char *reader = nullptr;
  xml::Complaint complaint{};
  /** Whether a root without children is logged as a warning. */
  bool childless_logged = true;
  /** How many nodes beside texts the document may have. */
  std::size_t most_nodes = xml::max_nodes;
};

class ReplyDocument {
public:
  ReplyDocument(const ZoxString *text, const DocumentRule &rule) noexcept;

  [[nodiscard]] DocumentFault fault() const noexcept { return fault_; }
  [[nodiscard]] xmlDoc *get() const noexcept { return document_.get(); }
  /** The first child of the root, which may have none; null without a root. */
  [[nodiscard]] xmlNode *first_child() const noexcept { return first_child_; }
  [[nodiscard]] xml::Siblings children() const noexcept { return xml::Siblings(first_child_); }

private:
  DocumentFault examine(const DocumentRule &rule) noexcept;

  xml::Document document_;
  xmlNode *first_child_ = nullptr;
  DocumentFault fault_;
};

}  // namespace velkor

#endif
