#pragma once

#include "platform/text/text.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace tarvik {

/// The widths of characters in one font, each measured when it is first met.
class CharWidths {
public:
    using Measure = std::function<double(char32_t)>;
    explicit CharWidths(Measure measure) : measure_(std::move(measure)) {}

    double of(char32_t character) const
    {
        const std::size_t page = character / page_size;
        if (page < pages_.size() && pages_[page]) {
            const float known = (*pages_[page])[character % page_size];
            if (known >= 0) return static_cast<double>(known);
        }
        return measured(character);
    }

private:
    static constexpr std::size_t page_size = 256;
    using Page = std::array<float, page_size>;

    double measured(char32_t character) const;
    Measure measure_;
    mutable std::vector<std::unique_ptr<Page>> pages_;
};

inline double CharWidths::measured(char32_t character) const
{
    const std::size_t page = character / page_size;
    if (page >= pages_.size()) pages_.resize(page + 1);
    if (!pages_[page]) {
        pages_[page] = std::make_unique<Page>();
        pages_[page]->fill(-1);
    }
    const auto width = static_cast<float>(measure_(character));
    (*pages_[page])[character % page_size] = width;
    return static_cast<double>(width);
}

/// One size of the font of a text view. All lengths are pixels.
struct FontSize {
    CharWidths widths;
    double height = 0; ///< from row to row
    double ascent = 0; ///< from a row's top to its base line
    double tab = 0;    ///< from tab stop to tab stop
};

/// The sizes of a text view's font.
class FontSizes {
public:
    virtual ~FontSizes() = default;
    /// `points` 0 is the design's size. Valid as long as the object.
    virtual const FontSize& size(int points) const = 0;
};

} // namespace tarvik
