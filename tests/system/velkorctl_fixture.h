/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Runs velkorctl in a temporary home, with a simple terminal where it has one, without a session
 * bus, optionally with a server. */
#ifndef VELKOR_TESTS_SYSTEM_VELKORCTL_FIXTURE_H
#define VELKOR_TESTS_SYSTEM_VELKORCTL_FIXTURE_H

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"
#include "tests/support/server_process.h"

namespace velkor::test {

class VelkorctlTest : public ::testing::Test {
protected:
  using Words = std::vector<std::string>;

  VelkorctlTest();

  /** The whole command: the program, the fixture's options and `words`. */
  [[nodiscard]] virtual Words command(const Words &words) const;
  [[nodiscard]] ProcessResult run(const Words &words, const ProcessOptions &options = {}) const;
  /** The standard output of a run that must succeed and print no warnings. */
  [[nodiscard]] std::string output(const Words &words) const;

  [[nodiscard]] std::filesystem::path cached(const std::string &name) const;
  /** The names of the files in the cache directory. */
  [[nodiscard]] std::set<std::string> cached_names() const;
  /** Writes "velkor.posts.gz" with these "Event" elements. */
  void cache_postings(const std::string &events) const;
  /** Writes "velkor.conf". */
  void settings(const std::string &lines) const;

  Sandbox sandbox;

private:
  EnvironmentVariable no_bus_{"DBUS_SESSION_BUS_ADDRESS", std::nullopt};
  EnvironmentVariable no_runtime_{"XDG_RUNTIME_DIR", std::nullopt};
  EnvironmentVariable simple_terminal_{"TERM", "dumb"};
  EnvironmentVariable no_pager_{"VELKORCTL_PAGER", ""};
  EnvironmentVariable colours_{"NO_COLOR", std::nullopt};
};

/** With a stand-in server that has 50 postings in dumps of 10, and its account in the settings. */
class ServerVelkorctlTest : public VelkorctlTest {
protected:
  explicit ServerVelkorctlTest(const Words &options = {});

  [[nodiscard]] Words command(const Words &words) const override;

  ServerProcess server;
};

/** One posting for cache_postings(): category Beeld/DivX unless `more` says otherwise. */
std::string event(int id, const std::string &title, const std::string &more = "");
/** One posting with exactly these elements in addition to its id and title. */
std::string bare_event(int id, const std::string &title, const std::string &elements);

/** The lines of a text, without their ends. */
std::vector<std::string> lines_of(const std::string &text);

/** How many items the JSON document `text` has; fails the test when it is not one. */
std::size_t count_objects(const std::string &text);

}  // namespace velkor::test

#endif
