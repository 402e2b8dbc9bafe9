/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A certificate authority for one test, and what it signs. */
#ifndef VELKOR_TESTS_SUPPORT_CERTIFICATES_H
#define VELKOR_TESTS_SUPPORT_CERTIFICATES_H

#include <filesystem>
#include <string>

#include "tests/support/sandbox.h"

namespace velkor::test {

/** The PEM files of a server. */
struct ServerCertificate {
  std::filesystem::path certificate;
  std::filesystem::path key;
};

/** Made anew with a key of its own; its files go with it. */
class CertificateAuthority {
public:
  CertificateAuthority();

  /** The certificate with which it vouches for others. */
  [[nodiscard]] std::filesystem::path certificate() const { return file("authority.pem"); }

  /**
   * Signs a certificate for a server.
   * @param name "IP:ADDRESS" or "DNS:HOST"
   * @param days how long it is valid; negative for one that has expired
   */
  [[nodiscard]] ServerCertificate sign(const std::string &name = "IP:127.0.0.1", int days = 2);

private:
  [[nodiscard]] std::filesystem::path file(const std::string &name) const {
    return directory_.path() / name;
  }

  TemporaryDirectory directory_;
  int signed_ = 0;
};

}  // namespace velkor::test

#endif
