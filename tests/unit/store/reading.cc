/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/unit/store/reading.h"

#include <algorithm>
#include <filesystem>

#include <velkor/zox_events_parse.h>

#include "posting/event_record.h"
#include "store/event_table.h"
#include "support/slist.h"
#include "support/xml.h"
#include "tests/support/sandbox.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor::test {

std::string fixture(std::string_view name) {
  return read_file(std::filesystem::path(VELKOR_TEST_DIR) / "fixtures" / name);
}

Reading read_events(std::string_view document) {
  GSList *list = nullptr;
  char *error = nullptr;
  Reading reading{zox_events_parse(zox(document).get(), nullptr, &list, &error, 1), {}, {}};
  if (const OwnedText owned(error); owned)
    reading.error = owned.get();
  for (ZOXEventObject *object : Items<ZOXEventObject>(list)) {
    reading.postings.push_back(describe(*object->event));
    g_object_unref(object);
  }
  g_slist_free(list);
  std::ranges::reverse(reading.postings);
  return reading;
}

std::optional<std::vector<std::string>> read_by_tree(std::string_view document) {
  const xml::Document tree = xml::parse(document);
  if (!tree || !xml::is_named(xmlDocGetRootElement(tree.get()), "Events"))
    return std::nullopt;
  std::vector<std::string> postings;
  for (xmlNode *node : xml::Siblings(xmlDocGetRootElement(tree.get())->children)) {
    if (node->type == XML_ELEMENT_NODE && xml::is_named(node, "Event"))
      postings.push_back(describe(*OwnedEvent(zox_events_parse_event(tree.get(), node->children))));
  }
  return postings;
}

}  // namespace velkor::test
