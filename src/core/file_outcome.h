/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * How this thread's last saving or loading ended, which zox_file_last_error() shows. Every function
 * of the interface that saves or loads a file leaves its outcome here.
 */
#ifndef VELKOR_CORE_FILE_OUTCOME_H
#define VELKOR_CORE_FILE_OUTCOME_H

#include <string>

#include <velkor/zox_file.h>

namespace velkor {

struct FileOutcome {
  ZoxFileStatus status = ZOX_FILE_FINE;
  int error = 0;       // the system's number, 0 when the reason is another one
  std::string path{};  // empty before the first saving or loading
  std::string reason{};
};

const FileOutcome &file_outcome() noexcept;
void set_file_outcome(FileOutcome outcome) noexcept;

/** The outcome of an operation that failed with the system's error number `error`. */
FileOutcome failed_outcome(ZoxFileStatus status, const std::string &path, int error) noexcept;

/** The outcome for a file that cannot be opened for reading: one that is not there is missing. */
FileOutcome unopened_outcome(const std::string &path, int error) noexcept;

/** The outcome of a writing that is refused because the core was opened for reading only. */
FileOutcome refused_outcome(const std::string &path) noexcept;

/** Forgets the outcome; called at the start of every function that leaves one. */
void begin_file_operation() noexcept;

/**
 * Joins what is done while it lives to what was done before, as steps of one operation: of the two
 * outcomes the worse one stays.
 */
class JoinedOutcome {
public:
  JoinedOutcome() noexcept : before_(file_outcome()) {}
  ~JoinedOutcome() {
    if (before_.status >= file_outcome().status)
      set_file_outcome(before_);
  }
  JoinedOutcome(const JoinedOutcome &) = delete;
  JoinedOutcome &operator=(const JoinedOutcome &) = delete;

private:
  FileOutcome before_;
};

}  // namespace velkor

#endif
