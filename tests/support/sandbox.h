/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A temporary home with a fixed time zone, locale and umask; everything is restored at scope exit.
 */
#ifndef VELKOR_TESTS_SUPPORT_SANDBOX_H
#define VELKOR_TESTS_SUPPORT_SANDBOX_H

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace velkor::test {

/** Sets an environment variable (nullopt unsets it) for its own lifetime. */
class EnvironmentVariable {
public:
  EnvironmentVariable(std::string name, const std::optional<std::string> &value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable &) = delete;
  EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

private:
  std::string name_;
  std::optional<std::string> earlier_;
};

/** A new empty directory that is removed with its contents at scope exit. */
class TemporaryDirectory {
public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory &) = delete;
  TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

  [[nodiscard]] const std::filesystem::path &path() const { return path_; }

private:
  std::filesystem::path path_;
};

/** Sets the umask for its own lifetime. */
class Umask {
public:
  explicit Umask(mode_t mask) : earlier_(umask(mask)) {}
  ~Umask() { umask(earlier_); }
  Umask(const Umask &) = delete;
  Umask &operator=(const Umask &) = delete;

private:
  mode_t earlier_;
};

/**
 * HOME in a temporary directory, TZ=Europe/Amsterdam, LC_ALL=C.UTF-8. The umask is 077, so that the
 * library finds no permission to take from what a test puts into the cache.
 */
class Sandbox {
public:
  Sandbox();
  ~Sandbox();
  Sandbox(const Sandbox &) = delete;
  Sandbox &operator=(const Sandbox &) = delete;

  [[nodiscard]] const std::filesystem::path &home() const { return directory_.path(); }
  /** The cache directory that the library uses by default in this home. */
  [[nodiscard]] std::filesystem::path cache() const { return home() / ".velkor"; }

private:
  TemporaryDirectory directory_;
  EnvironmentVariable home_;
  EnvironmentVariable zone_;
  EnvironmentVariable locale_;
  Umask umask_{S_IRWXG | S_IRWXO};
};

/** Returns the contents of a file; throws when it cannot be read. */
std::string read_file(const std::filesystem::path &path);
void write_file(const std::filesystem::path &path, std::string_view content);
/** Writes the content with gzip compression, like the cache files. */
void write_gzip(const std::filesystem::path &path, std::string_view content);
std::string read_gzip(const std::filesystem::path &path);

}  // namespace velkor::test

#endif
