/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "taxonomy/tag_table.h"

#include <array>
#include <cstddef>

namespace velkor {
namespace {

template <std::size_t Count>
using Names = std::array<const char *, Count>;

// clang-format off
constexpr Names<6> picture_formats{
    "DivX", "WMV", "MPG", "DVD", "HDTV", "Afbeeldingen"};
constexpr Names<6> picture_sources{
    "CAM", "(S)VCD", "Promo-DVD", "Retail-DVD", "TV", "Anders"};
constexpr Names<6> picture_subtitles{
    "Geen", "Nederlands (los)", "Nederlands (ingebakken)", "Engels (los)", "Engels (ingebakken)",
    "Anders"};
constexpr Names<28> picture_genres{
    "Actie", "Avontuur", "Animatie", "Cabaret", "Komedie", "Misdaad", "Documentaire", "Drama",
    "Familiefilm", "Fantasiefilm", "Film Noir", "TV Shows/Series", "Horror", "Muziek", "Musical",
    "Mysterie", "Romantiek", "Science Fiction", "Sport", "Korte film", "Thriller", "Oorlog",
    "Western", "Erotiek (hetero)", "Erotiek (gay mannen)", "Erotiek (gay vrouwen)",
    "Erotiek (bi)", "Anders"};

constexpr Names<5> sound_formats{
    "MP3", "WMA", "WAV", "OGG", "Lossless"};
constexpr Names<5> sound_sources{
    "CD", "Radio", "Eigen compilatie", "DVD", "Anders"};
// "92kbit" is the service's own text.
constexpr Names<10> sound_bitrates{
    "variabele bitrate", "lager dan 96kbit", "92kbit", "128kbit", "160kbit", "192kbit", "256kbit",
    "320kbit", "Lossless", "Anders"};
constexpr Names<21> sound_genres{
    "Blues/Folk", "Compilaties/Box sets", "Cabaret", "Dance", "Diversen", "Hardcore/Hardstyle",
    "Internationaal", "Jazz", "Kinder/Jeugd", "Klassiek", "Kleinkunst", "Nederlands", "New Age",
    "Pop", "R&B/Soul", "Rap/Hip hop", "Reggae", "Religieus", "Rock", "Soundtracks/Musical",
    "Anders"};

constexpr Names<10> game_platforms{
    "Windows", "Macintosh", "Linux", "Playstation (PSX)", "Playstation 2 (PS2)",
    "Playstation Portable (PSP)", "XBox", "Dreamcast", "Gameboy Advance", "Gamecube"};
constexpr Names<5> game_formats{
    "ISO", "Rip", "DVD", "Addon", "Anders"};
constexpr Names<10> game_genres{
    "Actie", "Avontuur", "Strategie", "Rollenspel", "Simulatie", "Race", "Sport", "Kinder/Jeugd",
    "Puzzel", "Anders"};

constexpr Names<6> application_platforms{
    "Windows", "Macintosh", "Linux", "OS2", "PDA", "Navigatiesystemen"};
constexpr Names<26> application_genres{
    "Audio bewerking", "Video bewerking", "Grafisch design", "CD/DVD Tools", "Media spelers",
    "Rippers & Encoders", "Plugins", "Database tools", "Email software", "Fotobewerking",
    "Screensavers", "Skin software", "Drivers", "Browsers", "Download managers", "File sharing",
    "Usenet software", "RSS Readers", "FTP software", "Firewalls", "Antivirus software",
    "Antispyware software", "Optimalisatiesoftware", "Beveiligingssoftware", "Systeemsoftware",
    "Anders"};
// clang-format on

constexpr std::array<TagGroup, 13> groups{{
    {0, 'a', "Formaat", picture_formats},
    {0, 'b', "Bron", picture_sources},
    {0, 'c', "Ondertitels", picture_subtitles},
    {0, 'd', "Genre", picture_genres},
    {1, 'a', "Formaat", sound_formats},
    {1, 'b', "Bron", sound_sources},
    {1, 'c', "Bitrate", sound_bitrates},
    {1, 'd', "Genre", sound_genres},
    {2, 'a', "Platform", game_platforms},
    {2, 'b', "Formaat", game_formats},
    {2, 'c', "Genre", game_genres},
    {3, 'a', "Platform", application_platforms},
    {3, 'b', "Genre", application_genres},
}};

}  // namespace

std::span<const TagGroup> tag_groups() noexcept {
  return groups;
}

}  // namespace velkor
