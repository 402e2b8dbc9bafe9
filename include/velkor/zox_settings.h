/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The settings by their keys: what each means, which values it can have, and reading and changing
 * it as text. An addition to the interface; the fields of ZoxConfig are the same settings.
 */
#ifndef VELKOR_ZOX_SETTINGS_H
#define VELKOR_ZOX_SETTINGS_H

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** What kind of value a setting holds. */
typedef enum {
  ZOX_SETTING_TEXT = 0,       /**< a text; a decimal number when the setting has a range */
  ZOX_SETTING_SECRET = 1,     /**< a text that is not to be shown */
  ZOX_SETTING_FLAG = 2,       /**< 1 for yes, 0 for no */
  ZOX_SETTING_NUMBER = 3,     /**< a number */
  ZOX_SETTING_CHOICE = 4,     /**< the index of one of the setting's `choices` */
  ZOX_SETTING_TIME = 5,       /**< seconds since 1970; 0 for never */
  ZOX_SETTING_COUNT = 6,      /**< an unsigned number */
  ZOX_SETTING_TEXT_LIST = 7,  /**< a list of texts, one line each; of decimal numbers when the
                                 setting  has a range */
  ZOX_SETTING_SPLIT_LIST = 8, /**< a list of decimal numbers on one line, see zox_splitted_list.h */
  ZOX_SETTING_NUMBER_LIST = 9 /**< a list of numbers, one line each */
} ZoxSettingType;

/** What a number of a setting counts; for a ZOX_SETTING_CHOICE, what its `choices` count. */
typedef enum {
  ZOX_SETTING_NO_UNIT = 0, /**< nothing in particular */
  ZOX_SETTING_DAYS = 1,    /**< days */
  ZOX_SETTING_SECONDS = 2  /**< seconds */
} ZoxSettingUnit;

/** Who acts on a setting. */
typedef enum {
  ZOX_SETTING_LIBRARY = 0,  /**< the library */
  ZOX_SETTING_FRONT_END = 1 /**< the front end; the library only keeps the setting */
} ZoxSettingUser;

/** How reading or changing a setting ended. */
typedef enum {
  ZOX_SETTING_DONE = 0,         /**< success */
  ZOX_SETTING_UNKNOWN = 1,      /**< there is no setting with that key */
  ZOX_SETTING_READ_ONLY = 2,    /**< the setting comes from the server */
  ZOX_SETTING_WRONG_TYPE = 3,   /**< a value for a list, or a list for a single value */
  ZOX_SETTING_OUT_OF_RANGE = 4, /**< not a decimal number within the range */
  ZOX_SETTING_NOT_STORABLE = 5  /**< a control character other than a tab, white space at an end, an
                                     empty item, or more than the line of the file holds */
} ZoxSettingResult;

/** What is to be known about a setting. All of it is constant. */
typedef struct _ZoxSetting {
  const char *key;         /**< the name of the field of ZoxConfig and the key of velkor.conf */
  ZoxSettingType type;     /**< the kind of value */
  ZoxSettingUnit unit;     /**< what a number counts */
  ZoxSettingUser user;     /**< who acts on it */
  gint32 readOnly;         /**< 1 if the server gives the value, so that it cannot be set */
  gint64 lowest;           /**< the lowest number that can be set; 0 without a range */
  gint64 highest;          /**< the highest number that can be set; 0 without a range */
  const gint32 *choices;   /**< what the numbers 0 to `highest` of a ZOX_SETTING_CHOICE stand
                                for, in the unit; null for other types */
  const char *defaultText; /**< the default as text; null for no value and for an empty list */
  const char *description; /**< what it is for: one English sentence */
} ZoxSetting;

/**
 * Threads: any.
 * @return the number of settings
 */
guint32 zox_settings_count(void);

/**
 * The settings in the order of velkor.conf. Threads: any.
 * @param index  0 to zox_settings_count() - 1
 * @return the setting, constant and never freed; null for an index beyond the last
 */
const ZoxSetting *zox_settings_at(guint32 index);

/**
 * Threads: any.
 * @param key  the key, exactly
 * @return the setting, constant and never freed; null when there is none
 */
const ZoxSetting *zox_settings_find(const char *key);

/**
 * The value of a setting that is no list, numbers in decimal. Asserts "core->config". Threads: any.
 * @param key  the key of the setting
 * @return a new text, the caller's; null when the setting has no value, is a list or is unknown
 */
ZoxString *zox_settings_get(const char *key);

/**
 * The items of a setting that is a list, numbers in decimal. Asserts "core->config". Threads: any.
 * @param key  the key of the setting
 * @return a new list of new texts, released with zox_splitted_list_free(); null when the list is
 *         empty, and when the setting is no list or unknown
 */
ZoxSplittedList *zox_settings_get_list(const char *key);

/**
 * Gives a setting that is no list a value; zox_config_save() writes it to the file. Asserts
 * "core->config". Threads: one at a time, hand-over allowed.
 * @param key      the key of the setting
 * @param text     the value as the file holds it: a flag is "0" or "1", a choice its index, a time
 *                 in seconds. An empty text leaves the account and the proxy without a value.
 * @param message  set to an English sentence on failure, null on success; may be null
 * @return ZOX_SETTING_DONE, or why the setting is unchanged
 */
ZoxSettingResult zox_settings_set(const char *key, const char *text, char **message);

/**
 * Replaces the items of a setting that is a list. Asserts "core->config". Threads: one at a time,
 * hand-over allowed.
 * @param key      the key of the setting
 * @param texts    the items, of ZoxString, none null or empty; null for an empty list
 * @param message  set to an English sentence on failure, null on success; may be null
 * @return ZOX_SETTING_DONE, or why the setting is unchanged
 */
ZoxSettingResult zox_settings_set_list(const char *key, const GSList *texts, char **message);

/**
 * Gives a setting its default. Asserts "core->config". Threads: one at a time, hand-over allowed.
 * @param key  the key of the setting
 * @return ZOX_SETTING_DONE, ZOX_SETTING_UNKNOWN or ZOX_SETTING_READ_ONLY
 */
ZoxSettingResult zox_settings_reset(const char *key);

G_END_DECLS

#endif
