/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_http_parameter.h>

#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"

using namespace velkor;

extern "C" {

ZoxHttpParameter *zox_http_parameter_new(const char *name, const char *value) {
  ZOX_ASSERT(name);
  ZOX_ASSERT(value);
  auto *parameter = g_new(ZoxHttpParameter, 1);
  *parameter = {.paramName = g_string_new(name), .paramValue = g_string_new(value)};
  return parameter;
}

void zox_http_parameter_free(ZoxHttpParameter *parameter) {
  ZOX_ASSERT(parameter);
  ZOX_ASSERT(parameter->paramName);
  ZOX_ASSERT(parameter->paramValue);
  free_string(parameter->paramName);
  free_string(parameter->paramValue);
  g_free(parameter);
}

void zox_http_parameter_free_all(GSList *list) {
  const OwnedCells cells(list);
  for (ZoxHttpParameter *param : Items<ZoxHttpParameter>(list)) {
    ZOX_ASSERT(param);
    zox_http_parameter_free(param);
  }
}

}  // extern "C"
