// Zalt::Catalogue::Impl::ValueDecoder: turns character data and attribute
// values, as the parser leaves them in the document (references and line
// ends untouched), into the characters they stand for, and reports what XML
// does not allow in them at its exact place: an entity other than the five
// predefined ones, a '&' that starts no reference, a character reference to
// a code point outside XML's characters, "]]>" in character data, '<' in an
// attribute value.
//
//   ValueDecoder decoder(document.data(), problems);
//   decoder.appendContent(element.first_child().value(), &text);
//   decoder.appendAttributeValue(attribute.value(), nullptr);  // checks only
#pragma once

#include <Zalt/Catalogue/Private/FileProblems.h>

#include <string>

namespace Zalt {
namespace Catalogue {
namespace Impl {

class ValueDecoder {
public:
  // Values are NUL-terminated and lie in the document that starts at
  // `document`: their offsets from it are the places of their problems.
  ValueDecoder(const char* document, FileProblems& problems);

  // Character data: CR LF and a lone CR become LF. `out` may be nullptr
  // where the characters are not needed, only checked.
  void appendContent(const char* data, std::string* out);

  // An attribute value: also a literal tab, LF or CR (and CR LF) becomes one
  // space, while their character references stay what they name.
  void appendAttributeValue(const char* value, std::string* out);

  // A CDATA section holds no references; only its line ends are XML's.
  static void appendCdata(const char* data, std::string& out);

private:
  template <bool attribute>
  void decode(const char* data, std::string* out);
  const char* reference(const char* ampersand, std::string* out);
  const char* characterReference(const char* ampersand, std::string* out);
  void report(const char* at, std::string message);

  const char* m_document;
  FileProblems& m_problems;
};

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
