/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/certificates.h"

#include <stdexcept>
#include <vector>

#include "tests/support/child_process.h"

namespace velkor::test {
namespace {

void openssl(std::vector<std::string> words) {
  words.insert(words.begin(), "openssl");
  if (const ProcessResult result = run_program(words); result.status != 0)
    throw std::runtime_error("openssl fails: " + result.err);
}

/** A request for a certificate, or one that signs itself, with a new key. */
std::vector<std::string> with_new_key(const std::string &name, const std::filesystem::path &key,
                                      const std::filesystem::path &output) {
  return {"req",    "-newkey", "ec",          "-pkeyopt", "ec_paramgen_curve:prime256v1",
          "-nodes", "-subj",   "/CN=" + name, "-keyout",  key,
          "-out",   output};
}

}  // namespace

CertificateAuthority::CertificateAuthority() {
  std::vector<std::string> words =
      with_new_key("Velkor test authority", file("authority.key"), certificate());
  words.insert(words.end(), {"-x509", "-days", "2"});
  openssl(words);
}

ServerCertificate CertificateAuthority::sign(const std::string &name, int days) {
  const std::string stem = "server" + std::to_string(++signed_);
  ServerCertificate made{file(stem + ".pem"), file(stem + ".key")};
  openssl(with_new_key("Velkor test server", made.key, file("request")));
  write_file(file("extensions"), "subjectAltName=" + name + "\nbasicConstraints=CA:FALSE\n");
  openssl({"x509", "-req", "-in", file("request"), "-CA", certificate(), "-CAkey",
           file("authority.key"), "-extfile", file("extensions"), "-days", std::to_string(days),
           "-out", made.certificate});
  return made;
}

}  // namespace velkor::test
