// The walkthrough's catalogue: a bedside monitor's texts in English, German
// and French, every reference and version in all three languages. The
// walkthrough loads it in code; walkthrough.xml beside this file holds the
// same texts in the same order as a catalogue file.
#pragma once

#include <Tovra/Mdib/LocalizedText.h>

#include <vector>

namespace ZaltExamples {

// The catalogue as the walkthrough loads it: per reference, version and width,
// the English, German and French text.
std::vector<Tovra::Mdib::LocalizedText> loadCatalogue();

}  // namespace ZaltExamples
