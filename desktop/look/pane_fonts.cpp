#include "desktop/look/pane_fonts.h"

#include "desktop/look/qt_text.h"

#include <QFontMetricsF>

#include <algorithm>

namespace tarvik {

namespace {

constexpr double row_gap = 1.3; // from row to row, in heights of the font
constexpr int tab_characters = 8;
constexpr double zoom_factor = 1.125;
constexpr int most_zoom = 12;

FontSize measure(const QFont& font)
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

} // namespace

PaneFonts::PaneFonts(const Theme& theme, const Scale& scale)
    : FontSizes([this, &theme, &scale](int points) {
          const double wanted = points > 0 ? points : Theme::pane_points();
          return measure(theme.pane_font(wanted * std::pow(zoom_factor, zoom_), scale));
      })
{
}

void PaneFonts::zoom(int step)
{
    zoom_ = step == 0 ? 0 : std::clamp(zoom_ + step, -most_zoom, most_zoom);
    scale_changed();
}

} // namespace tarvik
