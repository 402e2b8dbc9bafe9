# Writes the files of the page as string constants: cmake -DDIRECTORY= -DOUTPUT= -P embed.cmake
set(text "// Made from page.css, page.js and page.xsl.\n#pragma once\n\n#include <string_view>\n\nnamespace velkor::ctl {\n\n")
foreach(kind css js xsl)
  file(READ ${DIRECTORY}/page.${kind} content)
  string(APPEND text "inline constexpr std::string_view page_${kind} = R\"__page__(${content})__page__\";\n\n")
endforeach()
string(APPEND text "}  // namespace velkor::ctl\n")
file(WRITE ${OUTPUT} "${text}")
