/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Makes a page for a browser out of the display document that the library prints. */
#ifndef VELKORCTL_HTML_PAGE_H
#define VELKORCTL_HTML_PAGE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor::ctl {

/**
 * Texts of postings stand unescaped in the display document, so a hostile one can break out of
 * its place. The document is parsed strictly first, then in a recovering way; the page carries a
 * visible notice when the second was needed, or when a row differs from its posting. Whatever the
 * texts contain, nothing but the page's own style and script can run.
 *
 * @param document the display document, UTF-8
 * @param postings the elements of the postings in the document, each printed alone, in any order
 * @return the page as HTML, UTF-8; nullopt when not even the recovering parse finds a document
 */
std::optional<std::string> html_page(std::string_view document,
                                     const std::vector<std::string> &postings);

}  // namespace velkor::ctl

#endif
