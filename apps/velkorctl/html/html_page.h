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
 * visible notice when the second was needed, or when the rows found are not the postings asked
 * for. Whatever the texts contain, nothing but the page's own style and script can run.
 *
 * @param document the display document, UTF-8
 * @param expected the numbers of the postings that the document was printed for, in any order
 * @return the page as HTML, UTF-8; nullopt when not even the recovering parse finds a document
 */
std::optional<std::string> html_page(std::string_view document, std::vector<int> expected);

}  // namespace velkor::ctl

#endif
