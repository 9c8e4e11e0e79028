// Zalt::InternalConsistencyFailure: what the text stores throw for a text that
// the device store rejects (no language, no version, no reference, or a new
// language tag not of the form "ll-CC") and for a broken language invariant.
// It is not the only exception that leaves a store: malformed UTF-8 in a text
// is reported as std::out_of_range, and allocation and lock failures pass
// through as the standard library's exceptions. It can be caught as itself, as
// Zalt::Exception, std::runtime_error or std::exception.
//
//   try { store->add(texts); }
//   catch (const Zalt::InternalConsistencyFailure& failure) { report(failure.what()); }
//   catch (const std::out_of_range& malformedUtf8) { report(malformedUtf8.what()); }
#pragma once

#include <Zalt/Errors/Exception.h>
#include <Zalt/LtsExport.h>

namespace Zalt {

class ZALT_LTS_EXPORT InternalConsistencyFailure : public Exception {
public:
  using Exception::Exception;
};

}  // namespace Zalt
