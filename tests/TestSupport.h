// Short constructors for the library's values, shared by the tests.
//
// A text made by mdib() carries a label that says what it is ("m2": medium,
// two lines; "-1": no width, one line) followed by the line feeds that give
// it its number of lines, so an answer can be checked by its labels:
//
//   store.insert(mdib("hr", "de-DE", 1, md, 2));
//   labels(store.texts(ref("hr"), boost::none));  // {"m2"}
#pragma once

#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace TestSupport {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedText;
using Zalt::Localization::LocalizedTextFilter;
using Zalt::Localization::LocalizedTextReference;
using Zalt::Localization::NumberOfLines;
using MdibText = Tovra::Mdib::LocalizedText;
using Width = boost::optional<LocalizedTextWidth>;
using Lines = boost::optional<NumberOfLines>;
using Labels = std::vector<std::string>;

constexpr auto xs = LocalizedTextWidth::ExtraSmall;
constexpr auto sm = LocalizedTextWidth::Small;
constexpr auto md = LocalizedTextWidth::Medium;
constexpr auto lg = LocalizedTextWidth::Large;
constexpr auto xl = LocalizedTextWidth::ExtraLarge;
const boost::none_t any = boost::none;

inline LocalizedTextRef ref(const std::string& name) { return LocalizedTextRef(Utf8(name)); }

inline LocalizedTextReference reference(const std::string& name, std::uint64_t version, Width width = any,
                                        Lines lines = any) {
  return {ref(name), VersionCounter(version), width, lines};
}

inline MdibText mdib(const std::string& refName, const std::string& language, std::uint64_t version,
                     Width width = sm, NumberOfLines lines = 1, std::string label = "") {
  if (label.empty()) {
    label = (width ? std::string(1, "xsmlXY"[static_cast<int>(*width)]) : "-") + std::to_string(lines);
  }
  return {Utf8(label + std::string(lines - 1, '\n')), LanguageTag(language), ref(refName),
          VersionCounter(version), width};
}

inline LocalizedTextFilter filter(std::set<LocalizedTextRef> refs = {},
                                  boost::optional<std::uint64_t> version = any,
                                  std::set<LanguageTag> languages = {},
                                  std::set<LocalizedTextWidth> widths = {},
                                  std::set<NumberOfLines> lines = {}) {
  return {std::move(refs), version ? boost::make_optional(VersionCounter(*version)) : any,
          std::move(languages), std::move(widths), std::move(lines)};
}

// The label of a text made by mdib(); with its origin: "hr de-DE 1 m2".
inline std::string label(const MdibText& text, bool withOrigin = false) {
  std::string result = text.text().value();
  result.erase(std::remove(result.begin(), result.end(), '\n'), result.end());
  if (!withOrigin) {
    return result;
  }
  return text.ref().get().value() + " " + text.lang()->tag() + " " + std::to_string(text.version()->get()) +
         " " + result;
}

template <typename Texts>
Labels labels(const Texts& texts, bool withOrigin = false) {
  Labels result;
  for (const MdibText& text : texts) {
    result.push_back(label(text, withOrigin));
  }
  return result;
}

// What `run` throws; a test failure if it throws nothing.
template <typename Run>
Zalt::InternalConsistencyFailure failureOf(const Run& run) {
  try {
    run();
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing thrown";
  return {"", "", 0};
}

}  // namespace TestSupport
