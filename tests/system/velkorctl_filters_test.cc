/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl filters: the saved filters are made, changed and exchanged. */
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class VelkorctlFilters : public VelkorctlTest {
protected:
  VelkorctlFilters() {
    write_file(cached("velkor.filters"), document({one("Films", 0), one("Muziek", 1)}));
    cache_postings(event(1, "Alpha") + event(2, "Beta"));
  }

  static std::string one(const std::string &name, int category) {
    return "  <Filter>\n    <filterNaam><![CDATA[" + name + "]]></filterNaam>\n    <cat>" +
           std::to_string(category) + "</cat>\n    <sCat>-1</sCat>\n  </Filter>\n";
  }
  static std::string document(const std::vector<std::string> &filters) {
    std::string text = "<?xml version=\"1.0\"?>\n<Filters>\n";
    for (const std::string &filter : filters)
      text += filter;
    return text + "</Filters>\n";
  }

  [[nodiscard]] std::vector<std::string> names() const {
    return lines_of(output({"filters", "--fields", "name", "--format", "tsv", "--no-header"}));
  }
  [[nodiscard]] std::string saved() const { return read_file(cached("velkor.filters")); }
  /** Runs a command that must fail and change nothing; what it says. */
  [[nodiscard]] std::string refused(const Words &words, int status) const {
    const std::string before = saved();
    const ProcessResult result = run(words);
    EXPECT_EQ(result.status, status) << result.err;
    EXPECT_EQ(saved(), before);
    return result.err;
  }
};

TEST_F(VelkorctlFilters, AddsOneWithItsConditions) {
  EXPECT_EQ(output({"filters", "add", "Series in HD", "--category", "Beeld", "--sub-category",
                    "HDTV", "--tag", "a4", "--tag", "d1", "--free-tag", "serie"}),
            "");
  EXPECT_THAT(names(), ElementsAre("Films", "Muziek", "Series in HD"));
  EXPECT_THAT(saved(), HasSubstr("    <filterNaam><![CDATA[Series in HD]]></filterNaam>\n"
                                 "    <cat>0</cat>\n"
                                 "    <sCat>4</sCat>\n"
                                 "    <extra_tag><![CDATA[serie]]></extra_tag>\n"
                                 "    <tag><![CDATA[a4]]></tag>\n"
                                 "    <tag><![CDATA[d1]]></tag>\n"));
}

TEST_F(VelkorctlFilters, AreOfferedFromTheDirectoryInTheLine) {
  const std::filesystem::path other = sandbox.home() / "other";
  std::filesystem::create_directory(other);
  write_file(other / "velkor.filters", document({one("Elders", 2)}));
  const auto offered = [this](const Words &line) {
    Words words{"completion", "--candidates", "--"};
    words.insert(words.end(), line.begin(), line.end());
    return lines_of(output(words));
  };
  EXPECT_THAT(offered({"list", "--filter", ""}), ElementsAre("Films\tBeeld", "Muziek\tGeluid"));
  for (const std::string &directory : {other.string(), std::string("~/other")})
    EXPECT_THAT(offered({"--cache-dir", directory, "list", "--filter", ""}),
                ElementsAre("Elders\tSpelletjes"))
        << directory;
}

TEST_F(VelkorctlFilters, ANewOneCanBeUsedAtOnce) {
  EXPECT_EQ(output({"filters", "add", "DivX", "--category", "0", "--sub-category", "0"}), "");
  EXPECT_EQ(lines_of(output({"list", "--filter", "divx", "--no-header"})).size(), 2U);
  EXPECT_THAT(output({"categories"}), HasSubstr("Beeld  DivX  2"));
}

TEST_F(VelkorctlFilters, ANewOneNeedsACategoryAndANameOfItsOwn) {
  EXPECT_THAT(refused({"filters", "add", "x"}, 2), HasSubstr("--category"));
  EXPECT_THAT(refused({"filters", "add", "FILMS", "--category", "0"}, 2),
              HasSubstr("there is already a filter called \"FILMS\" for Beeld"));
  EXPECT_THAT(refused({"filters", "add", "", "--category", "0"}, 2), HasSubstr("one line"));
  EXPECT_THAT(refused({"filters", "add", "a\nb", "--category", "0"}, 2), HasSubstr("one line"));
  EXPECT_THAT(refused({"filters", "add", "x", "--category", "7"}, 2), HasSubstr("category"));
  EXPECT_EQ(output({"filters", "add", "Films", "--category", "Geluid"}), "");
}

TEST_F(VelkorctlFilters, AnEmptyValueRemovesACondition) {
  EXPECT_EQ(output({"filters", "add", "x", "-c", "0", "-s", "1", "--tag", "a1", "--free-tag", "w"}),
            "");
  EXPECT_EQ(output({"filters", "edit", "x", "--sub-category", "", "--tag", "", "--free-tag", ""}),
            "");
  EXPECT_EQ(saved(), document({one("Films", 0), one("Muziek", 1), one("x", 0)}));
}

