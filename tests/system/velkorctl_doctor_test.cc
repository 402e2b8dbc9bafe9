/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl doctor. */
#include "tests/support/private_bus.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class VelkorctlDoctor : public ServerVelkorctlTest {
protected:
  VelkorctlDoctor() { make_private(); }

  /** As the library leaves the settings that it saves. */
  void make_private() const {
    fs::permissions(cached("velkor.conf"), fs::perms::owner_read | fs::perms::owner_write);
  }
  void set(const std::string &lines) const {
    settings("username=demo\npassword=demo-geheim\n" + lines);
    make_private();
  }
  /** The lines about a problem, when the command fails as it should. */
  [[nodiscard]] std::string problems(const Words &options = {}) const {
    Words words = options;
    words.emplace_back("doctor");
    return problems_of(run(words));
  }
  static std::string problems_of(const ProcessResult &outcome) {
    EXPECT_EQ(outcome.status, 1) << outcome.out;
    std::string found;
    for (std::size_t begin = outcome.out.find("PROBLEM"); begin != std::string::npos;
         begin = outcome.out.find("PROBLEM", begin + 1)) {
      const std::size_t advice = outcome.out.find("\n         -> ", begin);
      EXPECT_NE(advice, std::string::npos) << outcome.out;
      found += outcome.out.substr(begin, outcome.out.find('\n', advice + 1) - begin) + "\n";
    }
    return found;
  }
};

TEST_F(VelkorctlDoctor, FindsNothingWhenAllIsWell) {
  ASSERT_EQ(run({"update"}).status, 0);
  const std::set<std::string> before = cached_names();
  const std::string report = output({"doctor"});
  for (const char *words :
       {"ok       directory: ", "ok       space: ", "velkor.posts.gz is sound", "ok       bus: ",
        "ok       settings: ", "ok       account: ", "ok       plug-in: ", " works\n",
        "ok       names: ", "ok       main server: ", "ok       dump server: ",
        "ok       proxy: none is set\n"})
    EXPECT_THAT(report, HasSubstr(words));
  EXPECT_THAT(report, AllOf(Not(HasSubstr("PROBLEM")), Not(HasSubstr("demo-geheim"))));
  EXPECT_EQ(cached_names(), before);
  EXPECT_EQ(count_objects(output({"doctor", "--format", "json"})),
            static_cast<std::size_t>(std::count(report.begin(), report.end(), '\n')));
}

TEST_F(VelkorctlDoctor, ANewCacheIsWell) {
  fs::remove_all(sandbox.cache());
  const std::string found = problems();
  EXPECT_THAT(found, HasSubstr("account: no user name is set"));
  EXPECT_THAT(found, AllOf(Not(HasSubstr("directory")), Not(HasSubstr("file"))));
}

TEST_F(VelkorctlDoctor, FindsADirectoryThatCannotBeUsed) {
  EXPECT_THAT(problems({"--cache-dir", cached("velkor.conf")}),
              HasSubstr("directory: " + cached("velkor.conf").string() +
                        " cannot be used: Not a directory"));
}

TEST_F(VelkorctlDoctor, FindsAPasswordThatOthersCanRead) {
  fs::permissions(cached("velkor.conf"), fs::perms::others_read, fs::perm_options::add);
  EXPECT_THAT(problems(), AllOf(HasSubstr("rights: "), HasSubstr("chmod 600")));
}

TEST_F(VelkorctlDoctor, FindsADamagedFile) {
  write_file(cached("velkor.posts.gz"), "no gzip");
  EXPECT_THAT(problems(),
              AllOf(HasSubstr("file: velkor.posts.gz: "),
                    HasSubstr("-> run velkorctl cache resync, or bring back a backup")));
}

TEST_F(VelkorctlDoctor, FindsWrongSettings) {
  set("verwijderPostsNaXDagen=9\nusrname=ann\n");
  EXPECT_THAT(problems(), AllOf(HasSubstr("settings: verwijderPostsNaXDagen is 9"),
                                HasSubstr("file: velkor.conf: unknown setting usrname")));
}

TEST_F(VelkorctlDoctor, FindsAMissingPlugIn) {
  Words words = command({"doctor"});
  words[6] = sandbox.home();
  EXPECT_THAT(problems_of(run_program(words)),
              HasSubstr("plug-in: " + (sandbox.home() / "libzox_http_plugin.so.2.0").string() +
                        " does not exist"));
}

TEST_F(VelkorctlDoctor, FindsARefusedAccount) {
  settings("username=demo\npassword=wrong\n");
  make_private();
  EXPECT_THAT(problems(), AllOf(HasSubstr("main server: Ongeldige username/wachtwoord"),
                                HasSubstr("velkorctl account set")));
}

TEST_F(VelkorctlDoctor, FindsServersThatDoNotAnswer) {
  server.stop();
  const std::string found = problems();
  EXPECT_THAT(found, HasSubstr("main server: Connection refused (asking the main server, "));
  EXPECT_THAT(found,
              HasSubstr("dump server: Connection refused (asking the server of the dumps, "));
}

TEST_F(VelkorctlDoctor, FindsANameWithoutAnAddress) {
  // A name that no resolver has to be asked about: its label is too long.
  Words words = command({"doctor"});
  words[2] = std::string(64, 'x') + ".invalid";
  const std::string found = problems_of(run_program(words));
  EXPECT_THAT(found, HasSubstr("names: the name " + words[2] + " has no address"));
  EXPECT_THAT(found, Not(HasSubstr("dump server")));
}

TEST_F(VelkorctlDoctor, FindsAProxyThatIsIncompleteOrFails) {
  set("proxyHost=127.0.0.1\n");
  EXPECT_THAT(problems(), HasSubstr("proxy: proxyHost is set without proxyPort"));
  set("proxyHost=127.0.0.1\nproxyPort=1\n");
  EXPECT_THAT(problems(), HasSubstr("proxy: 127.0.0.1:1 fails: "));
  set("proxyHost=127.0.0.1\nproxyPort=" + server.port() + "\n");
  EXPECT_THAT(output({"doctor"}), HasSubstr("passes requests on"));
}

TEST_F(VelkorctlDoctor, FindsABusThatDoesNotAnswer) {
  {
    const EnvironmentVariable wrong("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    EXPECT_THAT(problems(), HasSubstr("bus: the session bus does not answer"));
  }
  const PrivateBus bus;
  EXPECT_THAT(output({"doctor"}), HasSubstr("bus: the session bus answers"));
}

}  // namespace
}  // namespace velkor::test
