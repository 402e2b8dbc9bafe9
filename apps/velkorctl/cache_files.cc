/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/cache_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include <gio/gio.h>
#include <libxml/xmlreader.h>
#include <unistd.h>
#include <velkor/zox_settings.h>

#include "support/owned.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

using Reader = std::unique_ptr<xmlTextReader, ReleaseWith<xmlFreeTextReader>>;

bool is_compressed(const std::string &name) {
  return name.ends_with(".gz");
}

OwnedObject<GInputStream> open_stream(const fs::path &path, bool compressed, OwnedError &error) {
  GError *place = nullptr;
  const OwnedObject<GFile> file(g_file_new_for_path(path.c_str()));
  OwnedObject<GInputStream> stream(G_INPUT_STREAM(g_file_read(file.get(), nullptr, &place)));
  error.reset(place);
  if (!stream || !compressed)
    return stream;
  const OwnedObject<GConverter> inflate(
      G_CONVERTER(g_zlib_decompressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP)));
  return OwnedObject<GInputStream>(g_converter_input_stream_new(stream.get(), inflate.get()));
}

/** The decompressed content; nullopt with the reason when it cannot be read to its end. */
std::optional<std::string> read_whole(const fs::path &path, bool compressed, std::string &reason) {
  OwnedError error;
  const OwnedObject<GInputStream> stream = open_stream(path, compressed, error);
  std::string text;
  std::array<char, 65536> block{};
  while (stream) {
    GError *place = nullptr;
    const gssize count =
        g_input_stream_read(stream.get(), block.data(), block.size(), nullptr, &place);
    error.reset(place);
    if (count == 0)
      return text;
    if (count < 0)
      break;
    text.append(block.data(), static_cast<std::size_t>(count));
  }
  reason = error ? error->message : "cannot be read";
  return std::nullopt;
}

std::string last_xml_error() {
  const xmlError *error = xmlGetLastError();
  std::string text =
      error == nullptr || error->message == nullptr ? "not well-formed XML" : error->message;
  text.erase(text.find_last_not_of(" \n") + 1);
  return error == nullptr ? text : "line " + std::to_string(error->line) + ": " + text;
}

bool same_element(const xmlChar *name, const std::string &wanted) noexcept {
  return name != nullptr &&
         g_ascii_strcasecmp(reinterpret_cast<const char *>(name), wanted.c_str()) == 0;
}

Inspection inspect_document(const std::string &text, const CacheFile &file) {
  constexpr int options =
      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;
  xmlResetLastError();
  const Reader reader(
      xmlReaderForMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, options));
  Inspection result;
  int more = reader ? xmlTextReaderRead(reader.get()) : -1;
  for (; more == 1; more = xmlTextReaderRead(reader.get())) {
    if (xmlTextReaderNodeType(reader.get()) != XML_READER_TYPE_ELEMENT)
      continue;
    const int depth = xmlTextReaderDepth(reader.get());
    const xmlChar *name = xmlTextReaderConstLocalName(reader.get());
    if (depth == 0 && !same_element(name, file.root))
      return {"the root element is not " + file.root, 0};
    if (depth == 1 && same_element(name, file.entry))
      ++result.entries;
  }
  if (more < 0)
    result.problem = last_xml_error();
  return result;
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

const std::vector<CacheFile> &cache_files() {
  static const std::vector<CacheFile> files{
      {"velkor.conf", "", ""},
      {"velkor.filters", "Filters", "Filter"},
      {"velkor.groups.gz", "Groups", "Group"},
      {"velkor.mail", "Mail", "Event"},
      {"velkor.posts", "Events", "Event"},
      {"velkor.posts.gz", "Events", "Event"},
      {"velkor.groups", "Groups", "Group"},
  };
  return files;
}

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

Inspection inspect(const fs::path &directory, const CacheFile &file) {
  std::string reason;
  const auto text = read_whole(directory / file.name, is_compressed(file.name), reason);
  if (!text)
    return {reason, 0};
  if (file.root.empty())
    return inspect_settings(*text);
  return text->size() > G_MAXINT ? Inspection{"larger than 2 GB", 0}
                                 : inspect_document(*text, file);
}

}  // namespace velkor::ctl
