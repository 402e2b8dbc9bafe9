/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/update_request.h"

#include <span>

#include <velkor/zox_codes.h>
#include <velkor/zox_file.h>

#include "library/request.h"
#include "model/shown_text.h"

namespace velkor::app {
namespace {

std::span<const std::int32_t> ids_of(const ZoxRequest &request, ZoxUpdateGroup group) {
  const ZoxUpdateResult *result = zox_request_update_result(&request);
  if (result == nullptr)
    return {};
  std::uint32_t count = 0;
  const std::int32_t *ids = zox_update_result_ids(result, group, &count);
  return {ids, count};
}

std::uint32_t count_of(const ZoxRequest &request, ZoxUpdateGroup group) {
  return static_cast<std::uint32_t>(ids_of(request, group).size());
}

UpdateOutcome::Kind kind_of(const ZoxRequest &request) {
  if (zox_request_state(&request) == ZOX_REQUEST_CANCELLED)
    return UpdateOutcome::Kind::stopped;
  switch (zox_request_code(&request)) {
  case ZOX_RESULT_SUCCESS:
    return UpdateOutcome::Kind::changed;
  case ZOX_RESULT_NOTHING_NEW:
    return UpdateOutcome::Kind::nothing_new;
  default:
    return UpdateOutcome::Kind::failed;
  }
}

std::string message_for(UpdateOutcome::Kind kind, const ZoxRequest &request) {
  if (kind == UpdateOutcome::Kind::changed || kind == UpdateOutcome::Kind::stopped)
    return "";
  return call_result(zox_request_code(&request), zox_request_message(&request)).message;
}

/** Why the postings could not be saved; empty when they could. */
std::string why_not_saved() {
  const ZoxFileError *error = zox_file_last_error();
  return error->status == ZOX_FILE_NOT_WRITTEN ? shown_line(error->message) : "";
}

}  // namespace

UpdateProgress progress_of(const ZoxRequestProgress &progress) {
  const bool downloads = progress.step == ZOX_REQUEST_STEP_DOWNLOAD;
  return {.dump = progress.dump,
          .dumps = progress.dumps,
          .received = downloads ? progress.received : 0,
          .expected = downloads ? progress.total : 0,
          .saving = progress.step == ZOX_REQUEST_STEP_MERGING ||
                    progress.step == ZOX_REQUEST_STEP_SAVING};
}

UpdateOutcome outcome_of(const ZoxRequest &request) {
  const UpdateOutcome::Kind kind = kind_of(request);
  return {.kind = kind,
          .message = message_for(kind, request),
          .fresh = count_of(request, ZOX_UPDATE_NEW),
          .changed = count_of(request, ZOX_UPDATE_CHANGED),
          .deleted = count_of(request, ZOX_UPDATE_REMOVED),
          .aged_out = count_of(request, ZOX_UPDATE_AGED_OUT),
          .watchlist_changed = count_of(request, ZOX_UPDATE_WATCHED) > 0,
          .not_saved = kind == UpdateOutcome::Kind::changed ? why_not_saved() : ""};
}

std::vector<WatcherHit> hits_of(const ZoxRequest &request) {
  const ZoxUpdateResult *result = zox_request_update_result(&request);
  std::vector<WatcherHit> hits;
  std::uint32_t index = 0;
  for (const std::int32_t id : ids_of(request, ZOX_UPDATE_WATCHER_HIT))
    hits.push_back({id, shown_line(zox_update_result_watcher(result, index++))});
  return hits;
}

}  // namespace velkor::app
