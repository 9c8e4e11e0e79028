#include "PictureFiles.h"

#include "ExitCode.h"
#include "Json.h"
#include "OutputFile.h"

#include <Zalt/Display/DisplayLines.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {

void addPictureOptions(CLI::App& command, PictureRequest& request) {
  CLI::Option* pictures =
      command.add_option("--pictures", request.directory,
                         "Write a PNG picture of each shown text with a finding, in its area's box, and "
                         "index.html listing them worst first, into this directory");
  command.add_flag("--pictures-all", request.all, "With --pictures, a picture of every shown text")
      ->needs(pictures);
}

Zalt::Display::DisplayCheck checkDisplayDrawing(const PictureRequest& request,
                                                const std::vector<std::string>& inputs,
                                                const Zalt::Display::DisplayProfile& profile,
                                                const Zalt::Catalogue::Catalogue& catalogue,
                                                const Zalt::Catalogue::CatalogueCheck& check,
                                                const Zalt::Display::ShownTextVisitor& visit) {
  if (request.directory.empty()) {
    return Zalt::Display::checkDisplay(profile, catalogue, check, visit);
  }
  PictureFiles pictures(request, inputs, profile);
  Zalt::Display::DisplayCheck result =
      Zalt::Display::checkDisplay(profile, catalogue, check, [&visit, &pictures](const auto& shown) {
        if (visit) {
          visit(shown);
        }
        pictures.add(shown);
      });
  pictures.finish();
  return result;
}

int reportUnwritablePictures(const PictureRequest& request, const std::runtime_error& error,
                             std::size_t texts, bool json) {
  if (json) {
    printJson({{"texts", texts},
               {"findings", findingsJson({unwritableOutput(request.directory, error)})},
               {"shown", nlohmann::json::array()}});
  } else {
    std::cerr << "zalt-lts-catalogue: " << error.what() << '\n';
  }
  return failure;
}

PictureFiles::PictureFiles(const PictureRequest& request, std::vector<std::string> inputs,
                           const Zalt::Display::DisplayProfile& profile)
    : m_request(request), m_inputs(std::move(inputs)), m_profile(profile) {
  std::error_code error;
  std::filesystem::create_directories(m_request.directory, error);
  if (!error && !std::filesystem::is_directory(m_request.directory, error)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (error) {
    throw std::runtime_error("cannot write " + m_request.directory + ": " + error.message());
  }
}

Zalt::Display::LineShaper& PictureFiles::shaperFor(const Tovra::Locale::LanguageTag& language) {
  auto found = m_shapers.find(language.tag());
  if (found == m_shapers.end()) {
    found =
        m_shapers
            .emplace(language.tag(), Zalt::Display::LineShaper(m_profile.chainFor(language), language.tag()))
            .first;
  }
  return found->second;
}

// A picture is made again by running the tool again: flushing each of
// thousands to the disk would cost more than drawing them.
void PictureFiles::add(const Zalt::Display::ShownText& shown) {
  if (!shown.hasFinding && !m_request.all) {
    return;
  }
  const Zalt::Display::DisplayArea& area = m_profile.areas[shown.area];
  Zalt::Display::LineShaper& shaper = shaperFor(shown.language);
  std::vector<Zalt::Display::ShapedLine> lines;
  for (const std::string_view line : Zalt::Display::displayLines(shown.text)) {
    lines.push_back(shaper.shape(line, area.size));
  }
  const Zalt::Display::TextPicture picture = m_drawer.draw(
      shaper.chain(), lines, {area.width, area.size, area.lineHeight, static_cast<std::int32_t>(area.lines)});
  const std::int64_t widest =
      shown.linePixels.empty() ? 0 : *std::max_element(shown.linePixels.begin(), shown.linePixels.end());
  const std::string file =
      m_index.add({area.name, shown.ref.get().value(), shown.version.get(), shown.language.tag(), widest,
                   area.width, picture.width, picture.height});
  write(file, picture.png, Flush::LeftToSystem);
}

void PictureFiles::finish() const { write("index.html", m_index.page(), Flush::ToDisk); }

// The pictures' folder may be where the catalogue or the profile lies.
void PictureFiles::write(const std::string& file, const std::string& bytes, Flush flush) const {
  const std::string path = m_request.directory + "/" + file;
  refuseOutputAmongInputs(path, m_inputs);
  writeWhole(path, bytes, flush);
}

}  // namespace ZaltCatalogueTool
