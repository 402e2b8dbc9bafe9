/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The HTML table of a posting, reduced to what the library itself writes. */
#ifndef VELKORCTL_HTML_TAG_INFO_H
#define VELKORCTL_HTML_TAG_INFO_H

#include <libxml/tree.h>

namespace velkor::ctl {

/**
 * Replaces the text of a "TagInfo" element by elements: the text is read as HTML, of which only
 * table, tr, td, b and a remain, without any attribute but an address. An address is kept when it
 * has the form that the library writes (iets.html#link and an http or https address), as a plain
 * link to that address. Other elements are replaced by their text, scripts and styles by nothing.
 */
void reduce_tag_info(xmlNode *element);

}  // namespace velkor::ctl

#endif
