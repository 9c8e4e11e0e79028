// Tovra::Format::Stream: an in-memory text builder for log and exception texts.
//
// Values are appended with `<<`; `cStr()` hands out everything written so far.
//
//   Tovra::Format::Stream s;
//   s << "version " << std::uint64_t{3};
//   std::puts(s.cStr());  // "version 3"
#pragma once

#include <Tovra/Format/FormatExport.h>

#include <cstdint>
#include <string>

namespace Tovra {
namespace Format {

class TOVRA_FORMAT_EXPORT Stream {
public:
  Stream() = default;

  // Appends the NUL-terminated text.
  Stream& operator<<(const char* text);
  // Appends every byte of `text`, embedded NUL bytes included.
  Stream& operator<<(const std::string& text);
  // Appends the number in decimal, without sign or leading zeros.
  Stream& operator<<(std::uint32_t number);
  Stream& operator<<(std::uint64_t number);

  // Everything written so far as a NUL-terminated string; valid until the next write.
  // Bytes after an embedded NUL are held but not visible through it.
  const char* cStr() const;

private:
  std::string m_text;
};

}  // namespace Format
}  // namespace Tovra
