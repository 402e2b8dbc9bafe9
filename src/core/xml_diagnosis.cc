/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/xml_diagnosis.h"

#include <cstdarg>

#include <libxml/xmlerror.h>

#include "support/xml.h"

namespace velkor {
namespace {

/** A document may hold a fault in every line; after this many bytes the rest adds nothing. */
constexpr gsize max_diagnosis_size = gsize{1} << 20;

thread_local OwnedString xmlParserErrorText;

}  // namespace

void begin_diagnosis(bool &installed) noexcept {
  xmlParserErrorText.reset();
  xml::initialize();
  if (!installed)
    xmlSetGenericErrorFunc(nullptr, xml_parser_error_func);
  installed = true;
}

OwnedText take_diagnosis() noexcept {
  if (!xmlParserErrorText)
    return nullptr;
  return OwnedText(g_string_free(xmlParserErrorText.release(), FALSE));
}

}  // namespace velkor

using namespace velkor;

extern "C" void xml_parser_error_func(void *, const char *format, ...) {
  if (!xmlParserErrorText)
    xmlParserErrorText.reset(g_string_new(nullptr));
  else if (xmlParserErrorText->len < max_diagnosis_size)
    g_string_append_c(xmlParserErrorText.get(), ' ');
  else
    return;
  va_list arguments;
  va_start(arguments, format);
  g_string_append_vprintf(xmlParserErrorText.get(), format, arguments);
  va_end(arguments);
}
