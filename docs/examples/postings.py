#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Prints the cached postings whose title holds a text, through the C interface and ctypes.

usage: postings.py TEXT [CACHE_DIRECTORY]
"""
import ctypes
import sys

SETTINGS, FILTERS, TABLES, POSTINGS = 1, 2, 4, 16  # ZoxCorePart


class GString(ctypes.Structure):
    _fields_ = [("str", ctypes.c_char_p), ("len", ctypes.c_size_t)]


class ZoxEvent(ctypes.Structure):
    """The fields as far as they are used here; the library makes the records."""

    _fields_ = [("postId", ctypes.c_int32), ("stamp", ctypes.c_int64), ("updated", ctypes.c_int64),
                ("status", ctypes.c_int32), ("fName", ctypes.POINTER(GString)),
                ("title", ctypes.POINTER(GString))]


class ZoxCoreOptions(ctypes.Structure):
    _fields_ = [("dataDir", ctypes.c_char_p), ("cacheDir", ctypes.c_char_p),
                ("libDir", ctypes.c_char_p), ("parts", ctypes.c_uint32),
                ("readOnly", ctypes.c_int32), ("dbusArgument", ctypes.c_char_p),
                ("isGui", ctypes.c_int32)]


Visitor = ctypes.CFUNCTYPE(None, ctypes.POINTER(ZoxEvent), ctypes.c_void_p)

velkor = ctypes.CDLL("libvelkor.so.0")
glib = ctypes.CDLL("libglib-2.0.so.0")
gobject = ctypes.CDLL("libgobject-2.0.so.0")
glib.g_free.argtypes = [ctypes.c_void_p]
gobject.g_object_unref.argtypes = [ctypes.c_void_p]
velkor.zox_set_tolerant.argtypes = [ctypes.c_int32]
velkor.zox_app_core_open.argtypes = [ctypes.POINTER(ZoxCoreOptions), ctypes.POINTER(ctypes.c_void_p)]
velkor.zox_eventlist_get.restype = ctypes.c_void_p
velkor.zox_eventlist_visit.argtypes = [ctypes.c_void_p, ctypes.c_int32, Visitor, ctypes.c_void_p]
velkor.zox_eventlist_visit.restype = None


def open_core(cache):
    """Opens the library for reading only; it changes no file."""
    options = ZoxCoreOptions(cacheDir=cache, parts=SETTINGS | FILTERS | TABLES | POSTINGS, readOnly=1)
    message = ctypes.c_void_p()
    velkor.zox_set_tolerant(1)
    if velkor.zox_app_core_open(ctypes.byref(options), ctypes.byref(message)) != 0:
        text = ctypes.string_at(message.value).decode()
        glib.g_free(message)
        sys.exit(text)


def titles():
    """The id and title of every posting; what Python keeps is a copy."""
    found = []

    @Visitor
    def visit(event, _):
        title = event.contents.title
        if title:
            found.append((event.contents.postId, title.contents.str.decode(errors="replace")))

    postings = velkor.zox_eventlist_get()
    velkor.zox_eventlist_visit(postings, 0, visit, None)
    gobject.g_object_unref(postings)
    return sorted(found)


def main(text, cache=None):
    open_core(cache and cache.encode())
    for number, title in titles():
        if text.casefold() in title.casefold():
            print(number, title)
    velkor.zox_app_core_close()


if __name__ == "__main__":
    main(*sys.argv[1:])
