/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/mail_hook.h"

namespace velkor {

void MailHook::run_if_due(gint64 now) noexcept {
  constexpr gint64 interval = 300;
  gint64 last = last_run_;
  if (now - last <= interval || !last_run_.compare_exchange_strong(last, now))
    return;
  const auto callback = callback_.get();
  if (callback.function != nullptr)
    callback.function(callback.data);
}

}  // namespace velkor
