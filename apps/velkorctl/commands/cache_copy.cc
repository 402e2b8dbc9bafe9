/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl cache backup and restore. */
#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/descriptor.h"
#include "support/owned.h"
#include "velkorctl/bus_owner.h"
#include "velkorctl/cache_files.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

Failure file_failure(const std::string &what, const fs::path &path, const std::string &why) {
  return {Exit::files, what + " " + path.string() + ": " + why};
}

void flush_to_disk(const fs::path &path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file || fsync(file.get()) != 0)
    throw file_failure("cannot write", path, system_error(errno));
}

/** Leaves a whole copy or none; only its owner may read it, since settings hold a password. */
void copy_durably(const fs::path &from, const fs::path &to) {
  std::error_code error;
  fs::copy_file(from, to, fs::copy_options::none, error);
  if (!error)
    fs::permissions(to, fs::perms::owner_read | fs::perms::owner_write, error);
  if (error) {
    std::error_code ignored;
    fs::remove(to, ignored);
    throw file_failure("cannot write", to, error.message());
  }
  flush_to_disk(to);
}

void make_private_directory(const fs::path &directory) {
  if (mkdir(directory.c_str(), 0700) != 0)
    throw file_failure("cannot create", directory, system_error(errno));
}

/** What a backup or a restoration has copied. */
struct Copied {
  /** Where the files are now. */
  fs::path directory;
  std::vector<CacheFile> files;
  /** Where those that they replace are kept. */
  fs::path replaced{};
};

Fields<Copied> backup_fields() {
  using C = const Copied &;
  return {{{.name = "directory", .type = type::text()},
           [](C copied) -> Value { return copied.directory.string(); }},
          {{.name = "files", .type = files_type()},
           [](C copied) { return file_values(copied.directory, copied.files); }}};
}

Fields<Copied> restoration_fields() {
  return together(backup_fields(),
                  {{{.name = "replacedFiles", .type = type::text()},
                    [](const Copied &copied) -> Value { return copied.replaced.string(); }}});
}

/** Files in the cache are replaced, never changed, so each copy is whole without a lock. */
Exit run_backup(const Context &context) {
  const fs::path cache = cache_directory(context.options);
  const fs::path target = context.arguments.required("DIR");
  const std::vector<CacheFile> files = files_in(cache);
  make_private_directory(target);
  for (const CacheFile &file : files)
    copy_durably(cache / file.name, target / file.name);
  say(std::to_string(files.size()) + " files copied to " + target.string());
  if (wants_records(context.arguments))
    print_record(context, backup_fields(), {target, files});
  return Exit::ok;
}

void require_sound(const fs::path &directory, const std::vector<CacheFile> &files) {
  for (const CacheFile &file : files)
    if (const Inspection found = inspect(directory, file);
        file.kind != CacheFile::Kind::settings && !found.problem.empty())
      throw Failure(Exit::files, "the backup is damaged: " + found.problem);
}

/** Copies the files that the restored ones replace to a new directory in the cache. */
fs::path save_replaced_files(const fs::path &cache, const std::vector<CacheFile> &files) {
  using OwnedDateTime = std::unique_ptr<GDateTime, ReleaseWith<g_date_time_unref>>;
  const OwnedDateTime now(g_date_time_new_now_local());
  const OwnedText stamp(g_date_time_format(now.get(), "%Y%m%d-%H%M%S.%f"));
  fs::path saved = cache / ("before-restore-" + std::string(stamp.get()));
  make_private_directory(saved);
  for (const CacheFile &file : files)
    copy_durably(cache / file.name, saved / file.name);
  return saved;
}

void put_in_place(const fs::path &from, const fs::path &to) {
  const fs::path temporary = to.string() + ".restore";
  std::error_code error;
  fs::remove(temporary, error);
  copy_durably(from, temporary);
  fs::rename(temporary, to, error);
  if (error)
    throw file_failure("cannot write", to, error.message());
}

/** The plain file of an earlier version would be read instead of the compressed one restored. */
void remove_other_form(const fs::path &cache, const std::string &name,
                       const std::vector<CacheFile> &restored) {
  for (const CacheFile &file : restored)
    if (file.name == name)
      return;
  std::error_code ignored;
  fs::remove(cache / name, ignored);
}

Exit run_restore(const Context &context) {
  const fs::path source = context.arguments.required("DIR");
  const std::vector<CacheFile> files = files_in(source);
  require_sound(source, files);
  const CoreSession session(context.options, CoreSession::Access::write, Load::settings);
  const fs::path &cache = session.directory();
  const fs::path saved = save_replaced_files(cache, present_files(cache));
  for (const CacheFile &file : files)
    put_in_place(source / file.name, cache / file.name);
  remove_other_form(cache, "velkor.posts", files);
  remove_other_form(cache, "velkor.groups", files);
  say(std::to_string(files.size()) + " files restored; the files replaced are in " +
      saved.string());
  if (wants_records(context.arguments))
    print_record(context, restoration_fields(), {cache, files, saved});
  return Exit::ok;
}

}  // namespace

Command cache_backup_command() {
  return with_output({"backup",
                      "Copy the settings and the cache to a new directory",
                      {{"DIR", "The directory to create"}},
                      {},
                      run_backup},
                     one_record(backup_fields()));
}

Command cache_restore_command() {
  return with_output(
      {"restore",
       "Replace the settings and the cache with a backup; the files replaced are kept",
       {{"DIR", "The directory of the backup"}},
       {},
       run_restore},
      one_record(restoration_fields()));
}

}  // namespace velkor::ctl
