// Zalt::Exception: the base of the library's exceptions. It carries a message
// (returned alone by what()) and the source file and line of the statement
// that threw. The library never throws it by itself; see
// InternalConsistencyFailure.
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
  // `file` must point at static text (a __FILE__ literal); it is stored, not copied.
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
