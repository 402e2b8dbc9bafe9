# Removes the files of the last installation and the directories that it made, as far as they are
# empty. usage: cmake -DBUILD=<build directory> -P Uninstall.cmake
set(manifest ${BUILD}/install_manifest.txt)
set(directory_list ${BUILD}/install_directories.txt)
if(NOT EXISTS ${manifest})
  message(FATAL_ERROR "nothing has been installed from ${BUILD}")
endif()

file(STRINGS ${manifest} files)
foreach(file IN LISTS files)
  file(REMOVE "$ENV{DESTDIR}${file}")
endforeach()

file(STRINGS ${directory_list} directories)
list(SORT directories ORDER DESCENDING) # what is inside comes before what it is in
foreach(directory IN LISTS directories)
  file(GLOB entries "$ENV{DESTDIR}${directory}/*" "$ENV{DESTDIR}${directory}/.*")
  if(IS_DIRECTORY "$ENV{DESTDIR}${directory}" AND NOT entries)
    file(REMOVE_RECURSE "$ENV{DESTDIR}${directory}")
  endif()
endforeach()
file(REMOVE ${manifest} ${directory_list})
