#pragma once

#include "platform/text/text.h"

#include <cstdint>
#include <vector>

namespace tarvik {

/// Gives each different text a number, counting from 0 in the order of their first appearance. The texts are only
/// looked at: their storage must outlive the index.
class TextIndex {
public:
    struct Entry {
        std::size_t number;
        bool is_new;
    };

    /// `expected` different texts find room without moving.
    explicit TextIndex(std::size_t expected = 0);

    Entry insert(TextView text) { return insert(text, text.hash()); }
    /// With a hash of the caller's own, which equal texts must share; find() is then of no use.
    Entry insert(TextView text, std::size_t hash);
    /// The text's number, or npos.
    std::size_t find(TextView text) const;
    std::size_t size() const { return texts_.size(); }

private:
    /// Small, since most of the time of a large index goes into fetching them.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = free;
    };
    static constexpr std::uint32_t free = 0xffff'ffff;
    std::size_t slot_of(TextView text, std::uint32_t hash) const;
    void grow(std::size_t slots);

    std::vector<TextView> texts_;
    std::vector<Slot> slots_; ///< a power of two, at most half of them used
};

} // namespace tarvik
