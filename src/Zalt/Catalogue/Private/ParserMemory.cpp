#include <Zalt/Catalogue/Private/ParserMemory.h>

#include <libxml/xmlmemory.h>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

xmlFreeFunc previousFree = nullptr;
xmlMallocFunc previousMalloc = nullptr;
xmlReallocFunc previousRealloc = nullptr;
xmlStrdupFunc previousStrdup = nullptr;

thread_local std::size_t failures = 0;

template <typename Block>
Block* noted(Block* block) {
  if (block == nullptr) {
    ++failures;
  }
  return block;
}

void* countingMalloc(std::size_t size) { return noted(previousMalloc(size)); }

void* countingRealloc(void* block, std::size_t size) { return noted(previousRealloc(block, size)); }

char* countingStrdup(const char* text) { return noted(previousStrdup(text)); }

}  // namespace

void noteFailedParserAllocations() {
  static const bool routed = [] {
    xmlMemGet(&previousFree, &previousMalloc, &previousRealloc, &previousStrdup);
    return xmlMemSetup(previousFree, countingMalloc, countingRealloc, countingStrdup) == 0;
  }();
  static_cast<void>(routed);
}

std::size_t failedParserAllocations() { return failures; }

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
