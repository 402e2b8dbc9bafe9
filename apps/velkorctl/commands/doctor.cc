/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl doctor: looks for what keeps Velkor from working, and says what to do. */
#include "velkorctl/doctor/examination.h"

#include <algorithm>
#include <iterator>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

using doctor::Finding;
using doctor::Findings;

void append(Findings &all, const Findings &more) {
  std::ranges::copy(more, std::back_inserter(all));
}

void check_with_core(const Context &context, Findings &all) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  append(all, doctor::check_settings());
  append(all, doctor::check_plugin());
  const doctor::Answers answers = doctor::ask_servers();
  throw_if_interrupted();
  append(all, doctor::check_names(answers));
  append(all, doctor::check_servers(answers));
  append(all, doctor::check_proxy(answers));
}

Findings examine(const Context &context) {
  const std::filesystem::path directory = cache_directory(context.options);
  Findings all = doctor::check_directory(directory);
  append(all, doctor::check_space(directory));
  append(all, doctor::check_files(directory));
  append(all, doctor::check_bus());
  try {
    check_with_core(context, all);
  } catch (const Failure &failure) {
    if (failure.exit() != Exit::files)
      throw;
    all.push_back({"settings", failure.what(), "see what is said about the directory"});
  }
  return all;
}

Fields<Finding> fields() {
  using F = const Finding &;
  return {
      {{.name = "check", .type = type::text(), .rank = 1},
       [](F finding) -> Value { return finding.subject; }},
      {{.name = "ok", .type = type::flag(), .rank = 1},
       [](F finding) -> Value { return finding.is_well(); }},
      {{.name = "finding", .type = type::text(), .rank = 1, .flexible = true},
       [](F finding) -> Value { return finding.what; }},
      {{.name = "advice", .type = type::text(), .rank = 1, .flexible = true},
       [](F finding) { return text_or_nothing(finding.advice); }},
  };
}

void print_text(const Findings &findings, const Context &context) {
  context.out.page();
  const Look look = look_of(context.options, context.out);
  for (const Finding &finding : findings) {
    const std::string verdict = finding.is_well() ? styled("ok", Style::good, look) + "       "
                                                  : styled("PROBLEM", Style::bad, look) + "  ";
    context.out.write(verdict + finding.subject + ": " + safe_text(finding.what) + "\n");
    if (!finding.is_well())
      context.out.write("         -> " + safe_text(finding.advice) + "\n");
  }
}

Exit run(const Context &context) {
  const Findings findings = examine(context);
  const Exit exit = std::ranges::all_of(findings, &Finding::is_well) ? Exit::ok : Exit::failed;
  if (wants_records(context.arguments))
    print_records(context, fields(), findings, {.code = exit});
  else
    print_text(arranged(findings, fields(), context), context);
  return exit;
}

}  // namespace

Command doctor_command() {
  return with_output({"doctor",
                      "Look for what keeps Velkor from working, and say what to do about it",
                      {},
                      {},
                      run},
                     list_of_records(fields(), "check", "checks"));
}

}  // namespace velkor::ctl
