/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/xml_file.h"

#include <cerrno>

#include <libxml/globals.h>

#include "core/cache_directory.h"
#include "support/xml.h"

namespace velkor {
namespace {

constexpr int level = 9;

int write_to_file(void *file, const char *bytes, int length) {
  const std::string_view view(bytes, static_cast<std::size_t>(length));
  return static_cast<AtomicFile *>(file)->write(view) ? length : -1;
}

}  // namespace

XmlFile::XmlFile(const char *cache_name, bool compressed, xmlCharEncodingHandler *encoder) noexcept
    : file_(cache_path(cache_name, compressed),
            compressed ? AtomicFile::Form::gzip : AtomicFile::Form::plain, level),
      buffer_(xmlOutputBufferCreateIO(write_to_file, nullptr, &file_, encoder)) {
  xmlSetCompressMode(compressed ? level : 0);
}

int XmlFile::replace(int written, const char *caller, Failure failure) noexcept {
  if (written < 0)
    file_.fail(EIO);
  if (file_.commit(caller))
    return written;
  if (failure == Failure::warned)
    file_.warn(caller);
  return -1;
}

int XmlFile::commit(const char *caller) noexcept {
  return replace(xmlOutputBufferClose(buffer_.release()), caller, Failure::warned);
}

int save_document(xmlDoc *document, const char *cache_name, bool compressed, const char *caller,
                  XmlFile::Failure failure) noexcept {
  const char *encoding = xml::chars(document->encoding);
  XmlFile file(cache_name, compressed,
               encoding == nullptr ? nullptr : xmlFindCharEncodingHandler(encoding));
  xmlIndentTreeOutput = 1;
  const int written = xmlSaveFormatFileTo(file.buffer_.release(), document, encoding, 1);
  return file.replace(written, caller, failure);
}

}  // namespace velkor
