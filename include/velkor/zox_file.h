/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The file store: the three directories of the library, and whole files in the cache directory,
 * plain or gzip-compressed.
 *
 * None of these functions needs the core. Several threads may save the same file: each save is
 * whole, the last one stands. Threads: any.
 */
#ifndef VELKOR_ZOX_FILE_H
#define VELKOR_ZOX_FILE_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** How saving or loading a file ended. */
typedef struct _ZoxFileError {
  ZoxFileStatus status; /**< what happened; ZOX_FILE_FINE when it went well */
  gint32 errorNumber;   /**< the system's error number (`errno`); 0 when that is not the reason */
  const char *path;     /**< the file; null before the first saving or loading */
  const char *message;  /**< an English sentence that names file and reason; null for FINE */
} ZoxFileError;

/**
 * Addition to the interface: how this thread's last saving or loading ended. Every function that
 * saves or loads a file of the cache (zox_config_load(), zox_config_save(),
 * zox_config_create_dummy() and the functions `_load` and `_save` of filter list, event list,
 * newsgroups, mail and this file store, zox_file_copy()) forgets the outcome at its start and
 * leaves its own; so do the functions that call them. Where a function writes a file because there
 * is none to load, the worse of both outcomes stays. Does not need the core. Threads: any; each has
 * an outcome of its own.
 * @return the outcome, never null; it and its texts are the library's and last until this thread's
 *         next saving or loading
 */
const ZoxFileError *zox_file_last_error(void);

/**
 * Sets the directory that holds the authentication plug-in. Threads: one at a time, hand-over
 * allowed.
 * @param name  the directory, copied; null for "/usr/lib64"
 */
void zox_file_set_lib_dir(const char *name);

/**
 * Sets the directory of the read-only data of the front end. Threads: one at a time, hand-over
 * allowed.
 * @param name  the directory, copied; null for "/usr/share/velkor"
 */
void zox_file_set_data_dir(const char *name);

/**
 * Sets the directory of every file that the library writes, and checks it with
 * zox_file_init_cache_dir(). An unusable directory is logged at GLib's error level, which ends the
 * process. Threads: one at a time, hand-over allowed.
 * @param name  the directory, copied; null for ".velkor" in the user's home directory
 */
void zox_file_set_cache_dir(const char *name);

/**
 * Forgets the library directory; harmless when none is set. Threads: one at a time, hand-over
 * allowed.
 */
void zox_file_free_lib_dir(void);

/**
 * Forgets the data directory; harmless when none is set. Threads: one at a time, hand-over
 * allowed.
 */
void zox_file_free_data_dir(void);

/**
 * Forgets the cache directory; harmless when none is set. Threads: one at a time, hand-over
 * allowed.
 */
void zox_file_free_cache_dir(void);

/**
 * Makes the cache directory (mode 0700, its last path component only) or checks that it can be
 * written by making and removing "test.dat" in it. A file of that name that is there already is
 * opened, but neither changed nor removed; a symbolic link is not followed. With a core for reading
 * only, the directory is neither made nor written to, and a missing one is in order. Asserts
 * "cache_dir". Threads: one at a time, hand-over allowed.
 * @return 0; with a warning: -2 when it cannot be made, -3 when it is not a directory, -4 when
 *         it cannot be written, -5 when a core for reading only cannot read it
 */
gint32 zox_file_init_cache_dir(void);

/**
 * Asserts "lib_dir". Threads: any.
 * @param suffix  what follows the directory name directly ("/name"), or null
 * @return a new text: the library directory with the suffix
 */
char *zox_file_parse_lib_dir(const char *suffix);

/**
 * Asserts "data_dir". Threads: any.
 * @param suffix  what follows the directory name directly ("/name"), or null
 * @return a new text: the data directory with the suffix
 */
char *zox_file_parse_data_dir(const char *suffix);

/**
 * Asserts "data_dir". Threads: any.
 * @param name  a file name, or null
 * @return a new text: the path of that file in the data directory; the directory for null
 */
char *zox_file_parse_data_filename(const char *name);

/**
 * Asserts "cache_dir". Threads: any.
 * @param name        a file name, or null
 * @param compressed  non-zero to add ".gz"
 * @return a new text: the path of that file in the cache directory; the bare directory for null
 */
char *zox_file_parse_cache_filename(const char *name, gint32 compressed);

/**
 * Reads a whole file of the cache directory. A compressed file is looked for without ".gz" first:
 * such a plain file, left by an earlier version, is read and deleted (but kept by a core for
 * reading only); the next save writes the compressed one. A zero byte ends the block (plain: the
 * line) that it stands in. Asserts "filename" and "cache_dir". Threads: any.
 * @param filename    the bare name, without ".gz"
 * @param compressed  non-zero for a gzip file
 * @return a new text; for a file that is missing or cannot be opened null (plain) or an empty text
 *         (compressed)
 */
ZoxString *zox_file_load(const char *filename, gint32 compressed);

/**
 * Replaces a file of the cache directory. A new file has mode 0600 whatever the umask, any other
 * keeps its mode. Symbolic links are followed, but those in a directory where others may write make
 * the writing fail. A plain file gets one line feed behind the text, a
 * compressed one does not. Asserts "filename", "tekst" (`text`) and "cache_dir". Threads: any.
 * @param filename    the bare name, without ".gz"
 * @param text        the whole content
 * @param compressed  non-zero for a gzip file
 * @return 0; -1 when a plain file cannot be written. A compressed file that cannot be written is
 *         only warned about and reported by zox_file_last_error(). The old file then stays as it is
 */
gint32 zox_file_save(const char *filename, const ZoxString *text, gint32 compressed);

/**
 * Copies a file byte for byte. Errors while writing are ignored. Threads: any.
 * @param from  full path of the source
 * @param to    full path of the copy, made with mode 0600 or truncated
 * @return 0; 1 when either file cannot be opened, when `to` is a symbolic link in a directory where
 *         others may write, or with a core for reading only
 */
gint32 zox_file_copy(const char *from, const char *to);

G_END_DECLS

#endif
