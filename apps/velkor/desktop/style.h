/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The style of the desktop: its light or dark colours, and what the program adds. */
#ifndef VELKOR_APP_DESKTOP_STYLE_H
#define VELKOR_APP_DESKTOP_STYLE_H

namespace velkor::app {

/** To be called once, when there is a display. */
void apply_style();

}  // namespace velkor::app

#endif
