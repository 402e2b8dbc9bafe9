/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/posts_saver.h"

#include <algorithm>
#include <optional>
#include <random>
#include <utility>

#include "core/app_core.h"
#include "core/atomic_file.h"
#include "core/file_outcome.h"
#include "core/job.h"
#include "store/event_text.h"
#include "store/section_writer.h"
#include "support/clock.h"
#include "support/parallel.h"

namespace velkor {
namespace {

/** The whole document of a list without postings, as libxml2 writes it. */
constexpr std::string_view empty_document = "<?xml version=\"1.0\"?>\n<Events/>\n";

/** So many sections are made before the first of them is written: they are held until then. */
constexpr std::size_t batch_size = 64;

std::uint64_t new_seed() noexcept {
  std::random_device random;
  return std::uint64_t{random()} << 32 | random();
}

/** Writes one file, from the pieces that a plan has made of it. */
class FileWriter {
public:
  enum class Result {
    written,
    failed,
    cancelled,
    source_changed,  // the old file is not the one known: nothing can be kept of it
    empty            // there is no posting to write
  };

  /** @param source  the old file, of which sections may be kept */
  FileWriter(const std::string &path, const PlacedReader &source, const KnownPosts *known,
             gint64 now) noexcept
      : path_(path), source_(source), seed_(known == nullptr ? new_seed() : known->layout.seed),
        now_(now), file_(path, AtomicFile::Form::plain) {}

  Result write(std::span<const SavePiece> pieces, const char *caller) noexcept;

  /** What is known of the file that was written. */
  [[nodiscard]] KnownPosts take_known() noexcept { return std::move(made_); }
  [[nodiscard]] const std::vector<Refusal> &refusals() const noexcept { return refusals_; }
  void warn(const char *caller) const noexcept { file_.warn(caller); }

private:
  bool make(std::span<const SavePiece> pieces, std::span<NewSection> sections) noexcept;
  void add(NewSection section) noexcept;
  void add_frame(std::string_view text, Deflater::Part part, std::uint32_t &size) noexcept;
  Result finish(const char *caller) noexcept;

  std::string path_;
  const PlacedReader &source_;
  std::uint64_t seed_;
  gint64 now_;
  AtomicFile file_;
  KnownPosts made_;
  std::uint64_t offset_ = 0;
  std::vector<Refusal> refusals_;
};

FileWriter::Result FileWriter::write(std::span<const SavePiece> pieces,
                                     const char *caller) noexcept {
  made_.path = path_;
  made_.layout.seed = seed_;
  offset_ = header_size(pieces.size());
  file_.write(std::string(offset_, '\0'));  // the header is known at the end
  add_frame(document_begin, Deflater::Part::inner, made_.layout.first_size);
  while (!pieces.empty() && file_.ok()) {
    const auto batch = pieces.first(std::min(batch_size, pieces.size()));
    std::vector<NewSection> sections(batch.size());
    if (!make(batch, sections))
      return Result::source_changed;
    for (NewSection &section : sections)
      add(std::move(section));
    pieces = pieces.subspan(batch.size());
    if (is_cancelled())
      return Result::cancelled;
  }
  if (file_.ok() && made_.sections.empty())
    return Result::empty;
  return finish(caller);
}

/** Makes the sections of the pieces; false when one cannot be taken from the old file. */
bool FileWriter::make(std::span<const SavePiece> pieces, std::span<NewSection> sections) noexcept {
  const auto make_one = [&](std::optional<SectionWriter> &writer, std::size_t number) {
    const SavePiece &piece = pieces[number];
    NewSection &section = sections[number];
    if (piece.known != nullptr) {
      section.known = *piece.known;
      return read_known(source_, *piece.known, section.compressed);
    }
    if (!writer)
      writer.emplace(seed_, now_);
    section = writer->write(piece.entries);
    return true;
  };
  return share_out(pieces.size(), [&] {
    return [&make_one, writer = std::optional<SectionWriter>()](std::size_t number) mutable {
      return make_one(writer, number);
    };
  });
}

void FileWriter::add(NewSection section) noexcept {
  std::ranges::copy(section.refusals, std::back_inserter(refusals_));
  made_.layout.sections.push_back(section.known.section);
  if (section.compressed.empty())
    return;
  section.known.offset = offset_;
  offset_ += section.compressed.size();
  made_.sections.push_back(section.known);
  file_.write(section.compressed);
}

void FileWriter::add_frame(std::string_view text, Deflater::Part part,
                           std::uint32_t &size) noexcept {
  const std::string compressed = Deflater().part(text, part);
  size = static_cast<std::uint32_t>(compressed.size());
  offset_ += compressed.size();
  file_.write(compressed);
  if (part == Deflater::Part::last)
    made_.end = compressed;
}

FileWriter::Result FileWriter::finish(const char *caller) noexcept {
  add_frame(document_end, Deflater::Part::last, made_.layout.last_size);
  const std::string trailer = encode_trailer(made_.layout);
  made_.end += trailer;
  file_.write(trailer);
  file_.replace_start(encode_header(made_.layout));
  if (!file_.commit(caller))
    return Result::failed;
  made_.identity = file_.identity().value_or(FileIdentity{});
  return Result::written;
}

/** One save, in as many attempts as it takes. */
class Save {
public:
  Save(PostsFile &posts, const std::string &path, ListSnapshot &snapshot,
       const char *caller) noexcept
      : posts_(posts), path_(path), snapshot_(snapshot), caller_(caller) {}

