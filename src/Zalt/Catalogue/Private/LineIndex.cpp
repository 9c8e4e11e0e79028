#include <Zalt/Catalogue/Private/LineIndex.h>

#include <Zalt/Catalogue/Private/ByteSearch.h>

#include <algorithm>

namespace Zalt {
namespace Catalogue {
namespace Impl {

LineIndex::LineIndex(std::string_view content)
    : m_content(content), m_lastByte(content.empty() ? '\0' : content.back()), m_lineStarts{0} {
  // Only bytes up to CR can end a line.
  const unsigned char belowCr = '\r' + 1;
  for (std::size_t i = findByte(content, 0, belowCr, '\r'); i < content.size();
       i = findByte(content, i + 1, belowCr, '\r')) {
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
  const std::size_t index = lineIndexOf(offset);
  const std::size_t lineStart = m_lineStarts[index];
  const auto line = static_cast<std::int32_t>(index + 1);

  const bool continueLast = line == m_lastPosition.line && offset >= m_lastOffset;
  std::size_t from = continueLast ? m_lastOffset : lineStart;
  std::int32_t column = continueLast ? m_lastPosition.column : 1;
  for (; from < offset; ++from) {
    const char byte = from + 1 == m_content.size() ? m_lastByte : m_content[from];
    const bool continuationByte = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    column += continuationByte ? 0 : 1;
  }
  m_lastOffset = offset;
  m_lastPosition = {line, column};
  return m_lastPosition;
}

// Offsets asked for in order lie on the last line or a few lines after it;
// stepping there costs less than a search, and never more than one pass.
std::size_t LineIndex::lineIndexOf(std::size_t offset) const {
  if (offset < m_lastOffset) {
    return static_cast<std::size_t>(std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset) -
                                    m_lineStarts.begin()) -
           1;
  }
  auto index = static_cast<std::size_t>(m_lastPosition.line - 1);
  while (index + 1 < m_lineStarts.size() && m_lineStarts[index + 1] <= offset) {
    ++index;
  }
  return index;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