TEST_F(VelkorctlFilters, AnotherCategoryTakesSubCategoryAndTagsWithIt) {
  EXPECT_EQ(output({"filters", "add", "x", "-c", "0", "-s", "1", "--tag", "a1"}), "");
  EXPECT_EQ(output({"filters", "edit", "#3", "--category", "0"}), "");
  EXPECT_THAT(saved(), HasSubstr("<sCat>1</sCat>"));
  EXPECT_EQ(output({"filters", "edit", "#3", "--category", "2"}), "");
  EXPECT_EQ(saved(), document({one("Films", 0), one("Muziek", 1), one("x", 2)}));
}

TEST_F(VelkorctlFilters, RenamesAndMoves) {
  EXPECT_EQ(output({"filters", "rename", "films", "Bioscoop"}), "");
  EXPECT_EQ(output({"filters", "add", "Spel", "-c", "2"}), "");
  EXPECT_THAT(names(), ElementsAre("Bioscoop", "Muziek", "Spel"));
  EXPECT_EQ(output({"filters", "move", "Bioscoop", "3"}), "");
  EXPECT_THAT(names(), ElementsAre("Muziek", "Spel", "Bioscoop"));
  EXPECT_EQ(output({"filters", "move", "#3", "1"}), "");
  EXPECT_THAT(names(), ElementsAre("Bioscoop", "Muziek", "Spel"));
  EXPECT_THAT(refused({"filters", "move", "Spel", "4"}, 2), HasSubstr("NUMBER"));
  EXPECT_THAT(refused({"filters", "move", "Spel", "0"}, 2), HasSubstr("NUMBER"));
}

TEST_F(VelkorctlFilters, ANewNameMayDifferInCaseAlone) {
  EXPECT_EQ(output({"filters", "rename", "films", "FILMS"}), "");
  EXPECT_THAT(names(), ElementsAre("FILMS", "Muziek"));
}

TEST_F(VelkorctlFilters, WhatDoesNotExistIsNotFound) {
  for (const Words &words : {Words{"edit", "#3"}, Words{"remove", "x"}, Words{"rename", "x", "y"},
                             Words{"move", "x", "1"}}) {
    Words command{"filters"};
    command.insert(command.end(), words.begin(), words.end());
    EXPECT_THAT(refused(command, 7), HasSubstr("no saved filter is called \"" + words[1] + "\""));
  }
}

TEST_F(VelkorctlFilters, RemovingTheLastOneOfACategoryWithPostingsNeedsConsent) {
  EXPECT_EQ(output({"filters", "remove", "Muziek"}), "");
  EXPECT_EQ(
      refused({"filters", "remove", "Films"}, 2),
      "velkorctl: no filter would be left for Beeld, and 2 cached postings would no longer be "
      "listed; nothing has been changed (use --yes to do it all the same)\n");
  EXPECT_THAT(refused({"filters", "edit", "Films", "-c", "3"}, 2), HasSubstr("no filter would"));
  EXPECT_EQ(output({"filters", "remove", "Films", "--yes"}), "");
  EXPECT_EQ(saved(), "<?xml version=\"1.0\"?>\n<Filters/>\n");
}

TEST_F(VelkorctlFilters, ExportedOnesCanBeImported) {
  const std::string exported = output({"filters", "export"});
  EXPECT_EQ(exported, saved());
  const std::filesystem::path file = sandbox.home() / "filters.xml";
  write_file(file, exported);
  EXPECT_EQ(run({"filters", "import", file}).err, "velkorctl: 0 filters have been added\n");
  EXPECT_EQ(saved(), exported);
  EXPECT_EQ(output({"filters", "remove", "Muziek"}), "");
  EXPECT_EQ(run({"filters", "import", file}).err, "velkorctl: 1 filter has been added\n");
  EXPECT_EQ(saved(), exported);
}

TEST_F(VelkorctlFilters, AnImportMayReplaceTheOldOnes) {
  const std::string other = document({one("Beelden", 0), one("Beelden", 0)});
  EXPECT_EQ(run({"filters", "import", "--replace"}, {.input = other}).status, 0);
  EXPECT_EQ(saved(), document({one("Beelden", 0)}));
  EXPECT_EQ(run({"filters", "import", "--replace"}, {.input = document({one("x", 1)})}).status, 2);
}

TEST_F(VelkorctlFilters, AnotherDocumentIsRefused) {
  EXPECT_EQ(run({"filters", "import"}, {.input = "<Filters>"}).err,
            "velkorctl: standard input is not a document of filters\n");
  EXPECT_THAT(refused({"filters", "import", cached("velkor.posts.gz")}, 2), Not(IsEmpty()));
  EXPECT_THAT(refused({"filters", "import", "/nowhere"}, 2), HasSubstr("cannot read /nowhere"));
}

}  // namespace
}  // namespace velkor::test
