// The catalogues and queries that the benchmarks run on.
//
// A catalogue holds R text references, each in three languages (de-DE, en-US,
// ja-JP), two versions and six width and line variants, so 36 texts per
// reference. The texts are short alarm and parameter labels as a patient
// monitor shows them; ja-JP brings multi-byte text into every catalogue.
// Catalogues come in reference order, which is also the store's key order.
//
//   std::vector<Tovra::Mdib::LocalizedText> texts = makeCatalogue(referencesFor(100'000));
//   std::vector<TextQuery> queries = makeTextQueries(references, Strategy::WidthOnly, Outcome::Hit);
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>

#include <cstddef>
#include <string>
#include <vector>

namespace ZaltBench {

constexpr std::size_t languagesPerReference = 3;
constexpr std::size_t versionsPerReference = 2;
constexpr std::size_t variantsPerVersion = 6;
constexpr std::size_t textsPerReference = languagesPerReference * versionsPerReference * variantsPerVersion;

// The number of references whose catalogue comes closest to `texts` texts.
std::size_t referencesFor(std::size_t texts);

const std::vector<Tovra::Locale::LanguageTag>& catalogueLanguages();

// The reference with the given index; indexes order as their references do.
Tovra::Mdib::LocalizedTextRef storedReference(std::size_t index, std::size_t references);
// A reference that is in no catalogue and orders just before storedReference(index).
Tovra::Mdib::LocalizedTextRef missingReference(std::size_t index, std::size_t references);

std::vector<Tovra::Mdib::LocalizedText> makeCatalogue(std::size_t references);

// How a lookup asks: by the reference's width and number of lines.
enum class Strategy { Plain, WidthOnly, LinesOnly, WidthAndLines };
enum class Outcome { Hit, Miss };

std::string strategyName(Strategy strategy);
std::string outcomeName(Outcome outcome);

// One text lookup, and the key that the store's descent for it searches.
struct TextQuery {
  Zalt::Localization::LocalizedTextReference reference;
  Tovra::Locale::LanguageTag language;
  Zalt::Localization::Impl::LocalizedTextStoreKey searchKey;
};

// `count` lookups of uniformly drawn references, languages and versions. Hits
// name stored references, misses references that sort between them.
std::vector<TextQuery> makeTextQueries(std::size_t references, Strategy strategy, Outcome outcome,
                                       std::size_t count);

}  // namespace ZaltBench
