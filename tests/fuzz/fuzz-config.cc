/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The configuration file: loading a saved configuration and saving it again changes nothing. */
#include <velkor/zox_app_core.h>

#include "core/settings.h"
#include "support/text.h"
#include "tests/fuzz/session.h"

namespace velkor::fuzz {
namespace {

/** Loads a file and returns the contents that would be saved. */
OwnedString saved_after_loading(std::string_view file) {
  write_cache_file("velkor.conf", file);
  zox_config_load();
  OwnedString text(g_string_new(nullptr));
  settings::write(*core->config, text.get());
  return text;
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString input = fuzz::text_of(data, size);
  const OwnedString saved = fuzz::saved_after_loading(view_of(input.get()));
  const OwnedString again = fuzz::saved_after_loading(view_of(saved.get()));
  fuzz::require(fuzz::same_text(saved.get(), again.get()), "a saved file stays as it is");
  return 0;
}
