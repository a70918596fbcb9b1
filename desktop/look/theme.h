#pragma once

#include "mainwindow/control.h"
#include "platform/files/files.h"

#include <QCursor>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QStringList>

class QPainter;
class QWidget;

/// Fonts, colours, shapes, scale and pointer of the windows.
namespace tarvik {

/// In twips, from the corner of the window or frame that the control stands in.
inline QRectF place_of(const Control& control)
{
    return {control.left(), control.top(), control.width(), control.height()};
}

/// How large the model shows: its twips and points as pixels.
struct Scale {
    double dots_per_inch = 96;
    double zoom = 1;

    double pixels(double twips) const { return twips / 1440 * dots_per_inch * zoom; }
    double twips(double pixels_) const { return pixels_ * 1440 / dots_per_inch / zoom; }
    double font_pixels(double points) const { return points / 72 * dots_per_inch * zoom; }
    /// Neighbours that touch in the model touch on the screen.
    QRect rectangle(const QRectF& twips) const
    {
        const int x = qRound(pixels(twips.left())), y = qRound(pixels(twips.top()));
        return {x, y, qRound(pixels(twips.right())) - x, qRound(pixels(twips.bottom())) - y};
    }
    QSize size(const Control& control) const
    {
        return {qRound(pixels(control.width())), qRound(pixels(control.height()))};
    }
};

/// The application's palette holds under these what the toolkit has no role for: the border of what has the focus, and
/// what lies under a found text.
inline constexpr QPalette::ColorRole focus_role = QPalette::Link, found_role = QPalette::LinkVisited;

/// The font of a text on the screen, by what the text is for.
struct FontRole {
    enum Family { Query, Page, Pane } family;
    double points; ///< at zoom 1
    bool bold = false;
};
namespace font_role {
inline constexpr FontRole query{FontRole::Query, 17}, number{FontRole::Query, 14};
inline constexpr FontRole page{FontRole::Page, 10.5}, button{FontRole::Page, 12}, option{FontRole::Page, 12};
inline constexpr FontRole key{FontRole::Page, 11}, sign{FontRole::Page, 14}, column{FontRole::Page, 14};
inline constexpr FontRole frame{FontRole::Page, 10}, help{FontRole::Page, 10}, dialog{FontRole::Page, 11};
inline constexpr FontRole pane{FontRole::Pane, 12}, notes{FontRole::Pane, 12};
inline constexpr FontRole design{FontRole::Page, 14, true}, design_query{FontRole::Page, 16, true},
    design_key{FontRole::Page, 18, true};
} // namespace font_role

/// Light is the design's own look.
enum class Look { Light, Dark, HighContrast };

/// An ink that stands off from the ground: a dark one is made light on a dark ground.
QColor readable(const QColor& ink, const QColor& ground);

/// A rounded area with a border; the border is strong around what has the focus.
void paint_box(QPainter& painter, const QRect& area, const QColor& fill, bool focus);

/// The pointer shows that the program works, as long as the object lives.
class BusyCursor {
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

class Theme {
public:
    /// Takes the two fonts of the design from the installation folder when they lie there; a font that is missing or
    /// broken is passed over, and a Chinese font of the system stands in for it.
    explicit Theme(const Files& files);

    QFont font(const FontRole& role, const Scale& scale) const;
    /// The font of a text view.
    QFont pane_font(int pixels) const;

    /// Gives the application the palette of a look and the shape of its controls. Controls that have a colour of their
    /// own are to be coloured anew.
    void apply(Look look);
    Look look() const { return look_; }
    /// Lays a control's own colour under its text, as the look has it.
    void colour(QWidget& widget, Colour background) const;

private:
    Look look_ = Look::Light;
    QStringList families_[3]; // of the query, the pages and the panes
};

} // namespace tarvik
