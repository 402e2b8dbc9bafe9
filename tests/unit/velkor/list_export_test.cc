/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/list_export.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/velkor/snapshots.h"

namespace velkor::app {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

SpotView view_of_two() {
  const SharedSnapshot snapshot = snapshot_of(
      {{.id = 1, .title = "De Haven", .poster = "anna", .stamp = 1000000000},
       {.id = 2, .title = "<b>\"Knoop\" & co", .poster = "bert", .stamp = 1000000060, .rating = 80},
       {.id = 3, .title = "Niet getoond"}});
  return {.snapshot = snapshot, .query = {}, .rows = {1, 0}, .request = 1};
}

TEST(ListExportTest, JsonHoldsTheRowsInTheirOrder) {
  const std::string json = list_as_json(view_of_two());
  const std::size_t first = json.find("\"id\" : 2");
  const std::size_t second = json.find("\"id\" : 1");
  ASSERT_NE(first, std::string::npos);
  ASSERT_NE(second, std::string::npos);
  EXPECT_LT(first, second);
  EXPECT_THAT(json, HasSubstr("\"title\" : \"<b>\\\"Knoop\\\" & co\""));
  EXPECT_THAT(json, HasSubstr("\"stamp\" : 1000000000"));
  EXPECT_THAT(json, HasSubstr("\"category\" : \"Beeld/DivX\""));
  EXPECT_THAT(json, HasSubstr("\"status\" : \"Ready\""));
  EXPECT_THAT(json, Not(HasSubstr("Niet getoond")));
}

TEST(ListExportTest, APageHoldsTheRowsInTheirOrder) {
  const PageWords words{
      .title = "Spots & meer",
      .columns = {"Titel", "Categorie", "Plaatser", "Datum", "Waardering", "Status"},
      .time_format = "%Y"};
  const std::string page = list_as_html(view_of_two(), words);
  EXPECT_THAT(page, HasSubstr("<title>Spots &amp; meer</title>"));
  EXPECT_THAT(page, HasSubstr("<tr><th>Titel</th><th>Categorie</th>"));
  EXPECT_THAT(page, HasSubstr("<tr><td>&lt;b&gt;&quot;Knoop&quot; &amp; co</td><td>Beeld/DivX</td>"
                              "<td>bert</td><td>2001</td><td>80</td><td>Ready</td></tr>\n"
                              "<tr><td>De Haven</td><td>Beeld/DivX</td><td>anna</td><td>2001</td>"
                              "<td></td><td>Ready</td></tr>\n</table>"));
}

}  // namespace
}  // namespace velkor::app
