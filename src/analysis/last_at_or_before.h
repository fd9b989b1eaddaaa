#pragma once

#include <algorithm>
#include <functional>
#include <iterator>

#include "base/one_based.h"

namespace keelview {

/// The last element at or before t of a list in the order of time: the k with time(k) <= t < time(k + 1),
/// by binary search; 0 before the first element, Count() from the last one on and for an empty list. In a
/// list whose times fall back it is one of the k that hold t. `timeOf` gives an element's time.
template <class T, class TimeOf = std::identity>
int LastAtOrBefore(const OneBased<T>& list, double t, TimeOf timeOf = {}) {
    if (list.Empty() || t >= std::invoke(timeOf, list.Last())) return list.Count();
    if (!(t >= std::invoke(timeOf, list[1]))) return 0;
    // From behind, the first one that does not lie after t; both ends are known.
    const auto found =
        std::partition_point(std::reverse_iterator(list.end() - 1), std::reverse_iterator(list.begin() + 1),
                             [&](const T& element) { return std::invoke(timeOf, element) > t; });
    return static_cast<int>(found.base() - list.begin());
}

}  // namespace keelview
