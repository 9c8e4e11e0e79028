#include <Zalt/Display/MeasuredLine.h>

#include <algorithm>
#include <numeric>

namespace Zalt {
namespace Display {
namespace {

// Rounds towards minus infinity, where / rounds towards zero.
std::int64_t floorDivide(std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t quotient = numerator / denominator;
  return quotient * denominator > numerator ? quotient - 1 : quotient;
}

}  // namespace

void MeasuredLine::add(std::int32_t unitsPerEm, std::int64_t advance) {
  const auto found = std::find_if(advances.begin(), advances.end(), [unitsPerEm](const Advances& entry) {
    return entry.unitsPerEm == unitsPerEm;
  });
  if (found == advances.end()) {
    advances.push_back({unitsPerEm, advance});
  } else {
    found->sum += advance;
  }
}

// Each face's share splits into whole pixels and a remainder below one pixel;
// the remainders are added as a fraction in lowest terms, so that faces of
// different units per em round once, together, and nothing overflows.
std::int64_t MeasuredLine::pixels(std::int32_t size) const {
  std::int64_t whole = 0;
  std::int64_t numerator = 0;
  std::int64_t denominator = 1;
  for (const Advances& entry : advances) {
    const std::int64_t scaled = entry.sum * size;
    const std::int64_t part = floorDivide(scaled, entry.unitsPerEm);
    whole += part;
    const std::int64_t remainder = scaled - part * entry.unitsPerEm;
    const std::int64_t common = std::lcm(denominator, std::int64_t{entry.unitsPerEm});
    numerator = numerator * (common / denominator) + remainder * (common / entry.unitsPerEm);
    denominator = common;
    whole += numerator / denominator;
    numerator %= denominator;
    const std::int64_t divisor = std::gcd(numerator, denominator);
    if (divisor > 1) {
      numerator /= divisor;
      denominator /= divisor;
    }
  }
  return numerator > 0 ? whole + 1 : whole;
}

}  // namespace Display
}  // namespace Zalt
