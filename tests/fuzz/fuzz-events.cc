/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The document of postings: the stream reader and the tree reader return the same postings. */
#include <velkor/zox_app_core.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_xml.h>

#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"

namespace velkor::fuzz {
namespace {

using EventBuilder = ListBuilder<ZoxEvent, zox_event_free>;

/** The postings of a tree, the last one first. */
GSList *postings_of(const xml::Document &document) {
  GSList *postings = nullptr;
  for (xmlNode *node : xml::Siblings(xmlDocGetRootElement(document.get())->children)) {
    if (!xml::is_named(node, "Event"))
      continue;
    if (ZoxEvent *posting = zox_events_parse_event(document.get(), node->children))
      postings = g_slist_prepend(postings, posting);
  }
  return postings;
}

void free_posting(gpointer posting) {
  zox_event_free(static_cast<ZoxEvent *>(posting));
}

void compare(const GSList *objects, const GSList *postings) {
  for (; objects != nullptr && postings != nullptr;
       objects = objects->next, postings = postings->next) {
    const OwnedEvent held(zox_event_object_get_event(static_cast<ZOXEventObject *>(objects->data)));
    require(same_posting(*held, *static_cast<ZoxEvent *>(postings->data)),
            "both readers read the same posting");
  }
  require(objects == nullptr && postings == nullptr,
          "both readers read the same number of postings");
}

/** A posting that is written to the cache is read back unchanged. */
void write_and_read_back(const ZoxEvent &posting) {
  if (posting.poster == nullptr)
    return;
  const xml::Document document(xmlNewDoc(xml::chars("1.0")));
  xmlNode *element = zox_events_xml_add_basic(&posting, document.get());
  xmlDocSetRootElement(document.get(), element);
  const OwnedEvent again(zox_events_parse_event(document.get(), element->children));
  require(again != nullptr && again->postId == posting.postId && again->sCat >= posting.sCat &&
              same_text(again->title, posting.title),
          "a posting that was written is read again");
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  GSList *objects = nullptr;
  char *message = nullptr;
  if (zox_events_parse(text.get(), nullptr, &objects, &message, 1) == 0) {
    const xml::Document document = xml::parse(view_of(text.get()));
    fuzz::require(document != nullptr, "what the stream reader reads is well-formed");
    GSList *postings = fuzz::postings_of(document);
    fuzz::compare(objects, postings);
    for (const ZoxEvent *posting : Items<ZoxEvent>(postings))
      fuzz::write_and_read_back(*posting);
    g_slist_free_full(postings, fuzz::free_posting);
  }
  fuzz::require(objects == nullptr || message == nullptr, "a failed document gives nothing");
  g_slist_free_full(objects, g_object_unref);
  g_free(message);
  return 0;
}
