// Tovra::Mdib::VersionCounter: the unsigned 64-bit version of a text reference.
//
//   Tovra::Mdib::VersionCounter(7).get();  // 7
#pragma once

#include <Tovra/Utils/StrongTypedef.h>

#include <cstdint>

namespace Tovra {
namespace Mdib {

struct VersionCounterTag {};

using VersionCounter =
    StrongTypedef<std::uint64_t, VersionCounterTag, Skill::TotallyOrdered, Skill::Streamable>;

}  // namespace Mdib
}  // namespace Tovra
