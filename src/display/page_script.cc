/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "display/parts.h"

#include <velkor/zox_file.h>
#include <velkor/zox_string.h>

#include "support/assertion.h"

namespace velkor {
namespace {

/** Each "%s" stands for the data directory. Style sheets call the functions by their names. */
constexpr std::string_view page_script = R"js(		<WatchlistJS><![CDATA[<SCRIPT>
if (document.images)
{
        PL1 = new Image(); PL1.src = "file://%s/images/ptr1.gif";
        PL2 = new Image(); PL2.src = "file://%s/images/ptr2.gif";
}

function ptr(mode,position)
{
        if (mode == 0) document[position].src = PL1.src;
        if (mode == 1) document[position].src = PL2.src;
}

function dllist(mode,cat,imgsource)
{
        src = document['p'+imgsource].src;
        i = src.length-6;
        src = src.charAt( i );
        if( src == '1' || src == '3' ) {
           toggle = 0;
        }
        else {
           toggle = 1;
        }
        if (mode == 0) {
            if( toggle == 0 ) {
                 document['p'+imgsource].src = 'file://%s/images/dlb3'+cat+'.bmp';
            }
            else {
                 document['p'+imgsource].src = 'file://%s/images/dlb4'+cat+'.bmp';
            }
       }
        if (mode == 1) {
            if (toggle == 0)
            {
                document['p'+imgsource].src = 'file://%s/images/dlb1'+cat+'.bmp';
            } else {
                document['p'+imgsource].src = 'file://%s/images/dlb2'+cat+'.bmp';
            }
        }
        if (mode == 2) {
            if (toggle == 0) {
                document['p'+imgsource].src = 'file://%s/images/dlb2'+cat+'.bmp';
            } else {
                document['p'+imgsource].src = 'file://%s/images/dlb1'+cat+'.bmp';
            }
        }
}</SCRIPT>]]></WatchlistJS>
)js";

/** The data directory as it stands in an address. */
OwnedString data_directory() noexcept {
  const OwnedText path(zox_file_parse_data_dir(nullptr));
  const OwnedString path_tmp2(zox_string_new(path.get()));
  ZOX_ASSERT_IN(zox_events_sort, path_tmp2, "path_tmp2");
  const OwnedString path_tmp3(zox_string_replace(path_tmp2.get(), " ", "%20"));
  ZOX_ASSERT_IN(zox_events_sort, path_tmp3, "path_tmp3");
  OwnedString path_tmp4(zox_string_replace(path_tmp3.get(), "\\", "/"));
  ZOX_ASSERT_IN(zox_events_sort, path_tmp4, "path_tmp4");
  return path_tmp4;
}

}  // namespace

void add_page_script(TextWriter &out) noexcept {
  constexpr std::string_view placeholder = "%s";
  const OwnedString directory = data_directory();
  std::string_view rest = page_script;
  for (auto place = rest.find(placeholder); place != std::string_view::npos;
       place = rest.find(placeholder)) {
    out.add(rest.substr(0, place));
    out.add(directory->str);
    rest.remove_prefix(place + placeholder.size());
  }
  out.add(rest);
}

}  // namespace velkor
