# Everything the project builds on, each as one imported target.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

pkg_check_modules(glib REQUIRED IMPORTED_TARGET glib-2.0>=2.74 gobject-2.0 gmodule-2.0)
pkg_check_modules(libxml REQUIRED IMPORTED_TARGET libxml-2.0>=2.9.14)
pkg_check_modules(curl REQUIRED IMPORTED_TARGET libcurl)
pkg_check_modules(zlib REQUIRED IMPORTED_TARGET zlib)
pkg_check_modules(dbusglib REQUIRED IMPORTED_TARGET dbus-glib-1 dbus-1)
pkg_check_modules(soup REQUIRED IMPORTED_TARGET libsoup-3.0)
pkg_check_modules(sqlite REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(jsonglib REQUIRED IMPORTED_TARGET json-glib-1.0)
pkg_check_modules(xslt REQUIRED IMPORTED_TARGET libxslt)
find_package(CLI11 REQUIRED)
