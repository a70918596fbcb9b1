#pragma once

#include <compare>
#include <cstddef>

namespace tarvik {

/// The place of a character in a text, counted from 1, as members, boxes and scripts show it. An offset, which is a
/// plain number, counts from 0: neither passes for the other.
class Position {
public:
    constexpr Position() noexcept = default; ///< the first
    explicit constexpr Position(std::size_t number) noexcept : number_(number) {}
    static constexpr Position at_offset(std::size_t offset) noexcept { return Position(offset + 1); }

    constexpr std::size_t number() const noexcept { return number_; }
    constexpr std::size_t offset() const noexcept { return number_ - 1; }

    friend constexpr auto operator<=>(Position, Position) = default; // NOLINT(modernize-use-nullptr): of the checker
    friend constexpr Position operator+(Position position, std::size_t characters) noexcept
    {
        return Position(position.number_ + characters);
    }
    friend constexpr Position operator-(Position position, std::size_t characters) noexcept
    {
        return Position(position.number_ - characters);
    }

private:
    std::size_t number_ = 1;
};

} // namespace tarvik
