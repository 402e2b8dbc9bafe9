/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl myzox: the user's own postings. */
#include <memory>
#include <string>

#include <velkor/zox_category.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/postings.h"

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

using Post = const ZoxMyzoxPost *;

Fields<Post> fields() {
  return {
      {{.name = "id", .type = type::number(), .rank = 2},
       [](Post post) -> Value { return post->postId; }},
      {{.name = "date", .type = type::moment(), .rank = 4, .style = Style::faint},
       [](Post post) { return moment_or_nothing(post->stamp); }},
      {{.name = "updated", .type = type::moment()},
       [](Post post) { return moment_or_nothing(post->updated); }},
      {{.name = "status", .type = type::text(), .rank = 5},
       [](Post post) {
         return text_or_nothing(zox_string_status(static_cast<gint32>(post->status)));
       }},
      {{.name = "statusId", .type = type::number()},
       [](Post post) -> Value { return static_cast<gint32>(post->status); }},
      {{.name = "category", .type = type::text(), .rank = 6},
       [](Post post) {
         return text_or_nothing(zox_string_category(static_cast<gint32>(post->cat)));
       }},
      {{.name = "categoryId", .type = type::number()},
       [](Post post) -> Value { return static_cast<gint32>(post->cat); }},
      {{.name = "subCategory", .type = type::text()},
       [](Post post) {
         return text_or_nothing(
             zox_category_get_scat_name(static_cast<gint32>(post->cat), post->sCat));
       }},
      {{.name = "subCategoryId", .type = type::number()},
       [](Post post) -> Value { return static_cast<gint32>(post->sCat); }},
      {{.name = "kudos", .type = type::number(), .rank = 7},
       [](Post post) -> Value { return post->kudos; }},
      {{.name = "reactionCount", .type = type::number(), .rank = 8, .title = "Reactions"},
       [](Post post) -> Value { return post->forum; }},
      {{.name = "canEdit", .type = type::flag(), .rank = 9, .title = "Edit"},
       [](Post post) -> Value { return post->canEdit != 0; }},
      {{.name = "title", .type = type::text(), .rank = 1, .flexible = true, .style = Style::strong},
       [](Post post) -> Value { return post->title; },
       [](Post post) { return std::string(view_of(post->link)); }},
      {{.name = "poster", .type = type::text(), .flexible = true},
       [](Post post) -> Value { return post->poster; }},
      {{.name = "newsgroups", .type = newsgroups_type(), .flexible = true},
       [](Post post) { return newsgroup_values(post->groups); }},
      {{.name = "fileName", .type = type::text(), .flexible = true},
       [](Post post) -> Value { return post->fName; }},
      {{.name = "link", .type = type::text(), .flexible = true},
       [](Post post) -> Value { return post->link; }},
      {{.name = "rating", .type = type::number()}, [](Post post) -> Value { return post->rating; }},
      {{.name = "reps", .type = type::number()}, [](Post post) -> Value { return post->reps; }},
      {{.name = "reqs", .type = type::number()}, [](Post post) -> Value { return post->reqs; }},
      {{.name = "mod", .type = type::number()}, [](Post post) -> Value { return post->mod; }},
  };
}

void print_posts(GSList *list, const Context &context) {
  const Items<ZoxMyzoxPost> posts(list);
  print_records(context, fields(), std::vector<Post>(posts.begin(), posts.end()));
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
  if (format_of(context.arguments) == Format::xml)
    print_xml(posts.get(), context.out);
  else
    print_posts(posts.get(), context);
  return Exit::ok;
}

}  // namespace

Command myzox_command() {
  return with_output(
      {"myzox",
       "Print the postings that you placed",
       {},
       {{"--update", "ID", "Ask the server to refresh the posting with this ID instead"}},
       run},
      list_of_records(fields(), "posting", "postings"), {"xml"});
}

}  // namespace velkor::ctl
