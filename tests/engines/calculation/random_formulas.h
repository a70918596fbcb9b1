#pragma once

#include <random>
#include <string>
#include <vector>

namespace tarvik::test {

/// Makes formulas over the sheet "Data": A whole numbers, B amounts, C texts, D of all kinds, E days, F rising numbers,
/// in rows 1 to rows_of_data; and over earlier results in column A of their own sheet. Only what spreadsheet
/// applications agree on.
class RandomFormulas {
public:
    static constexpr int rows_of_data = 20;

    explicit RandomFormulas(unsigned seed) : random_(seed) {}

    /// The formula of that row.
    std::string formula(int row);
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

private:
    std::string expanded(const std::string& pattern);
    const std::string& one_of(const std::vector<std::string>& patterns)
    {
        return patterns[static_cast<std::size_t>(below(static_cast<int>(patterns.size())))];
    }

    std::mt19937 random_;
    int row_ = 1;
    int left_ = 0; // patterns that may still be put in
};

} // namespace tarvik::test
