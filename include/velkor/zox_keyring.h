/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Addition to the interface: the password of the account in the keyring of the desktop (the Secret
 * Service on the session bus) instead of "velkor.conf", which then holds a token in its place.
 * zox_config_load() and start-up ask the keyring when they find the token, zox_config_save() gives
 * it a password that was changed meanwhile.
 */
#ifndef VELKOR_ZOX_KEYRING_H
#define VELKOR_ZOX_KEYRING_H

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** Where the password is kept while no process holds it. */
typedef enum _ZoxPasswordPlace {
  ZOX_PASSWORD_IN_FILE = 0,    /**< in "velkor.conf", readable by its owner alone */
  ZOX_PASSWORD_IN_KEYRING = 1, /**< in the keyring; the file holds a token */
} ZoxPasswordPlace;

/**
 * Moves the password to that place and saves the settings. What the other place held is removed
 * once they are saved. Asking the keyring may take as long as the user takes to unlock it. Asserts
 * "core->config". Threads: one at a time, hand-over allowed.
 * @param place    where the password is kept from now on; any other number counts as the file
 * @param message  receives a new text that says why it failed, or null; may be null
 * @return 1, also when it is there already; 0 when it stays where it was: there is no password, the
 *         keyring cannot be used, or the settings cannot be saved
 */
gint32 zox_keyring_keep_password(ZoxPasswordPlace place, char **message);

/**
 * Threads: one at a time, hand-over allowed.
 * @return where the settings loaded or saved last keep the password
 */
ZoxPasswordPlace zox_keyring_password_place(void);

/**
 * Threads: one at a time, hand-over allowed.
 * @return why the keyring did not give the password when the settings were loaded; null when it
 *         did or was not asked. It is the library's and lasts until the settings are loaded again
 */
const char *zox_keyring_fault(void);

G_END_DECLS

#endif
