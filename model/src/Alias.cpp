#include "model/Alias.h"

#include <algorithm>
#include <limits>

#include "model/Project.h"

namespace tintwork {

bool isWholeSetAlias(const OchreColorSetAlias& alias) {
    return std::none_of(std::begin(alias.referencedSetIndexes), std::end(alias.referencedSetIndexes),
                        [](const std::optional<long long>& index) { return index.has_value(); });
}

int setAliasMemberCount(const OchreColorSetAlias& alias) {
    if (!isWholeSetAlias(alias)) {
        return 0;
    }
    // A variant that does not point at a set does not limit the count.
    constexpr int unlimited = 99;
    int count = std::numeric_limits<int>::max();
    for (const OchreColorProjectItem* target : alias.referencedProjectItems) {
        int steps = unlimited;
        if (target != nullptr && target->colorSet) {
            steps = target->colorSet->steps;
        } else if (target != nullptr && target->shadowSet) {
            steps = target->shadowSet->steps;
        }
        count = std::min(count, steps);
    }
    return count;
}

}  // namespace tintwork
