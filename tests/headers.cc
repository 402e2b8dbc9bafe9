/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Nothing but the headers that every test begins with, which are compiled once for all of them. */
