/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <cstdio>

#include <velkor/velkor.h>

int main() {
  char *sentence = zox_error_msg(0, nullptr);
  std::printf("%s\n%s\n%s\n", PLUGIN_DIRECTORY, DATA_DIRECTORY, sentence);
  g_free(sentence);
  return core == nullptr ? 0 : 1;
}
