#include <Zalt/Catalogue/Private/LineIndex.h>

#include <algorithm>

namespace Zalt {
namespace Catalogue {
namespace Impl {

LineIndex::LineIndex(std::string_view content) : m_content(content), m_lineStarts{0} {
  for (std::size_t i = 0; i < content.size(); ++i) {
    const bool crlf = content[i] == '\r' && i + 1 < content.size() && content[i + 1] == '\n';
    if (crlf) {
      ++i;
    }
    if (content[i] == '\n' || content[i] == '\r') {
      m_lineStarts.push_back(i + 1);
    }
  }
}

SourcePosition LineIndex::locate(std::size_t offset) {
  offset = std::min(offset, m_content.size());
  const auto after = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
  const std::size_t lineStart = *(after - 1);
  const auto line = static_cast<std::int32_t>(after - m_lineStarts.begin());

  const bool continueLast = line == m_lastPosition.line && offset >= m_lastOffset;
  std::size_t from = continueLast ? m_lastOffset : lineStart;
  std::int32_t column = continueLast ? m_lastPosition.column : 1;
  for (; from < offset; ++from) {
    const bool continuationByte = (static_cast<unsigned char>(m_content[from]) & 0xC0U) == 0x80U;
    column += continuationByte ? 0 : 1;
  }
  m_lastOffset = offset;
  m_lastPosition = {line, column};
  return m_lastPosition;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
