#pragma once

#include "platform/text.h"

#include <vector>

namespace tarvik
{

/// Gives each different text a number, counting from 0 in the order of their first appearance. The texts are only
/// looked at: their storage must outlive the index.
class TextIndex
{
public:
    struct Entry {
        std::size_t number;
        bool is_new;
    };

    /// `expected` texts find room without moving.
    explicit TextIndex(std::size_t expected = 0);

    Entry insert(TextView text);
    /// The text's number, or npos.
    std::size_t find(TextView text) const;
    std::size_t size() const { return texts_.size(); }

private:
    struct Slot {
        std::size_t hash = 0;
        std::size_t number = npos;
    };
    std::size_t slot_of(TextView text, std::size_t hash) const;
    void grow(std::size_t slots);

    std::vector<TextView> texts_;
    std::vector<Slot> slots_; ///< a power of two, at most half of them used
};

} // namespace tarvik
