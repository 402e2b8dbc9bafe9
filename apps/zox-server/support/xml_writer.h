/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writes an XML document into a text, element by element. */
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
  /** An attribute of the element opened last. */
  void attribute(const char *name, std::int64_t value);
  /** An element that holds a text; what XML cannot carry is left out of it. */
  void element(const char *name, std::string_view text);
  void element(const char *name, std::int64_t number);

  /** Closes what is open. @return the whole document */
  std::string finish();

private:
  std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>> buffer_;
  std::unique_ptr<xmlTextWriter, ReleaseWith<xmlFreeTextWriter>> writer_;
};

/** `text` as valid UTF-8 without the characters that XML 1.0 does not know. */
std::string xml_text(std::string_view text);

}  // namespace velkor::server

#endif
