/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The words from which titles, names and newsgroups are generated. */
#ifndef ZOX_SERVER_SAMPLE_DATA_WORDS_H
#define ZOX_SERVER_SAMPLE_DATA_WORDS_H

#include <array>
#include <string_view>

namespace velkor::server::words {

inline constexpr std::array<std::string_view, 28> dutch_adjectives{
    "Stille",     "Vergeten", "Koperen", "Laatste",     "Blauwe",   "Verdwenen", "Zilveren",
    "Eigenwijze", "Mistige",  "Gouden",  "Onzichtbare", "Verre",    "Houten",    "Zoute",
    "Dappere",    "Naamloze", "Groene",  "Slapende",    "Krakende", "Vrolijke",  "Gebroken",
    "Verlegen",   "Tweede",   "Donkere", "Roestige",    "Geheime",  "Warme",     "Moeë"};

inline constexpr std::array<std::string_view, 32> dutch_nouns{
    "Vuurtoren",    "Molen",         "Brievenbus",     "Sluiswachter",  "Horlogemaker",
    "Dijkgraaf",    "Kwartelvanger", "Bakfiets",       "Haven",         "Zolder",
    "Kaartenmaker", "IJsvogel",      "Toverlantaarn",  "Klokkengieter", "Reünie",
    "Uil",          "Stoomtrein",    "Kasteeltuin",    "Veerboot",      "Drempel",
    "Wadloper",     "Zeeën",         "Kraanmachinist", "Sterrenwacht",  "Notaris",
    "Pannenkoek",   "Getijden",      "Bibliotheek",    "Erfenis",       "Coöperatie",
    "Spiegelzaal",  "Ganzenhoeder"};

inline constexpr std::array<std::string_view, 24> english_adjectives{
    "Silent", "Crooked", "Amber",  "Borrowed", "Hollow",  "Northern",  "Paper",    "Restless",
    "Second", "Velvet",  "Wooden", "Distant",  "Gentle",  "Hidden",    "Electric", "Unlikely",
    "Frozen", "Curious", "Copper", "Midnight", "Painted", "Reluctant", "Salted",   "Wandering"};

inline constexpr std::array<std::string_view, 28> english_nouns{
    "Harbour",  "Teapot",    "Lantern",     "Cartographer", "Orchard", "Signal",    "Staircase",
    "Ferryman", "Compass",   "Weathervane", "Archive",      "Meadow",  "Umbrella",  "Postmaster",
    "Tide",     "Clockwork", "Gardener",    "Border",       "Kettle",  "Passenger", "Chimney",
    "Mirror",   "Courier",   "Lighthouse",  "Bicycle",      "Parade",  "Attic",     "Quarry"};

inline constexpr std::array<std::string_view, 18> places{"Oosterwolde-Noord",
                                                         "Zandhuizen",
                                                         "Café Zonneschijn",
                                                         "Sint-Egmarus",
                                                         "Krabbenveer",
                                                         "Malmø-Oost",
                                                         "Grünwinkel",
                                                         "Puddlemere",
                                                         "São Verano",
                                                         "Lage Vuurbaan",
                                                         "Kůňov",
                                                         "Het Zoute Gat",
                                                         "Overdiepen",
                                                         "Ölandstraat",
                                                         "de Drie Bruggen",
                                                         "Nergenshuizen",
                                                         "Windhoek aan Zee",
                                                         "Żabno-Zuid"};

inline constexpr std::array<std::string_view, 16> episode_titles{"Het Verraad",
                                                                 "De Terugkeer",
                                                                 "Wie Niet Waagt",
                                                                 "Zout & Zand",
                                                                 "Drie > Twee",
                                                                 "'s Nachts Alleen",
                                                                 "Een Brief uit \"Parijs\"",
                                                                 "The Long Way Round",
                                                                 "Nothing Left <to> Lose",
                                                                 "De Knoop",
                                                                 "Water & Vuur",
                                                                 "Onder de Klok",
                                                                 "A Window Ajar",
                                                                 "Geen Weg Terug",
                                                                 "Middernacht",
                                                                 "Het Laatste Lampje"};

inline constexpr std::array<std::string_view, 14> band_words{
    "Orkest",     "Trio",       "Fanfare", "Brothers & Sisters", "Ensemble",
    "Kwintet",    "Collective", "Band",    "Harmonie",           "Sound Machine",
    "Gezelschap", "Choir",      "Sextet",  "Straatmuzikanten"};

inline constexpr std::array<std::string_view, 16> program_words{
    "Poetser", "Wever", "Loom",  "Schrijver",  "Keeper", "Meter",   "Zoeker", "Brander",
    "Knipper", "Guard", "Mixer", "Sorteerder", "Viewer", "Planner", "Reader", "Spiegel"};

inline constexpr std::array<std::string_view, 16> program_subjects{
    "Schijf", "Foto", "Klank", "Nieuws", "Photo", "Disk", "Sound", "Usenet",
    "Scherm", "Mail", "Film",  "Tekst",  "Video", "Font", "Route", "Data"};

inline constexpr std::array<std::string_view, 8> editions{"Pro",   "Deluxe", "Gold",   "NL",
                                                          "Multi", "Lite",   "Studio", "Portable"};

inline constexpr std::array<std::string_view, 12> name_starts{
    "Nacht", "Dijk",   "Zilver", "Mos",    "Kwartel", "Storm",
    "Pixel", "Wolken", "Regen",  "Kiezel", "Spot",    "Bits"};

inline constexpr std::array<std::string_view, 12> name_ends{
    "uil",     "loper",  "vos",    "mees",   "wachter", "kikker",
    "brouwer", "zoeker", "visser", "ganger", "piraat",  "molenaar"};

inline constexpr std::array<std::string_view, 16> sentences{
    "Alles is getest en compleet.",
    "De eerste tien minuten zijn wat donker, daarna is het beeld prima.",
    "Met dank aan de oorspronkelijke plaatser!",
    "Voldoende pars meegeplaatst, bij problemen graag even een reactie.",
    "Ondertitels zitten er los bij.",
    "Wachtwoord is niet nodig; uitpakken & genieten.",
    "De kwaliteit is goed, zeker voor z'n leeftijd.",
    "Enjoy, and leave a comment if you like it.",
    "Bevat ook het <bonus>materiaal>.",
    "Op verzoek van een aantal mensen opnieuw geplaatst.",
    "Let op: deel 2 volgt later deze week.",
    "Hoesjes en een index zijn toegevoegd.",
    "Getest op twee verschillende systemen, geen problemen gevonden.",
    "Het geluid is stereo, 48 kHz.",
    "Reacties worden gewaardeerd, ook als 't tegenvalt…",
    "Veel plezier ermee!"};

inline constexpr std::array<std::string_view, 12> reactions{
    "Bedankt voor het plaatsen!",
    "Top, dit zocht ik al een tijd.",
    "Bij mij ontbreekt bestand 7, iemand een fill?",
    "Thanks!",
    "Kwaliteit is prima, alleen het geluid loopt iets achter.",
    "Werkt goed & snel.",
    "Is deel 2 er ook al?",
    "Kudos gegeven :-)",
    "Helaas niet compleet bij mijn provider <zucht>.",
    "Geweldig, dank je wel!\nDe hoesjes kloppen ook.",
    "Staat er ook een versie met ondertitels?",
    "Mooi gedaan hoor…"};

inline constexpr std::array<std::string_view, 10> free_tags{
    "herpost",        "compleet", "op verzoek", "NL gesproken", "live",
    "director's cut", "seizoen",  "klassieker", "test & try",   "zeldzaam"};

inline constexpr std::array<std::string_view, 6> removal_reasons{
    "Dubbele plaatsing",          "Niet compleet",        "Verkeerde categorie",
    "Op verzoek van de plaatser", "Bevat een wachtwoord", "Spam & misleidende titel"};

inline constexpr std::array<std::string_view, 8> hobbies{
    "vogels kijken", "fietsen & wandelen", "oude radio's", "koken",
    "schaken",       "modeltreinen",       "muziek maken", "sterren kijken"};

inline constexpr std::array<std::string_view, 3> signatures{"-- \nGroeten uit de polder",
                                                            "Deel wat je hebt, vraag wat je zoekt.",
                                                            "~ geplaatst met liefde & koffie ~"};

/** The subjects of newsgroups, one row per main category. */
inline constexpr std::array<std::array<std::string_view, 20>, 4> newsgroup_subjects{{
    {"kortefilm",     "series",       "documentaires", "animatie",  "theater",
     "natuur",        "reizen",       "stomme-film",   "jeugdfilm", "sportbeelden",
     "experimenteel", "hdbeeld",      "afbeeldingen",  "trailers",  "interviews",
     "toneel",        "geschiedenis", "regio",         "komedie",   "spanning"},
    {"klassiek", "hoorspelen",  "dansmuziek",   "jazz",        "kinderliedjes",
     "koren",    "fanfares",    "wereldmuziek", "gitaar",      "piano",
     "orgel",    "lossless",    "radio",        "volksmuziek", "rock",
     "soul",     "compilaties", "soundtracks",  "cabaret",     "luisterboeken"},
    {"puzzels",  "strategie",   "avontuur",    "race",          "handhelds",
     "consoles", "klassiekers", "rollenspel",  "sport",         "simulatie",
     "jeugd",    "bordspelen",  "levels",      "demos",         "patches",
     "mods",     "muziek",      "vertalingen", "handleidingen", "indie"},
    {"audio",     "video",   "grafisch",    "kantoor",      "systeem",
     "netwerk",   "drivers", "browsers",    "mail",         "usenet",
     "navigatie", "pda",     "beveiliging", "lettertypen",  "ontwikkeling",
     "onderwijs", "talen",   "archivering", "screensavers", "database"},
}};

inline constexpr std::array<std::string_view, 4> newsgroup_roots{"beeld", "geluid", "spellen",
                                                                 "programmas"};
inline constexpr std::array<std::string_view, 4> newsgroup_ends{"", ".nl", ".herpost", ".groot"};

}  // namespace velkor::server::words

#endif
