/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl myzox: the user's own postings. */
#include <memory>
#include <string>

#include <velkor/zox_http_curl.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/formats.h"
#include "velkorctl/messages.h"
#include "velkorctl/moment.h"

namespace velkor::ctl {
namespace {

void free_post(ZoxMyzoxPost *post) noexcept {
  for (GString *text : {post->title, post->fName, post->poster, post->link})
    if (text != nullptr)
      free_string(text);
  zox_splitted_list_free(&post->groups);
  g_free(post);
}

void free_posts(GSList *posts) noexcept {
  for (ZoxMyzoxPost *post : Items<ZoxMyzoxPost>(posts))
    free_post(post);
  g_slist_free(posts);
}
using OwnedPosts = std::unique_ptr<GSList, ReleaseWith<free_posts>>;

ZoxErrorCode request_posts(GSList **posts, char **server_text) noexcept {
  ZoxString *place = nullptr;
  const ZoxErrorCode result =
      zox_http_curl_execute("/3.7.3/xml-myzox.php", nullptr, 1, &place, 1, nullptr, 1);
  const OwnedString reply(place);
  if (result != ZOX_RESULT_SUCCESS) {
    *server_text = g_strdup(chars_or_null(reply.get()));
    return result;
  }
  constexpr gint32 no_children = 3;
  const gint32 problem = zox_myzox_parse(reply.get(), posts);
  return problem == 0 || problem == no_children ? ZOX_RESULT_SUCCESS : ZOX_RESULT_NOT_PARSED;
}

OwnedPosts fetch_posts() {
  GSList *posts = nullptr;
  const LibraryResult result = try_call("asking for your postings", request_posts, &posts);
  OwnedPosts owned(posts);
  require_success(result);
  return owned;
}

std::vector<std::string> row_of(const ZoxMyzoxPost *post) {
  return {std::to_string(post->postId),
          show_moment(post->stamp),
          zox_string_status(static_cast<gint32>(post->status)),
          zox_string_category(static_cast<gint32>(post->cat)),
          std::to_string(post->kudos),
          std::to_string(post->forum),
          post->canEdit != 0 ? "yes" : "no",
          std::string(view_of(post->title))};
}

void add_members(Json &json, const ZoxMyzoxPost *post) {
  json.member("id", post->postId).member("stamp", post->stamp);
  json.member("updated", post->updated).member("canEdit", post->canEdit != 0);
  json.member("status", static_cast<gint32>(post->status)).member("category", post->cat);
  json.member("subCategory", static_cast<gint32>(post->sCat)).member("title", post->title);
  json.member("poster", post->poster).member("fileName", post->fName).member("link", post->link);
  json.member("kudos", post->kudos).member("reactions", post->forum).member("reps", post->reps);
  json.member("reqs", post->reqs).member("rating", post->rating).member("mod", post->mod);
  json.begin_array("newsgroups");
  for (const GString *id : Items<GString>(post->groups))
    json.value(view_of(id));
  json.end_array();
}

void print_posts(const GSList *posts, const Context &context) {
  using Align = Column::Align;
  print_list(context,
             {{"ID", Align::right},
              {"DATE"},
              {"STATUS"},
              {"CATEGORY"},
              {"KUDOS", Align::right},
              {"REACTIONS", Align::right},
              {"EDIT"},
              {"TITLE", Align::left, true}},
             Items<ZoxMyzoxPost>(posts), row_of, add_members);
}

void print_xml(GSList *posts, Output &out) {
  const xml::Document document(zox_myzox_print(posts));
  xmlChar *text = nullptr;
  int length = 0;
  xmlDocDumpFormatMemory(document.get(), &text, &length, 1);
  const xml::Chars owned(text);
  out.write_document({xml::chars(text), static_cast<std::size_t>(length)});
}

void update_post(const std::string &text) {
  call("asking for a refresh", zox_myzox_update, posting_id(text));
  say("the server has been asked to refresh posting " + text);
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::read, Load::settings);
  session.require_account();
  if (const auto id = context.arguments.value("--update")) {
    update_post(*id);
    return Exit::ok;
  }
  const OwnedPosts posts = fetch_posts();
  if (context.arguments.value("--format") == "xml")
    print_xml(posts.get(), context.out);
  else
    print_posts(posts.get(), context);
  return Exit::ok;
}

}  // namespace

Command myzox_command() {
  return {"myzox",
          "Print the postings that you placed",
          {},
          {{"--update", "ID", "Ask the server to refresh the posting with this ID instead"},
           format_option("Output format: table (default), json or xml (the library's document)",
                         {"table", "json", "xml"}),
           no_header_option()},
          run};
}

}  // namespace velkor::ctl
