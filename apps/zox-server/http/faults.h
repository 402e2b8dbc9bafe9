/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Faults that the service commits on request, so that clients can show what they make of them. */
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
  /** Whether the request is carried out before its reply is spoilt. */
  bool carried_out;
  /** Turns the reply (an empty one when the request is not carried out) into the faulty one. */
  void (*spoil)(Reply &reply, const std::string &argument);
};

std::span<const FaultKind> fault_kinds();
/** The kind of that name, null when there is none. */
const FaultKind *find_fault_kind(std::string_view name);

struct Fault {
  /** A path; one that ends with a slash stands for all below it, "*" for every path. */
  std::string path;
  const FaultKind *kind = nullptr;
  /** How many requests it still meets; 0 for all. */
  std::int64_t times = 0;
  std::string argument;
};

/** Reads PATH=KIND[:TIMES[:ARGUMENT]]; nothing when it is not of that form. */
std::optional<Fault> parse_fault(const std::string &text);

class FaultList {
public:
  void add(Fault fault) { faults_.push_back(std::move(fault)); }
  void clear() { faults_.clear(); }
  [[nodiscard]] const std::list<Fault> &all() const { return faults_; }
  /** The first fault that meets a request of `path`; it is used up by one. */
  std::optional<Fault> take(std::string_view path);

private:
  std::list<Fault> faults_;
};

}  // namespace velkor::server

#endif
