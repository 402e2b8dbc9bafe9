/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Guards what `core` keeps for the thread that owns it and what background work reads as well: the
 * settings, the category tree and the newsgroup id set. Only the owner changes them, so that it
 * needs no guard for reading.
 *
 * Whoever holds one of the guards takes no other lock and calls nothing that may: no callback and
 * no warning, whose handler is the front end's. Guards may be nested, a writer in a reader not.
 */
#ifndef VELKOR_CORE_CORE_LOCK_H
#define VELKOR_CORE_CORE_LOCK_H

namespace velkor {

/** What is guarded stays as it is while this lives. */
class CoreReader {
public:
  CoreReader() noexcept;
  ~CoreReader();
  CoreReader(const CoreReader &) = delete;
  CoreReader &operator=(const CoreReader &) = delete;
};

/** No other thread reads what is guarded while this lives. */
class CoreWriter {
public:
  CoreWriter() noexcept;
  ~CoreWriter();
  CoreWriter(const CoreWriter &) = delete;
  CoreWriter &operator=(const CoreWriter &) = delete;
};

}  // namespace velkor

#endif
