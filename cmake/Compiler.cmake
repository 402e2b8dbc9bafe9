# Warnings, sanitizers and paths that hold for every target.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wformat=2
                    -Wundef -Wcast-align -Wnull-dereference
                    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
                    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
                    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>)
if(VELKOR_WERROR)
  add_compile_options(-Werror)
endif()

# Assertions name their source file: relative to the project, wherever it was built.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)

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
