# Warnings, sanitizers and paths that hold for every target.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wformat=2
                    -Wundef -Wcast-align -Wnull-dereference
                    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
                    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
                    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>)
if(VELKOR_WERROR)
  add_compile_options(-Werror)
endif()

# Assertions and debugging information name files relative to the project, and programs find the
# library relative to themselves: the same sources give the same bytes, wherever they are built.
set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
add_compile_options($<${optimised}:-ffile-prefix-map=${PROJECT_BINARY_DIR}=.>
                    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# What is built for use is hardened. Sanitizers do the work of these checks, and more.
include(CheckPIESupported)
check_pie_supported()
if(VELKOR_HARDENING AND NOT VELKOR_SANITIZE)
  set(hardening -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE
                -D_FORTIFY_SOURCE=2)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|i.86")
    list(APPEND hardening -fcf-protection)
  endif()
  add_compile_options("$<${optimised}:${hardening}>")
  add_link_options("$<${optimised}:LINKER:-z,relro,-z,now,-z,noexecstack>")
endif()

if(VELKOR_SANITIZE)
  add_compile_options(-fsanitize=${VELKOR_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VELKOR_SANITIZE})
endif()
if(VELKOR_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(VELKOR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
