#include "desktop/look/theme.h"

#include "desktop/look/qt_text.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace tarvik {

namespace {

const QStringList query_design{"华文新魏", "STXinwei"};
const QStringList page_design{"微软雅黑", "Microsoft YaHei"};
const QStringList chinese{"Noto Sans CJK SC",    "Source Han Sans SC", "思源黑体 CN", "WenQuanYi Zen Hei",
                          "WenQuanYi Micro Hei", "PingFang SC",        "SimHei",      "SimSun",
                          "Droid Sans Fallback", "AR PL UMing CN"};
// Characters of one width keep the columns of a table below each other.
const QStringList chinese_even{"Noto Sans Mono CJK SC", "WenQuanYi Zen Hei Mono", "WenQuanYi Micro Hei Mono", "NSimSun",
                               "Sarasa Mono SC"};

QStringList installed_families(const QStringList& wanted)
{
    QStringList found;
    for (const QString& family : wanted)
        if (QFontDatabase::hasFamily(family)) found += family;
    return found;
}

QStringList add_installation_font(const Files& files, TextView name)
{
    const int id = files.file_exists(name) ? QFontDatabase::addApplicationFont(real_path(files, name)) : -1;
    return QFontDatabase::applicationFontFamilies(id);
}

struct RoleColour {
    std::vector<QPalette::ColorRole> roles;
    QColor light, dark, contrast;

    QColor in(Look look) const { return look == Look::Light ? light : look == Look::Dark ? dark : contrast; }
};

QPalette application_palette(Look look)
{
    using P = QPalette;
    const RoleColour window{{}, {232, 227, 174}, {38, 37, 30}, Qt::black};
    const RoleColour border{{P::PlaceholderText, P::Mid}, {143, 132, 85}, {122, 116, 84}, Qt::white};
    const RoleColour colours[] = {
        {{P::Base, P::ToolTipBase}, {250, 248, 230}, {30, 29, 24}, Qt::black},
        {{P::AlternateBase}, {240, 236, 204}, {52, 50, 40}, Qt::black},
        {{P::Midlight}, {216, 208, 156}, {58, 56, 44}, Qt::black},
        {{P::WindowText, P::Text, P::ButtonText, P::ToolTipText}, {28, 26, 16}, {232, 228, 208}, Qt::white},
        border,
        {{focus_role}, {138, 61, 0}, {240, 160, 90}, Qt::yellow},
        {{found_role}, {255, 214, 102}, {96, 76, 12}, {0, 90, 160}},
        {{P::Highlight}, {92, 107, 44}, {112, 128, 60}, Qt::yellow},
        {{P::HighlightedText}, Qt::white, Qt::white, Qt::black},
    };
    QPalette palette(window.in(look), window.in(look));
    for (const RoleColour& colour : colours)
        for (const auto role : colour.roles) palette.setColor(role, colour.in(look));
    for (const auto role : {P::WindowText, P::Text, P::ButtonText})
        palette.setColor(P::Disabled, role, border.in(look));
    return palette;
}

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

void paint_rounded(QPainter& painter, const QRectF& area, double corner, const QPen& pen, const QBrush& fill)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawRoundedRect(area, corner, corner);
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
            if (widget && widget->property("keysAreCommands").toBool()) // which a second line inside the border says
                paint_rounded(*painter, QRectF(option->rect).adjusted(3, 3, -3, -3), radius - 1,
                              QPen(QApplication::palette().color(QPalette::Highlight), 2), Qt::NoBrush);
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
        if (metric == PM_DefaultFrameWidth && is_text_widget(widget)) return text_frame;
        // What the toolkit has in dots of its own grows with the text beside it.
        const bool is_indicator = metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight;
        if (is_indicator && widget) return widget->fontMetrics().height() * 2 / 3;
        const int own = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_ScrollBarExtent ? std::max(own, QFontMetrics(QApplication::font()).height()) : own;
    }
};

} // namespace

void paint_box(QPainter& painter, const QRect& area, const QColor& fill, bool focus)
{
    const double width = focus ? 2 : 1, inset = width / 2;
    const QPen pen(QApplication::palette().color(focus ? focus_role : QPalette::Mid), width);
    paint_rounded(painter, QRectF(area).adjusted(inset, inset, -inset, -inset), radius, pen,
                  fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
}

Theme::Theme(const Files& files)
{
    const QStringList query_own = add_installation_font(files, U"STXINWEI.TTF");
    const QStringList page_own = add_installation_font(files, U"msyh.ttf");
    const QStringList fallback = installed_families(chinese);
    families_[FontRole::Query] = query_own + installed_families(query_design) + fallback;
    families_[FontRole::Page] = page_own + installed_families(page_design) + fallback;
    families_[FontRole::Pane] = installed_families(chinese_even) + families_[FontRole::Page];
}

QFont Theme::font(const FontRole& role, const Scale& scale) const
{
    QFont font;
    if (!families_[role.family].isEmpty()) font.setFamilies(families_[role.family]);
    font.setPointSizeF(
        std::max(1.0, role.points * scale.zoom)); // a whole number of dots would be coarse at small zooms
    font.setBold(role.bold);
    return font;
}

QFont Theme::pane_font(int pixels) const
{
    QFont font = this->font(font_role::pane, {});
    font.setPixelSize(pixels);
    // A character has the same width wherever it stands, which is what lets a text view reckon with long lines.
    font.setKerning(false);
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setHintingPreference(QFont::PreferFullHinting);
    return font;
}

void Theme::apply(Look look)
{
    look_ = look;
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks): the application owns the style.
    if (!dynamic_cast<QProxyStyle*>(QApplication::style())) QApplication::setStyle(new ControlStyle);
    QApplication::setPalette(application_palette(look));
    // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
}

QColor readable(const QColor& ink, const QColor& ground)
{
    constexpr int middle = 128, light = 185;
    if (ground.lightness() >= middle || ink.lightness() >= light) return ink;
    return QColor::fromHsl(std::max(ink.hslHue(), 0), ink.hslSaturation(), light);
}

void Theme::colour(QWidget& widget, Colour background) const
{
    const QColor own = to_qt(background);
    // The grounds of the design keep their order, from dark to light.
    const QColor colour = look_ == Look::Light  ? own
                          : look_ == Look::Dark ? QColor::fromHsl(own.hslHue(), 24, 28 + (255 - own.lightness()) / 4)
                                                : QColor(Qt::black);
    QPalette palette = widget.palette();
    if (palette.color(QPalette::Window) == colour && palette.color(QPalette::Base) == colour) return;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) palette.setColor(role, colour);
    widget.setPalette(palette);
}

} // namespace tarvik
