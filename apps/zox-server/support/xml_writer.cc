/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/support/xml_writer.h"

#include <algorithm>
#include <new>

namespace velkor::server {
namespace {

const xmlChar *chars(const char *text) {
  return reinterpret_cast<const xmlChar *>(text);
}

void check(int result) {
  if (result < 0)
    throw std::bad_alloc();
}

bool is_forbidden_control(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 && character != '\t' && character != '\n' && character != '\r';
}

/** U+FFFE and U+FFFF are valid UTF-8 but not XML characters. */
void remove_noncharacters(std::string &text) {
  for (std::size_t at = 0; (at = text.find("\xEF\xBF", at)) != std::string::npos;) {
    const char last = text[at + 2];
    if (last == '\xBE' || last == '\xBF')
      text.erase(at, 3);
    else
      at += 3;
  }
}

}  // namespace

XmlWriter::XmlWriter(const char *root)
    : buffer_(xmlBufferCreate()), writer_(xmlNewTextWriterMemory(buffer_.get(), 0)) {
  if (!buffer_ || !writer_)
    throw std::bad_alloc();
  xmlBufferSetAllocationScheme(buffer_.get(), XML_BUFFER_ALLOC_DOUBLEIT);
  check(xmlTextWriterStartDocument(writer_.get(), "1.0", "UTF-8", nullptr));
  open(root);
}

void XmlWriter::open(const char *name) {
  check(xmlTextWriterStartElement(writer_.get(), chars(name)));
}

void XmlWriter::open_event(int code) {
  open("Event");
  attribute("Code", code);
}

void XmlWriter::close() {
  check(xmlTextWriterEndElement(writer_.get()));
}

void XmlWriter::attribute(const char *name, std::int64_t value) {
  check(xmlTextWriterWriteAttribute(writer_.get(), chars(name),
                                    chars(std::to_string(value).c_str())));
}

void XmlWriter::element(const char *name, std::string_view text) {
  open(name);
  check(xmlTextWriterWriteString(writer_.get(), chars(xml_text(text).c_str())));
  close();
}

void XmlWriter::element(const char *name, std::int64_t number) {
  element(name, std::to_string(number));
}

std::string XmlWriter::finish() {
  check(xmlTextWriterEndDocument(writer_.get()));
  writer_.reset();
  return {reinterpret_cast<const char *>(xmlBufferContent(buffer_.get())),
          static_cast<std::size_t>(xmlBufferLength(buffer_.get()))};
}

std::string xml_text(std::string_view text) {
  const OwnedText valid(g_utf8_make_valid(text.data() == nullptr ? "" : text.data(),
                                          static_cast<gssize>(text.size())));
  std::string result(valid.get());
  std::erase_if(result, is_forbidden_control);
  remove_noncharacters(result);
  return result;
}

}  // namespace velkor::server
