/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_app_core.h>

#include <array>
#include <atomic>

#include <glib-object.h>

#include "core/app_core.h"
#include "core/hosts.h"
#include "support/assertion.h"

namespace velkor {
namespace {

constexpr const char *unknown_code = "Onbekende errcode!\n";

/** The sentences by code; null where a code has none or one that is composed. */
constexpr std::array<const char *, 31> sentences{
    "Geen fout opgetreden",
    "Onbekende fout opgetreden",
    "Ongeldige username/wachtwoord opgegeven",
    "Je bent verbannen van de ZOX server",
    "Database-storing op de ZOX server",
    "Geen nieuwe ZOX postings sinds laatste update",
    "Plugins worden niet ondersteund op dit platform",
    "Locatie van http auth plugin onbekend",
    "Laden van http auth plugin mislukt",
    "Uitvoeren van http auth plugin mislukt",
    "Onbekende uitvoer van ZOX server ontvangen",
    "Er is een fout opgetreden tijdens het parsen van de ontvangen gegevens",
    "Kan originele ZOX event niet vinden in de lokale cache",
    "Geen data van de ZOX server ontvangen",
    nullptr,
    "Kan dns naam van de proxy server niet resolven",
    "Connection refused",
    "Fout tijdens het lezen van data van de ZOX server",
    "Fout tijdens het versturen van data naar de ZOX server",
    "Timeout opgetreden in de communicatie tussen Velkor en de ZOX server",
    nullptr,
    "Er is reeds iemand geregistreerd met de opgegeven gebruikersnaam",
    "Het huidige IP adres is verbannen van de ZOX server",
    "Er is in de laatste 48 uur iemand ingelogd met een geldig ZOX account vanaf je huidige IP "
    "adres",
    nullptr,
    nullptr,
    nullptr,
    "Er is een nieuwe versie van ZOX beschikbaar. Gelieve te updaten",
    "Er is in de afgelopen 10 minuten reeds een update uitgevoerd",
    nullptr,
    "Gegevens van de opgevraagde ZOX posting zijn niet meer beschikbaar op de ZOX server",
};

std::atomic<bool> is_tolerant{false};

}  // namespace

bool tolerant() noexcept {
  return is_tolerant;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxAppCore *core = nullptr;

guint32 zox_app_core_is_first_time(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  return core->config->firstTime;
}

ZOXFilterlist *zox_filterlist_get(void) {
  ZOX_ASSERT(core);
  return static_cast<ZOXFilterlist *>(g_object_ref(core->filterlist));
}

ZOXEventlist *zox_eventlist_get(void) {
  ZOX_ASSERT(core);
  return static_cast<ZOXEventlist *>(g_object_ref(core->eventlist));
}

char *zox_error_msg(ZoxErrorCode code, const char *serverText) {
  if (code == ZOX_RESULT_HOST_NOT_RESOLVED)
    return g_strdup_printf("Kan %s niet resolven", main_host().c_str());
  if (code == ZOX_RESULT_SERVER_NOTICE)
    return g_strdup_printf("Servermededeling ontvangen: %s",
                           serverText == nullptr ? "" : serverText);
  const char *sentence = code < sentences.size() ? sentences[code] : nullptr;
  return g_strdup(sentence == nullptr ? unknown_code : sentence);
}

void zox_set_tolerant(gint32 tolerant) {
  is_tolerant = tolerant != 0;
}

}  // extern "C"
