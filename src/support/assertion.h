/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Assertions on programming errors: they name source file, line, function and the failed
 * expression, and abort. They hold in every build, since the described expressions are part of
 * the interface.
 */
#ifndef VELKOR_SUPPORT_ASSERTION_H
#define VELKOR_SUPPORT_ASSERTION_H

#include <type_traits>

namespace velkor {

[[noreturn]] void assertion_failed(const char *file, int line, const char *function,
                                   const char *expression) noexcept;

}  // namespace velkor

/** Aborts when `expression` is false, naming it as written. */
#define ZOX_ASSERT(expression) ZOX_ASSERT_AS(expression, #expression)

/** Aborts when `condition` is false, naming it `name`: for a name that differs from the code's. */
#define ZOX_ASSERT_AS(condition, name)                                                             \
  do {                                                                                             \
    if (!(condition)) [[unlikely]]                                                                 \
      ::velkor::assertion_failed(__FILE__, __LINE__, __func__, name);                              \
  } while (false)

/**
 * The same for a helper, which works for a function of the interface in the same file or module:
 * the message names `function`, since that is the one a caller knows.
 */
#define ZOX_ASSERT_IN(function, condition, name)                                                   \
  do {                                                                                             \
    static_assert(std::is_function_v<decltype(function)>, "a function that is declared");          \
    if (!(condition)) [[unlikely]]                                                                 \
      ::velkor::assertion_failed(__FILE__, __LINE__, #function, name);                             \
  } while (false)

#endif
