#include <Zalt/Catalogue/Private/XmlElement.h>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

constexpr std::ptrdiff_t fieldsPerAttribute = 5;

}  // namespace

std::string_view view(const xmlChar* text) {
  return text != nullptr ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

Attribute Attributes::Iterator::operator*() const {
  const auto* const valueStart = reinterpret_cast<const char*>(m_at[3]);
  return {view(m_at[0]), view(m_at[1]), view(m_at[2]),
          std::string_view(valueStart, static_cast<std::size_t>(m_at[4] - m_at[3]))};
}

Attributes::Iterator& Attributes::Iterator::operator++() {
  m_at += fieldsPerAttribute;
  return *this;
}

Attributes::Iterator Attributes::end() const { return Iterator(m_fields + fieldsPerAttribute * m_count); }

std::string Element::qualifiedName() const {
  return prefix.empty() ? std::string(name) : std::string(prefix) + ':' + std::string(name);
}

std::optional<Attribute> Element::attribute(std::string_view localName) const {
  for (const Attribute& attribute : attributes) {
    if (attribute.prefix.empty() && attribute.localName == localName) {
      return attribute;
    }
  }
  return std::nullopt;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
