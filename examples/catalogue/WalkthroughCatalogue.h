// The walkthrough's catalogue: a bedside monitor's texts in English, German
// and French, every reference and version in all three languages. The
// walkthrough loads it in code; walkthrough.xml beside this file holds the
// same texts in the same order as a catalogue file.
#pragma once

#include <Tovra/Mdib/LocalizedText.h>

#include <vector>

namespace ZaltExamples {

std::vector<Tovra::Mdib::LocalizedText> walkthroughCatalogue();

}  // namespace ZaltExamples
