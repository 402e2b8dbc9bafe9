/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the user may have meant by a word that is not known. */
#ifndef VELKORCTL_SUGGESTION_H
#define VELKORCTL_SUGGESTION_H

#include <string>
#include <vector>

namespace velkor::ctl {

/**
 * "; did you mean list?" with the word of `known` that is most like `word`; empty when none is much
 * like it. The case of ASCII letters does not matter.
 */
std::string suggestion(const std::string &word, const std::vector<std::string> &known);

}  // namespace velkor::ctl

#endif
