/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/cache_files.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <unistd.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_settings.h>

#include "support/owned.h"
#include "velkorctl/failure.h"
#include "velkorctl/messages.h"
#include "velkorctl/progress.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;
using Kind = CacheFile::Kind;

std::int64_t size_of(const fs::path &path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

/** A core for reading in the directory, without anything loaded. */
class BareCore {
public:
  explicit BareCore(const fs::path &directory) {
    ZoxCoreOptions options{};
    options.cacheDir = directory.c_str();
    options.readOnly = 1;
    char *place = nullptr;
    const ZoxCoreResult result = zox_app_core_open(&options, &place);
    const OwnedText message(place);
    if (result != ZOX_CORE_OPENED)
      throw Failure(Exit::files, message.get());
  }
  ~BareCore() { zox_app_core_close(); }
  BareCore(const BareCore &) = delete;
  BareCore &operator=(const BareCore &) = delete;
};

/** Loads the document and counts its entries; how that went is the library's file outcome. */
std::int64_t load_document(Kind kind) noexcept {
  switch (kind) {
  case Kind::settings:
    break;
  case Kind::filters:
    zox_filterlist_load(core->filterlist);
    return g_slist_length(core->filterlist->filters);
  case Kind::newsgroups:
    zox_group_load();
    return g_slist_length(core->groups);
  case Kind::mail:
    zox_mail_load();
    return g_slist_length(core->mail);
  case Kind::postings:
    zox_eventlist_load(core->eventlist, nullptr);
    return zox_eventlist_get_count(core->eventlist, 0);
  }
  return 0;
}

Inspection inspect_document(const fs::path &directory, const CacheFile &file) {
  const BareCore open(directory);
  const QuietLog quiet;  // the outcome tells all that counts
  const std::int64_t entries = load_document(file.kind);
  const ZoxFileError &outcome = *zox_file_last_error();
  const fs::path read = outcome.path;
  if (read.filename() != file.name)
    return {.superseded_by = read.filename()};
  if (outcome.status == ZOX_FILE_FINE)
    return {.entries = entries};
  return {.problem = outcome.message};
}

/** The whole content; throws a Failure when it cannot be read. */
std::string content_of(const fs::path &path) {
  char *place = nullptr;
  std::size_t size = 0;
  GError *error = nullptr;
  if (g_file_get_contents(path.c_str(), &place, &size, &error) == FALSE)
    throw Failure(Exit::files, OwnedError(error)->message);
  return {OwnedText(place).get(), size};
}

Inspection inspect_settings(const std::string &text) {
  Inspection result;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string line = text.substr(begin, end - begin);
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos && line[0] != '#' &&
        zox_settings_find(line.substr(0, equals).c_str()) == nullptr)
      result.problem = "unknown setting " + line.substr(0, equals);
    ++result.entries;
    begin = end + 1;
  }
  return result;
}

/** A directory that is missing is one without files. */
void require_readable(const fs::path &directory) {
  const bool readable = access((directory / ".").c_str(), R_OK | X_OK) == 0;
  if (!readable && errno != ENOENT)
    throw Failure(Exit::files, "cannot read " + directory.string() + ": " + system_error(errno));
}

}  // namespace

std::vector<CacheFile> present_files(const fs::path &directory) {
  require_readable(directory);
  std::vector<CacheFile> present;
  std::error_code error;
  for (const CacheFile &file : cache_files())
    if (fs::exists(directory / file.name, error))
      present.push_back(file);
  return present;
}

std::vector<CacheFile> files_in(const fs::path &directory) {
  std::vector<CacheFile> files = present_files(directory);
  if (files.empty())
    throw Failure(Exit::not_found, "there are no Velkor files in " + directory.string());
  return files;
}

Value file_values(const fs::path &directory, const std::vector<CacheFile> &files) {
  Value::List values;
  for (const CacheFile &file : files) {
    const std::int64_t size = size_of(directory / file.name);
    values.emplace_back(
        Value::Object{file.name + " " + show_bytes(size), {{"name", file.name}, {"size", size}}});
  }
  return values;
}

Type files_type() {
  return type::list_of(type::object({{"name", type::text()}, {"size", type::number()}}));
}

Inspection inspect(const fs::path &directory, const CacheFile &file) {
  if (file.kind != Kind::settings)
    return inspect_document(directory, file);
  try {
    return inspect_settings(content_of(directory / file.name));
  } catch (const Failure &failure) {
    return {.problem = failure.what()};
  }
}

}  // namespace velkor::ctl
