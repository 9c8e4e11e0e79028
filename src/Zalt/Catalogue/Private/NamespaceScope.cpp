#include <Zalt/Catalogue/Private/NamespaceScope.h>

#include <utility>

namespace Zalt {
namespace Catalogue {
namespace Impl {

NamespaceScope::NamespaceScope() { m_bindings["xml"].emplace_back("http://www.w3.org/XML/1998/namespace"); }

void NamespaceScope::enterElement() { m_elementStarts.push_back(m_declared.size()); }

void NamespaceScope::leaveElement() {
  const std::size_t start = m_elementStarts.back();
  m_elementStarts.pop_back();
  m_lastValid = m_lastValid && m_declared.size() == start;
  while (m_declared.size() > start) {
    m_bindings[m_declared.back()].pop_back();
    m_declared.pop_back();
  }
}

void NamespaceScope::declare(std::string_view prefix, std::string uri) {
  m_lastValid = false;
  m_bindings[prefix].push_back(std::move(uri));
  m_declared.push_back(prefix);
}

const std::string* NamespaceScope::namespaceOf(std::string_view prefix) const {
  if (m_lastValid && prefix == m_lastPrefix) {
    return m_lastNamespace;
  }
  const auto found = m_bindings.find(prefix);
  m_lastPrefix = prefix;
  m_lastNamespace = found == m_bindings.end() || found->second.empty() ? nullptr : &found->second.back();
  m_lastValid = true;
  return m_lastNamespace;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
