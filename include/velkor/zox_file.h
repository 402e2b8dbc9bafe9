/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_FILE_H
#define VELKOR_ZOX_FILE_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

void       zox_file_set_lib_dir(const char *name);
void       zox_file_set_data_dir(const char *name);
void       zox_file_set_cache_dir(const char *name);
void       zox_file_free_lib_dir(void);
void       zox_file_free_data_dir(void);
void       zox_file_free_cache_dir(void);
gint32     zox_file_init_cache_dir(void);
char      *zox_file_parse_lib_dir(const char *suffix);
char      *zox_file_parse_data_dir(const char *suffix);
char      *zox_file_parse_data_filename(const char *name);
char      *zox_file_parse_cache_filename(const char *name, gint32 compressed);
ZoxString *zox_file_load(const char *filename, gint32 compressed);
gint32     zox_file_save(const char *filename, const ZoxString *text, gint32 compressed);
gint32     zox_file_copy(const char *from, const char *to);

G_END_DECLS

#endif
