/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Names for the numbers of the interface: results, states of postings, the server's status words
 * and the kinds of messages. An addition to the interface; the fields and results themselves keep
 * their integer types.
 */
#ifndef VELKOR_ZOX_CODES_H
#define VELKOR_ZOX_CODES_H

#include <glib.h>

G_BEGIN_DECLS

/**
 * The values of a ZoxErrorCode. zox_error_msg() gives the sentence for the user; codes marked *
 * have none.
 */
typedef enum {
  ZOX_RESULT_SUCCESS = 0,             /**< success */
  ZOX_RESULT_UNKNOWN_ERROR = 1,       /**< the transfer failed for another reason or was stopped,
                                           its temporary file could not be made, or a dump is not
                                           valid gzip */
  ZOX_RESULT_UNAUTHORIZED = 2,        /**< user name or password refused */
  ZOX_RESULT_BANNED = 3,              /**< banned from the server */
  ZOX_RESULT_DATABASE_DOWN = 4,       /**< the server's database fails */
  ZOX_RESULT_NOTHING_NEW = 5,         /**< an update found nothing new */
  ZOX_RESULT_NO_MODULES = 6,          /**< the platform cannot load modules */
  ZOX_RESULT_PLUGIN_UNKNOWN = 7,      /**< reserved, never returned */
  ZOX_RESULT_PLUGIN_NOT_LOADED = 8,   /**< the authentication plug-in cannot be opened */
  ZOX_RESULT_PLUGIN_NOT_RUN = 9,      /**< the authentication plug-in lacks its entry point */
  ZOX_RESULT_UNKNOWN_REPLY = 10,      /**< a reply that the operation does not recognise */
  ZOX_RESULT_NOT_PARSED = 11,         /**< a reply, or the cache, that cannot be read */
  ZOX_RESULT_POSTING_NOT_CACHED = 12, /**< the posting whose forum is asked for is not in the event
                                           list */
  ZOX_RESULT_NO_DATA = 13,            /**< an empty reply where data was required */
  ZOX_RESULT_HOST_NOT_RESOLVED = 14,  /**< the host name cannot be resolved */
  ZOX_RESULT_PROXY_NOT_RESOLVED = 15, /**< the proxy's name cannot be resolved */
  ZOX_RESULT_NOT_CONNECTED = 16,      /**< no connection */
  ZOX_RESULT_RECEIVE_FAILED = 17,     /**< error while receiving */
  ZOX_RESULT_SEND_FAILED = 18,        /**< error while sending */
  ZOX_RESULT_TIMED_OUT = 19,          /**< time-out */
  ZOX_RESULT_SIGNUP_REFUSED = 20,     /**< * sign-up refused with "E0" */
  ZOX_RESULT_USERNAME_TAKEN = 21,     /**< sign-up refused: the user name is taken */
  ZOX_RESULT_ADDRESS_BANNED = 22,     /**< sign-up refused: the address is banned */
  ZOX_RESULT_ADDRESS_IN_USE = 23,     /**< sign-up refused: another account was used from this
                                           address within 48 hours */
  ZOX_RESULT_NO_TRANSFER_HANDLE = 24, /**< * the transfer handle cannot be created */
  ZOX_RESULT_SPOT_REFUSED = 25,       /**< * a new spot was refused */
  ZOX_RESULT_SPOT_RESERVED = 26,      /**< * a new spot was accepted with a reservation */
  ZOX_RESULT_UPDATE_REQUIRED = 27,    /**< the server wants a newer client */
  ZOX_RESULT_UPDATED_RECENTLY = 28,   /**< for the front end, never returned: an update ran in the
                                           last 10 minutes */
  ZOX_RESULT_SERVER_NOTICE = 29,      /**< the server sent a notice; the operation's message holds
                                           it */
  ZOX_RESULT_POSTING_GONE = 30,       /**< the posting is gone from the server */
  ZOX_RESULT_POSTING_WARNED = 31,     /**< * this warning about a posting was given before */
  ZOX_RESULT_REACTION_WARNED = 32,    /**< * this warning about a reaction was given before */
  ZOX_RESULT_NO_PROFILE = 33,         /**< * a request for a profile produced none */
  ZOX_RESULT_ADDRESSEE_UNKNOWN = -1   /**< * the addressee of a private message is unknown; as a
                                           ZoxErrorCode 0xFFFFFFFF */
} ZoxResult;

