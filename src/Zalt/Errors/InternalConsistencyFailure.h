// Zalt::InternalConsistencyFailure: the one exception the library throws, for
// invalid input to the device store and for a broken language invariant. It
// can be caught as itself, as Zalt::Exception, std::runtime_error or
// std::exception.
#pragma once

#include <Zalt/Errors/Exception.h>
#include <Zalt/LtsExport.h>

namespace Zalt {

class ZALT_LTS_EXPORT InternalConsistencyFailure : public Exception {
public:
  using Exception::Exception;
};

}  // namespace Zalt