  bool run() noexcept {
    const KnownPosts *known = posts_.known(path_);
    if (known != nullptr && source_.identity() != known->identity)
      known = nullptr;
    FileWriter::Result result = attempt(known);
    if (result == FileWriter::Result::source_changed)
      result = attempt(nullptr);
    return result == FileWriter::Result::empty ? write_empty()
                                               : result == FileWriter::Result::written;
  }

private:
  FileWriter::Result attempt(const KnownPosts *known) noexcept {
    const std::vector<SavePiece> pieces = plan_save(snapshot_.entries(), known, now_);
    if (known != nullptr && is_as_known(pieces, *known)) {
      set_file_outcome({ZOX_FILE_FINE, 0, path_});
      return FileWriter::Result::written;
    }
    FileWriter writer(path_, source_, known, now_);
    const FileWriter::Result result = writer.write(pieces, caller_);
    if (result == FileWriter::Result::source_changed)
      return result;
    warn(writer.refusals());
    if (result == FileWriter::Result::written)
      posts_.remember(writer.take_known());
    else if (result == FileWriter::Result::failed)
      writer.warn(caller_);
    else if (result == FileWriter::Result::cancelled)
      set_file_outcome({ZOX_FILE_NOT_WRITTEN, 0, path_, "the work was cancelled"});
    return result;
  }

  /** Whether the file is just what would be written. */
  [[nodiscard]] bool is_as_known(const std::vector<SavePiece> &pieces,
                                 const KnownPosts &known) const noexcept {
    return pieces.size() == known.sections.size() && !read_only() &&
           std::ranges::all_of(pieces, [](const SavePiece &piece) { return piece.known; }) &&
           is_unchanged(source_, known);
  }

  bool write_empty() noexcept {
    posts_.forget();
    AtomicFile file(path_, AtomicFile::Form::gzip, Z_BEST_COMPRESSION);
    return replace_content(file, {empty_document}, caller_);
  }

  static void warn(const std::vector<Refusal> &refusals) noexcept {
    for (const auto &[id, fault] : refusals)
      warn_of_unwritable(id, fault);
  }

  PostsFile &posts_;
  const std::string &path_;
  ListSnapshot &snapshot_;
  const char *caller_;
  const PlacedReader source_{path_};
  const gint64 now_ = current_time();
};

}  // namespace

bool save_posts(PostsFile &posts, const std::string &path, ListSnapshot &snapshot,
                const char *caller) noexcept {
  return Save(posts, path, snapshot, caller).run();
}

}  // namespace velkor
