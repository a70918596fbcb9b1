#include "engines/libreoffice/rectangles.h"

#include <map>
#include <utility>

namespace tarvik::libreoffice {

std::vector<Area> rectangles(const std::vector<Place>& places)
{
    std::vector<Area> found;
    std::map<std::pair<int, int>, std::size_t> last_with_columns; // the lowest rectangle of these columns
    for (std::size_t start = 0, end = 0; start < places.size(); start = end) {
        const auto [row, column] = places[start];
        while (end < places.size() && places[end] == Place{row, column + static_cast<int>(end - start)}) ++end;
        const int last_column = column + static_cast<int>(end - start) - 1;
        const auto [known, is_new] = last_with_columns.try_emplace({column, last_column}, found.size());
        if (!is_new && found[known->second].last_row == row - 1) {
            found[known->second].last_row = row;
            continue;
        }
        known->second = found.size();
        found.push_back({row, column, row, last_column});
    }
    return found;
}

} // namespace tarvik::libreoffice
