#pragma once

#include "desktop/look/qt_text.h"
#include "desktop/look/theme.h"

#include <QFont>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <vector>

namespace tarvik {

/// One size of the font of a text view. All lengths are pixels.
struct FontSize {
    std::function<double(char32_t)> measure;
    double height = 0; ///< from row to row
    double ascent = 0; ///< from a row's top to its base line
    double tab = 0;    ///< from tab stop to tab stop
    QFont font{};
    mutable std::vector<float> known{}; ///< widths by character, each measured when it is first met

    double width_of(char32_t character) const
    {
        if (character >= known.size()) known.resize(character + 1, NAN);
        float& width = known[character];
        if (std::isnan(width)) width = static_cast<float>(measure(character));
        return static_cast<double>(width);
    }
};

/// The sizes of a text view's font, each made when it is first asked for.
class FontSizes {
public:
    /// `pixels` gives how large a text of so many points shows at present, one of 0 points being of the design's size;
    /// a text that is zoomed shows so many times as large.
    FontSizes(std::function<int(int points, double zoom)> pixels, std::function<FontSize(int pixels)> make)
        : pixels_(std::move(pixels)), make_(std::move(make))
    {
    }

    const FontSize& size(int points) const
    {
        const int pixels = pixels_(points, std::pow(zoom_factor, zoom_));
        const auto known = sizes_.find(pixels);
        return known != sizes_.end() ? known->second : sizes_.emplace(pixels, make_(pixels)).first->second;
    }

    /// Makes all sizes larger or smaller by a step, within bounds; 0 is back to what the texts ask for.
    void zoom(int step) { zoom_ = step == 0 ? 0 : std::clamp(zoom_ + step, -most_zoom, most_zoom); }

private:
    static constexpr double zoom_factor = 1.125;
    static constexpr int most_zoom = 12;
    std::function<int(int, double)> pixels_;
    std::function<FontSize(int)> make_;
    mutable std::map<int, FontSize> sizes_; // by pixels
    int zoom_ = 0;                          // in steps
};

/// The sizes as the screen has them. Theme and scale must outlive them.
inline FontSizes pane_fonts(const Theme& theme, const Scale& scale)
{
    constexpr double row_gap = 1.3; // from row to row, in heights of the font
    constexpr int tab_characters = 8;
    const auto pixels = [&scale](int points, double zoom) {
        return std::max(1, qRound(scale.font_pixels(zoom * (points > 0 ? points : font_role::pane.points))));
    };
    const auto make = [&theme](int size) {
        const QFont font = theme.pane_font(size);
        const QFontMetricsF metrics(font);
        const double blank = metrics.horizontalAdvance(QLatin1Char(' '));
        const double height = std::ceil(std::max(metrics.height(), row_gap * size));
        const double ascent = std::round((height - metrics.height()) / 2 + metrics.ascent());
        const auto measure = [metrics, blank](char32_t character) {
            const bool shows_nothing = character < U' ' || character == 0x7f;
            return shows_nothing ? blank : metrics.horizontalAdvance(to_qt(Text(1, character)));
        };
        return FontSize{measure, height, ascent, blank * tab_characters, font};
    };
    return {pixels, make};
}

} // namespace tarvik
