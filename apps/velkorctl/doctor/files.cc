/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The files of the cache. */
#include "velkorctl/cache_files.h"
#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {
namespace {

std::string advice_for(CacheFile::Kind kind) {
  switch (kind) {
  case CacheFile::Kind::settings:
    return "remove the line from the file; velkorctl config list shows the settings";
  case CacheFile::Kind::newsgroups:
    return "run velkorctl groups --fetch";
  case CacheFile::Kind::postings:
    return "run velkorctl cache resync, or bring back a backup with velkorctl cache restore";
  case CacheFile::Kind::filters:
  case CacheFile::Kind::mail:
    break;
  }
  return "bring back a backup with velkorctl cache restore";
}

}  // namespace

Findings check_files(const std::filesystem::path &directory) {
  Findings findings;
  try {
    for (const CacheFile &file : present_files(directory)) {
      const Inspection found = inspect(directory, file);
      if (!found.superseded_by.empty())
        findings.push_back({"file", file.name + " is not used beside " + found.superseded_by});
      else if (found.problem.empty())
        findings.push_back({"file", file.name + " is sound"});
      else
        findings.push_back({"file", file.name + ": " + found.problem, advice_for(file.kind)});
    }
  } catch (const Failure &) {
    return {};  // what is wrong with the directory has been found
  }
  if (findings.empty())
    findings.push_back({"file", "there is none yet; the first update makes them"});
  return findings;
}

}  // namespace velkor::ctl::doctor
