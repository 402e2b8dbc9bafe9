/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Messages for the tests of the mail box. */
#ifndef VELKOR_TESTS_UNIT_SERVICES_MAIL_FIXTURE_H
#define VELKOR_TESTS_UNIT_SERVICES_MAIL_FIXTURE_H

#include "services/mail_document.h"
#include "support/slist.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {

constexpr const char *empty_mail_file = "<Mail>\n</Mail>\n";

/** The messages of a list as "code from/subject/body". */
inline std::vector<std::string> shown(const GSList *messages) {
  std::vector<std::string> texts;
  for (const ZoxBericht *bericht : Items<const ZoxBericht>(messages))
    texts.push_back(std::to_string(bericht->code) + " " + text_of(bericht->from) + "/" +
                    text_of(bericht->subject) + "/" + text_of(bericht->body));
  return texts;
}

/** Appends a received message to the box and returns it. */
inline ZoxBericht *put_in_box(const char *from, const char *subject = "s", const char *body = "b") {
  ZoxBericht *bericht = zox_mail_bericht_new(from, subject, body, 1200000000);
  bericht->code = 1;
  core->mail = g_slist_append(core->mail, bericht);
  return bericht;
}

/** One received message of a server's reply. */
inline std::string received(const std::string &from, const std::string &body = "b") {
  return "<Event Code=\"1\"><From>" + from + "</From><Subject>s</Subject><Body>" + body +
         "</Body><Stamp>5</Stamp></Event>";
}

/** Makes every further save of the mail file fail; the file that is there stays as it is. */
class ClosedCacheDirectory {
public:
  explicit ClosedCacheDirectory(std::filesystem::path directory)
      : directory_(std::move(directory)), aside_(directory_.string() + ".weg") {
    std::filesystem::rename(directory_, aside_);
  }
  ~ClosedCacheDirectory() { std::filesystem::rename(aside_, directory_); }
  ClosedCacheDirectory(const ClosedCacheDirectory &) = delete;
  ClosedCacheDirectory &operator=(const ClosedCacheDirectory &) = delete;

private:
  std::filesystem::path directory_;
  std::filesystem::path aside_;
};

}  // namespace velkor::test

#endif
