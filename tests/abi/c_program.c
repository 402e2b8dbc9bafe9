/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* A front end in C, compiled against the headers and linked only with the shared library. */
#include <stdio.h>

#include <velkor/velkor.h>

static int failures = 0;

static void expect(int holds, const char *what) {
  if (!holds) {
    fprintf(stderr, "does not hold: %s\n", what);
    ++failures;
  }
}

static void check_texts(void) {
  ZoxString *number = zox_string_integer(G_MININT32);
  expect(g_strcmp0(zox_string_value(number), "-214748364") == 0, "at most ten characters");
  g_string_free(number, TRUE);

  char *sentence = zox_error_msg(29, "Onderhoud");
  expect(g_strcmp0(sentence, "Servermededeling ontvangen: Onderhoud") == 0, "the notice");
  g_free(sentence);

  ZoxSplittedList *list = zox_splitted_list_split("|a|b|");
  expect(g_slist_length(list) == 2, "two items");
  zox_splitted_list_free(&list);
  expect(list == NULL, "the place is null again");
}

static void check_records(void) {
  ZoxEvent *event = zox_event_new();
  event->postId = 42;
  event->title = zox_string_new("titel");
  ZOXEventObject *object = zox_event_object_new();
  zox_event_object_set_event(object, event);
  zox_event_free(event);

  expect(G_TYPE_CHECK_INSTANCE_TYPE(object, zox_event_object_get_type()), "the type");
  ZoxEvent *copy = zox_event_object_get_event(object);
  expect(copy->postId == 42 && g_strcmp0(zox_string_value(copy->title), "titel") == 0, "the copy");
  zox_event_free(copy);
  zox_event_object_destroy(object);

  ZoxFilter *filter = zox_filter_new_filter();
  expect(filter->cat == -1 && filter->sCat == -1 && filter->tags == NULL, "a filter without terms");
  zox_filter_free_filter(filter);
}

static void check_globals(void) {
  expect(core == NULL, "no core before start-up");
  expect(groupIds == NULL && groupIdLen == 0, "no newsgroup set");
}

int main(void) {
  check_texts();
  check_records();
  check_globals();
  return failures == 0 ? 0 : 1;
}
