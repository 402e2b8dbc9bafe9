/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_app_core.h>

#include <map>
#include <string>

#include <gtest/gtest.h>

#include "core/app_core.h"
#include "support/owned.h"
#include "tests/support/core_fixture.h"

namespace velkor {
namespace {

std::string message(ZoxErrorCode code, const char *server_text = nullptr) {
  const OwnedText text(zox_error_msg(code, server_text));
  return text.get();
}

TEST(ZoxErrorMsg, HasASentenceForEachCode) {
  const std::map<ZoxErrorCode, std::string> sentences{
      {0, "Geen fout opgetreden"},
      {1, "Onbekende fout opgetreden"},
      {2, "Ongeldige username/wachtwoord opgegeven"},
      {3, "Je bent verbannen van de ZOX server"},
      {4, "Database-storing op de ZOX server"},
      {5, "Geen nieuwe ZOX postings sinds laatste update"},
      {6, "Plugins worden niet ondersteund op dit platform"},
      {7, "Locatie van http auth plugin onbekend"},
      {8, "Laden van http auth plugin mislukt"},
      {9, "Uitvoeren van http auth plugin mislukt"},
      {10, "Onbekende uitvoer van ZOX server ontvangen"},
      {11, "Er is een fout opgetreden tijdens het parsen van de ontvangen gegevens"},
      {12, "Kan originele ZOX event niet vinden in de lokale cache"},
      {13, "Geen data van de ZOX server ontvangen"},
      {15, "Kan dns naam van de proxy server niet resolven"},
      {16, "Connection refused"},
      {17, "Fout tijdens het lezen van data van de ZOX server"},
      {18, "Fout tijdens het versturen van data naar de ZOX server"},
      {19, "Timeout opgetreden in de communicatie tussen Velkor en de ZOX server"},
      {21, "Er is reeds iemand geregistreerd met de opgegeven gebruikersnaam"},
      {22, "Het huidige IP adres is verbannen van de ZOX server"},
      {23, "Er is in de laatste 48 uur iemand ingelogd met een geldig ZOX account vanaf je huidige "
           "IP adres"},
      {27, "Er is een nieuwe versie van ZOX beschikbaar. Gelieve te updaten"},
      {28, "Er is in de afgelopen 10 minuten reeds een update uitgevoerd"},
      {30, "Gegevens van de opgevraagde ZOX posting zijn niet meer beschikbaar op de ZOX server"}};
  for (const auto &[code, sentence] : sentences)
    EXPECT_EQ(message(code), sentence) << code;
}

TEST(ZoxErrorMsg, PassesOnTheServersNotice) {
  EXPECT_EQ(message(29, "Onderhoud"), "Servermededeling ontvangen: Onderhoud");
  EXPECT_EQ(message(29, "100%s"), "Servermededeling ontvangen: 100%s");
  EXPECT_EQ(message(29), "Servermededeling ontvangen: ");
}

TEST(ZoxErrorMsg, KnowsNoSentenceForTheOtherCodes) {
  for (const ZoxErrorCode code : {20U, 24U, 25U, 26U, 31U, 32U, 33U, 1000U, G_MAXUINT32})
    EXPECT_EQ(message(code), "Onbekende errcode!\n") << code;
}

TEST(Tolerance, IsOffUntilSwitchedOn) {
  EXPECT_FALSE(tolerant());
  zox_set_tolerant(1);
  EXPECT_TRUE(tolerant());
  zox_set_tolerant(0);
  EXPECT_FALSE(tolerant());
}

class ZoxAppCoreTest : public test::CoreTest {};

TEST_F(ZoxAppCoreTest, IsFirstTimeWhileTheSettingsSaySo) {
  EXPECT_EQ(zox_app_core_is_first_time(), 1U);
  core->config->firstTime = 0;
  EXPECT_EQ(zox_app_core_is_first_time(), 0U);
}

TEST_F(ZoxAppCoreTest, HandsOutItsObjectsWithAReference) {
  const OwnedObject<GObject> filterlist(
      static_cast<GObject *>(g_object_new(G_TYPE_OBJECT, nullptr)));
  const OwnedObject<GObject> eventlist(
      static_cast<GObject *>(g_object_new(G_TYPE_OBJECT, nullptr)));
  core->filterlist = reinterpret_cast<ZOXFilterlist *>(filterlist.get());
  core->eventlist = reinterpret_cast<ZOXEventlist *>(eventlist.get());
  const OwnedObject<ZOXFilterlist> one(zox_filterlist_get());
  const OwnedObject<ZOXEventlist> other(zox_eventlist_get());
  EXPECT_EQ(one.get(), core->filterlist);
  EXPECT_EQ(other.get(), core->eventlist);
  EXPECT_EQ(filterlist->ref_count, 2U);
  EXPECT_EQ(eventlist->ref_count, 2U);
  core->filterlist = nullptr;
  core->eventlist = nullptr;
}

TEST(ZoxAppCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_app_core_is_first_time(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_filterlist_get(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_eventlist_get(), "assertion failed: \\(core\\)");
}

using ZoxAppCoreSettingsDeathTest = test::CoreTest;

TEST_F(ZoxAppCoreSettingsDeathTest, NeedsSettings) {
  zox_config_free();
  EXPECT_DEATH(zox_app_core_is_first_time(), "assertion failed: \\(core->config\\)");
}

}  // namespace
}  // namespace velkor