/** The states of a posting: the values of ZoxEvent's `status`; zox_string_status() names them. */
typedef enum {
  ZOX_STATUS_UNKNOWN = -5,   /**< none received yet */
  ZOX_STATUS_REMOVED = -3,   /**< deleted, to be removed from the list at once */
  ZOX_STATUS_DELETED = -2,   /**< deleted, kept for a day after that */
  ZOX_STATUS_SPOT = -1,      /**< a posting of others that was spotted */
  ZOX_STATUS_READY = 0,      /**< completely posted */
  ZOX_STATUS_ANNOUNCED = 1,  /**< announced */
  ZOX_STATUS_UPLOADING = 2,  /**< being posted */
  ZOX_STATUS_UNSUPPORTED = 3 /**< no longer supported by its poster */
} ZoxStatus;

/** The words that stand at the beginning of a reply in place of data. */
typedef enum {
  ZOX_STATUS_WORD_NONE = 0,     /**< none: the reply is data */
  ZOX_STATUS_WORD_UNAUTH = 1,   /**< "UNAUTH": user name or password refused */
  ZOX_STATUS_WORD_BAN = 2,      /**< "BAN": the user is banned */
  ZOX_STATUS_WORD_DATABASE = 3, /**< "Could not connect to the database" */
  ZOX_STATUS_WORD_UPD = 4,      /**< "UPD": the server wants a newer client */
  ZOX_STATUS_WORD_MSG = 5       /**< "MSG": the rest of the reply is a notice for the user */
} ZoxStatusWord;

/** What kind of message a ZoxBericht is: the values of its `code`. */
typedef enum {
  ZOX_MAIL_UNSENT = 0,   /**< written, not yet sent */
  ZOX_MAIL_RECEIVED = 1, /**< received */
  ZOX_MAIL_SENT = 2      /**< sent */
} ZoxMailCode;

/** By what a list is sorted: the values of ZoxFilter's `sortMode`. */
typedef enum {
  ZOX_SORT_STAMP = 0,  /**< by the time of posting */
  ZOX_SORT_TITLE = 1,  /**< by title */
  ZOX_SORT_POSTER = 2, /**< by poster */
  ZOX_SORT_RATING = 3  /**< by rating */
} ZoxSortMode;

/** The tests of a filter, in their order: the results of zox_filter_explain(). */
typedef enum {
  ZOX_FILTER_TEST_NONE = 0,        /**< every test is passed */
  ZOX_FILTER_TEST_STAMP_OR_ID = 1, /**< `sinceStamp` or `postId` */
  ZOX_FILTER_TEST_CATEGORY = 2,    /**< `cat` and `sCat` */
  ZOX_FILTER_TEST_STATUS = 3,      /**< `statusList` */
  ZOX_FILTER_TEST_GROUPS = 4,      /**< `groupIdList` */
  ZOX_FILTER_TEST_TITLE = 5,       /**< `titleSearch` */
  ZOX_FILTER_TEST_POSTER = 6,      /**< `posterSearch` */
  ZOX_FILTER_TEST_DATE = 7,        /**< `dateFrom` to `dateTo` */
  ZOX_FILTER_TEST_TAGS = 8,        /**< `tags` */
  ZOX_FILTER_TEST_EXTRA_TAG = 9,   /**< `extraTag` */
  ZOX_FILTER_TEST_KEPT = 10        /**< the user keeps no filter for the main category */
} ZoxFilterTest;

