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

/// The widths of characters in one font, each measured when it is first met.
class CharWidths {
public:
    using Measure = std::function<double(char32_t)>;
    explicit CharWidths(Measure measure) : measure_(std::move(measure)) {}

    double of(char32_t character) const
    {
        if (character >= known_.size()) known_.resize(character + 1, NAN);
        float& width = known_[character];
        if (std::isnan(width)) width = static_cast<float>(measure_(character));
        return static_cast<double>(width);
    }

private:
    Measure measure_;
    mutable std::vector<float> known_; // by character
};

/// One size of the font of a text view. All lengths are pixels.
struct FontSize {
    CharWidths widths;
    double height = 0; ///< from row to row
    double ascent = 0; ///< from a row's top to its base line
    double tab = 0;    ///< from tab stop to tab stop
    QFont font;
};

/// The sizes of a text view's font, each made when it is first asked for.
class FontSizes {
public:
    /// `make` gives the size for so many points; for 0 that of the design.
    explicit FontSizes(std::function<FontSize(int points)> make) : make_(std::move(make)) {}

    /// Valid until the sizes are made anew.
    const FontSize& size(int points) const
    {
        const auto known = sizes_.find(points);
        return known != sizes_.end() ? known->second : sizes_.emplace(points, make_(points)).first->second;
    }
    /// Whoever keeps sizes must ask for them anew.
    void scale_changed() { sizes_.clear(); }

private:
    std::function<FontSize(int)> make_;
    mutable std::map<int, FontSize> sizes_;
};

/// The sizes as the screen has them.
class PaneFonts final : public FontSizes {
public:
    PaneFonts(const Theme& theme, const Scale& scale)
        : FontSizes([this, &theme, &scale](int points) {
              return measure(theme.pane_font(points, std::pow(zoom_factor, zoom_), scale));
          })
    {
    }
    PaneFonts(const PaneFonts&) = delete;
    PaneFonts& operator=(const PaneFonts&) = delete;

    /// Makes all sizes larger or smaller by a step, within bounds; 0 is back to what the texts ask for. Who keeps sizes
    /// must ask for them anew.
    void zoom(int step)
    {
        zoom_ = step == 0 ? 0 : std::clamp(zoom_ + step, -most_zoom, most_zoom);
        scale_changed();
    }

private:
    static constexpr double row_gap = 1.3; // from row to row, in heights of the font
    static constexpr int tab_characters = 8;
    static constexpr double zoom_factor = 1.125;
    static constexpr int most_zoom = 12;

    static FontSize measure(const QFont& font)
    {
        const QFontMetricsF metrics(font);
        const double blank = metrics.horizontalAdvance(QLatin1Char(' '));
        const double height = std::ceil(std::max(metrics.height(), row_gap * font.pixelSize()));
        const double ascent = std::round((height - metrics.height()) / 2 + metrics.ascent());
        return {CharWidths([metrics, blank](char32_t character) {
                    const bool shows_nothing = character < U' ' || character == 0x7f;
                    return shows_nothing ? blank : metrics.horizontalAdvance(to_qt(Text(1, character)));
                }),
                height, ascent, blank * tab_characters, font};
    }

    int zoom_ = 0;
};

} // namespace tarvik
