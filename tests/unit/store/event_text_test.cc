/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/event_text.h"

#include <array>
#include <random>

#include <gtest/gtest.h>

#include <velkor/zox_events_xml.h>
#include <velkor/zox_string.h>

#include "store/event_digest.h"
#include "support/xml.h"
#include "tests/support/log_capture.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

/** The element as libxml2 saves it in a document with indentation. */
std::string saved_by_libxml2(const ZoxEvent &event) {
  const xml::Document document(xmlNewDoc(xml::chars("1.0")));
  const xml::Node element(zox_events_xml_add_basic(&event, document.get()));
  const std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>> buffer(xmlBufferCreate());
  xmlIndentTreeOutput = 1;
  xmlNodeDump(buffer.get(), document.get(), element.get(), 1, 1);
  return std::string("  ") + xml::chars(xmlBufferContent(buffer.get())) + "\n";
}

std::string element_of(const ZoxEvent &event) {
  std::string text;
  append_element(text, event);
  return text;
}

std::string identity_of(const ZoxEvent &event) {
  ByteBuffer bytes;
  append_identity(bytes, event);
  return std::string(bytes.view());
}

/** Postings with all kinds of values, the same ones in every run. */
class RandomEvents {
public:
  OwnedEvent next() {
    OwnedEvent event = test::basic_event(number());
    event->stamp = std::int64_t{number()} * below(3);
    event->updated = std::int64_t{number()} << below(8);
    event->status = number();
    event->rating = below(2) == 0 ? G_MININT32 : number();
    for (const auto member :
         {&ZoxEvent::fName, &ZoxEvent::title, &ZoxEvent::poster, &ZoxEvent::link, &ZoxEvent::tag})
      replace_string((*event).*member, text());
    for (const auto member : {&ZoxEvent::groups, &ZoxEvent::tags}) {
      zox_splitted_list_free(&((*event).*member));
      for (unsigned items = below(4); items > 0; --items)
        (*event).*member = g_slist_prepend((*event).*member, zox_string_new(some_text()));
    }
    return event;
  }

private:
  unsigned below(unsigned bound) { return static_cast<unsigned>(random_()) % bound; }
  gint32 number() { return static_cast<gint32>(random_()); }
  const char *some_text() {
    static constexpr std::array texts{
        "",   " ",  "12", "a & b < c > d", "]]>", "]]]]>>", "x]]", "één €", "|",
        "\t", "a0", "\n", "<tag",          "\"'", "]]>]]>"};
    return texts[below(texts.size())];
  }
  GString *text() { return below(6) == 0 ? nullptr : zox_string_new(some_text()); }

  std::mt19937 random_{7};
};

TEST(EventTextTest, BytesAreThoseOfLibxml2) {
  RandomEvents events;
  for (int round = 0; round < 500; ++round) {
    const OwnedEvent event = events.next();
    ASSERT_EQ(element_of(*event), saved_by_libxml2(*event));
  }
  EXPECT_EQ(element_of(*test::full_event()), saved_by_libxml2(*test::full_event()));
  EXPECT_EQ(element_of(fresh_event), saved_by_libxml2(fresh_event));
}

TEST(EventTextTest, SizeIsAbout) {
  const OwnedEvent event = test::full_event();
  const auto size = static_cast<double>(element_of(*event).size());
  EXPECT_NEAR(static_cast<double>(element_size(*event)), size, size / 4);
}

TEST(EventTextTest, IdentityTellsEveryCachedFieldApart) {
  const auto identity = identity_of(*test::full_event());
  const auto expect_other = [&identity](const char *what, auto change) {
    const OwnedEvent event = test::full_event();
    change(*event);
    EXPECT_NE(identity_of(*event), identity) << what;
  };
  expect_other("postId", [](ZoxEvent &event) { ++event.postId; });
  expect_other("stamp", [](ZoxEvent &event) { event.stamp += gint64{1} << 32; });
  expect_other("updated", [](ZoxEvent &event) { ++event.updated; });
  expect_other("status", [](ZoxEvent &event) { ++event.status; });
  expect_other("fName", [](ZoxEvent &event) { g_string_append_c(event.fName, 'x'); });
  expect_other("title", [](ZoxEvent &event) { replace_string(event.title, nullptr); });
  expect_other("groups", [](ZoxEvent &event) { zox_splitted_list_free(&event.groups); });
  expect_other("poster", [](ZoxEvent &event) { g_string_truncate(event.poster, 0); });
  expect_other("link", [](ZoxEvent &event) { g_string_assign(event.link, "y"); });
  expect_other("rating", [](ZoxEvent &event) { --event.rating; });
  expect_other("cat", [](ZoxEvent &event) { ++event.cat; });
  expect_other("sCat", [](ZoxEvent &event) { ++event.sCat; });
  expect_other("tags", [](ZoxEvent &event) {
    g_string_append_c(static_cast<GString *>(event.tags->data), '1');
  });
  expect_other("tag", [](ZoxEvent &event) { g_string_append_c(event.tag, 'x'); });
}

TEST(EventTextTest, EqualPostingsHaveOneIdentity) {
  EXPECT_EQ(identity_of(*test::full_event()), identity_of(*test::full_event()));
}

TEST(EventTextTest, IdentityKeepsNullApartFromEmpty) {
  const OwnedEvent none = test::basic_event(1);
  const OwnedEvent empty = test::basic_event(1);
  replace_string(none->link, nullptr);
  replace_string(empty->link, zox_string_new(""));
  EXPECT_NE(identity_of(*none), identity_of(*empty));
}

TEST(EventTextTest, IdentityLeavesDetailsOut) {
  const OwnedEvent event = test::full_event();
  const auto identity = identity_of(*event);
  replace_string(event->des, zox_string_new("anders"));
  event->watcherHit = 1 - event->watcherHit;
  EXPECT_EQ(identity_of(*event), identity);
}

TEST(EventTextTest, ListBeyondTheParsersLimitCannotBeWritten) {
  const test::LogCapture log;
  const OwnedEvent event = test::basic_event(1);
  for (int item = 0; item < 12; ++item)
    event->groups =
        g_slist_prepend(event->groups, test::zox(std::string(1'000'000, '1')).release());
  EXPECT_STREQ(writing_fault(*event), "Groups");
}

TEST(EventDigestTest, DependsOnPostingsOrderAndSeed) {
  const OwnedEvent one = test::basic_event(1);
  const OwnedEvent two = test::basic_event(2);
  const auto digest = [](std::uint64_t seed, std::initializer_list<const ZoxEvent *> events) {
    EventDigest made(seed);
    for (const ZoxEvent *event : events)
      made.add(*event);
    return made.finish();
  };
  const std::uint64_t expected = digest(5, {one.get(), two.get()});
  EXPECT_EQ(digest(5, {one.get(), two.get()}), expected);
  EXPECT_NE(digest(5, {two.get(), one.get()}), expected);
  EXPECT_NE(digest(5, {one.get()}), expected);
  EXPECT_NE(digest(6, {one.get(), two.get()}), expected);
  EXPECT_NE(digest(5, {}), no_digest);
}

TEST(EventDigestTest, BeginsAnewAfterEachDigest) {
  const OwnedEvent event = test::basic_event(1);
  EventDigest digest(3);
  digest.add(*event);
  const std::uint64_t first = digest.finish();
  digest.add(*event);
  EXPECT_EQ(digest.finish(), first);
}

}  // namespace
}  // namespace velkor
