/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/integration/server_test.h"

#include <memory>
#include <stdexcept>

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <zlib.h>

namespace velkor::test {
namespace {

struct Release {
  void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
  void operator()(xmlXPathContext *context) const { xmlXPathFreeContext(context); }
  void operator()(xmlXPathObject *object) const { xmlXPathFreeObject(object); }
  void operator()(xmlChar *text) const { xmlFree(text); }
};
using Document = std::unique_ptr<xmlDoc, Release>;

Document parse(const std::string &text) {
  return Document(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr,
                                XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET));
}

}  // namespace

bool is_xml(const std::string &document) {
  return parse(document) != nullptr;
}

std::vector<std::string> find_in_xml(const std::string &document, const std::string &expression) {
  const Document parsed = parse(document);
  if (!parsed)
    throw std::runtime_error("not XML: " + document.substr(0, 200));
  const std::unique_ptr<xmlXPathContext, Release> context(xmlXPathNewContext(parsed.get()));
  const std::unique_ptr<xmlXPathObject, Release> found(
      xmlXPathEvalExpression(reinterpret_cast<const xmlChar *>(expression.c_str()), context.get()));
  if (!found || found->nodesetval == nullptr)
    throw std::runtime_error("not an XPath to nodes: " + expression);
  std::vector<std::string> texts;
  for (int place = 0; place < found->nodesetval->nodeNr; ++place) {
    const std::unique_ptr<xmlChar, Release> text(
        xmlNodeGetContent(found->nodesetval->nodeTab[place]));
    texts.emplace_back(reinterpret_cast<const char *>(text.get()));
  }
  return texts;
}

std::string first_in_xml(const std::string &document, const std::string &expression) {
  const std::vector<std::string> found = find_in_xml(document, expression);
  return found.empty() ? std::string() : found.front();
}

std::string gunzip(std::string packed) {
  z_stream stream{};
  inflateInit2(&stream, 15 + 16);
  stream.next_in = reinterpret_cast<Bytef *>(packed.data());
  stream.avail_in = static_cast<uInt>(packed.size());
  std::string content;
  std::string block(65536, '\0');
  int result = Z_OK;
  while (result == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef *>(block.data());
    stream.avail_out = static_cast<uInt>(block.size());
    result = inflate(&stream, Z_NO_FLUSH);
    content.append(block, 0, block.size() - stream.avail_out);
  }
  inflateEnd(&stream);
  if (result != Z_STREAM_END)
    throw std::runtime_error("broken gzip data");
  return content;
}

void ServerTest::stop() {
  if (server && server->is_running()) {
    EXPECT_EQ(server->stop(), 0);
  }
  server.reset();
}

ServerProcess &ServerTest::start(const std::vector<std::string> &options) {
  stop();
  return server.emplace(options);
}

HttpReply ServerTest::ask(const std::string &path, const Parameters &parameters,
                          const std::string &user, const std::string &password) {
  const std::string url = with_parameters("http://" + server->host() + path, parameters);
  return send({.url = url, .credentials = user + ":" + server_secret(url, password)});
}

HttpReply ServerTest::ask_as_nobody(const std::string &path, const Parameters &parameters) {
  return send({.url = with_parameters("http://" + server->host() + path, parameters)});
}

std::vector<std::string> ServerTest::dump_names(const std::string &since) {
  const std::string chunks = first_in_xml(body_of("/3.7.3/xml.php", {{"lc", since}}), "//Chunks");
  std::vector<std::string> names;
  for (std::size_t start = 0; start < chunks.size();) {
    const std::size_t end = std::min(chunks.find('|', start), chunks.size());
    names.push_back(chunks.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

std::string ServerTest::dump(const std::string &name) {
  return gunzip(ask_as_nobody("/3.7.3/dumps/" + name + ".gz").body);
}

}  // namespace velkor::test
