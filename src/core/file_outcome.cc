/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/file_outcome.h"

#include <cerrno>
#include <memory>
#include <utility>

#include <glib.h>

namespace velkor {
namespace {

/** A thread's outcome and the same in the form of the C interface. */
struct Place {
  FileOutcome outcome;
  std::string message;
  ZoxFileError error{};
};

void free_place(gpointer place) noexcept {
  const std::unique_ptr<Place> owned(static_cast<Place *>(place));
}

/** Unlike a `thread_local`, GLib's place outlives the functions that run while the process ends. */
Place &place() noexcept {
  static GPrivate holder = G_PRIVATE_INIT(free_place);
  auto *held = static_cast<Place *>(g_private_get(&holder));
  if (held == nullptr) {
    held = std::make_unique<Place>().release();
    g_private_set(&holder, held);
  }
  return *held;
}

std::string sentence_for(const FileOutcome &outcome) noexcept {
  switch (outcome.status) {
  case ZOX_FILE_FINE:
    break;
  case ZOX_FILE_MISSING:
    return "there is no file " + outcome.path;
  case ZOX_FILE_EMPTY:
    return outcome.path + " is empty";
  case ZOX_FILE_DAMAGED:
  case ZOX_FILE_UNREADABLE:
    return "cannot read " + outcome.path + ": " + outcome.reason;
  case ZOX_FILE_NOT_WRITTEN:
  case ZOX_FILE_READ_ONLY:
    return "cannot write " + outcome.path + ": " + outcome.reason;
  }
  return {};
}

}  // namespace

const FileOutcome &file_outcome() noexcept {
  return place().outcome;
}

void set_file_outcome(FileOutcome outcome) noexcept {
  place().outcome = std::move(outcome);
}

FileOutcome failed_outcome(ZoxFileStatus status, const std::string &path, int error) noexcept {
  return {status, error, path, g_strerror(error)};
}

FileOutcome unopened_outcome(const std::string &path, int error) noexcept {
  const bool missing = error == ENOENT || error == ENOTDIR;
  return failed_outcome(missing ? ZOX_FILE_MISSING : ZOX_FILE_UNREADABLE, path, error);
}

FileOutcome refused_outcome(const std::string &path) noexcept {
  return {ZOX_FILE_READ_ONLY, 0, path, "the library is open for reading only"};
}

void begin_file_operation() noexcept {
  set_file_outcome({});
}

}  // namespace velkor

using namespace velkor;

extern "C" const ZoxFileError *zox_file_last_error(void) {
  Place &here = place();
  const FileOutcome &outcome = here.outcome;
  here.message = sentence_for(outcome);
  here.error = {outcome.status, outcome.error,
                outcome.path.empty() ? nullptr : outcome.path.c_str(),
                here.message.empty() ? nullptr : here.message.c_str()};
  return &here.error;
}
