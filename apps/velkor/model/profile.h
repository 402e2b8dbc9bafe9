/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The public profile of a user of the service. */
#ifndef VELKOR_APP_MODEL_PROFILE_H
#define VELKOR_APP_MODEL_PROFILE_H

#include <cstdint>
#include <string>

namespace velkor::app {

/** As the server states it; what it does not tell is empty or 0. */
struct Profile {
  std::string name{};
  std::int64_t stamp = 0;
  std::uint32_t posts = 0;
  std::uint32_t spots = 0;
  std::uint32_t kudos = 0;
  std::uint32_t kudos_given = 0;
  std::uint32_t kudos_received = 0;
  std::uint32_t rank = 0;
  std::string info{};
  std::string site{};
  std::string email{};
  std::string messenger{};
  std::string provider{};
  std::string news_server{};
  std::string hobby{};
};

}  // namespace velkor::app

#endif
