/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/cache_reading.h"

#include <libxml/xmlerror.h>

#include "core/backup.h"
#include "core/file_outcome.h"

namespace velkor {

std::string xml_fault() noexcept {
  const xmlError *error = xmlGetLastError();
  if (error == nullptr || error->message == nullptr)
    return "not well-formed XML";
  std::string text = "line " + std::to_string(error->line) + ": " + error->message;
  text.erase(text.find_last_not_of(" \n") + 1);
  return text;
}

std::string root_fault(const char *expected) noexcept {
  return std::string("the root element is not ") + expected;
}

std::string document_fault(const xml::Document &document, const xmlNode *root,
                           const char *expected) noexcept {
  if (!document)
    return xml_fault();
  return root == nullptr ? root_fault(expected) : std::string();
}

void finish_reading(const char *cache_name, bool compressed, const std::string &fault) noexcept {
  const FileOutcome &read = file_outcome();
  if (read.status == ZOX_FILE_FINE && !fault.empty())
    set_file_outcome({ZOX_FILE_DAMAGED, 0, read.path, fault});
  const bool good = file_outcome().status == ZOX_FILE_FINE;
  (good ? note_readable : note_unreadable)(cache_name, compressed);
}

}  // namespace velkor
