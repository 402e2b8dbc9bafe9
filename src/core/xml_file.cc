/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/xml_file.h"

#include <cerrno>
#include <string_view>

#include <libxml/encoding.h>
#include <libxml/globals.h>
#include <libxml/xmlIO.h>

#include "core/atomic_file.h"
#include "core/cache_directory.h"
#include "support/xml.h"

namespace velkor {
namespace {

constexpr int level = 9;

int write_to_file(void *file, const char *bytes, int length) {
  const std::string_view view(bytes, static_cast<std::size_t>(length));
  return static_cast<AtomicFile *>(file)->write(view) ? length : -1;
}

/** The bytes before compression, or -1. */
int write_document(xmlDoc *document, AtomicFile &file) noexcept {
  const char *encoding = xml::chars(document->encoding);
  xmlIndentTreeOutput = 1;
  // libxml2 closes the buffer, whatever happens.
  return xmlSaveFormatFileTo(
      xmlOutputBufferCreateIO(write_to_file, nullptr, &file,
                              encoding == nullptr ? nullptr : xmlFindCharEncodingHandler(encoding)),
      document, encoding, 1);
}

}  // namespace

int save_document(xmlDoc *document, const char *cache_name, bool compressed, const char *caller,
                  SaveFailure failure) noexcept {
  AtomicFile file(cache_path(cache_name, compressed),
                  compressed ? AtomicFile::Form::gzip : AtomicFile::Form::plain, level);
  xmlSetCompressMode(compressed ? level : 0);
  const int written = write_document(document, file);
  if (written < 0)
    file.fail(EIO);
  if (file.commit(caller))
    return written;
  if (failure == SaveFailure::warned)
    file.warn(caller);
  return -1;
}

}  // namespace velkor
