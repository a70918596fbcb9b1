#pragma once

#include "platform/text.h"

#include <cstddef>

namespace tarvik {

/// Rows to be named in a message: the first ones by number, all of them by their count.
class RowList {
public:
    void add(std::size_t row, TextView note = {})
    {
        if (count_++ >= named) return;
        text_ += U"\r\n第 " + number_text(static_cast<double>(row)) + U" 行";
        if (!note.empty()) text_ += U"：" + note;
    }
    std::size_t count() const { return count_; }
    Text text() const
    {
        if (count_ <= named) return text_;
        return text_ + U"\r\n…… 共 " + number_text(static_cast<double>(count_)) + U" 行";
    }

private:
    static constexpr std::size_t named = 20;
    Text text_;
    std::size_t count_ = 0;
};

} // namespace tarvik
