#include "PictureFiles.h"

#include "OutputFile.h"

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
void PictureFiles::add(Zalt::Display::PictureEntry entry, const Zalt::Display::FontChain& chain,
                       const std::vector<Zalt::Display::ShapedLine>& lines,
                       const Zalt::Display::PictureBox& box) {
  const Zalt::Display::TextPicture picture = m_drawer.draw(chain, lines, box);
  entry.width = picture.width;
  entry.height = picture.height;
  writeWhole(m_directory + "/" + m_index.add(entry), picture.png, Flush::LeftToSystem);
}

void PictureFiles::finish() const { writeWhole(m_directory + "/index.html", m_index.page()); }

}  // namespace ZaltCatalogueTool
