/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl doctor: looks for what keeps Velkor from working, and says what to do. */
#include "velkorctl/doctor/examination.h"

#include <algorithm>
#include <iterator>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
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

void print_text(const Findings &findings, Output &out) {
  for (const Finding &finding : findings) {
    out.write((finding.is_well() ? "ok       " : "PROBLEM  ") + finding.subject + ": " +
              safe_text(finding.what) + "\n");
    if (!finding.is_well())
      out.write("         -> " + safe_text(finding.advice) + "\n");
  }
}

void print_json(const Findings &findings, Output &out) {
  JsonLines lines(out);
  for (const Finding &finding : findings) {
    Json json;
    json.begin_object().member("check", finding.subject).member("ok", finding.is_well());
    json.member("finding", finding.what).member("advice", finding.advice);
    lines.add(json.end_object());
  }
  lines.finish();
}

Exit run(const Context &context) {
  const Findings findings = examine(context);
  (wants_json(context.arguments) ? print_json : print_text)(findings, context.out);
  return std::ranges::all_of(findings, &Finding::is_well) ? Exit::ok : Exit::failed;
}

}  // namespace

Command doctor_command() {
  return {"doctor",
          "Look for what keeps Velkor from working, and say what to do about it",
          {},
          {format_option()},
          run};
}

}  // namespace velkor::ctl
