/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/sandbox.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <stdexcept>

#include <zlib.h>

#include "support/owned.h"

namespace velkor::test {
namespace {

std::optional<std::string> value_of(const std::string &name) {
  const char *value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

void set_value(const std::string &name, const std::optional<std::string> &value) {
  if (value)
    setenv(name.c_str(), value->c_str(), 1);
  else
    unsetenv(name.c_str());
}

struct CloseGzip {
  void operator()(gzFile_s *file) const { gzclose(file); }
};
using GzipFile = std::unique_ptr<gzFile_s, CloseGzip>;

GzipFile open_gzip(const std::filesystem::path &path, const char *mode) {
  GzipFile file(gzopen(path.c_str(), mode));
  if (!file)
    throw std::runtime_error("cannot open " + path.string());
  return file;
}

}  // namespace

EnvironmentVariable::EnvironmentVariable(std::string name, const std::optional<std::string> &value)
    : name_(std::move(name)), earlier_(value_of(name_)) {
  set_value(name_, value);
}

EnvironmentVariable::~EnvironmentVariable() {
  set_value(name_, earlier_);
}

TemporaryDirectory::TemporaryDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "velkor-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr)
    throw std::runtime_error("cannot make " + pattern);
  path_ = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Sandbox::Sandbox()
    : home_("HOME", directory_.path()), zone_("TZ", "Europe/Amsterdam"),
      locale_("LC_ALL", "C.UTF-8") {
  tzset();
}

Sandbox::~Sandbox() = default;

std::string read_file(const std::filesystem::path &path) {
  char *content = nullptr;
  gsize length = 0;
  if (g_file_get_contents(path.c_str(), &content, &length, nullptr) == FALSE)
    throw std::runtime_error("cannot read " + path.string());
  return {OwnedText(content).get(), length};
}

void write_file(const std::filesystem::path &path, std::string_view content) {
  std::ofstream file(path, std::ios::binary);
  file << content << std::flush;
  if (!file)
    throw std::runtime_error("cannot write " + path.string());
}

void write_gzip(const std::filesystem::path &path, std::string_view content) {
  const GzipFile file = open_gzip(path, "wb");
  if (!content.empty() &&
      gzwrite(file.get(), content.data(), static_cast<unsigned>(content.size())) <= 0)
    throw std::runtime_error("cannot write " + path.string());
}

std::string read_gzip(const std::filesystem::path &path) {
  const GzipFile file = open_gzip(path, "rb");
  std::string content;
  std::array<char, 16384> block{};
  int length = 0;
  while ((length = gzread(file.get(), block.data(), block.size())) > 0)
    content.append(block.data(), static_cast<std::size_t>(length));
  if (length < 0)
    throw std::runtime_error("broken gzip data in " + path.string());
  return content;
}

}  // namespace velkor::test
