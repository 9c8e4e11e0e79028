#include <Zalt/Catalogue/CatalogueIdRecord.h>

#include <Zalt/Catalogue/CatalogueIdentity.h>
#include <Zalt/Catalogue/Private/InputFile.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace Zalt {
namespace Catalogue {
namespace {

constexpr std::string_view digestPrefix = "sha256:";
constexpr std::size_t digestLength = 64;
constexpr std::string_view blanks = " \t";

bool isDigest(std::string_view field) {
  return field.size() == digestPrefix.size() + digestLength &&
         field.substr(0, digestPrefix.size()) == digestPrefix &&
         std::all_of(field.begin() + digestPrefix.size(), field.end(), [](char digit) {
           return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f');
         });
}

// Takes the lines of one record, each problem at its line and column.
class RecordReader {
public:
  explicit RecordReader(const std::string& fileName) : m_fileName(fileName) {}

  CatalogueIdRecord read(std::string_view text) && {
    m_record.text = std::string(text);
    std::int32_t line = 1;
    for (std::size_t start = 0; start < text.size(); ++line) {
      const std::size_t end = std::min(text.find('\n', start), text.size());
      std::string_view content = text.substr(start, end - start);
      if (!content.empty() && content.back() == '\r') {
        content.remove_suffix(1);
      }
      readLine(content, line);
      start = end + 1;
    }
    if (!m_problems.empty()) {
      throw CatalogueError(std::move(m_problems), __FILE__, __LINE__);
    }
    return std::move(m_record);
  }

private:
  void readLine(std::string_view content, std::int32_t line) {
    const std::size_t identifierStart = content.find_first_not_of(blanks);
    if (identifierStart == std::string_view::npos || content[identifierStart] == '#') {
      return;
    }
    const std::size_t identifierEnd =
        std::min(content.find_first_of(blanks, identifierStart), content.size());
    const std::size_t digestStart =
        std::min(content.find_first_not_of(blanks, identifierEnd), content.size());
    const std::size_t digestEnd = std::min(content.find_first_of(blanks, digestStart), content.size());
    const std::string_view identifier = content.substr(identifierStart, identifierEnd - identifierStart);
    const std::string_view digest = content.substr(digestStart, digestEnd - digestStart);
    if (!isCatalogueIdentifier(identifier)) {
      problem(line, identifierStart,
              "'" + std::string(identifier) + "' is not a text catalogue identifier (urn:oid: or urn:uuid:)");
    } else if (!isDigest(digest)) {
      problem(line, digestStart, "expected sha256: and 64 lowercase hexadecimal digits after the identifier");
    } else if (digestEnd < content.size() &&
               content.find_first_not_of(blanks, digestEnd) != std::string_view::npos) {
      problem(line, content.find_first_not_of(blanks, digestEnd),
              "expected the end of the line after the digest");
    } else if (const RecordedCatalogue* earlier = m_record.find(identifier)) {
      problem(
          line, identifierStart,
          "'" + std::string(identifier) + "' is recorded already on line " + std::to_string(earlier->line));
    } else {
      m_record.entries.push_back(
          {std::string(identifier), std::string(digest.substr(digestPrefix.size())), line});
    }
  }

  void problem(std::int32_t line, std::size_t offset, std::string message) {
    m_problems.push_back(
        {Finding::Kind::File, {m_fileName, line, static_cast<std::int32_t>(offset) + 1}, std::move(message)});
  }

  const std::string& m_fileName;
  CatalogueIdRecord m_record;
  std::vector<Finding> m_problems;
};

}  // namespace

const RecordedCatalogue* CatalogueIdRecord::find(std::string_view identifier) const {
  const std::string wanted = comparedForm(identifier);
  const auto entry = std::find_if(
      entries.begin(), entries.end(),
      [&wanted](const RecordedCatalogue& candidate) { return comparedForm(candidate.identifier) == wanted; });
  return entry == entries.end() ? nullptr : &*entry;
}

CatalogueIdRecord readCatalogueIdRecord(std::string_view text, const std::string& fileName) {
  return RecordReader(fileName).read(text);
}

CatalogueIdRecord readCatalogueIdRecordFile(const std::string& path) {
  std::error_code unknown;
  if (!std::filesystem::exists(path, unknown) && !unknown) {
    return {};
  }
  std::size_t size = 0;
  const Private::File file = Private::openFile(path, size);
  std::string text;
  char buffer[4096];
  while (const std::size_t read = std::fread(buffer, 1, sizeof buffer, file.get())) {
    text.append(buffer, read);
  }
  if (std::ferror(file.get())) {
    Private::failToRead(path, errno != 0 ? errno : EIO);
  }
  return readCatalogueIdRecord(text, path);
}

std::string withRecorded(const CatalogueIdRecord& record, const std::string& identifier,
                         const std::string& digest) {
  std::string text = record.text;
  if (!text.empty() && text.back() != '\n') {
    text += '\n';
  }
  return text + identifier + ' ' + std::string(digestPrefix) + digest + '\n';
}

}  // namespace Catalogue
}  // namespace Zalt
