/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Makes a page for a browser from the display document that the library prints. */
#ifndef VELKORCTL_HTML_PAGE_H
#define VELKORCTL_HTML_PAGE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::ctl {

/**
 * Texts of postings are not escaped in the display document, so a hostile one can change what
 * follows it. The document is parsed strictly, or with error recovery when that fails; the page
 * has a notice when recovery was needed or a row differs from its posting. Whatever the texts
 * contain, only the page's own style and script are used.
 *
 * @param document the display document, UTF-8
 * @param postings the elements of the postings in the document, each printed alone, in any order
 * @return the page as HTML, UTF-8; nullopt when even error recovery finds no document
 */
std::optional<std::string> html_page(std::string_view document,
                                     const std::vector<std::string> &postings);

}  // namespace velkor::ctl

#endif
