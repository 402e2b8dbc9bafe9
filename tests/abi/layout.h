/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The layout of every record of the C interface on LP64. Compiled front ends access the fields
 * directly, so no size and no offset may change. Compiled as C and as C++; there is nothing to run.
 */
#include <assert.h>
#include <stddef.h>

#include <velkor/velkor.h>

G_GNUC_BEGIN_IGNORE_DEPRECATIONS

#define SIZE(type, bytes) static_assert(sizeof(type) == (bytes), "size of " #type)
#define PLACE(type, field, bytes)                                                                  \
  static_assert(offsetof(type, field) == (bytes), "place of " #type "." #field)

static_assert(sizeof(void *) == 8 && sizeof(long) == 8, "LP64");

SIZE(ZoxConfig, 224);
PLACE(ZoxConfig, firstTime, 0);
PLACE(ZoxConfig, lastCheck, 8);
PLACE(ZoxConfig, prevCheck, 16);
PLACE(ZoxConfig, ledenCount, 24);
PLACE(ZoxConfig, usersOnline, 32);
PLACE(ZoxConfig, username, 40);
PLACE(ZoxConfig, password, 48);
PLACE(ZoxConfig, proxyHost, 56);
PLACE(ZoxConfig, proxyPort, 64);
PLACE(ZoxConfig, proxyUser, 72);
PLACE(ZoxConfig, proxyPassword, 80);
PLACE(ZoxConfig, htmlRenderer, 88);
PLACE(ZoxConfig, watchlist, 96);
PLACE(ZoxConfig, badword, 104);
PLACE(ZoxConfig, updatenBijOpstarten, 112);
PLACE(ZoxConfig, toonInfoBijEenZoekresultaat, 116);
PLACE(ZoxConfig, startMaximized, 120);
PLACE(ZoxConfig, toonStatusBijLaden, 124);
PLACE(ZoxConfig, toonCategoriseerdeLijstBijKnopNieuw, 128);
PLACE(ZoxConfig, trayIcon, 132);
PLACE(ZoxConfig, toonGUIGroupFilter, 136);
PLACE(ZoxConfig, recursiveUpdate, 140);
PLACE(ZoxConfig, groupFilter, 144);
PLACE(ZoxConfig, groupFilterList, 152);
PLACE(ZoxConfig, verwijderPostsNaXDagen, 160);
PLACE(ZoxConfig, gebruikFontFamily, 164);
PLACE(ZoxConfig, geenTabbedBrowsing, 168);
PLACE(ZoxConfig, watcher, 176);
PLACE(ZoxConfig, toonWatcherNotifications, 184);
PLACE(ZoxConfig, openPostinfoOpAchtergrond, 188);
PLACE(ZoxConfig, ircNickname, 192);
PLACE(ZoxConfig, ircAltNickname, 200);
PLACE(ZoxConfig, toonIRCClient, 208);
PLACE(ZoxConfig, ratingScale, 212);
PLACE(ZoxConfig, statusFilter, 216);

SIZE(ZoxSetting, 64);
PLACE(ZoxSetting, key, 0);
PLACE(ZoxSetting, type, 8);
PLACE(ZoxSetting, unit, 12);
PLACE(ZoxSetting, user, 16);
PLACE(ZoxSetting, readOnly, 20);
PLACE(ZoxSetting, lowest, 24);
PLACE(ZoxSetting, highest, 32);
PLACE(ZoxSetting, choices, 40);
PLACE(ZoxSetting, defaultText, 48);
PLACE(ZoxSetting, description, 56);

SIZE(ZoxAppCore, 64);
PLACE(ZoxAppCore, config, 0);
PLACE(ZoxAppCore, filterlist, 8);
PLACE(ZoxAppCore, eventlist, 16);
PLACE(ZoxAppCore, watchlistUnchanged, 24);
PLACE(ZoxAppCore, watcherNoHits, 28);
PLACE(ZoxAppCore, groups, 32);
PLACE(ZoxAppCore, categories, 40);
PLACE(ZoxAppCore, mail, 48);
PLACE(ZoxAppCore, tags, 56);

SIZE(ZoxHttpFailure, 48);
PLACE(ZoxHttpFailure, code, 0);
PLACE(ZoxHttpFailure, transferResult, 4);
PLACE(ZoxHttpFailure, httpStatus, 8);
PLACE(ZoxHttpFailure, proxyFailed, 12);
PLACE(ZoxHttpFailure, received, 16);
PLACE(ZoxHttpFailure, host, 24);
PLACE(ZoxHttpFailure, path, 32);
PLACE(ZoxHttpFailure, text, 40);

SIZE(ZoxCoreOptions, 48);
PLACE(ZoxCoreOptions, dataDir, 0);
PLACE(ZoxCoreOptions, cacheDir, 8);
PLACE(ZoxCoreOptions, libDir, 16);
PLACE(ZoxCoreOptions, parts, 24);
PLACE(ZoxCoreOptions, readOnly, 28);
PLACE(ZoxCoreOptions, dbusArgument, 32);
PLACE(ZoxCoreOptions, isGui, 40);

SIZE(ZoxFileError, 24);
PLACE(ZoxFileError, status, 0);
PLACE(ZoxFileError, errorNumber, 4);
PLACE(ZoxFileError, path, 8);
PLACE(ZoxFileError, message, 16);

SIZE(ZoxHttpParameter, 16);
PLACE(ZoxHttpParameter, paramName, 0);
PLACE(ZoxHttpParameter, paramValue, 8);

SIZE(ZoxEvent, 216);
PLACE(ZoxEvent, postId, 0);
PLACE(ZoxEvent, stamp, 8);
PLACE(ZoxEvent, updated, 16);
PLACE(ZoxEvent, status, 24);
PLACE(ZoxEvent, fName, 32);
PLACE(ZoxEvent, title, 40);
PLACE(ZoxEvent, groups, 48);
PLACE(ZoxEvent, poster, 56);
PLACE(ZoxEvent, link, 64);
PLACE(ZoxEvent, cat, 72);
PLACE(ZoxEvent, sCat, 76);
PLACE(ZoxEvent, tags, 80);
PLACE(ZoxEvent, tag, 88);
PLACE(ZoxEvent, rating, 96);
PLACE(ZoxEvent, ann, 104);
PLACE(ZoxEvent, des, 112);
PLACE(ZoxEvent, sig, 120);
PLACE(ZoxEvent, fType, 128);
PLACE(ZoxEvent, files, 132);
PLACE(ZoxEvent, fStart, 136);
PLACE(ZoxEvent, img, 144);
PLACE(ZoxEvent, forum, 152);
PLACE(ZoxEvent, parType, 160);
PLACE(ZoxEvent, pars, 164);
PLACE(ZoxEvent, blockSize, 168);
PLACE(ZoxEvent, view, 172);
PLACE(ZoxEvent, kudos, 176);
PLACE(ZoxEvent, mp3Tracks, 184);
PLACE(ZoxEvent, locked, 192);
PLACE(ZoxEvent, reason, 200);
PLACE(ZoxEvent, watchlistUpdated, 208);
PLACE(ZoxEvent, watcherHit, 212);

SIZE(ZOXEventObject, 112);
PLACE(ZOXEventObject, parent, 0);
PLACE(ZOXEventObject, lock, 24);
PLACE(ZOXEventObject, event, 104);

SIZE(ZOXEventlist, 128);
PLACE(ZOXEventlist, parent, 0);
PLACE(ZOXEventlist, lock, 24);
PLACE(ZOXEventlist, tree, 104);
PLACE(ZOXEventlist, filtered, 112);
PLACE(ZOXEventlist, activeFilter, 120);

SIZE(ZoxCategory, 32);
PLACE(ZoxCategory, name, 0);
PLACE(ZoxCategory, id, 8);
PLACE(ZoxCategory, isMain, 12);
PLACE(ZoxCategory, filter, 16);
PLACE(ZoxCategory, count, 24);

SIZE(ZoxTag, 32);
PLACE(ZoxTag, category, 0);
PLACE(ZoxTag, group, 8);
PLACE(ZoxTag, code, 16);
PLACE(ZoxTag, name, 24);

SIZE(ZoxGroup, 16);
PLACE(ZoxGroup, id, 0);
PLACE(ZoxGroup, groupName, 8);

SIZE(ZoxFilter, 112);
PLACE(ZoxFilter, name, 0);
PLACE(ZoxFilter, sinceStamp, 8);
PLACE(ZoxFilter, postId, 16);
PLACE(ZoxFilter, titleSearch, 24);
PLACE(ZoxFilter, posterSearch, 32);
PLACE(ZoxFilter, cat, 40);
PLACE(ZoxFilter, sCat, 44);
PLACE(ZoxFilter, tags, 48);
PLACE(ZoxFilter, extraTag, 56);
PLACE(ZoxFilter, sortMode, 64);
PLACE(ZoxFilter, sortAscending, 68);
PLACE(ZoxFilter, perCategory, 72);
PLACE(ZoxFilter, useDateRange, 76);
PLACE(ZoxFilter, dateFrom, 80);
PLACE(ZoxFilter, dateTo, 88);
PLACE(ZoxFilter, groupIdList, 96);
PLACE(ZoxFilter, statusList, 104);

SIZE(ZOXFilterObject, 112);
PLACE(ZOXFilterObject, parent, 0);
PLACE(ZOXFilterObject, lock, 24);
PLACE(ZOXFilterObject, filter, 104);

SIZE(ZOXFilterlist, 120);
PLACE(ZOXFilterlist, parent, 0);
PLACE(ZOXFilterlist, lock, 24);
PLACE(ZOXFilterlist, filters, 104);
PLACE(ZOXFilterlist, activeFilter, 112);

SIZE(ZoxForum, 16);
PLACE(ZoxForum, reactions, 0);
PLACE(ZoxForum, stamp, 8);

SIZE(ZoxReactie, 56);
PLACE(ZoxReactie, messId, 0);
PLACE(ZoxReactie, author, 8);
PLACE(ZoxReactie, body, 16);
PLACE(ZoxReactie, stamp, 24);
PLACE(ZoxReactie, edit, 32);
PLACE(ZoxReactie, kudos, 40);
PLACE(ZoxReactie, reply, 44);
PLACE(ZoxReactie, avatar, 48);

SIZE(ZoxBericht, 40);
PLACE(ZoxBericht, from, 0);
PLACE(ZoxBericht, subject, 8);
PLACE(ZoxBericht, body, 16);
PLACE(ZoxBericht, stamp, 24);
PLACE(ZoxBericht, code, 32);

SIZE(ZoxProfile, 120);
PLACE(ZoxProfile, name, 0);
PLACE(ZoxProfile, stamp, 8);
PLACE(ZoxProfile, posts, 16);
PLACE(ZoxProfile, spots, 20);
PLACE(ZoxProfile, kudos, 24);
PLACE(ZoxProfile, kudosGiven, 28);
PLACE(ZoxProfile, kudosReceived, 32);
PLACE(ZoxProfile, rank, 36);
PLACE(ZoxProfile, email, 40);
PLACE(ZoxProfile, info, 48);
PLACE(ZoxProfile, avatar, 56);
PLACE(ZoxProfile, status, 64);
PLACE(ZoxProfile, site, 72);
PLACE(ZoxProfile, im, 80);
PLACE(ZoxProfile, isp, 88);
PLACE(ZoxProfile, newsServer, 96);
PLACE(ZoxProfile, hobby, 104);
PLACE(ZoxProfile, profileStatus, 112);

SIZE(ZoxMyzoxPost, 112);
PLACE(ZoxMyzoxPost, postId, 0);
PLACE(ZoxMyzoxPost, stamp, 8);
PLACE(ZoxMyzoxPost, canEdit, 16);
PLACE(ZoxMyzoxPost, title, 24);
PLACE(ZoxMyzoxPost, groups, 32);
PLACE(ZoxMyzoxPost, fName, 40);
PLACE(ZoxMyzoxPost, status, 48);
PLACE(ZoxMyzoxPost, poster, 56);
PLACE(ZoxMyzoxPost, link, 64);
PLACE(ZoxMyzoxPost, cat, 72);
PLACE(ZoxMyzoxPost, sCat, 76);
PLACE(ZoxMyzoxPost, updated, 80);
PLACE(ZoxMyzoxPost, kudos, 88);
PLACE(ZoxMyzoxPost, forum, 92);
PLACE(ZoxMyzoxPost, reps, 96);
PLACE(ZoxMyzoxPost, reqs, 100);
PLACE(ZoxMyzoxPost, rating, 104);
PLACE(ZoxMyzoxPost, mod, 108);

SIZE(VelkorDBusObject, 40);
PLACE(VelkorDBusObject, parent, 0);
PLACE(VelkorDBusObject, dbusArgument, 24);
PLACE(VelkorDBusObject, isGui, 32);

G_GNUC_END_IGNORE_DEPRECATIONS
