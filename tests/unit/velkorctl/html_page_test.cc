/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/html/html_page.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char *notice = "role=\"alert\"";

struct Row {
  int id;
  std::string title;
  std::string poster = "poster";
  int stamp = 100;
  int rating = 5;
  std::string tag_info =
      "<TABLE STYLE='x'><TR><TD><B>Categorie :</B></TD><TD>Beeld</TD></TR></TABLE>";
};

std::string event(const Row &row) {
  return "<Event><PostID>" + std::to_string(row.id) + "</PostID><Stamp>" +
         std::to_string(row.stamp) + "</Stamp><Status>0</Status><Title><![CDATA[" + row.title +
         "]]></Title><Poster><![CDATA[" + row.poster + "]]></Poster><Rating>" +
         std::to_string(row.rating) + "</Rating><TagInfo><![CDATA[" + row.tag_info +
         "]]></TagInfo></Event>";
}

std::string display(const std::vector<Row> &rows) {
  std::string text = "<Events><SortMode>Stamp</SortMode><SortRichting>descending</SortRichting>"
                     "<PrevCheck>90</PrevCheck>";
  for (const Row &row : rows)
    text += event(row);
  return text + "</Events>";
}

/** The page of `document`, printed for the postings of these rows. */
std::string page_of(const std::string &document, const std::vector<Row> &rows) {
  std::vector<std::string> postings;
  for (const Row &row : rows)
    postings.push_back(event(row));
  return html_page(document, postings).value_or("");
}

std::string page_of(const std::vector<Row> &rows) {
  return page_of(display(rows), rows);
}

/** The posting numbers in the order of the page's rows. */
std::vector<int> order_of(const std::string &page) {
  std::vector<int> numbers;
  const std::string mark = "data-id=\"";
  for (auto place = page.find(mark); place != std::string::npos; place = page.find(mark, place + 1))
    numbers.push_back(std::stoi(page.substr(place + mark.size())));
  return numbers;
}

TEST(HtmlPage, KeepsTheOrderOfTheDocument) {
  const std::vector<Row> rows = {
      {2, "beta", "zoe", 300, 9}, {3, "Alfa", "ann", 100, 10}, {1, "gamma", "bob", 200, 1}};
  EXPECT_EQ(order_of(page_of(rows)), (std::vector{2, 3, 1}));
}

TEST(HtmlPage, ShowsEveryCategoryInABlockOfItsOwn) {
  const std::string blocks =
      "<Events><PrevCheck>0</PrevCheck>"
      "<CatEvents "
      "catName=\"Beeld\"><SortMode>Title</SortMode><SortRichting>ascending</SortRichting>" +
      event({5, "b"}) + event({6, "a"}) + "</CatEvents><CatEvents catName=\"Geluid\">" +
      event({7, "c"}) + "</CatEvents></Events>";
  const std::string page = page_of(blocks, {{5, "b"}, {6, "a"}, {7, "c"}});
  EXPECT_EQ(order_of(page), (std::vector{5, 6, 7}));
  EXPECT_THAT(page, HasSubstr("<h2>Beeld (2)</h2>"));
  EXPECT_THAT(page, HasSubstr("<h2>Geluid (1)</h2>"));
  EXPECT_THAT(page, Not(HasSubstr(notice)));
}

TEST(HtmlPage, TurnsMarkupInTextsIntoText) {
  const std::string page = page_of({{1, "<script>alert(1)</script>"}});
  EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;"));
}

TEST(HtmlPage, PutsThePolicyAndTheScriptBeforeAnyText) {
  const std::string page = page_of({{1, "first text"}});
  const auto policy = page.find("Content-Security-Policy");
  const auto script = page.find("<script>");
  EXPECT_LT(policy, script);
  EXPECT_LT(script, page.find("first text"));
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
}

TEST(HtmlPage, ReducesTheTagTableToItsOwnElements) {
  Row row{1, "t"};
  row.tag_info =
      "<TABLE onclick='x()'><TR><TD><B>Tag :</B></TD><TD><img src=x onerror=y()>rest<script>z()"
      "</script><iframe src='http://a'></iframe></TD></TR></TABLE>";
  const std::string page = page_of({row});
  EXPECT_THAT(page, HasSubstr("<table><tr><td><b>Tag :</b></td><td>rest</td></tr></table>"));
}

TEST(HtmlPage, KeepsOnlyTheLibrarysFormOfLink) {
  Row row{1, "t"};
  row.tag_info = "<A HREF='iets.html#linkhttp://example.org/x'>good</A>"
                 "<A HREF='http://example.org/y'>other</A>"
                 "<A HREF='iets.html#linkjavascript:alert(1)'>script</A>"
                 "<A HREF='iets.html#linkhttp://user@example.org/z'>disguise</A>"
                 "<A HREF='iets.html#linkhttp:///'>nowhere</A>";
  const std::string page = page_of({row});
  EXPECT_THAT(page, HasSubstr("href=\"http://example.org/x\""));
  EXPECT_THAT(page, Not(HasSubstr("example.org/y")));
  EXPECT_THAT(page, Not(HasSubstr("javascript:")));
  EXPECT_THAT(page, Not(HasSubstr("user@")));
  EXPECT_THAT(page, Not(HasSubstr("http:///")));
}

