/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Prints velkor.conf(5), with every setting that the library knows. */
#include <iostream>
#include <string>
#include <string_view>

#include <velkor/zox_settings.h>

namespace {

constexpr std::string_view beginning = R"(.\" SPDX-License-Identifier: LGPL-2.1-or-later
.TH VELKOR.CONF 5 "2026-11-21" "velkor )" VELKOR_VERSION R"(" "File Formats"
.SH NAME
velkor.conf \- settings of the client for the ZOX service
.SH SYNOPSIS
.I ~/.velkor/velkor.conf
.SH DESCRIPTION
The file holds the settings that the desktop front end,
.BR velkorctl (1)
and other programs on the library share: one line
.IR key = value
for each setting, in UTF-8, without quotes; white space around key and value does
not count.
A list of texts has a line for each of them, all with the same key.
A line without an equals sign says nothing.
A line with an unknown key, and a comment with an equals sign, brings a warning.
Of a line, 1023 bytes are read.
.PP
The library writes the whole file anew, in a fixed order and without comments,
whenever it saves the settings: while a program is running, change them with
.BR "velkorctl config" .
A new file takes the place of the old one at once, so that it is never half
written.
The file holds a password unless the keyring of the desktop does
.RB ( "velkorctl account keep keyring" ),
and only its owner can read it; wider permissions are narrowed with a warning.
.PP
A setting that is missing has its default.
What the front end alone acts on is marked so; the library keeps it.
.SH SETTINGS
)";

constexpr std::string_view end = R"(.SH EXAMPLE
.nf
username=ann
password=secret
verwijderPostsNaXDagen=3
badword=trailer
badword=sample
.fi
.SH SEE ALSO
.BR velkorctl (1)
)";

/** The text with what troff would take for its own made harmless. */
std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : text) {
    if (character == '\\' || character == '-')
      result += '\\';
    result += character;
  }
  return result;
}

std::string unit_of(const ZoxSetting &setting) {
  switch (setting.unit) {
  case ZOX_SETTING_DAYS:
    return " days";
  case ZOX_SETTING_SECONDS:
    return " seconds";
  case ZOX_SETTING_NO_UNIT:
    break;
  }
  return "";
}

/** What the numbers of a choice stand for: "0 for 7, 1 for 14 days". */
std::string choices_of(const ZoxSetting &setting) {
  std::string text;
  for (gint64 number = 0; number <= setting.highest; ++number)
    text += (number == 0 ? "" : ", ") + std::to_string(number) + " for " +
            std::to_string(setting.choices[number]);
  return text + unit_of(setting);
}

std::string range_of(const ZoxSetting &setting) {
  if (setting.highest == 0)
    return unit_of(setting);
  return " from " + std::to_string(setting.lowest) + " to " + std::to_string(setting.highest) +
         unit_of(setting);
}

/** What a value is: "a number from 1 to 100". */
std::string values_of(const ZoxSetting &setting) {
  switch (setting.type) {
  case ZOX_SETTING_TEXT:
    return setting.highest == 0 ? "a text" : "a number" + range_of(setting);
  case ZOX_SETTING_SECRET:
    return "a text, which no program shows unasked";
  case ZOX_SETTING_FLAG:
    return "1 for yes, 0 for no";
  case ZOX_SETTING_NUMBER:
  case ZOX_SETTING_COUNT:
    return "a number" + range_of(setting);
  case ZOX_SETTING_CHOICE:
    return choices_of(setting);
  case ZOX_SETTING_TIME:
    return "seconds since 1970 in UTC, 0 for never";
  case ZOX_SETTING_TEXT_LIST:
    return setting.highest == 0 ? "texts, a line each" : "numbers, a line each";
  case ZOX_SETTING_SPLIT_LIST:
    return "numbers on one line, separated by |";
  case ZOX_SETTING_NUMBER_LIST:
    return "numbers" + range_of(setting) + ", a line each";
  }
  return "";
}

std::string default_of(const ZoxSetting &setting) {
  if (setting.defaultText == nullptr)
    return "none";
  return *setting.defaultText == '\0' ? "empty" : setting.defaultText;
}

void print(const ZoxSetting &setting) {
  std::cout << ".TP\n.B " << setting.key << '\n'
            << escaped(setting.description) << '\n'
            << "Value: " << escaped(values_of(setting)) << ".\n"
            << "Default: " << escaped(default_of(setting)) << ".\n";
  if (setting.readOnly != 0)
    std::cout << "The server gives it; it cannot be set.\n";
  if (setting.user == ZOX_SETTING_FRONT_END)
    std::cout << "Only the front end acts on it.\n";
}

}  // namespace

int main() {
  std::cout << beginning;
  for (guint32 index = 0; index < zox_settings_count(); ++index)
    print(*zox_settings_at(index));
  std::cout << end;
  return std::cout.flush() ? 0 : 1;
}
