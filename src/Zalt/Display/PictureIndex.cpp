#include <Zalt/Display/PictureIndex.h>

#include <algorithm>
#include <cstdio>
#include <tuple>

namespace Zalt {
namespace Display {
namespace {

// Long enough to tell references apart at a glance; the hash tells the rest.
constexpr std::size_t keptCharacters = 40;

std::string fileSafe(const std::string& part) {
  std::string safe = part.substr(0, keptCharacters);
  for (char& character : safe) {
    const bool kept = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                      (character >= '0' && character <= '9') || character == '-';
    if (!kept) {
      character = '_';
    }
  }
  return safe;
}

// FNV-1a over the four parts, each ended by a byte that none holds, so that
// the parts' boundaries count and the name is the same on every system.
std::uint64_t hashOf(const PictureEntry& entry) {
  std::uint64_t hash = 14695981039346656037ULL;
  const auto mix = [&hash](const std::string& part) {
    for (const char character : part + '\0') {
      hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211ULL;
    }
  };
  mix(entry.area);
  mix(entry.reference);
  mix(std::to_string(entry.version));
  mix(entry.language);
  return hash;
}

std::string hexadecimal(std::uint64_t value, int digits) {
  char buffer[17];
  std::snprintf(buffer, sizeof buffer, "%0*llx", digits, static_cast<unsigned long long>(value));
  return std::string(buffer, static_cast<std::size_t>(digits));
}

std::string escaped(const std::string& text) {
  std::string html;
  html.reserve(text.size());
  for (const char character : text) {
    switch (character) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += character;
    }
  }
  return html;
}

std::int64_t overflowOf(const PictureEntry& entry) { return entry.pixels - entry.box; }

// Worst overflow first, then by name, so that the page is the same in every run.
std::tuple<std::int64_t, const std::string&, const std::string&, std::uint64_t, const std::string&>
listingOrder(const PictureEntry& entry) {
  return {-overflowOf(entry), entry.area, entry.reference, entry.version, entry.language};
}

std::string widthsOf(const PictureEntry& entry) {
  std::string widths = std::to_string(entry.pixels) + " px in a " + std::to_string(entry.box) + " px box";
  return overflowOf(entry) > 0 ? widths + ", " + std::to_string(overflowOf(entry)) + " px over" : widths;
}

constexpr const char* pageStart = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Pictures of shown texts</title>
<style>
body { font-family: sans-serif; margin: 1em; }
table { border-collapse: collapse; }
td, th { border-bottom: 1px solid #ccc; padding: 0.3em 0.6em; text-align: left; vertical-align: top; }
img { display: block; }
</style>
<script>
window.addEventListener('load', function () {
  var pictures = document.images;
  var loaded = 0;
  for (var i = 0; i < pictures.length; ++i) {
    if (pictures[i].complete && pictures[i].naturalWidth > 0) {
      ++loaded;
    }
  }
  document.title = loaded + ' of ' + pictures.length + ' pictures loaded';
});
</script>
</head>
<body>
<h1>Pictures of shown texts</h1>
<p>Worst overflow first. The box of each area is shaded; what reaches beyond it is red.</p>
<table>
<tr><th>Area</th><th>Reference</th><th>Version</th><th>Language</th><th>Width</th><th>Picture</th></tr>
)";

constexpr const char* pageEnd = "</table>\n</body>\n</html>\n";

}  // namespace

std::string PictureIndex::add(const PictureEntry& entry) {
  const std::string stem = fileSafe(entry.area) + "_" + fileSafe(entry.reference) + "_v" +
                           std::to_string(entry.version) + "_" + fileSafe(entry.language) + "_" +
                           hexadecimal(hashOf(entry), 12);
  std::string file = stem + ".png";
  for (int again = 2; !m_files.insert(file).second; ++again) {
    file = stem + "-" + std::to_string(again) + ".png";
  }
  m_listed.push_back({entry, file});
  return file;
}

std::string PictureIndex::page() const {
  std::vector<const Listed*> order;
  order.reserve(m_listed.size());
  for (const Listed& listed : m_listed) {
    order.push_back(&listed);
  }
  std::sort(order.begin(), order.end(), [](const Listed* lhs, const Listed* rhs) {
    return listingOrder(lhs->entry) < listingOrder(rhs->entry);
  });
  std::string html = pageStart;
  for (const Listed* listed : order) {
    const PictureEntry& entry = listed->entry;
    html += "<tr><td>" + escaped(entry.area) + "</td><td>" + escaped(entry.reference) + "</td><td>" +
            std::to_string(entry.version) + "</td><td>" + escaped(entry.language) + "</td><td>" +
            widthsOf(entry) + "</td><td><img src=\"" + escaped(listed->file) + "\" width=\"" +
            std::to_string(entry.width) + "\" height=\"" + std::to_string(entry.height) + "\" alt=\"" +
            escaped(entry.reference) + "\"></td></tr>\n";
  }
  return html + pageEnd;
}

}  // namespace Display
}  // namespace Zalt
