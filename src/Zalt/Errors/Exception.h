// Zalt::Exception: the base of the library's exceptions. It carries a message
// (returned alone by what()) and the source file and line of the statement
// that threw. It is never thrown as itself: the text stores throw
// InternalConsistencyFailure, the catalogue library its CatalogueError.
//
//   try { store->add(texts); }
//   catch (const Zalt::Exception& e) { log(e.what(), e.file(), e.line()); }
#pragma once

#include <Zalt/LtsExport.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace Zalt {

class ZALT_LTS_EXPORT Exception : public std::runtime_error {
public:
  // `file` is stored, not copied: it must outlive the exception and every copy
  // of it, as a __FILE__ literal does.
  Exception(const std::string& message, const char* file, std::int32_t line);

  // The relative path of the source file that threw.
  const char* file() const { return m_file; }
  // The line of the throwing statement.
  std::int32_t line() const { return m_line; }

private:
  const char* m_file;
  std::int32_t m_line;
};

}  // namespace Zalt
