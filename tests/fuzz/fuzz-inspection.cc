/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The files that the command reads by itself: those of the cache, which it inspects, and those of
 * its user, the description of a new posting and the text of a message. */
#include <string>
#include <string_view>

#include <velkor/velkor.h>

#include "support/text.h"
#include "support/xml.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/session.h"
#include "tests/support/sandbox.h"
#include "velkorctl/cache_files.h"
#include "velkorctl/doctor/examination.h"
#include "velkorctl/failure.h"
#include "velkorctl/spot_file.h"
#include "velkorctl/text_input.h"

namespace velkor::fuzz {
namespace {

constexpr const char *user_file = "given";

/** The elements in the root of the document; -1 when no tree can be made. */
std::int64_t count_elements(std::string_view text) {
  constexpr int options =
      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;
  const xml::Document document(
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, options));
  xmlNode *root = xmlDocGetRootElement(document.get());
  return root == nullptr ? -1 : static_cast<std::int64_t>(xmlChildElementCount(root));
}

void check_cache_file(Input &input) {
  const ctl::CacheFile &file = ctl::cache_files()[input.byte() % ctl::cache_files().size()];
  const bool compress = input.flag();
  const std::string content(input.rest());
  clear_cache();
  if (compress)
    test::write_gzip(cache_directory() / file.name, content);
  else
    write_cache_file(file.name.c_str(), content);

  const ctl::Inspection found = ctl::inspect(cache_directory(), file);
  require(found.entries >= 0, "entries are counted");
  const bool readable = compress == file.name.ends_with(".gz");
  if (found.problem.empty() && readable && file.kind != ctl::CacheFile::Kind::settings)
    require(count_elements(content) >= found.entries, "a sound file has a sound tree");

  const ctl::doctor::Findings findings = ctl::doctor::check_files(cache_directory());
  require(findings.size() == 1 && findings.front().is_well() == found.problem.empty(),
          "the doctor finds what the inspection does");
}

void require_complete(const ZoxEvent &spot) {
  require(view_of(spot.title).size() > 0 && spot.cat >= 0 && spot.cat <= 3 && spot.sCat >= 0 &&
              spot.groups != nullptr,
          "a posting that is taken has all that it needs");
  for (const gint32 number : {spot.fType, spot.files, spot.fStart, spot.pars, spot.parType})
    require(number >= 0, "no number is negative");
}

/** A core with a newsgroup, which a posting may name. */
class Core {
public:
  Core() {
    ZoxCoreOptions options{};
    const std::string cache = cache_directory();
    options.cacheDir = cache.c_str();
    options.parts = ZOX_CORE_TABLES;
    require(zox_app_core_open(&options, nullptr) == ZOX_CORE_OPENED, "there is a core");
    ZoxGroup *group = zox_group_new();
    group->id = 7;
    group->groupName = zox_string_new("alt.binaries.tv");
    core->groups = g_slist_prepend(core->groups, group);
  }
  ~Core() { zox_app_core_close(); }
  Core(const Core &) = delete;
  Core &operator=(const Core &) = delete;
};

void check_spot(Input &input) {
  clear_cache();
  const Core open;
  const std::string file = write_cache_file(user_file, input.rest());
  try {
    require_complete(*ctl::read_spot(file));
  } catch (const ctl::Failure &failure) {
    require(failure.exit() == ctl::Exit::usage, "a wrong file is a mistake of the user's");
  }
}

void check_text(Input &input) {
  const std::string file = write_cache_file(user_file, input.rest());
  try {
    const std::string text = ctl::read_text(file);
    require(!text.empty() && text.size() <= 65536 &&
                g_utf8_validate_len(text.data(), text.size(), nullptr) != FALSE,
            "a text that is taken is UTF-8 within the limit");
  } catch (const ctl::Failure &failure) {
    require(failure.exit() == ctl::Exit::usage, "a wrong file is a mistake of the user's");
  }
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_without_core();
  fuzz::Input input(data, size);
  switch (input.below(3)) {
  case 0:
    fuzz::check_cache_file(input);
    break;
  case 1:
    fuzz::check_spot(input);
    break;
  default:
    fuzz::check_text(input);
  }
  return 0;
}
