/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Posting a new spot: the posting itself, then its description, signature and tracks. */
#include <velkor/zox_post.h>

#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "http/service_request.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr const char *post_path = "/3.7.3/xml-post.php";

/** The stored form of the tags without the one that only repeats the sub-category; may be empty. */
OwnedString tags_to_send(const ZoxEvent &event) noexcept {
  const std::string sub_category = "a" + decimal(event.sCat);
  CellBuilder<GString> kept;
  for (GString *tag : Items<GString>(event.tags)) {
    if (view_of(tag) != sub_category)
      kept.append(tag);
  }
  const OwnedCells tags(kept.release());
  return OwnedString(tags ? zox_splitted_list_concat(tags.get()) : zox_string_new(""));
}

void add_posting(Parameters &parameters, const ZoxEvent &event) noexcept {
  const OwnedString groups(zox_splitted_list_concat(event.groups));
  const OwnedString tags = tags_to_send(event);
  parameters.add("m", "add");
  parameters.add("t", zox_string_value(event.title));
  parameters.add_number("s", event.status);
  parameters.add("g", groups->str);
  parameters.add_if_present("fstr", event.fName);
  parameters.add_number("ft", event.fType);
  parameters.add_number("fn", event.files);
  parameters.add_if_present("l", event.link);
  parameters.add_if_present("a", event.ann);
  parameters.add_number("fs", event.fStart);
  parameters.add_if_present("img", event.img);
  parameters.add_number("pars", event.pars);
  if (event.blockSize > 0)
    parameters.add_number("bs", event.blockSize);
  parameters.add_number("pt", event.parType);
  parameters.add_number("c", event.cat);
  parameters.add_number("sc", event.sCat);
  parameters.add("tags", tags->str);
  parameters.add_if_present("tag", event.tag);
}

std::string joined_tracks(const GSList *tracks) noexcept {
  std::string text;
  std::string_view separator;
  for (const GString *track : Items<const GString>(tracks)) {
    text.append(separator).append(view_of(track));
    separator = "|ZOX|";
  }
  return text;
}

/** Sends one spot and tells of its progress. */
class SpotSender {
public:
  SpotSender(ZoxEvent &event, ZoxPostProgress progress) noexcept
      : event_(event), progress_(progress) {}

  ZoxErrorCode send() noexcept;

private:
  void report(gint32 step) const noexcept {
    if (progress_ != nullptr)
      progress_(step);
  }
  ZoxErrorCode send_posting() noexcept;
  ZoxErrorCode accept(const char *reply) noexcept;
  /** Sends what belongs to a posting that was accepted; `step` is the first of its three. */
  [[nodiscard]] ZoxErrorCode follow_up(ZoxPostStep step,
                                       const Parameters &parameters) const noexcept;
  [[nodiscard]] ZoxErrorCode send_description() const noexcept;
  [[nodiscard]] ZoxErrorCode send_signature() const noexcept;
  [[nodiscard]] ZoxErrorCode send_tracks() const noexcept;
  ZoxErrorCode send_all() noexcept;

  ZoxEvent &event_;
  ZoxPostProgress progress_;
  bool reserved_ = false;
};

ZoxErrorCode SpotSender::send() noexcept {
  report(ZOX_POST_STARTED);
  if (event_.mp3Tracks != nullptr) {
    event_.fStart = 1;
    event_.files = static_cast<gint32>(g_slist_length(event_.mp3Tracks));
  }
  if (const ZoxErrorCode code = send_all()) {
    report(ZOX_POST_FAILED);
    return code;
  }
  report(reserved_ ? ZOX_POST_DONE_RESERVED : ZOX_POST_DONE);
  return reserved_ ? ZOX_RESULT_SPOT_RESERVED : ZOX_RESULT_SUCCESS;
}

ZoxErrorCode SpotSender::send_all() noexcept {
  ZoxErrorCode code = send_posting();
  if (code == ZOX_RESULT_SUCCESS)
    code = send_description();
  if (code == ZOX_RESULT_SUCCESS)
    code = send_signature();
  if (code == ZOX_RESULT_SUCCESS)
    code = send_tracks();
  return code;
}

ZoxErrorCode SpotSender::send_posting() noexcept {
  Parameters parameters;
  add_posting(parameters, event_);
  report(ZOX_POST_SENDING);
  const ServiceReply reply = send_request(post_path, parameters);
  report(ZOX_POST_SENT);
  return reply.failed() ? reply.code : accept(reply.text->str);
}

/** Takes the post id from a reply that accepts the posting. */
ZoxErrorCode SpotSender::accept(const char *reply) noexcept {
  const char verdict = reply[0];
  if (verdict == 'C')
    return ZOX_RESULT_SPOT_REFUSED;
  if (verdict != '0' && verdict != '1')
    return ZOX_RESULT_NOT_PARSED;
  reserved_ = verdict == '0';
  event_.postId = leading_integer(reply + 1);
  report(ZOX_POST_ACCEPTED);
  return ZOX_RESULT_SUCCESS;
}

ZoxErrorCode SpotSender::follow_up(ZoxPostStep step, const Parameters &parameters) const noexcept {
  report(step);
  const ServiceReply reply = send_request(post_path, parameters);
  report(step + 1);
  if (!reply.failed())
    report(step + 2);
  return reply.code;
}

ZoxErrorCode SpotSender::send_description() const noexcept {
  if (event_.des == nullptr)
    return ZOX_RESULT_SUCCESS;
  return follow_up(ZOX_POST_DESCRIPTION, {{"section", "1"},
                                          {"d", event_.des->str},
                                          {"id", decimal(event_.postId).c_str()},
                                          {"m", "upd"}});
}

ZoxErrorCode SpotSender::send_signature() const noexcept {
  if (event_.sig == nullptr)
    return ZOX_RESULT_SUCCESS;
  return follow_up(ZOX_POST_SIGNATURE, {{"section", "2"},
                                        {"sig", event_.sig->str},
                                        {"id", decimal(event_.postId).c_str()},
                                        {"m", "upd"}});
}

// Unlike the other two, this request names the post id "s".
ZoxErrorCode SpotSender::send_tracks() const noexcept {
  if (event_.mp3Tracks == nullptr)
    return ZOX_RESULT_SUCCESS;
  return follow_up(ZOX_POST_TRACKS, {{"s", decimal(event_.postId).c_str()},
                                     {"m", "mp3"},
                                     {"str", joined_tracks(event_.mp3Tracks).c_str()}});
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_post_send(ZoxEvent *event, ZoxPostProgress progress) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(event);
  return SpotSender(*event, progress).send();
}

}  // extern "C"
