// Fuzz target for numberOfLineBreaks: the whole input is one text. The count,
// or the out-of-range error for malformed UTF-8, must agree with the plain
// decoder and counter of PlainLineBreaks.h.
#include <Tovra/Locale/Utf8.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include "FuzzCheck.h"
#include "PlainLineBreaks.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const boost::optional<unsigned int> expected = ZaltFuzz::plainLineBreaks(bytes);
  try {
    const unsigned int counted = Zalt::Localization::Impl::numberOfLineBreaks(Tovra::Locale::Utf8(bytes));
    FUZZ_CHECK(expected, "counted " << counted << " line breaks in malformed UTF-8");
    FUZZ_CHECK(counted == *expected, "counted " << counted << " line breaks, expected " << *expected);
  } catch (const std::out_of_range& error) {
    FUZZ_CHECK(!expected, "out_of_range for well-formed UTF-8 with " << *expected << " line breaks");
    FUZZ_CHECK(std::strcmp(error.what(),
                           "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character") == 0,
               "unexpected message: " << error.what());
  }
  return 0;
}
