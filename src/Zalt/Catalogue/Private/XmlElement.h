// Zalt::Catalogue::Private::Element: a start tag as XmlDocumentReader hands it
// to the reader of a document, with its attributes as a range:
//
//   void startElement(const Element& element) override {
//     for (const Attribute& attribute : element.attributes) {
//       if (attribute.prefix.empty() && attribute.localName == "Version") { ... attribute.value ... }
//     }
//     const std::optional<Attribute> lang = element.attribute("Lang");  // the unprefixed one
//   }
//
// Every name and value is a view into the parser's buffers, valid during the
// call only.
#pragma once

#include <libxml/xmlstring.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {

struct Attribute {
  std::string_view localName;
  // Empty where the name has no prefix.
  std::string_view prefix;
  // Empty where the attribute is in no namespace.
  std::string_view xmlNamespace;
  // Its data() is where the value starts: in the parser's buffer, unless the
  // parser had to rewrite the value (XmlDocumentReader::placeOfValue tells).
  std::string_view value;
};

// The attributes of a start tag, in the order written.
class Attributes {
public:
  class Iterator {
  public:
    explicit Iterator(const xmlChar* const* at) : m_at(at) {}
    Attribute operator*() const;
    Iterator& operator++();
    bool operator==(const Iterator& other) const { return m_at == other.m_at; }
    bool operator!=(const Iterator& other) const { return m_at != other.m_at; }

  private:
    const xmlChar* const* m_at;
  };

  // `fields` as the parser hands them on: `count` groups of five pointers
  // (local name, prefix, namespace, value start, value end).
  Attributes(const xmlChar* const* fields, int count) : m_fields(fields), m_count(count) {}

  Iterator begin() const { return Iterator(m_fields); }
  Iterator end() const;

private:
  const xmlChar* const* m_fields;
  int m_count;
};

struct Element {
  std::string_view name;
  // Empty where the name has no prefix.
  std::string_view prefix;
  // Empty where the element is in no namespace.
  std::string_view xmlNamespace;
  Attributes attributes;

  // "prefix:name", or the name alone.
  std::string qualifiedName() const;
  // The unprefixed attribute named `localName`; none where the element lacks it.
  std::optional<Attribute> attribute(std::string_view localName) const;
};

// A text of the parser, or an empty view for none.
std::string_view view(const xmlChar* text);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
