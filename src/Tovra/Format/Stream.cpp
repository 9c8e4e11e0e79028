#include <Tovra/Format/Stream.h>

namespace Tovra {
namespace Format {

Stream& Stream::operator<<(const char* text) {
  m_text += text;
  return *this;
}

Stream& Stream::operator<<(const std::string& text) {
  m_text += text;
  return *this;
}

Stream& Stream::operator<<(std::uint32_t number) {
  m_text += std::to_string(number);
  return *this;
}

Stream& Stream::operator<<(std::uint64_t number) {
  m_text += std::to_string(number);
  return *this;
}

const char* Stream::cStr() const { return m_text.c_str(); }

}  // namespace Format
}  // namespace Tovra
