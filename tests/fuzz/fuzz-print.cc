/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* What the command prints of postings, forums and mail: on a terminal no text can act, every row
 * keeps to its line, and JSON can be parsed. */
#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include <json-glib/json-glib.h>
#include <sys/mman.h>
#include <unistd.h>
#include <velkor/velkor.h>

#include "support/descriptor.h"
#include "support/text.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"
#include "tests/support/sandbox.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/details.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/table.h"

namespace velkor::fuzz {
namespace {

using ctl::CoreSession;

/** The command's standard output, kept in memory. */
class Paper {
public:
  [[nodiscard]] ctl::Output &out() noexcept { return out_; }

  /** What was printed since the last call. */
  std::string take() {
    out_.flush();
    std::string text(static_cast<std::size_t>(lseek(file_.get(), 0, SEEK_CUR)), '\0');
    const ssize_t length = pread(file_.get(), text.data(), text.size(), 0);
    require(length == static_cast<ssize_t>(text.size()), "what was printed can be read");
    require(ftruncate(file_.get(), 0) == 0 && lseek(file_.get(), 0, SEEK_SET) == 0,
            "the next text begins anew");
    return text;
  }

private:
  static Descriptor standard_output() {
    Descriptor file(memfd_create("output", MFD_CLOEXEC));
    dup2(file.get(), STDOUT_FILENO);
    return file;
  }

  Descriptor file_ = standard_output();
  ctl::Output out_{false, ctl::Output::Stream::open};
};

Paper &paper() {
  static Paper paper;
  return paper;
}

const ctl::GlobalOptions &options() {
  static const ctl::GlobalOptions options = [] {
    ctl::GlobalOptions made;
    made.cache_dir = cache_directory();
    return made;
  }();
  return options;
}

void require_safe(const std::string &text) {
  require(g_utf8_validate_len(text.data(), text.size(), nullptr) != FALSE, "UTF-8 is printed");
  const char *end = text.data() + text.size();
  for (const char *at = text.data(); at < end; at = g_utf8_next_char(at))
    require(*at == '\n' || !is_unsafe(g_utf8_get_char(at)), "nothing acts on a terminal");
}

/** The items of the document that the text is; 0 when it has but one. */
std::size_t count_items(const std::string &text) {
  require_safe(text);
  const OwnedObject<JsonParser> parser(json_parser_new());
  require(json_parser_load_from_data(parser.get(), text.data(), static_cast<gssize>(text.size()),
                                     nullptr) != FALSE,
          "JSON can be parsed");
  JsonNode *root = json_parser_get_root(parser.get());
  require(JSON_NODE_HOLDS_OBJECT(root), "a document is an object");
  JsonObject *document = json_node_get_object(root);
  if (json_object_has_member(document, "items") == FALSE)
    return 0;
  return json_array_get_length(json_object_get_array_member(document, "items"));
}

std::size_t line_count(const std::string &text) {
  return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

using Words = std::vector<std::pair<std::string, std::string>>;

const ctl::Command &find_command(const std::string &group, const std::string &name) {
  static const std::vector<ctl::CommandGroup> groups = ctl::all_commands();
  for (const ctl::CommandGroup &each : groups)
    for (const ctl::Command &command : each.commands)
      if (each.name == group && command.name == name)
        return command;
  throw std::logic_error("no such command: " + group + " " + name);
}

/** What a command prints; nothing when it fails. */
std::optional<std::string> run(const std::string &group, const std::string &name,
                               const Words &words) {
  ctl::Arguments arguments;
  for (const auto &[word, value] : words)
    arguments.set(word, {value});
  try {
    const ctl::Command &command = find_command(group, name);
    command.run(
        {options(), arguments, paper().out(), command, group.empty() ? name : group + "." + name});
  } catch (const ctl::Failure &) {
    paper().take();
    return std::nullopt;
  }
  return paper().take();
}

/** Runs a command that lists things: as a table and as JSON it has the same number. */
void check_list(const std::string &group) {
  const std::string name = "list";
  const auto table = run(group, name, {{"--format", "table"}});
  const auto json = run(group, name, {{"--format", "json"}});
  require(table.has_value() == json.has_value(), "both forms are printed, or none");
  if (!table)
    return;
  require_safe(*table);
  require(count_items(*json) + 1 == line_count(*table), "every item has its line");
}

void check_mail(Input &input) {
  test::write_file(cache_directory() / "velkor.mail", input.rest());
  check_list("mail");
  if (const auto text = run("mail", "read", {{"N", "1"}}))
    require_safe(*text);
}

void check_postings(Input &input) {
  test::write_gzip(cache_directory() / "velkor.posts.gz", input.rest());
  check_list("");
  if (const auto text = run("", "show", {{"ID", "1"}, {"--offline", ""}}))
    require_safe(*text);
  if (const auto text = run("", "show", {{"ID", "1"}, {"--offline", ""}, {"--format", "json"}}))
    count_items(*text);
  static_cast<void>(run("", "list", {{"--format", "html"}, {"--per-category", ""}}));
}

/** The record of a posting with its details in a format. */
std::string record_of(const ZoxEvent &posting, const char *format) {
  ctl::Arguments arguments;
  arguments.set("--format", {format});
  const ctl::Command &command = find_command("", "show");
  ctl::print_record({options(), arguments, paper().out(), command, "show"}, ctl::detail_fields(),
                    posting);
  return paper().take();
}

void check_details(const ZoxEvent &posting) {
  ctl::print_reactions(ctl::reactions_of(posting), posting.locked != 0, paper().out());
  require_safe(paper().take());
  require_safe(record_of(posting, "table"));
  const std::string rows = record_of(posting, "tsv");
  require(line_count(rows) == 2, "a record has its line");
  count_items(record_of(posting, "json"));
}

void check_details(Input &input) {
  const CoreSession session(options(), CoreSession::Access::read, ctl::Load::settings);
  check_details(*take_posting(input));
}

void check_forum(Input &input) {
  const CoreSession session(options(), CoreSession::Access::read, ctl::Load::settings);
  const OwnedEvent posting(zox_event_new());
  const OwnedString reply(g_string_new(std::string(input.rest()).c_str()));
  zox_events_forum_parse(reply.get(), posting.get());
  check_details(*posting);
}

void check_table(Input &input) {
  using Align = ctl::Column::Align;
  const auto width = static_cast<int>(input.byte());
  ctl::Table table({{"A", Align::right}, {"B", Align::left, true}, {"", Align::left, true}});
  std::size_t rows = 0;
  for (; !input.empty(); ++rows)
    table.add({{input.text()}, {input.text()}, {input.text()}});
  const std::string text = table.text({.width = width}, true);
  require_safe(text);
  require(line_count(text) == rows + 1, "every row has its line");
  for (std::size_t begin = 0; width > 0 && begin < text.size();) {
    const std::size_t end = text.find('\n', begin);
    require(ctl::display_width(std::string_view(text).substr(begin, end - begin)) <= width,
            "no line is wider than the terminal");
    begin = end + 1;
  }
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_without_core();
  fuzz::paper();
  fuzz::clear_cache();
  fuzz::Input input(data, size);
  static constexpr std::array<void (*)(fuzz::Input &), 5> checks{
      fuzz::check_details, fuzz::check_mail, fuzz::check_postings, fuzz::check_forum,
      fuzz::check_table};
  checks[input.below(checks.size())](input);
  return 0;
}
