/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writes an XML document, element by element. */
#ifndef ZOX_SERVER_SUPPORT_XML_WRITER_H
#define ZOX_SERVER_SUPPORT_XML_WRITER_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <libxml/xmlwriter.h>

#include "support/owned.h"

namespace velkor::server {

class XmlWriter {
public:
  /** Opens the document and its root element. */
  explicit XmlWriter(const char *root);

  void open(const char *name);
  /** Opens an "Event" with its attribute "Code". */
  void open_event(int code);
  void close();
  /** Adds an attribute to the element opened last. */
  void attribute(const char *name, std::int64_t value);
  /** Writes an element with a text; characters that XML does not allow are left out. */
  void element(const char *name, std::string_view text);
  void element(const char *name, std::int64_t number);

  /** Closes all open elements. @return the whole document */
  std::string finish();

private:
  std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>> buffer_;
  std::unique_ptr<xmlTextWriter, ReleaseWith<xmlFreeTextWriter>> writer_;
};

/** `text` as valid UTF-8 without the characters that XML 1.0 does not allow. */
std::string xml_text(std::string_view text);

}  // namespace velkor::server

#endif
