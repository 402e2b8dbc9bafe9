/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/system/velkorctl_fixture.h"

#include <memory>

#include <json-glib/json-glib.h>

namespace velkor::test {
namespace {

std::vector<std::string> with_sample_data(const std::vector<std::string> &options) {
  std::vector<std::string> all{"--postings", "50", "--chunk-size", "10"};
  all.insert(all.end(), options.begin(), options.end());
  return all;
}

struct Unref {
  void operator()(JsonParser *parser) const { g_object_unref(parser); }
};

}  // namespace

VelkorctlTest::VelkorctlTest() {
  std::filesystem::create_directory(sandbox.cache());
}

VelkorctlTest::Words VelkorctlTest::command(const Words &words) const {
  Words all{VELKORCTL_PROGRAM};
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

ProcessResult VelkorctlTest::run(const Words &words, const ProcessOptions &options) const {
  return run_program(command(words), options);
}

std::string VelkorctlTest::output(const Words &words) const {
  const ProcessResult outcome = run(words);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  return outcome.out;
}

std::filesystem::path VelkorctlTest::cached(const std::string &name) const {
  return sandbox.cache() / name;
}

std::set<std::string> VelkorctlTest::cached_names() const {
  std::set<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(sandbox.cache()))
    names.insert(entry.path().filename().string());
  return names;
}

void VelkorctlTest::cache_postings(const std::string &events) const {
  write_gzip(cached("velkor.posts.gz"),
             "<?xml version=\"1.0\"?>\n<Events>\n" + events + "</Events>\n");
}

void VelkorctlTest::settings(const std::string &lines) const {
  write_file(cached("velkor.conf"), lines);
}

ServerVelkorctlTest::ServerVelkorctlTest(const Words &options) : server(with_sample_data(options)) {
  settings(std::string("username=") + ServerProcess::user +
           "\npassword=" + ServerProcess::password + "\nverwijderPostsNaXDagen=6\n");
}

ServerVelkorctlTest::Words ServerVelkorctlTest::command(const Words &words) const {
  Words all =
      VelkorctlTest::command({"--server", server.host(), "--static-server", server.dump_host(),
                              "--lib-dir", ServerProcess::plugin_directory()});
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

std::string bare_event(int id, const std::string &title, const std::string &elements) {
  return "<Event Code=\"1\"><PostID>" + std::to_string(id) + "</PostID><Title><![CDATA[" + title +
         "]]></Title>" + elements + "</Event>\n";
}

std::string event(int id, const std::string &title, const std::string &more) {
  return bare_event(id, title,
                    "<Stamp>1700000000</Stamp><Status>0</Status><Poster>ann</Poster><Cat>0</Cat>"
                    "<SCat>0</SCat><Tags>|a0|d0|</Tags>" +
                        more);
}

std::vector<std::string> lines_of(const std::string &text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

std::size_t count_objects(const std::string &text) {
  const std::unique_ptr<JsonParser, Unref> parser(json_parser_new());
  GError *error = nullptr;
  const bool parsed = json_parser_load_from_data(parser.get(), text.c_str(),
                                                 static_cast<gssize>(text.size()), &error) != FALSE;
  EXPECT_TRUE(parsed) << (error == nullptr ? "" : error->message) << "\n" << text;
  g_clear_error(&error);
  if (!parsed)
    return 0;
  JsonObject *document = json_node_get_object(json_parser_get_root(parser.get()));
  return json_array_get_length(json_object_get_array_member(document, "items"));
}

}  // namespace velkor::test
