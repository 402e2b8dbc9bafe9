/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/integration/member.h"

#include <velkor/velkor.h>

#include "support/owned.h"
#include "tests/support/server_process.h"

namespace velkor::test {

MemberTest::MemberTest() {
  ZoxCoreOptions options{};
  const std::string directory = sandbox.cache().string();
  options.cacheDir = directory.c_str();
  options.libDir = ServerProcess::plugin_directory();
  options.parts = ZOX_CORE_SETTINGS | ZOX_CORE_FILTERS | ZOX_CORE_TABLES | ZOX_CORE_POSTINGS;
  std::filesystem::create_directories(directory);
  core_.emplace(options);
  set("username", ServerProcess::user);
  set("password", ServerProcess::password);
}

MemberTest::~MemberTest() {
  core_.reset();
  zox_file_free_lib_dir();
  zox_http_set_hosts(nullptr, nullptr);
}

void MemberTest::use_hosts(const std::string &main, const std::string &dumps) {
  zox_http_set_hosts(main.c_str(), dumps.c_str());
}

void MemberTest::set(const char *key, const std::string &value) {
  ASSERT_EQ(zox_settings_set(key, value.c_str(), nullptr), ZOX_SETTING_DONE) << key;
}

Answer MemberTest::ask(const char *path) {
  ZoxString *reply = nullptr;
  Answer answer;
  answer.code = zox_http_curl_execute(path, nullptr, 1, &reply, 1, nullptr, 1);
  answer.text = reply == nullptr ? "" : reply->str;
  if (reply != nullptr)
    g_string_free(reply, TRUE);
  if (const ZoxHttpFailure *failure = zox_http_last_failure()) {
    answer.transfer_result = failure->transferResult;
    answer.proxy_failed = failure->proxyFailed != 0;
    answer.reason = failure->text;
  }
  return answer;
}

ZoxErrorCode MemberTest::update() {
  char *text = nullptr;
  const ZoxErrorCode code = zox_events_fetch(nullptr, nullptr, nullptr, &text, nullptr);
  const OwnedText message(text);
  return code;
}

}  // namespace velkor::test
