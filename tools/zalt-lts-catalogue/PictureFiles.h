// The pictures that `display --pictures DIR` writes: a PNG file of each shown
// text with a finding (of every one with --pictures-all), drawn in its area's
// box, and DIR/index.html, which lists them worst overflow first. Every file
// is written whole or not at all (OutputFile.h).
//
//   PictureRequest request;               // filled in by addPictureOptions
//   PictureFiles pictures(request, profile);
//   checkDisplay(profile, catalogue, check, [&](const ShownText& shown) { pictures.add(shown); });
//   pictures.finish();                    // DIR/index.html
#pragma once

#include <Zalt/Display/DisplayProfile.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/PictureIndex.h>
#include <Zalt/Display/ShownText.h>
#include <Zalt/Display/TextPicture.h>

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace ZaltCatalogueTool {

struct PictureRequest {
  // Where the pictures go; empty for none.
  std::string directory;
  // Every shown text, not only those with a finding.
  bool all = false;
};

// Adds --pictures DIR and --pictures-all to the display command.
void addPictureOptions(CLI::App& command, PictureRequest& request);

class PictureFiles {
public:
  // Makes the request's directory, and those above it, where they are
  // missing. Throws std::runtime_error "cannot write DIRECTORY: REASON".
  // `profile` outlives this.
  PictureFiles(const PictureRequest& request, const Zalt::Display::DisplayProfile& profile);

  // Draws `shown` in its area's box with its language's fonts and writes the
  // picture, if it has a finding or every text is asked for. Throws
  // std::runtime_error "cannot write PATH: REASON".
  void add(const Zalt::Display::ShownText& shown);

  // Writes index.html; throws as add does.
  void finish() const;

private:
  Zalt::Display::LineShaper& shaperFor(const Tovra::Locale::LanguageTag& language);

  PictureRequest m_request;
  const Zalt::Display::DisplayProfile& m_profile;
  // By language tag: the faces' forms and the fallback chain depend on it.
  std::map<std::string, Zalt::Display::LineShaper> m_shapers;
  Zalt::Display::PictureDrawer m_drawer;
  Zalt::Display::PictureIndex m_index;
};

}  // namespace ZaltCatalogueTool
