// Tovra::StrongTypedef: a distinct type over a plain value, so that a text
// reference cannot be passed where a text is expected.
//
// Operations are opted into with skills:
//   Tovra::Skill::TotallyOrdered  all six comparisons, through get()
//   Tovra::Skill::Streamable      operator<< on std::ostream and Tovra::Format::Stream
//
//   struct MeterTag {};
//   using Meters = Tovra::StrongTypedef<double, MeterTag, Tovra::Skill::TotallyOrdered>;
//   Meters(1.5) < Meters(2.0);  // true
#pragma once

#include <Tovra/Format/Stream.h>

#include <ostream>
#include <utility>

namespace Tovra {
namespace Skill {

struct TotallyOrdered {
  template <typename Derived>
  struct Mixin {
    friend bool operator==(const Derived& lhs, const Derived& rhs) { return lhs.get() == rhs.get(); }
    friend bool operator!=(const Derived& lhs, const Derived& rhs) { return lhs.get() != rhs.get(); }
    friend bool operator<(const Derived& lhs, const Derived& rhs) { return lhs.get() < rhs.get(); }
    friend bool operator>(const Derived& lhs, const Derived& rhs) { return rhs.get() < lhs.get(); }
    friend bool operator<=(const Derived& lhs, const Derived& rhs) { return !(rhs.get() < lhs.get()); }
    friend bool operator>=(const Derived& lhs, const Derived& rhs) { return !(lhs.get() < rhs.get()); }
  };
};

struct Streamable {
  template <typename Derived>
  struct Mixin {
    friend std::ostream& operator<<(std::ostream& out, const Derived& value) { return out << value.get(); }
    friend Format::Stream& operator<<(Format::Stream& out, const Derived& value) {
      return out << value.get();
    }
  };
};

}  // namespace Skill

template <typename T, typename Tag, typename... Skills>
class StrongTypedef : public Skills::template Mixin<StrongTypedef<T, Tag, Skills...>>... {
public:
  StrongTypedef() = default;
  explicit StrongTypedef(T value) : m_value(std::move(value)) {}

  const T& get() const { return m_value; }

private:
  T m_value{};
};

}  // namespace Tovra
