#pragma once

#include "platform/text/text.h"

#include <cstddef>

namespace tarvik {

/// Rows to be named in a message: the first ones by number, all of them by their count.
class RowList {
public:
    void add(std::size_t row, TextView note) { add_entry(U"第 " + number_text(row) + U" 行：" + note); }
    /// A row that the user knows by something else than its number.
    void add_entry(TextView entry)
    {
        if (count_++ < named) text_ += U"\r\n" + entry;
    }
    std::size_t count() const { return count_; }
    Text text() const
    {
        if (count_ <= named) return text_;
        return text_ + U"\r\n…… 共 " + number_text(count_) + U" 行";
    }

private:
    static constexpr std::size_t named = 20;
    Text text_;
    std::size_t count_ = 0;
};

} // namespace tarvik
