#include <Zalt/Catalogue/Private/ReadDocument.h>

#include <algorithm>
#include <cerrno>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

// Big enough that the parser's own work dominates, small enough to stay in cache.
constexpr std::size_t chunkSize = std::size_t{64} * 1024;

}  // namespace

void feedAll(XmlDocumentReader& reader, std::string_view content) {
  for (std::size_t at = 0; at < content.size() && !reader.stopped(); at += chunkSize) {
    reader.feed(content.data() + at, std::min(chunkSize, content.size() - at));
  }
}

void feedStream(XmlDocumentReader& reader, std::FILE* stream) {
  std::vector<char> buffer(chunkSize);
  while (!reader.stopped()) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), stream);
    reader.feed(buffer.data(), count);
    if (count < buffer.size()) {
      if (std::ferror(stream) != 0) {
        failToRead(reader.fileName(), errno);
      }
      break;
    }
  }
}

void finish(XmlDocumentReader& reader, CallSite site) {
  std::vector<Finding> problems = reader.finishParsing();
  if (!problems.empty()) {
    throw CatalogueError(std::move(problems), site.file, site.line);
  }
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
