/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The library, started for one command. The D-Bus service is left out, so that a command neither
 * claims the name of the desktop front end nor raises its window.
 */
#ifndef VELKORCTL_CORE_SESSION_H
#define VELKORCTL_CORE_SESSION_H

#include <filesystem>
#include <optional>
#include <string>

#include <velkor/zox_file.h>

#include "velkorctl/command.h"
#include "velkorctl/interruption.h"
#include "velkorctl/writer_lock.h"

namespace velkor::ctl {

/** What a command needs from the cache besides settings, filters, categories and newsgroups. */
enum class Load {
  settings,
  mail,
  postings,
  /** The postings, or none with a warning when they cannot be read. */
  postings_if_readable,
};

class CoreSession {
public:
  enum class Access {
    /** Always possible; no file is changed. */
    read,
    /** Refused while the desktop front end is running or another command is writing. */
    write,
  };

  /** Throws a Failure when the cache cannot be used or the session is refused. */
  CoreSession(const GlobalOptions &options, Access access, Load load);

  /** Saves the settings; throws a Failure when that fails. */
  void save_settings();

  /** Throws a Failure unless user name and password are set. */
  void require_account() const;

  /** The cache directory itself, not a view of it. */
  [[nodiscard]] const std::filesystem::path &directory() const noexcept { return directory_; }

private:
  /** The library's core, opened for this command. */
  class Core {
  public:
    Core(const GlobalOptions &options, const std::filesystem::path &cache, Access access,
         Load load);
    ~Core();
    Core(const Core &) = delete;
    Core &operator=(const Core &) = delete;
  };

  void prepare_writing(const GlobalOptions &options);
  void report_loading(const ZoxFileError &outcome, Load load) const;

  std::filesystem::path directory_;
  Access access_;
  Interruption interruption_;
  std::optional<WriterLock> lock_;
  std::optional<Core> core_;
};

/** The directory given with --cache-dir, or ~/.velkor. */
std::filesystem::path cache_directory(const GlobalOptions &options);

}  // namespace velkor::ctl

#endif
