// Membership in a short literal list, as the project and part-number rules
// are written: OneOf(gProjectID, {25, 26, 27}).
#pragma once

#include <initializer_list>

namespace amp {

template <typename T, typename U>
constexpr bool OneOf(const T& value, std::initializer_list<U> list) {
  for (const U& x : list)
    if (value == x) return true;
  return false;
}

}  // namespace amp
