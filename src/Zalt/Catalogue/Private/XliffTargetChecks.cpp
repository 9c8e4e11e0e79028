#include <Zalt/Catalogue/Private/KeptForms.h>
#include <Zalt/Catalogue/Private/XliffTargetChecks.h>

#include <utf8proc.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

bool isXmlSpace(utf8proc_int32_t codePoint) {
  return codePoint == ' ' || codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
}

bool isUnicodeSpace(utf8proc_int32_t codePoint) {
  const utf8proc_category_t category = utf8proc_category(codePoint);
  return category == UTF8PROC_CATEGORY_ZS || category == UTF8PROC_CATEGORY_ZL ||
         category == UTF8PROC_CATEGORY_ZP;
}

// The text of a plural or select argument up to its branches, "{n, plural",
// for a form that opens one; empty for any other form.
std::string_view branchingHead(std::string_view form) {
  if (form.size() < 2 || form.front() != '{' || form.back() != '{') {
    return {};
  }
  const std::size_t firstComma = form.find(',');
  return form.substr(0, form.find(',', firstComma + 1));
}

// The syntax between and after the branches ("} other {", "}}") and the
// number sign in them.
bool isBranchSyntax(std::string_view form) { return form.front() == '}' || form == "#"; }

struct ComparedForms {
  std::vector<std::string_view> forms;
  bool branching = false;
};

ComparedForms comparedForms(std::string_view text) {
  ComparedForms compared;
  for (const std::string_view form : keptForms(text)) {
    if (const std::string_view head = branchingHead(form); !head.empty()) {
      compared.forms.push_back(head);
      compared.branching = true;
    } else if (!isBranchSyntax(form)) {
      compared.forms.push_back(form);
    }
  }
  return compared;
}

// Each form once, in the order it first appears.
void keepFirstOfEach(std::vector<std::string_view>& forms) {
  std::set<std::string_view> seen;
  std::vector<std::string_view> first;
  for (const std::string_view form : forms) {
    if (seen.insert(form).second) {
      first.push_back(form);
    }
  }
  forms = std::move(first);
}

// The forms of `forms` that the other text lacks, in the order of `forms`:
// the `surplus` of a form counts them, in steps of `step`.
std::vector<std::string_view> unmatched(const std::vector<std::string_view>& forms,
                                        std::map<std::string_view, long>& surplus, long step) {
  std::vector<std::string_view> left;
  for (const std::string_view form : forms) {
    long& count = surplus[form];
    if (count * step > 0) {
      left.push_back(form);
      count -= step;
    }
  }
  return left;
}

template <typename Text>
std::string quotedList(const std::vector<Text>& texts) {
  std::string list;
  for (const Text& text : texts) {
    list += (list.empty() ? "'" : ", '") + std::string(text) + '\'';
  }
  return list;
}

std::string segmentsText(const std::vector<std::string>& mids) {
  return mids.empty() ? "no segments" : "the segments " + quotedList(mids);
}

}  // namespace

bool isBlank(std::string_view text) {
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  std::size_t at = 0;
  while (at < text.size()) {
    utf8proc_int32_t codePoint = 0;
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes + at, static_cast<utf8proc_ssize_t>(text.size() - at), &codePoint);
    if (length <= 0 || !(isXmlSpace(codePoint) || isUnicodeSpace(codePoint))) {
      return false;
    }
    at += static_cast<std::size_t>(length);
  }
  return true;
}

std::optional<std::string> keptFormsChange(std::string_view source, std::string_view translation) {
  ComparedForms lacking = comparedForms(source);
  ComparedForms adding = comparedForms(translation);
  if (lacking.branching || adding.branching) {
    keepFirstOfEach(lacking.forms);
    keepFirstOfEach(adding.forms);
  }
  // Counted rather than matched pair by pair, which a text of many thousand
  // placeholders would make quadratic.
  std::map<std::string_view, long> surplus;
  for (const std::string_view form : lacking.forms) {
    ++surplus[form];
  }
  for (const std::string_view form : adding.forms) {
    --surplus[form];
  }
  const std::vector<std::string_view> lacks = unmatched(lacking.forms, surplus, 1);
  const std::vector<std::string_view> adds = unmatched(adding.forms, surplus, -1);
  if (lacks.empty() && adds.empty()) {
    return std::nullopt;
  }
  if (adds.empty()) {
    return "lacks " + quotedList(lacks);
  }
  return (lacks.empty() ? "adds " : "lacks " + quotedList(lacks) + " and adds ") + quotedList(adds);
}

std::optional<std::string> segmentsChange(const std::vector<std::string>& source,
                                          const std::vector<std::string>& target) {
  std::vector<std::string> sortedSource = source;
  std::vector<std::string> sortedTarget = target;
  std::sort(sortedSource.begin(), sortedSource.end());
  std::sort(sortedTarget.begin(), sortedTarget.end());
  if (sortedSource == sortedTarget) {
    return std::nullopt;
  }
  return "has " + segmentsText(target) + " where its source has " + segmentsText(source);
}

std::optional<std::string> unreviewedBecause(std::string_view state, std::string_view stateQualifier,
                                             bool approved) {
  for (const std::string_view asking : {"needs-review-translation", "needs-adaptation", "needs-l10n",
                                        "needs-review-adaptation", "needs-review-l10n"}) {
    if (state == asking) {
      return "its target's state is '" + std::string(state) + '\'';
    }
  }
  if (stateQualifier == "leveraged-mt" || stateQualifier == "mt-suggestion") {
    return "its target is a machine translation ('" + std::string(stateQualifier) + "')";
  }
  if (!approved) {
    return std::string("the unit is not approved");
  }
  return std::nullopt;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
