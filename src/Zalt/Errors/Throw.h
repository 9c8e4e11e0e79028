// ZALT_THROW(ExceptionType, parts): composes a message from a `<<` chain in a
// string stream and throws ExceptionType with it and the file and line of the
// throw site. Every throw of the library goes through it, so every exception
// names its own statement. A string stream fails only where it cannot grow,
// and then leaves the message cut short: that is std::bad_alloc instead.
//
//   ZALT_THROW(Zalt::InternalConsistencyFailure, "got: " << tag.tag());
#pragma once

#include <new>
#include <sstream>

#define ZALT_THROW(ExceptionType, parts)                                \
  do {                                                                  \
    std::ostringstream zaltThrowMessage;                                \
    zaltThrowMessage << parts; /* NOLINT(bugprone-macro-parentheses) */ \
    if (!zaltThrowMessage) {                                            \
      throw std::bad_alloc();                                           \
    }                                                                   \
    throw ExceptionType(zaltThrowMessage.str(), __FILE__, __LINE__);    \
  } while (false)
