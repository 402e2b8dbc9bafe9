/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Writing a cache file through libxml2. */
#ifndef VELKOR_CORE_XML_FILE_H
#define VELKOR_CORE_XML_FILE_H

#include <memory>

#include <libxml/encoding.h>
#include <libxml/tree.h>
#include <libxml/xmlIO.h>

#include "core/atomic_file.h"

namespace velkor {

/**
 * A cache file that libxml2 writes to, piece by piece: plain, or gzip at level 9. libxml2's
 * process-wide compression mode is set to match, since it is part of how documents are saved.
 */
class XmlFile {
public:
  enum class Failure { warned, silent };

  XmlFile(const char *cache_name, bool compressed,
          xmlCharEncodingHandler *encoder = nullptr) noexcept;

  /** What to write to; valid until commit(). */
  [[nodiscard]] xmlOutputBuffer *buffer() const noexcept { return buffer_.get(); }

  /**
   * Closes the buffer and replaces the file; a failure is logged as a warning.
   * @param caller  the function of the interface that warnings name
   * @return the number of bytes before compression, as libxml2 counts them, or -1
   */
  int commit(const char *caller) noexcept;

private:
  friend int save_document(xmlDoc *document, const char *cache_name, bool compressed,
                           const char *caller, Failure failure) noexcept;

  int replace(int written, const char *caller, Failure failure) noexcept;

  AtomicFile file_;
  std::unique_ptr<xmlOutputBuffer, ReleaseWith<xmlOutputBufferClose>> buffer_;
};

/**
 * Saves a whole document with indentation; the result is that of XmlFile::commit().
 * @param failure  whether a failure is logged as a warning
 */
int save_document(xmlDoc *document, const char *cache_name, bool compressed, const char *caller,
                  XmlFile::Failure failure = XmlFile::Failure::warned) noexcept;

}  // namespace velkor

#endif
