// Zalt::Catalogue::Impl::LineIndex: turns byte offsets into a text into lines
// and columns as an editor counts them. Lines end at LF, CR LF or a lone CR
// (the line ends of XML); columns count UTF-8 code points. Both start at 1.
//
//   LineIndex index(content);
//   SourcePosition position = index.locate(offset);
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Impl {

struct SourcePosition {
  std::int32_t line;
  std::int32_t column;
};

class LineIndex {
public:
  // Keeps a view of `content`, which must outlive the index. The line starts
  // are found here, once; locate() later counts only lead bytes, so ASCII
  // bytes overwritten with other ASCII bytes (as an in-place parser does with
  // its delimiters, line ends included) leave every place as it was. The
  // parser also puts its terminator over the document's last byte, whatever
  // that byte is, so the index keeps that one byte as it was.
  explicit LineIndex(std::string_view content);

  // An offset past the end counts as the end of the text. Offsets asked for
  // in ascending order cost only the bytes between them, so a whole file
  // written on one line is still located in one pass.
  SourcePosition locate(std::size_t offset);

private:
  std::size_t lineIndexOf(std::size_t offset) const;

  std::string_view m_content;
  char m_lastByte;
  std::vector<std::size_t> m_lineStarts;
  std::size_t m_lastOffset = 0;
  SourcePosition m_lastPosition{1, 1};
};

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
