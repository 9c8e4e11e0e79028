// The pictures that `display --pictures DIR` writes: a PNG file of each shown
// text with a finding (of every one with --pictures-all), drawn in its area's
// box, and DIR/index.html, which lists them worst overflow first. Every file
// is written whole or not at all (OutputFile.h).
//
//   PictureRequest request;               // filled in by addPictureOptions
//   try {
//     result = checkDisplayDrawing(request, profile, catalogue, check, visit);
//   } catch (const std::runtime_error& error) {
//     return reportUnwritablePictures(request, error, texts, json);
//   }
#pragma once

#include "OutputFile.h"

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/DisplayProfile.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/PictureIndex.h>
#include <Zalt/Display/ShownText.h>
#include <Zalt/Display/TextPicture.h>

#include <CLI/CLI.hpp>

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

struct PictureRequest {
  // Where the pictures go; empty for none.
  std::string directory;
  // Every shown text, not only those with a finding.
  bool all = false;
};

// Adds --pictures DIR and --pictures-all to the display command.
void addPictureOptions(CLI::App& command, PictureRequest& request);

// checkDisplay, which also hands each shown text to `visit`, with the
// pictures that `request` asks for written on the way and their index at the
// end, none of them over one of `inputs`. Throws std::runtime_error "cannot
// write PATH: REASON", or the refusal of an output that is an input.
Zalt::Display::DisplayCheck checkDisplayDrawing(const PictureRequest& request,
                                                const std::vector<std::string>& inputs,
                                                const Zalt::Display::DisplayProfile& profile,
                                                const Zalt::Catalogue::Catalogue& catalogue,
                                                const Zalt::Catalogue::CatalogueCheck& check,
                                                const Zalt::Display::ShownTextVisitor& visit);

// Says that a picture cannot be written: on standard error, or as the one
// finding of the JSON document of `texts` texts. Returns the exit status, 2.
int reportUnwritablePictures(const PictureRequest& request, const std::runtime_error& error,
                             std::size_t texts, bool json);

class PictureFiles {
public:
  // Makes the request's directory, and those above it, where they are
  // missing. Throws std::runtime_error "cannot write DIRECTORY: REASON".
  // `profile` outlives this; no file written replaces one of `inputs`.
  PictureFiles(const PictureRequest& request, std::vector<std::string> inputs,
               const Zalt::Display::DisplayProfile& profile);

  // Draws `shown` in its area's box with its language's fonts and writes the
  // picture, if it has a finding or every text is asked for. Throws
  // std::runtime_error "cannot write PATH: REASON".
  void add(const Zalt::Display::ShownText& shown);

  // Writes index.html; throws as add does.
  void finish() const;

private:
  Zalt::Display::LineShaper& shaperFor(const Tovra::Locale::LanguageTag& language);
  void write(const std::string& file, const std::string& bytes, Flush flush) const;

  PictureRequest m_request;
  std::vector<std::string> m_inputs;
  const Zalt::Display::DisplayProfile& m_profile;
  // By language tag: the faces' forms and the fallback chain depend on it.
  std::map<std::string, Zalt::Display::LineShaper> m_shapers;
  Zalt::Display::PictureDrawer m_drawer;
  Zalt::Display::PictureIndex m_index;
};

}  // namespace ZaltCatalogueTool
