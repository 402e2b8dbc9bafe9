/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The replies to every request of the services. The first byte chooses the request, then follow the
 * replies to it, each ending at a zero byte; behind the last there is no connection. */
#include <array>
#include <set>
#include <string>
#include <utility>

#include <velkor/velkor.h>

#include "support/slist.h"
#include "support/text.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"
#include "tests/fuzz/transfers.h"

namespace velkor::fuzz {
namespace {

constexpr gint32 known_id = 1;
/** What an out parameter holds before a call. */
constexpr gint32 untouched = -77;

/** The message of a call, which every call may make. */
class Message {
public:
  Message() = default;
  ~Message() { g_free(text_); }
  Message(const Message &) = delete;
  Message &operator=(const Message &) = delete;

  [[nodiscard]] char **place() noexcept { return &text_; }
  [[nodiscard]] bool given() const noexcept { return text_ != nullptr; }

private:
  char *text_ = nullptr;
};

void require_known(ZoxErrorCode code) {
  require(code <= ZOX_RESULT_NO_PROFILE ||
              code == static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN),
          "the result is a known one");
}

/** Only the server's notice comes with a message. */
void judge(ZoxErrorCode code, const Message &message) {
  require_known(code);
  require(message.given() == (code == ZOX_RESULT_SERVER_NOTICE), "a notice is handed on");
}

void upload_watchlist() {
  zox_watchlist_add(known_id);
  Message message;
  judge(zox_watchlist_upload(message.place()), message);
}

void download_watchlist() {
  Message message;
  judge(zox_watchlist_download(message.place()), message);
  std::set<gint32> ids;
  for (const GString *text : Items<GString>(zox_watchlist_get())) {
    const gint32 id = leading_integer(text->str);
    require(ids.insert(id).second, "a posting is on the watchlist once");
    require(id >= 1, "what is watched has a valid id");
  }
}

void give_kudos() {
  Message message;
  judge(zox_kudos_give(known_id, 1, message.place()), message);
}

void ask_for_kudos() {
  Message message;
  gint32 first = untouched;
  gint32 second = untouched;
  const ZoxErrorCode code = zox_kudos_get(known_id, &first, &second, message.place());
  judge(code, message);
  require(code == 0 || (first == untouched && second == untouched), "a failure gives no kudos");
}

void sign_up() {
  Message message;
  const ZoxErrorCode code = zox_signup_register("name", "word", "a@b", message.place());
  require_known(code);
  require(message.given() || code != ZOX_RESULT_NOT_PARSED, "an unknown reply is handed on");
}

void warn() {
  Message message;
  gint32 number = untouched;
  const ZoxErrorCode code = zox_modje_send(known_id, 0, "reden", &number, message.place());
  judge(code, message);
  require(code == 0 || number == untouched, "a failure gives no number");
}

void update_own_posting() {
  Message message;
  judge(zox_myzox_update(known_id, message.place()), message);
}

/** The steps of a new posting come in their order, and its end last. */
gint follow_step(gint32 step) {
  static gint32 latest = 0;
  require(step == ZOX_POST_STARTED || step > latest, "the steps come in their order");
  latest = step;
  return 0;
}

void post() {
  const OwnedEvent posting(zox_event_new());
  posting->title = zox_string_new("titel");
  posting->des = zox_string_new("regel\nregel");
  posting->sig = zox_string_new("groet");
  posting->tags = zox_splitted_list_split("|a0|b1|");
  posting->mp3Tracks = zox_splitted_list_split("|een|twee|");
  const ZoxErrorCode code = zox_post_send(posting.get(), follow_step);
  require_known(code);
  const bool taken = code == ZOX_RESULT_SUCCESS || code == ZOX_RESULT_SPOT_RESERVED;
  require(!taken || request_count() == 4, "all parts of the posting are sent");
}

void react() {
  Message message;
  judge(zox_events_forum_post("mooi\nhoor", known_id, 0, message.place()), message);
}

void fetch_forum() {
  Message message;
  const ZoxErrorCode code = zox_events_forum_fetch(known_id, 0, message.place());
  judge(code, message);
  const OwnedEvent posting(zox_eventlist_lookup_id(core->eventlist, known_id));
  require(posting != nullptr && (posting->forum != nullptr) == (code == 0),
          "the posting gets a forum unless the request fails");
}

void check_mail() {
  Message message;
  auto waiting = static_cast<guint32>(untouched);
  const ZoxErrorCode code = zox_mail_check(&waiting, message.place());
  judge(code, message);
  require(code == 0 ? waiting <= 1 : waiting == static_cast<guint32>(untouched),
          "mail waits or does not");
}

void fetch_mail() {
  Message message;
  guint32 count = 0;
  const ZoxErrorCode code = zox_mail_fetch(&count, message.place());
  judge(code, message);
  require(zox_mail_get_num_messages() == count, "as many messages are there as came");
}

void send_mail() {
  Message message;
  OwnedBericht mail(zox_mail_bericht_new("iemand", "over", "een\ntwee", 0));
  const ZoxErrorCode code = zox_mail_post(mail.get(), message.place());
  judge(code, message);
  if (code == 0)
    static_cast<void>(mail.release());  // the list owns it now
  require(zox_mail_get_num_messages() == (code == 0 ? 1 : 0), "what was sent is kept");
}

void fetch_details() {
  for (const gint32 id : {known_id, known_id + 1}) {
    Message message;
    judge(zox_eventinfo_fetch(id, message.place()), message);
  }
}

void find_posting() {
  const OwnedEvent posting(zox_eventinfo_findpost(known_id));
}

void fetch_groups() {
  const ZoxErrorCode code = zox_group_fetch();
  require_known(code);
  require(code != 0 || zox_groups_get() != nullptr, "success gives newsgroups");
  zox_group_free_all();
}

void fetch_profile() {
  Message message;
  ZoxProfile *place = nullptr;
  const ZoxErrorCode code = zox_profile_get("iemand", &place, message.place());
  const OwnedProfile profile(place);
  judge(code, message);
  require((profile != nullptr) == (code == 0), "success gives a profile");
}

void filter_by_id() {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->postId = known_id + 1;
  zox_eventlist_apply_filter(core->eventlist, filter.get());
  require(zox_eventlist_get_count(core->eventlist, 1) <= 1, "one posting is accepted at most");
}

void update() {
  Message message;
  require_known(zox_events_fetch(nullptr, nullptr, nullptr, message.place(), nullptr));
}

void update_recursively() {
  core->config->recursiveUpdate = 1;
  update();
}

constexpr std::array requests{
    upload_watchlist,
    download_watchlist,
    give_kudos,
    ask_for_kudos,
    sign_up,
    warn,
    update_own_posting,
    post,
    react,
    fetch_forum,
    check_mail,
    fetch_mail,
    send_mail,
    fetch_details,
    find_posting,
    fetch_groups,
    fetch_profile,
    filter_by_id,
    update,
    update_recursively,
};

/** What every input begins with: one posting, and nothing else. */
void start_anew() {
  clear_cache();
  reset_settings();
  zox_mail_free(std::exchange(core->mail, nullptr));
  empty_list();
  const OwnedEvent posting(zox_event_new());
  posting->postId = known_id;
  posting->title = zox_string_new("titel");
  zox_eventlist_add_or_replace_event(core->eventlist, posting.get());
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  fuzz::Input input(data, size);
  const auto request = fuzz::requests[input.below(fuzz::requests.size())];
  fuzz::start_anew();
  fuzz::answer_requests([&input](const std::string & /*url*/) {
    return input.empty() ? std::nullopt : std::optional(input.text());
  });
  request();
  return 0;
}
