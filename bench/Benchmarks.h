// The benchmark families of the Zalt_Lts benchmark program. Each function
// registers its family with Google Benchmark; Main.cpp calls them in the
// order in which the families should run.
//
// Names are slash-separated, with the measured operation first and the size
// last ("text/width/hit/100008"), so that ResultsTable can put each run into
// its row and column.
#pragma once

#include <cstddef>
#include <vector>

namespace ZaltBench {

// Device store: add, text against its descent floor, localizedTexts,
// languages and memory, for catalogues of about `catalogueTexts` texts.
void registerStoreBenchmarks(const std::vector<std::size_t>& catalogueTexts);

// Catalogues of about `catalogueTexts` texts added in batches of 1, 3 and 100 texts.
void registerBatchedAddBenchmarks(const std::vector<std::size_t>& catalogueTexts);

// Reference store add, isCovered, merge; makeFilters and sliceReferences.
void registerPlanningBenchmarks();

// numberOfLineBreaks against a byte loop counting line feeds.
void registerLineBreakBenchmarks();

}  // namespace ZaltBench
