#include "platform/text/text_index.h"

#include <bit>

namespace tarvik {

TextIndex::TextIndex(std::size_t expected)
{
    texts_.reserve(expected);
    grow(std::bit_ceil(2 * expected + 16));
}

// The place of the text, or the free place that it would take.
std::size_t TextIndex::slot_of(TextView text, std::uint32_t hash) const
{
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = hash & mask;
    for (; slots_[place].number != free; place = (place + 1) & mask)
        if (slots_[place].hash == hash && texts_[slots_[place].number] == text) break;
    return place;
}

TextIndex::Entry TextIndex::insert(TextView text, std::size_t hash)
{
    const auto short_hash = static_cast<std::uint32_t>(hash);
    const std::size_t place = slot_of(text, short_hash);
    if (slots_[place].number != free) return {slots_[place].number, false};
    const std::size_t number = texts_.size();
    slots_[place] = {short_hash, static_cast<std::uint32_t>(number)};
    texts_.push_back(text);
    if (2 * texts_.size() > slots_.size()) grow(2 * slots_.size());
    return {number, true};
}

std::size_t TextIndex::find(TextView text) const
{
    const Slot& slot = slots_[slot_of(text, static_cast<std::uint32_t>(text.hash()))];
    return slot.number == free ? npos : slot.number;
}

void TextIndex::grow(std::size_t slots)
{
    std::vector<Slot> old(slots);
    old.swap(slots_);
    const std::size_t mask = slots - 1;
    for (const Slot& slot : old) {
        if (slot.number == free) continue;
        std::size_t place = slot.hash & mask;
        while (slots_[place].number != free) place = (place + 1) & mask;
        slots_[place] = slot;
    }
}

} // namespace tarvik
