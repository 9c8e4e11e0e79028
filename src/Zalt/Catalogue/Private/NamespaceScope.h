// Zalt::Catalogue::Impl::NamespaceScope: the namespace bindings in scope at
// the element that a document-order walk stands on. Each element's
// declarations are bound when the walk enters it and dropped when it leaves,
// so finding a prefix's namespace costs the same at any depth: reading a
// deeply nested file stays linear.
//
//   scope.enterElement();
//   scope.declare("pm", participantUri);
//   const std::string* uri = scope.namespaceOf("pm");
//   scope.leaveElement();
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Impl {

class NamespaceScope {
public:
  // Binds the prefix "xml", which is bound without a declaration.
  NamespaceScope();

  void enterElement();
  // Drops the bindings declared since the matching enterElement().
  void leaveElement();

  // Binds `prefix` ("" for the default namespace) until the current element
  // is left. `prefix` must stay valid as long as the binding. An empty `uri`
  // for the default namespace means no namespace.
  void declare(std::string_view prefix, std::string uri);

  // The namespace bound to `prefix`, or nullptr if none is. The pointer is
  // valid until the next declare() or leaveElement().
  const std::string* namespaceOf(std::string_view prefix) const;

private:
  std::unordered_map<std::string_view, std::vector<std::string>> m_bindings;
  // The prefixes declared, innermost last, and per element entered the
  // number of them declared before it.
  std::vector<std::string_view> m_declared;
  std::vector<std::size_t> m_elementStarts;
  // Most elements of a file use the prefix of the one before, bound by the
  // same declaration: the last answer saves the hash lookup.
  mutable std::string_view m_lastPrefix;
  mutable const std::string* m_lastNamespace = nullptr;
  mutable bool m_lastValid = false;
};

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
