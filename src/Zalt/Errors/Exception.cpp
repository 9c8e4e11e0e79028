#include <Zalt/Errors/Exception.h>

namespace Zalt {

Exception::Exception(const std::string& message, const char* file, std::int32_t line)
    : std::runtime_error(message), m_file(file), m_line(line) {}

}  // namespace Zalt
