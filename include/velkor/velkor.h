/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The whole C interface of libvelkor. */
#ifndef VELKOR_VELKOR_H
#define VELKOR_VELKOR_H

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_config.h>
#include <velkor/zox_dbus.h>
#include <velkor/zox_event.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_sort.h>
#include <velkor/zox_events_xml.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_http_parameter.h>
#include <velkor/zox_kudos.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_post.h>
#include <velkor/zox_profile.h>
#include <velkor/zox_signup.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>
#include <velkor/zox_types.h>
#include <velkor/zox_watcher.h>
#include <velkor/zox_watchlist.h>
#include <velkor/zox_xml_parse.h>

#endif