/** The steps that zox_post_send() reports. */
typedef enum {
  ZOX_POST_STARTED = 1,           /**< begun */
  ZOX_POST_SENDING = 2,           /**< before the request of the spot itself */
  ZOX_POST_SENT = 3,              /**< after it */
  ZOX_POST_ACCEPTED = 4,          /**< the server took the spot */
  ZOX_POST_DESCRIPTION = 5,       /**< before the request of the description */
  ZOX_POST_DESCRIPTION_SENT = 6,  /**< after it */
  ZOX_POST_DESCRIPTION_TAKEN = 7, /**< it succeeded */
  ZOX_POST_SIGNATURE = 8,         /**< before the request of the signature */
  ZOX_POST_SIGNATURE_SENT = 9,    /**< after it */
  ZOX_POST_SIGNATURE_TAKEN = 10,  /**< it succeeded */
  ZOX_POST_TRACKS = 11,           /**< before the request of the tracks */
  ZOX_POST_TRACKS_SENT = 12,      /**< after it */
  ZOX_POST_TRACKS_TAKEN = 13,     /**< it succeeded */
  ZOX_POST_DONE_RESERVED = 14,    /**< done; the spot was accepted with a reservation */
  ZOX_POST_DONE = 15,             /**< done */
  ZOX_POST_FAILED = 16            /**< failed */
} ZoxPostStep;

/**
 * What the server answered to something that it was given: kudos, a reaction, a spot. An answer
 * that is not understood is ZOX_ANSWER_UNKNOWN.
 */
typedef enum {
  ZOX_ANSWER_NONE = 0,      /**< no answer: the request failed */
  ZOX_ANSWER_DONE = 1,      /**< it took it */
  ZOX_ANSWER_RESERVED = 2,  /**< it took the spot with a reservation */
  ZOX_ANSWER_DUPLICATE = 3, /**< refused: it was given before */
  ZOX_ANSWER_LOCKED = 4,    /**< refused: the forum is closed */
  ZOX_ANSWER_NOT_FOUND = 5, /**< refused: there is no such posting */
  ZOX_ANSWER_REFUSED = 6,   /**< refused for another reason, which the server does not tell */
  ZOX_ANSWER_UNKNOWN = 7    /**< it answered something else */
} ZoxAnswer;

/** What zox_app_core_open() loads and starts; the values are added up. */
typedef enum {
  ZOX_CORE_SETTINGS = 1,  /**< the settings; without them, defaults */
  ZOX_CORE_FILTERS = 2,   /**< the filters; without them, an empty filter list */
  ZOX_CORE_TABLES = 4,    /**< tags and newsgroups; without them, none */
  ZOX_CORE_MAIL = 8,      /**< the mail; without it, none */
  ZOX_CORE_POSTINGS = 16, /**< the cached postings; without them, an empty event list */
  ZOX_CORE_BUS = 32,      /**< the D-Bus service */
  ZOX_CORE_ALL = 63       /**< all of these */
} ZoxCorePart;

/** The results of zox_app_core_open(). */
typedef enum {
  ZOX_CORE_OPENED = 0,             /**< success */
  ZOX_CORE_NO_DIRECTORY = 1,       /**< the cache directory cannot be made */
  ZOX_CORE_NOT_A_DIRECTORY = 2,    /**< the cache directory is no directory */
  ZOX_CORE_NOT_READABLE = 3,       /**< the cache directory cannot be read */
  ZOX_CORE_NOT_WRITABLE = 4,       /**< the cache directory cannot be written */
  ZOX_CORE_ALREADY_ACTIVE = 5,     /**< another instance owns the D-Bus service; it was asked to
                                        come to the front */
  ZOX_CORE_SETTINGS_UNREADABLE = 6 /**< the settings are there but cannot be read */
} ZoxCoreResult;

/** How saving or loading a file ended: the values of ZoxFileError's `status`, the worst last. */
typedef enum {
  ZOX_FILE_FINE = 0,        /**< it went well */
  ZOX_FILE_MISSING = 1,     /**< loading: there is no such file */
  ZOX_FILE_EMPTY = 2,       /**< loading: the file holds nothing */
  ZOX_FILE_DAMAGED = 3,     /**< loading: not all that the file holds can be understood */
  ZOX_FILE_UNREADABLE = 4,  /**< loading: the file cannot be opened or read */
  ZOX_FILE_NOT_WRITTEN = 5, /**< saving: the file could not be replaced and is as it was */
  ZOX_FILE_READ_ONLY = 6    /**< saving: refused, the core was opened for reading only */
} ZoxFileStatus;

G_END_DECLS

#endif
