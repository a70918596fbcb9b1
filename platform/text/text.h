#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Texts as the whole program counts them: one element is one character, also for characters outside the basic plane.
namespace tarvik {

using Text = std::u32string;

/// What a search that finds nothing gives where positions count from 0.
inline constexpr std::size_t npos = static_cast<std::size_t>(-1);

/// A view of characters that somebody else owns, held in 1, 2 or 4 bytes each: a large document takes only as much
/// memory as its widest character asks for. Positions of the members count from 0; the free functions below count from
/// 1. A view is two words and is passed by value; it is valid as long as the storage behind it.
class TextView {
public:
    constexpr TextView() noexcept = default;
    // NOLINTBEGIN(google-explicit-constructor): a text is always acceptable where it is only read.
    TextView(const Text& text) noexcept : TextView(text.data(), text.size(), 4) {}
    constexpr TextView(std::u32string_view text) noexcept : TextView(text.data(), text.size(), 4) {}
    constexpr TextView(const char32_t* text) noexcept : TextView(std::u32string_view(text)) {}
    // NOLINTEND(google-explicit-constructor)
    constexpr TextView(const std::uint8_t* latin1, std::size_t size) noexcept : TextView(latin1, size, 1) {}
    constexpr TextView(const char16_t* basic_plane, std::size_t size) noexcept : TextView(basic_plane, size, 2) {}
    constexpr TextView(const char32_t* text, std::size_t size) noexcept : TextView(text, size, 4) {}
    /// Characters of `width` bytes each: 1, 2 or 4.
    constexpr TextView(const void* data, std::size_t size, std::size_t width) noexcept
        : data_(data), size_(size & 0x1fff'ffff'ffff'ffffU), width_(width & 7U)
    {
    }

    constexpr std::size_t size() const noexcept { return size_; }
    constexpr bool empty() const noexcept { return size_ == 0; }
    /// Whether the view looks at any storage; a default view does not, an empty field of a document does.
    constexpr bool has_storage() const noexcept { return data_ != nullptr; }
    constexpr const void* data() const noexcept { return data_; }
    /// Bytes that one character takes: 1, 2 or 4.
    constexpr unsigned width() const noexcept { return static_cast<unsigned>(width_); }

    char32_t operator[](std::size_t index) const noexcept
    {
        switch (width_) {
        case 1: return static_cast<const std::uint8_t*>(data_)[index];
        case 2: return static_cast<const char16_t*>(data_)[index];
        default: return static_cast<const char32_t*>(data_)[index];
        }
    }

    /// The characters from `position`, at most `count`; empty behind the end.
    TextView substr(std::size_t position, std::size_t count = npos) const noexcept
    {
        if (position > size_) position = size_;
        if (count > size_ - position) count = size_ - position;
        const auto* bytes = static_cast<const std::uint8_t*>(data_);
        return {data_ ? bytes + position * width_ : nullptr, count, width_};
    }

    /// Calls `work` with a std::span of std::uint8_t, char16_t or char32_t: the way into a loop over all characters.
    template <typename Work>
    decltype(auto) visit(Work&& work) const
    {
        switch (width_) {
        case 1: return work(std::span(static_cast<const std::uint8_t*>(data_), size_));
        case 2: return work(std::span(static_cast<const char16_t*>(data_), size_));
        default: return work(std::span(static_cast<const char32_t*>(data_), size_));
        }
    }

    /// First place of the character or needle at or behind `from`, or npos. An empty needle is found at `from`.
    std::size_t find(char32_t character, std::size_t from = 0) const noexcept;
    std::size_t find(TextView needle, std::size_t from = 0) const;
    /// Last place of the character, or npos.
    std::size_t rfind(char32_t character) const noexcept;
    bool contains(TextView needle) const { return find(needle) != npos; }
    bool starts_with(TextView beginning) const noexcept { return substr(0, beginning.size()) == beginning; }

    Text str() const;
    void append_to(Text& target) const;
    std::size_t hash() const noexcept;

    friend bool operator==(TextView a, TextView b) noexcept;

private:
    const void* data_ = nullptr;
    std::size_t size_ : 61 = 0; // fields of one type: there are systems where others do not share a word
    std::size_t width_ : 3 = 4;
};

Text operator+(Text left, TextView right);

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

// Positions count from 1; 0 means "not found".

/// The `count` characters from `position`, fewer if the text ends before that, none if it ends before `position`, and
/// none from position 0.
TextView mid(TextView text, std::size_t position, std::size_t count = npos) noexcept;
/// First position of `needle` at or behind `from`; 0 if there is none. An empty needle is never found.
std::size_t instr(TextView text, TextView needle, std::size_t from = 1);

// Blanks are U+0020 alone.
TextView ltrim(TextView text) noexcept;
TextView rtrim(TextView text) noexcept;
TextView trim(TextView text) noexcept;

/// Case mapping of one character to one, so that lengths stay: Latin, Greek, Cyrillic, Armenian, full-width letters and
/// Roman numerals.
char32_t lower(char32_t character) noexcept;
char32_t upper(char32_t character) noexcept;
Text lower(TextView text);
Text upper(TextView text);

/// UTF-8 both ways. Invalid bytes become U+FFFD, and so does a lone surrogate.
Text from_utf8(std::string_view bytes);
std::string to_utf8(TextView text);

// Numbers. A text is a number when, blanks around it aside, it is an optional sign, ASCII digits with at most one
// point, and an optional e with digits.

/// A value too large for a double is the largest double, one too small is 0; the e may have a sign.
std::optional<double> number(TextView text) noexcept;
inline bool is_number(TextView text) noexcept
{
    return number(text).has_value();
}
/// The longest beginning of the text that is a number; 0 when there is none.
double leading_number(TextView text) noexcept;
/// The shortest decimal text that reads back as the same number, without exponent where 15 digits do: "8.5", "-1", "2";
/// from 1e15 on and below 1e-15 it is "1.25e100", "1e-16".
Text number_text(double value);
/// A count.
template <std::integral Count>
Text number_text(Count count)
{
    const std::string digits = std::to_string(count);
    return {digits.begin(), digits.end()};
}

} // namespace tarvik
