/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_myzox.h>

#include "services/myzox_fields.h"
#include "support/slist.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

class ZoxMyzoxPrint : public LibraryTest {
protected:
  static std::string printed(GSList *posts) {
    const xml::Document document(zox_myzox_print(posts));
    xmlChar *bytes = nullptr;
    int length = 0;
    xmlDocDumpFormatMemory(document.get(), &bytes, &length, 1);
    const xml::Chars owned(bytes);
    return {xml::chars(bytes), static_cast<std::size_t>(length)};
  }
};

TEST_F(ZoxMyzoxPrint, PrintsWhatIsRead) {
  const OwnedString text = string_of(read_file(VELKOR_TEST_DIR "/../services/fixtures/myzox.xml"));
  GSList *list = nullptr;
  ASSERT_EQ(zox_myzox_parse(text.get(), &list), 0);
  EXPECT_EQ(printed(list), read_file(VELKOR_TEST_DIR "/golden/myzox.xml"));
  for (ZoxMyzoxPost *post : Items<ZoxMyzoxPost>(list))
    free_myzox_post(post);
  g_slist_free(list);
}

TEST_F(ZoxMyzoxPrint, PrintsAnEmptyRootForNoList) {
  EXPECT_EQ(printed(nullptr), "<?xml version=\"1.0\"?>\n<MyZOX/>\n");
}

}  // namespace
}  // namespace velkor::test
