/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The overview of the user's own postings; every entry is printed. */
#include <velkor/zox_myzox.h>

#include "support/slist.h"
#include "support/xml.h"
#include "tests/fuzz/session.h"

namespace {

void free_post(gpointer item) {
  auto *post = static_cast<ZoxMyzoxPost *>(item);
  for (ZoxString *text : {post->title, post->fName, post->poster, post->link})
    velkor::OwnedString(text).reset();
  zox_splitted_list_free(&post->groups);
  g_free(post);
}

}  // namespace

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  GSList *posts = nullptr;
  const gint32 result = zox_myzox_parse(text.get(), &posts);
  fuzz::require(result == 0 || posts == nullptr, "a failure gives no list");
  for (const ZoxMyzoxPost *post : Items<ZoxMyzoxPost>(posts))
    fuzz::require(post->postId > 0 && post->canEdit <= 1, "an entry has a valid id");

  const xml::Document page(zox_myzox_print(posts));
  fuzz::require(xmlChildElementCount(xmlDocGetRootElement(page.get())) == g_slist_length(posts),
                "every entry is printed");
  g_slist_free_full(posts, free_post);
  return 0;
}
