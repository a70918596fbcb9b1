#pragma once

#include "desktop/look/char_widths.h"
#include "desktop/look/theme.h"

#include <QFont>

#include <map>

namespace tarvik {

/// The sizes of the text views' font as the screen has them.
class PaneFonts final : public FontSizes {
public:
    PaneFonts(const Theme& theme, const Scale& scale) : theme_(theme), scale_(scale) {}

    const FontSize& size(int points) const override { return sized(points).size; }
    const QFont& font(int points) const { return sized(points).font; }
    /// Whoever keeps sizes must ask for them anew.
    void scale_changed() { sizes_.clear(); }
    /// Makes all sizes larger or smaller by a step, within bounds; 0 is back to what the texts ask for. Who keeps sizes
    /// must ask for them anew.
    void zoom(int step);

private:
    struct Sized {
        QFont font;
        FontSize size;
    };
    const Sized& sized(int points) const;

    const Theme& theme_;
    const Scale& scale_;
    mutable std::map<int, Sized> sizes_;
    int zoom_ = 0;
};

} // namespace tarvik
