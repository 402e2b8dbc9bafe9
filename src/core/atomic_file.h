/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Replacing a file as a whole: a reader finds the old content or the new, whatever happens to the
 * process, the disk space or the power in between. Every file that the library keeps is written
 * through this class.
 */
#ifndef VELKOR_CORE_ATOMIC_FILE_H
#define VELKOR_CORE_ATOMIC_FILE_H

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <sys/types.h>
#include <zlib.h>

#include "core/file_identity.h"
#include "support/descriptor.h"
#include "support/owned.h"

namespace velkor {

/** In the name of a temporary file, between that of its target and six characters of its own. */
inline constexpr std::string_view temporary_mark = ".tijdelijk-";

/**
 * The new content of a file, written beside it. commit() puts it in the old one's place; without
 * that, the destructor removes it and the old file stays. Symbolic links are followed, see
 * follow_links(). After the first error every further call fails; in a core that is open for
 * reading only all of them do.
 */
class AtomicFile {
public:
  enum class Form { plain, gzip };

  /**
   * @param level  gzip level, 0 to 9
   * @param mode   exact permissions, whatever the umask; by default those of the old file; a new
   *               one is for its owner alone
   */
  AtomicFile(const std::string &path, Form form, int level = Z_DEFAULT_COMPRESSION,
             std::optional<mode_t> mode = std::nullopt) noexcept;
  ~AtomicFile();
  AtomicFile(const AtomicFile &) = delete;
  AtomicFile &operator=(const AtomicFile &) = delete;

  [[nodiscard]] bool ok() const noexcept { return error_ == 0; }
  /** The number of the first error; 0 without one. */
  [[nodiscard]] int error() const noexcept { return error_; }

  bool write(std::string_view bytes) noexcept;
  /** Replaces what the file begins with, in a plain one; takes effect with commit(). */
  void replace_start(std::string bytes) noexcept { start_ = std::move(bytes); }
  /** Notes an error number of the caller's own, unless there is an error already. */
  void fail(int error) noexcept;
  /**
   * Flushes to disk and replaces the file; false when anything failed since the start. Either is
   * this thread's file outcome from then on. `caller` is the function that a warning about a backup
   * names.
   */
  bool commit(const char *caller) noexcept;

  /** The file that commit() has put in place; nothing when it failed. */
  [[nodiscard]] std::optional<FileIdentity> identity() const noexcept { return identity_; }

  /** Logs file and error as a warning of function `caller`, unless writing was not allowed. */
  void warn(const char *caller) const noexcept;

private:
  using Stream = std::unique_ptr<gzFile_s, ReleaseWith<gzclose>>;

  void begin(Form form, int level, std::optional<mode_t> mode) noexcept;
  void make_temporary() noexcept;
  void open(Form form, int level, std::optional<mode_t> mode) noexcept;
  [[nodiscard]] bool note(bool done) noexcept;
  [[nodiscard]] bool flush() noexcept;
  [[nodiscard]] bool replace(const char *caller) noexcept;

  std::string path_;       // as given
  std::string target_;     // where it leads to
  std::string temporary_;  // empty when there is none (any more)
  std::string start_;
  std::optional<FileIdentity> identity_;
  Descriptor descriptor_;
  Stream stream_;
  int error_ = 0;
};

/**
 * Writes the pieces and commits; a failure is logged as a warning of function `caller`.
 * @return whether the file is replaced
 */
bool replace_content(AtomicFile &file, std::initializer_list<std::string_view> pieces,
                     const char *caller) noexcept;

}  // namespace velkor

#endif
