/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <stdio.h>

#include <velkor/velkor.h>

static gint show_download(gint32 total, gint32 index) {
  if (index > 0)
    printf("dump %d of %d\n", index, total);
  return 0;
}

static void update(void) {
  char *message = NULL;
  ZoxErrorCode code = zox_events_fetch(show_download, NULL, NULL, &message, NULL);
  char *sentence = zox_error_msg(code, message);
  printf("update: %s\n", sentence);
  g_free(sentence);
  g_free(message);
}

static gint show_posting(gpointer key, ZoxEvent *event, gpointer userData) {
  gint32 *lowest = userData;
  printf("posting %d: %s\n", GPOINTER_TO_INT(key), zox_string_value(event->title));
  *lowest = MIN(*lowest, event->postId);
  return 0;
}

static gint32 show_pictures_with(const char *word) {
  ZOXEventlist *list = zox_eventlist_get();
  ZoxFilter *filter = zox_filter_new_filter();
  filter->cat = 0;
  filter->titleSearch = zox_string_new(word);
  zox_eventlist_apply_filter(list, filter);
  zox_filter_free_filter(filter);

  gint32 lowest = G_MAXINT32;
  printf("%u of %u postings\n", zox_eventlist_get_count(list, 1), zox_eventlist_get_count(list, 0));
  zox_eventlist_foreach(list, 1, 1, show_posting, &lowest);
  g_object_unref(list);
  return lowest;
}

static ZoxString *for_html(ZoxString *text) {
  return zox_string_replace(text, "\n", "<BR>");
}

static void print_page(void) {
  ZoxString *page = zox_events_sort_filtered(for_html);
  fputs(page->str, stdout);
  g_string_free(page, TRUE);
}

static gint show_details(ZoxErrorCode result, gint32 postId, char *message, gpointer userData) {
  char *sentence = zox_error_msg(result, message);
  printf("details of %d: %s\n", postId, sentence);
  g_free(sentence);
  g_free(message);
  g_main_loop_quit(userData);
  return 0;
}

static void fetch_details(gint32 postId) {
  GMainLoop *loop = g_main_loop_new(NULL, FALSE);
  zox_eventinfo_fetch_async(postId, show_details, loop);
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
}

static void look_for(const char *word) {
  update();
  gint32 postId = show_pictures_with(word);
  print_page();
  if (postId != G_MAXINT32)
    fetch_details(postId);
}

int main(int argc, char **argv) {
  const char *libDir = argc > 1 ? argv[1] : NULL;
  gint32 dbusOk = 0;
  char *dbusError = NULL;
  zox_set_tolerant(1);
  zox_app_core_init(NULL, NULL, libDir, NULL, 1, &dbusError, &dbusOk);
  if (!dbusOk && dbusError != NULL)
    fputs(dbusError, stderr);
  g_free(dbusError);

  int known = zox_config_get()->username != NULL;
  if (known)
    look_for("linux");
  else
    fputs("velkor.conf names no user\n", stderr);
  zox_app_core_cleanup();
  return known ? 0 : 1;
}