TEST(HtmlPage, SaysThatTextsDisturbTheDocument) {
  EXPECT_THAT(page_of({{1, "a]]>&<b"}, {2, "fine"}}), HasSubstr(notice));
}

TEST(HtmlPage, SaysThatRowsAreMissingOrForged) {
  const std::string forged = "]]></Title></Event><Event><PostID>9</PostID><Title><![CDATA[x";
  EXPECT_THAT(page_of({{1, forged}}), HasSubstr(notice));
  const std::string begin = "]]></Title><!--";
  const std::string end = "--><Title><![CDATA[";
  EXPECT_THAT(page_of({{1, begin}, {2, "hidden"}, {3, end}}), HasSubstr("van de 3 postings"));
}

/** Two postings hide a third one in a comment and put a row of its number in its place. */
TEST(HtmlPage, SaysThatARowHasOtherTextsThanItsPosting) {
  const std::string begin = "x]]></Title></Event>" +
                            event({2, "genuine", "poster", 100, 5, "forged"}) +
                            "<Event><PostID>3</PostID><Title>y</Title><!--";
  const std::string end = "--><Title><![CDATA[y";
  const std::string page = page_of({{1, begin}, {2, "genuine"}, {3, end}});
  EXPECT_EQ(order_of(page), (std::vector{1, 2, 3}));
  EXPECT_THAT(page, HasSubstr("forged"));
  EXPECT_THAT(page, HasSubstr(notice));
}

/** The position is the document's: a posting printed alone has another one. */
TEST(HtmlPage, APositionInTheListIsNoDifference) {
  const std::string before_position = "<Events><Event><PostID>1</PostID>";
  EXPECT_THAT(*html_page(before_position + "<Pos>7</Pos></Event></Events>",
                         {"<Event><PostID>1</PostID><Pos>0</Pos></Event>"}),
              Not(HasSubstr(notice)));
}

TEST(HtmlPage, SaysWhatAPostingIs) {
  const std::string page =
      *html_page("<Events><Event><PostID>1</PostID><Stamp>1700000000</Stamp><Status>1</Status>"
                 "<Cat>0</Cat><SCat>3</SCat></Event></Events>",
                 {});
  EXPECT_THAT(page, HasSubstr("data-category=\"Beeld/DVD\" data-state=\"Aangekondigd\""));
  EXPECT_THAT(page, HasSubstr("-11-2023 "));
}

TEST(HtmlPage, NumbersThatMeanNothingHaveNoWords) {
  const std::string page = *html_page(
      "<Events><Event category='x' state='y'><PostID>1</PostID><Stamp>99999999999999999</Stamp>"
      "<Status>77</Status><Cat>9</Cat></Event></Events>",
      {});
  EXPECT_THAT(page, HasSubstr("data-category=\"\" data-state=\"\""));
}

TEST(HtmlPage, DividesALongListIntoParts) {
  std::vector<Row> rows;
  for (int id = 1; id <= 51; ++id)
    rows.push_back({id, "t"});
  const std::string page = page_of(rows);
  const std::string part = "<div class=\"part\"";
  const auto second = page.find(part, page.find(part) + 1);
  ASSERT_NE(second, std::string::npos);
  EXPECT_EQ(page.find(part, second + 1), std::string::npos);
  EXPECT_EQ(order_of(page.substr(second)), (std::vector{51}));
  EXPECT_EQ(order_of(page).size(), 51U);
  EXPECT_THAT(page, HasSubstr(">51 postings<"));
}

TEST(HtmlPage, ShowsNoRowsOfAForgedPart) {
  EXPECT_EQ(order_of(*html_page("<Events><Part><Event><PostID>2</PostID></Event></Part>"
                                "<Event><PostID>1</PostID></Event></Events>",
                                {})),
            (std::vector{1}));
}

TEST(HtmlPage, RefusesWhatIsNoDocument) {
  EXPECT_EQ(html_page("", {}), std::nullopt);
  EXPECT_EQ(html_page("no document", {}), std::nullopt);
}

TEST(HtmlPage, SurvivesDeeplyNestedMarkupInATagTable) {
  Row row{1, "t"};
  row.tag_info.clear();
  for (int level = 0; level < 15000; ++level)
    row.tag_info += "<b>";
  EXPECT_THAT(page_of({row}), HasSubstr("data-id=\"1\""));
}

/** An unclosed "TagInfo" holds the ones behind it. */
TEST(HtmlPage, SurvivesATagTableWithinAnother) {
  std::string open = "]]></Title><TagInfo>&lt;b&gt;kept&lt;/b&gt;";
  for (int count = 0; count < 100; ++count)
    open += "<TagInfo/>&lt;b&gt;kept&lt;/b&gt;";
  const std::string page = page_of({{1, open + "<Title><![CDATA["}, {2, "fine"}});
  std::size_t kept = 0;
  for (auto at = page.find("<b>kept</b>"); at != std::string::npos;
       at = page.find("<b>kept</b>", at + 1))
    ++kept;
  EXPECT_EQ(kept, 101U);
  EXPECT_THAT(page, HasSubstr(notice));
}

}  // namespace
}  // namespace velkor::ctl
