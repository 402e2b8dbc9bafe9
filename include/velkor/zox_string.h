/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Text helpers: growable texts, the fixed Dutch labels, short newsgroup names, dates.
 *
 * None of these functions needs the core. Threads: any.
 */
#ifndef VELKOR_ZOX_STRING_H
#define VELKOR_ZOX_STRING_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * @param text  the text to copy, or null
 * @return a new growable text; null when `text` is null
 */
ZoxString *zox_string_new(const char *text);

/**
 * @param s  a growable text, or null
 * @return the characters of `s`, which stay its own; null when `s` is null
 */
const char *zox_string_value(const ZoxString *s);

/**
 * Prints a number in decimal, at most 10 characters: a negative number of ten digits loses its last
 * one, so that -2147483648 comes out as "-214748364".
 * @param n  any number
 * @return a new text
 */
ZoxString *zox_string_integer(gint32 n);

/**
 * The name of a main category.
 * @param n  0 "Beeld", 1 "Geluid", 2 "Spelletjes", 3 "Applicaties"
 * @return the name; the empty text for any other number
 */
const char *zox_string_category(gint32 n);

/**
 * The word for a posting state.
 * @param n  -5 "Onbekend", -3 and -2 "Verwijderd", -1 "Spot", 0 "Ready", 1 "Aangekondigd",
 *           2 "Bezig met uploaden", 3 "Niet meer ondersteund"
 * @return the word; the empty text for any other number
 */
const char *zox_string_status(gint32 n);

/**
 * The short form of a newsgroup name: "alt.binaries.tv" becomes "a.b.tv".
 * @param s  the full name
 * @return a new text: "a.b." and what follows the 13th character when the name begins with
 *         "alt.binaries", "a.b" for that name alone, else a copy
 */
char *zox_string_strip_newsgroup(const ZoxString *s);

/**
 * @param text  the text to copy
 * @return a new text in which the ASCII letters a to z are made upper case, nothing else
 */
char *zox_string_upcase(const char *text);

/**
 * Completes a web address.
 * @param s  the address, or null
 * @return a new text: empty when `s` is null or empty, else `s` with "http://" in front unless it
 *         begins so already (letter case does not count)
 */
ZoxString *zox_string_add_http(const ZoxString *s);

/**
 * Formats a time as "%d-%m (%H:%M)" in the local time zone.
 * @param seconds  seconds since 1970
 * @return a new text; null, with a warning, when the time cannot be converted
 */
char *zox_string_date(gint64 seconds);

/**
 * Replaces every occurrence, found from the left without overlap and without regard to the case of
 * ASCII letters. Asserts "bron" (`source`) and that `search` is not empty.
 * @param source       the text to search; it is not changed
 * @param search       what to replace; not empty
 * @param replacement  what to put there, as it is
 * @return a new text; the stretches between the occurrences keep their letter case
 */
ZoxString *zox_string_replace(const ZoxString *source, const char *search, const char *replacement);

G_END_DECLS

#endif
