/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The hook through which the front end looks for new mail every few minutes. */
#ifndef VELKOR_HTTP_MAIL_HOOK_H
#define VELKOR_HTTP_MAIL_HOOK_H

#include <atomic>

#include <velkor/zox_http_curl.h>

#include "http/shared_callback.h"

namespace velkor {

class MailHook {
public:
  void set(ZoxMailCallback function, gpointer data) noexcept { callback_.set(function, data); }

  /**
   * Runs the hook on this thread when more than 300 seconds have passed since it last ran. Of
   * several threads that find it due at once, one runs it.
   * @param now  seconds since 1970
   */
  void run_if_due(gint64 now) noexcept;

private:
  SharedCallback<ZoxMailCallback> callback_;
  std::atomic<gint64> last_run_{0};
};

}  // namespace velkor

#endif
