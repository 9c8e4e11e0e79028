#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Errors/Throw.h>

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

int throwLine = 0;

void throwWithTag(const std::string& tag) {
  throwLine = __LINE__ + 1;
  ZALT_THROW(Zalt::InternalConsistencyFailure, "Invalid language tag, got: " << tag);
}

TEST(Exception, MessageIsExactlyTheStreamedTextAndCarriesItsThrowSite) {
  try {
    throwWithTag("en");
    FAIL() << "nothing thrown";
  } catch (const Zalt::InternalConsistencyFailure& e) {
    const std::runtime_error& asRuntimeError = e;
    EXPECT_STREQ(asRuntimeError.what(), "Invalid language tag, got: en");
    EXPECT_EQ(e.line(), throwLine);
    const std::string file = e.file();
    EXPECT_NE(file.find("ExceptionTest.cpp"), std::string::npos) << file;
  }
}

TEST(Exception, CopyKeepsMessageFileAndLine) {
  static const char* const file = "Some/File.cpp";
  Zalt::InternalConsistencyFailure original("Cannot add localized text without version", file, 42);
  const Zalt::InternalConsistencyFailure copy(original);
  original = Zalt::InternalConsistencyFailure("other", "Other.cpp", 1);

  EXPECT_STREQ(copy.what(), "Cannot add localized text without version");
  EXPECT_EQ(copy.file(), file);
  EXPECT_EQ(copy.line(), 42);
}

}  // namespace
