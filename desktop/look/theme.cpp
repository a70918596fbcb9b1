#include "desktop/look/theme.h"

#include "desktop/look/control_style.h"
#include "desktop/look/qt_text.h"
#include "platform/failure.h"
#include "platform/files/path_text.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QProxyStyle>
#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace tarvik {

namespace {

struct RoleFont {
    enum Family { Query, Page, Pane } family;
    double points;
    bool bold;
};

RoleFont role_font(FontRole role)
{
    switch (role) {
    case FontRole::Query: return {RoleFont::Query, 17, false};
    case FontRole::Number: return {RoleFont::Query, 14, false};
    case FontRole::Page: return {RoleFont::Page, 10.5, false};
    case FontRole::Key:
    case FontRole::Dialog: return {RoleFont::Page, 11, false};
    case FontRole::Sign:
    case FontRole::Column: return {RoleFont::Page, 14, false};
    case FontRole::Label:
    case FontRole::Frame:
    case FontRole::Help: return {RoleFont::Page, 10, false};
    case FontRole::Pane:
    case FontRole::Notes: return {RoleFont::Pane, 12, false};
    case FontRole::Design: return {RoleFont::Page, 14, true};
    case FontRole::DesignQuery: return {RoleFont::Page, 16, true};
    case FontRole::DesignKey: return {RoleFont::Page, 18, true};
    default: return {RoleFont::Page, 12, false};
    }
}

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
    try {
        if (!files.file_exists(name)) return {};
        const auto path = files.resolve(name);
        const int id = QFontDatabase::addApplicationFont(QString::fromStdString(utf8_of(path)));
        return id < 0 ? QStringList{} : QFontDatabase::applicationFontFamilies(id);
    } catch (const Failure&) {
        return {};
    }
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

} // namespace

Theme::Theme(const Files& files)
{
    const QStringList query_own = add_installation_font(files, U"STXINWEI.TTF");
    const QStringList page_own = add_installation_font(files, U"msyh.ttf");
    const QStringList fallback = installed_families(chinese);
    families_[RoleFont::Query] = query_own + installed_families(query_design) + fallback;
    families_[RoleFont::Page] = page_own + installed_families(page_design) + fallback;
    families_[RoleFont::Pane] = installed_families(chinese_even) + families_[RoleFont::Page];
}

QFont Theme::font(FontRole role, const Scale& scale) const
{
    const RoleFont of = role_font(role);
    QFont font;
    if (!families_[of.family].isEmpty()) font.setFamilies(families_[of.family]);
    font.setPointSizeF(std::max(1.0, of.points * scale.zoom)); // a whole number of dots would be coarse at small zooms
    font.setBold(of.bold);
    return font;
}

QFont Theme::pane_font(double points, const Scale& scale) const
{
    QFont font = this->font(FontRole::Pane, scale);
    font.setPixelSize(std::max(1, qRound(scale.font_pixels(points))));
    // A character has the same width wherever it stands, which is what lets a text view reckon with long lines.
    font.setKerning(false);
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setHintingPreference(QFont::PreferFullHinting);
    return font;
}

double Theme::pane_points()
{
    return role_font(FontRole::Pane).points;
}

void Theme::apply(Look look)
{
    look_ = look;
    // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks): the application owns the style.
    if (!dynamic_cast<QProxyStyle*>(QApplication::style())) QApplication::setStyle(new_control_style());
    QApplication::setPalette(application_palette(look));
    // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
}

QColor readable(const QColor& ink, const QColor& ground)
{
    constexpr int middle = 128, light = 185;
    if (ground.lightness() >= middle || ink.lightness() >= light) return ink;
    return QColor::fromHsl(std::max(ink.hslHue(), 0), ink.hslSaturation(), light);
}

void Theme::set_dialog_font(const Scale& scale) const
{
    QApplication::setFont(font(FontRole::Dialog, scale));
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
