#include "desktop/look/control_style.h"

#include "desktop/look/theme.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace tarvik {

namespace {

constexpr double radius = 4;
constexpr int text_frame = 3;                                // the strong border shows inside of it
constexpr int hover_lightness = 106, pressed_darkness = 114; // percent

QColor button_colour(const QStyleOption& option)
{
    const QColor colour = option.palette.color(QPalette::Button);
    if (option.state.testFlag(QStyle::State_Sunken)) return colour.darker(pressed_darkness);
    const bool hover = option.state.testFlag(QStyle::State_MouseOver) && option.state.testFlag(QStyle::State_Enabled);
    return hover ? colour.lighter(hover_lightness) : colour;
}

// A second line inside the border: the keys typed here are commands.
void paint_command_border(QPainter& painter, const QRect& area)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QApplication::palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(area).adjusted(3, 3, -3, -3), radius - 1, radius - 1);
    painter.restore();
}

// The toolkit's own are hardly seen on dark grounds.
void paint_indicator(QPainter& painter, const QStyleOption& option, bool is_round)
{
    const QRectF area = QRectF(option.rect).adjusted(1, 1, -1, -1);
    const double inset = area.width() / 4;
    const QRectF filled = area.adjusted(inset, inset, -inset, -inset);
    const QColor ink = option.palette.color(QPalette::WindowText);
    const auto draw = [&](const QRectF& where) { is_round ? painter.drawEllipse(where) : painter.drawRect(where); };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, is_round);
    painter.setPen(ink);
    painter.setBrush(option.palette.color(QPalette::Base));
    draw(area);
    painter.setBrush(ink);
    if (option.state.testFlag(QStyle::State_On)) draw(filled);
    painter.restore();
}

bool is_text_widget(const QWidget* widget)
{
    return widget && widget->property("textWidget").toBool();
}

// The shape of the controls: each in its own colour from the model, with a border that tells which has the focus.
class ControlStyle final : public QProxyStyle {
public:
    ControlStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        const bool focus = option->state.testFlag(State_HasFocus);
        switch (element) {
        case PE_PanelButtonCommand: paint_box(*painter, option->rect, button_colour(*option), focus); return;
        case PE_IndicatorRadioButton:
        case PE_IndicatorCheckBox: paint_indicator(*painter, *option, element == PE_IndicatorRadioButton); return;
        case PE_PanelLineEdit:
            paint_box(*painter, option->rect, option->palette.color(QPalette::Base), focus);
            if (widget && widget->property("keysAreCommands").toBool()) paint_command_border(*painter, option->rect);
            return;
        case PE_Frame:
            if (is_text_widget(widget)) {
                paint_box(*painter, option->rect, option->palette.color(QPalette::Base), widget->hasFocus());
                return;
            }
            break;
        case PE_FrameFocusRect:
            if (widget && widget->inherits("QRadioButton")) paint_box(*painter, widget->rect(), {}, true);
            return;
        default: break;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        switch (metric) {
        case PM_DefaultFrameWidth:
            if (is_text_widget(widget)) return text_frame;
            break;
        // What the toolkit has in dots of its own grows with the text beside it.
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            if (widget) return widget->fontMetrics().height() * 2 / 3;
            break;
        case PM_ScrollBarExtent:
            return std::max(QProxyStyle::pixelMetric(metric, option, widget),
                            QFontMetrics(QApplication::font()).height());
        default: break;
        }
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace

void paint_box(QPainter& painter, const QRect& area, const QColor& fill, bool focus)
{
    const double pen = focus ? 2 : 1;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QApplication::palette().color(focus ? focus_role : QPalette::Mid), pen));
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    const double inset = pen / 2;
    painter.drawRoundedRect(QRectF(area).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

QStyle* new_control_style()
{
    return new ControlStyle;
}

} // namespace tarvik
