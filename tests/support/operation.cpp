#include "support/operation.h"

namespace rux::test {

std::vector<std::vector<int>> combinations(const std::vector<int>& choices)
{
    constexpr size_t few = 4000;
    size_t all = 1;
    for (int count : choices) all = std::min<size_t>(all * static_cast<size_t>(count), few + 1);

    std::vector<std::vector<int>> result = {std::vector<int>(choices.size(), 0)};
    for (size_t i = 0; i < choices.size(); i++) {
        const size_t before = result.size();
        for (size_t k = 0; k < before; k++) {
            int wrongs = 0;
            for (int number : result[k]) wrongs += number != 0;
            if (all > few && wrongs == 2) continue;
            for (int number = 1; number < choices[i]; number++) {
                result.push_back(result[k]);
                result.back()[i] = number;
            }
        }
    }
    return result;
}

}
