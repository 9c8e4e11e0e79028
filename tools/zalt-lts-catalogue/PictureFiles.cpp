#include "PictureFiles.h"

#include "OutputFile.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace ZaltCatalogueTool {

PictureFiles::PictureFiles(std::string directory) : m_directory(std::move(directory)) {
  std::error_code error;
  std::filesystem::create_directories(m_directory, error);
  if (!error && !std::filesystem::is_directory(m_directory, error)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (error) {
    throw std::runtime_error("cannot write " + m_directory + ": " + error.message());
  }
}

// A picture is made again by running the tool again: flushing each of
// thousands to the disk would cost more than drawing them.
void PictureFiles::add(const Zalt::Display::DisplayArea& area, Zalt::Display::LineShaper& shaper,
                       const std::vector<std::string>& lines, const std::string& reference,
                       std::uint64_t version, const std::string& language) {
  std::vector<Zalt::Display::ShapedLine> shaped;
  std::int64_t widest = 0;
  for (const std::string& line : lines) {
    shaped.push_back(shaper.shape(line, area.size));
    widest = std::max(widest, shaped.back().pixels);
  }
  const Zalt::Display::PictureBox box{area.width, area.size, area.lineHeight,
                                      static_cast<std::int32_t>(area.lines)};
  const Zalt::Display::TextPicture picture = m_drawer.draw(shaper.chain(), shaped, box);
  const std::string file = m_index.add(
      {area.name, reference, version, language, widest, area.width, picture.width, picture.height});
  writeWhole(m_directory + "/" + file, picture.png, Flush::LeftToSystem);
}

void PictureFiles::finish() const { writeWhole(m_directory + "/index.html", m_index.page()); }

}  // namespace ZaltCatalogueTool
