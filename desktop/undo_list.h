#pragma once

#include "platform/text.h"

#include <optional>
#include <vector>

namespace tarvik {

/// An edit as what takes it back: `length` characters from `start` (from 1) become `text` again.
struct Reversal {
    std::size_t start, length;
    Text text;
};

/// What the user has edited in a text, latest first to go.
class UndoList {
public:
    void add(Reversal reversal)
    {
        if (reversals_.size() == most) reversals_.erase(reversals_.begin());
        reversals_.push_back(std::move(reversal));
    }
    std::optional<Reversal> take()
    {
        if (reversals_.empty()) return std::nullopt;
        Reversal last = std::move(reversals_.back());
        reversals_.pop_back();
        return last;
    }
    void clear() { reversals_.clear(); }

private:
    static constexpr std::size_t most = 500;
    std::vector<Reversal> reversals_;
};

} // namespace tarvik
