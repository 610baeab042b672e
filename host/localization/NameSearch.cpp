#include "NameSearch.h"

#include <algorithm>
#include <vector>

namespace QuorvaneEngine {

namespace {

/** How many letters have to be put in, left out, changed or swapped with their neighbour (optimal string alignment). */
std::size_t distance(const Containers::StringView a, const Containers::StringView b) {
    std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for(std::size_t i = 0; i <= a.size(); ++i) {
        for(std::size_t j = 0; j <= b.size(); ++j) {
            if(!i || !j) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + change});
            if(i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    }
    return steps[a.size()][b.size()];
}

}

Containers::StringView nearestName(
    const Containers::StringView name, const Containers::ArrayView<const Containers::StringView> names) {
    constexpr std::size_t LongestName = 64;
    if(name.isEmpty() || name.size() > LongestName) return {};

    Containers::StringView found;
    std::size_t count = 0;
    for(const Containers::StringView candidate: names) {
        if(!candidate.hasPrefix(name)) continue;
        found = candidate;
        ++count;
    }
    if(count == 1) return found;

    found = {};
    // Of a short name little is left after two changes.
    std::size_t nearest = std::min<std::size_t>(3, (name.size() + 1) / 2);
    for(const Containers::StringView candidate: names) {
        const std::size_t steps = distance(name, candidate);
        if(steps >= nearest) continue;
        nearest = steps;
        found = candidate;
    }
    return found;
}

}
