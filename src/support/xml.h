/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners and small helpers over libxml2, and the one way a document is parsed. */
#ifndef VELKOR_SUPPORT_XML_H
#define VELKOR_SUPPORT_XML_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include "support/owned.h"

namespace velkor::xml {

inline void free_chars(xmlChar *text) noexcept {
  xmlFree(text);
}

using Document = std::unique_ptr<xmlDoc, ReleaseWith<xmlFreeDoc>>;
using Node = std::unique_ptr<xmlNode, ReleaseWith<xmlFreeNode>>;
using Chars = std::unique_ptr<xmlChar, ReleaseWith<free_chars>>;
using Parser = std::unique_ptr<xmlParserCtxt, ReleaseWith<xmlFreeParserCtxt>>;

/** Options for every parse: nothing from the network, entities replaced within libxml2's bounds. */
inline constexpr int parse_options = XML_PARSE_NONET | XML_PARSE_NOENT;

/**
 * Sets libxml2 up, which does that unguarded at its first use: here only the first thread does.
 * Reading and making documents does so by itself; what else may come first has to.
 */
void initialize() noexcept;

/**
 * Makes a SAX2 handler block whose documents cannot reach outside: declarations of external
 * entities are passed over, so that no file or address is ever opened, and diagnostics go to
 * libxml2's generic error handler.
 */
xmlSAXHandler closed_handler() noexcept;

/*
 * What no document of the service comes near. A few kilobytes that came in compressed could hold
 * any number of either, and each name costs more time than the one before.
 */
/** How many different names a document may have. */
inline constexpr int max_names = 10'000;
/** How many nodes beside texts the tree of a document may have. */
inline constexpr std::size_t max_nodes = 1'000'000;

/**
 * Hands a parser a text piece by piece, and no more of it once the document has more than
 * `max_names` names or far too long a list of declarations. It must stay where it is, with the
 * text, for as long as the parser is used.
 */
class Source {
public:
  /** Whether holding text back is told on libxml2's generic error handler. */
  enum class Diagnosis { told, silent };

  explicit Source(std::string_view text, Diagnosis diagnosis = Diagnosis::told) noexcept
      : rest_(text), diagnosis_(diagnosis) {}
  Source(const Source &) = delete;
  Source &operator=(const Source &) = delete;

  /** Makes the parser that reads the text, with the options of every parse; null if none can be. */
  Parser make_parser(xmlSAXHandler &handler) noexcept;
  /** Whether text was held back: the document is not to be used then. */
  [[nodiscard]] bool held_back() const noexcept { return held_back_; }

private:
  static int read(void *source, char *buffer, int length) noexcept;
  [[nodiscard]] const char *excess() const noexcept;

  std::string_view rest_;
  Diagnosis diagnosis_;
  std::size_t delivered_ = 0;
  xmlParserCtxt *parser_ = nullptr;
  bool held_back_ = false;
};

/**
 * Parses `text`, which need not be zero-terminated.
 * @param most_nodes  how many nodes beside texts the tree may have
 * @return the document, or null when the text is not well-formed, empty or beyond the limits of
 *         libxml2 or of this library
 */
Document parse(std::string_view text, std::size_t most_nodes = max_nodes) noexcept;

/** Parses what can be read of a text that is not well-formed; null when that is nothing. */
Document recover(std::string_view text) noexcept;

inline const xmlChar *chars(const char *text) noexcept {
  return reinterpret_cast<const xmlChar *>(text);
}
inline const char *chars(const xmlChar *text) noexcept {
  return reinterpret_cast<const char *>(text);
}

/** The name of a node: that of an element as written, of other nodes as libxml2 calls them. */
inline std::string_view name_of(const xmlNode *node) noexcept {
  return node->name == nullptr ? std::string_view() : std::string_view(chars(node->name));
}

/** Whether the node is an element of that name when letter case does not count. */
bool is_named(const xmlNode *node, std::string_view name) noexcept;
/** Whether the node is an element of exactly that name. */
bool is_named_exactly(const xmlNode *node, std::string_view name) noexcept;

/** How a reader reports a document of another kind, where it differs from the other readers. */
struct Complaint {
  /** The root that the message names instead of the one expected. */
  const char *other_root = nullptr;
  /** Whether it is logged as a warning instead of printed on standard error. */
  bool logged = false;
};

/**
 * The root element when it is named `expected`, without regard to case. Otherwise null, after a
 * message of `reader` that there is no document or that it is of another kind.
 */
xmlNode *root_named(const Document &document, const char *expected, const char *reader,
                    const Complaint &complaint = {}) noexcept;

/** Whether the bytes are UTF-8 of characters that a document can hold. */
bool is_storable(std::string_view text) noexcept;
/** The text as UTF-8 that a document can hold: what XML cannot hold in any form is left out. */
std::string storable(std::string_view text) noexcept;

/**
 * The text, unchanged, as one CDATA section, or as several where it holds the mark that ends one,
 * the new end standing between the second bracket and the ">" of the mark, and where it is longer
 * than libxml2 would read back.
 */
std::string cdata(std::string_view text) noexcept;

/** A new document with its root, an element of that name. */
Document new_document(const char *root) noexcept;

/** Adds an element without content as the last child. */
xmlNode *add_element(xmlNode *parent, const char *name) noexcept;
/** Adds an element with a text, whose special characters are escaped; null stands for none. */
void add_text(xmlNode *parent, const char *name, const char *text) noexcept;
/** Adds an element with a number in decimal. */
void add_number(xmlNode *parent, const char *name, gint32 number) noexcept;
/** Adds an element with the text, unchanged, in one CDATA section. */
void add_cdata(xmlNode *parent, const char *name, std::string_view text) noexcept;

/** Siblings from `first` on as a range of `xmlNode *`. */
class Siblings {
public:
  class Iterator {
  public:
    explicit Iterator(xmlNode *node) noexcept : node_(node) {}
    xmlNode *operator*() const noexcept { return node_; }
    Iterator &operator++() noexcept {
      node_ = node_->next;
      return *this;
    }
    bool operator==(const Iterator &) const noexcept = default;

  private:
    xmlNode *node_;
  };

  explicit Siblings(xmlNode *first) noexcept : first_(first) {}
  [[nodiscard]] Iterator begin() const noexcept { return Iterator(first_); }
  [[nodiscard]] static Iterator end() noexcept { return Iterator(nullptr); }

private:
  xmlNode *first_;
};

}  // namespace velkor::xml

#endif
