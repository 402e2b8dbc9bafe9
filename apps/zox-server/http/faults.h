/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Faults that the server injects on request, to test how clients cope with them. */
#ifndef ZOX_SERVER_HTTP_FAULTS_H
#define ZOX_SERVER_HTTP_FAULTS_H

#include <cstdint>
#include <list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "zox-server/http/message.h"

namespace velkor::server {

struct FaultKind {
  const char *name;
  const char *description;
  /** Whether the request is executed before the fault is applied to its reply. */
  bool executes;
  /** Turns the reply (an empty one when the request is not executed) into the faulty one. */
  void (*apply)(Reply &reply, const std::string &argument);
};

std::span<const FaultKind> fault_kinds();
/** The kind with that name, null when there is none. */
const FaultKind *find_fault_kind(std::string_view name);

struct Fault {
  /** A path; one that ends with a slash matches everything below it, "*" every path. */
  std::string path;
  const FaultKind *kind = nullptr;
  /** How many more requests it applies to; 0 for no limit. */
  std::int64_t times = 0;
  std::string argument;
};

/** Parses PATH=KIND[:TIMES[:ARGUMENT]]; nothing when the text has another form. */
std::optional<Fault> parse_fault(const std::string &text);

class FaultList {
public:
  void add(Fault fault) { faults_.push_back(std::move(fault)); }
  void clear() { faults_.clear(); }
  [[nodiscard]] const std::list<Fault> &all() const { return faults_; }
  /** The first fault that matches a request for `path`; uses it up by one. */
  std::optional<Fault> take(std::string_view path);

private:
  std::list<Fault> faults_;
};

}  // namespace velkor::server

#endif
