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

std::string display(const std::vector<Row> &rows, const std::string &mode = "Stamp",
                    const std::string &direction = "descending") {
  std::string text = "<Events><SortMode>" + mode + "</SortMode><SortRichting>" + direction +
                     "</SortRichting><PrevCheck>90</PrevCheck>";
  for (const Row &row : rows)
    text += event(row);
  return text + "</Events>";
}

/** The posting numbers in the order of the page's rows. */
std::vector<int> order_of(const std::string &page) {
  std::vector<int> numbers;
  const std::string mark = "data-id=\"";
  for (auto place = page.find(mark); place != std::string::npos; place = page.find(mark, place + 1))
    numbers.push_back(std::stoi(page.substr(place + mark.size())));
  return numbers;
}

TEST(HtmlPage, OrdersByTheModeAndDirectionOfTheDocument) {
  const std::vector<Row> rows = {
      {1, "beta", "zoe", 300, 9}, {2, "Alfa", "ann", 100, 10}, {3, "gamma", "bob", 200, 1}};
  const auto ordered = [&rows](const char *mode, const char *direction) {
    return order_of(*html_page(display(rows, mode, direction), {1, 2, 3}));
  };
  EXPECT_EQ(ordered("Stamp", "descending"), (std::vector{1, 3, 2}));
  EXPECT_EQ(ordered("Stamp", "ascending"), (std::vector{2, 3, 1}));
  EXPECT_EQ(ordered("Title", "ascending"), (std::vector{2, 1, 3}));
  EXPECT_EQ(ordered("Poster", "descending"), (std::vector{1, 3, 2}));
  EXPECT_EQ(ordered("Rating", "ascending"), (std::vector{3, 1, 2}));
}

TEST(HtmlPage, ShowsEveryCategoryInABlockOfItsOwn) {
  const std::string blocks =
      "<Events><PrevCheck>0</PrevCheck>"
      "<CatEvents "
      "catName=\"Beeld\"><SortMode>Title</SortMode><SortRichting>ascending</SortRichting>" +
      event({5, "b"}) + event({6, "a"}) + "</CatEvents><CatEvents catName=\"Geluid\">" +
      event({7, "c"}) + "</CatEvents></Events>";
  const std::string page = *html_page(blocks, {5, 6, 7});
  EXPECT_EQ(order_of(page), (std::vector{6, 5, 7}));
  EXPECT_THAT(page, HasSubstr("<h2>Beeld (2)</h2>"));
  EXPECT_THAT(page, HasSubstr("<h2>Geluid (1)</h2>"));
  EXPECT_THAT(page, Not(HasSubstr("role=\"alert\"")));
}

TEST(HtmlPage, TurnsMarkupInTextsIntoText) {
  const std::string page = *html_page(display({{1, "<script>alert(1)</script>"}}), {1});
  EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;"));
}

TEST(HtmlPage, PutsThePolicyAndTheScriptBeforeAnyText) {
  const std::string page = *html_page(display({{1, "first text"}}), {1});
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
  const std::string page = *html_page(display({row}), {1});
  EXPECT_THAT(page, HasSubstr("<table><tr><td><b>Tag :</b></td><td>rest</td></tr></table>"));
}

TEST(HtmlPage, KeepsOnlyTheLibrarysFormOfLink) {
  Row row{1, "t"};
  row.tag_info = "<A HREF='iets.html#linkhttp://example.org/x'>good</A>"
                 "<A HREF='http://example.org/y'>other</A>"
                 "<A HREF='iets.html#linkjavascript:alert(1)'>script</A>"
                 "<A HREF='iets.html#linkhttp://user@example.org/z'>disguise</A>"
                 "<A HREF='iets.html#linkhttp:///'>nowhere</A>";
  const std::string page = *html_page(display({row}), {1});
  EXPECT_THAT(page, HasSubstr("href=\"http://example.org/x\""));
  EXPECT_THAT(page, Not(HasSubstr("example.org/y")));
  EXPECT_THAT(page, Not(HasSubstr("javascript:")));
  EXPECT_THAT(page, Not(HasSubstr("user@")));
  EXPECT_THAT(page, Not(HasSubstr("http:///")));
}

TEST(HtmlPage, SaysThatTextsDisturbTheDocument) {
  const std::string page = *html_page(display({{1, "a]]>&<b"}, {2, "fine"}}), {1, 2});
  EXPECT_THAT(page, HasSubstr("role=\"alert\""));
}

TEST(HtmlPage, SaysThatRowsAreMissingOrForged) {
  const std::string forged = "]]></Title></Event><Event><PostID>9</PostID><Title><![CDATA[x";
  EXPECT_THAT(*html_page(display({{1, forged}}), {1}), HasSubstr("role=\"alert\""));
  const std::string begin = "]]></Title><!--";
  const std::string end = "--><Title><![CDATA[";
  const std::string page = *html_page(display({{1, begin}, {2, "hidden"}, {3, end}}), {1, 2, 3});
  EXPECT_THAT(page, HasSubstr("van de 3 postings"));
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
  EXPECT_NE(html_page(display({row}), {1}), std::nullopt);
}

}  // namespace
}  // namespace velkor::ctl
