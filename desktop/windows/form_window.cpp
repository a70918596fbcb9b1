#include "desktop/windows/form_window.h"

#include "scripts/names.h"

#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvik {

namespace {

constexpr double smaller_step = 0.97;
constexpr int gap = 8;                                // between windows
constexpr double hardly_smaller = 0.93, least = 0.85; // of the main window's zoom, that a side window shows with

// A command button. Press and release are signalled one by one, and a click behind the release.
class ButtonWidget final : public QPushButton {
public:
    ButtonWidget(Front& front, Control& control, std::function<void()> clicked_by_mouse, QWidget* parent)
        : QPushButton(parent), front_(front), control_(control), clicked_by_mouse_(std::move(clicked_by_mouse))
    {
        setAttribute(Qt::WA_NoMousePropagation);
        setMinimumSize(1, 1);
        connect(this, &QPushButton::clicked, this, [this] { front_.queue.post({EventKind::Click, control_}); });
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        QPushButton::mousePressEvent(event);
        post_mouse(front_, control_, EventKind::MouseDown, *event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        post_mouse(front_, control_, EventKind::MouseUp, *event);
        QPushButton::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton && clicked_by_mouse_) front_.queue.submit(clicked_by_mouse_);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) click();
        else QPushButton::keyPressEvent(event);
    }

private:
    Front& front_;
    Control& control_;
    std::function<void()> clicked_by_mouse_;
};

// An option button: it shows what the model says, and a click on a selected one is a click like any other.
class OptionWidget final : public QRadioButton {
public:
    OptionWidget(Front& front, OptionButton& control, std::function<void()> clicked_by_mouse, QWidget* parent)
        : QRadioButton(parent), front_(front), clicked_by_mouse_(std::move(clicked_by_mouse))
    {
        setAttribute(Qt::WA_NoMousePropagation);
        setMinimumSize(1, 1);
        setAutoExclusive(false);
        forget_accessible(*this);
        connect(this, &QRadioButton::clicked, this, [this, &control] {
            for (const EventKind kind : {EventKind::MouseDown, EventKind::MouseUp, EventKind::Click})
                front_.queue.post({kind, control});
        });
    }

protected:
    void nextCheckState() override {}
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QRadioButton::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton && clicked_by_mouse_) front_.queue.submit(clicked_by_mouse_);
    }

private:
    Front& front_;
    std::function<void()> clicked_by_mouse_;
};

// A frame around controls that belong together, with its caption inside at the top.
class FrameWidget final : public QGroupBox {
public:
    explicit FrameWidget(QWidget* parent) : QGroupBox(parent) { setAttribute(Qt::WA_NoMousePropagation); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        constexpr int left = 10, top = 3, most_steps = 12;
        QPainter painter(this);
        paint_box(painter, rect(), palette().color(QPalette::Window), false);
        painter.setPen(palette().color(QPalette::WindowText));
        QFont smaller = font(); // a little, at small zooms; widths do not go in proportion to the size
        for (int i = 0; i < most_steps && QFontMetrics(smaller).horizontalAdvance(title()) + 1 > width() - 2 * left;
             ++i)
            smaller.setPointSizeF(smaller.pointSizeF() * smaller_step);
        painter.setFont(smaller);
        painter.drawText(rect().adjusted(left, top, -left, 0), Qt::AlignLeft | Qt::AlignTop, title());
    }
};

// How large the text of a label can be to fit into it, in points. Margins do not get smaller with the window, so that a
// text can need a little more room than it has.
double fitting_points(const QLabel& label)
{
    constexpr int most_steps = 8;
    QLabel trial(label.text());
    trial.setWordWrap(true);
    trial.setMargin(label.margin());
    trial.setContentsMargins(label.contentsMargins());
    QFont font = label.font();
    trial.setFont(font);
    for (int i = 0; i < most_steps && trial.heightForWidth(label.width()) > label.height(); ++i) {
        font.setPointSizeF(font.pointSizeF() * smaller_step);
        trial.setFont(font);
    }
    return font.pointSizeF();
}

void show_common(QWidget& widget, const Control& control, const Theme& theme)
{
    if (widget.isHidden() == control.visible()) {
        widget.setVisible(control.visible());
        // Of panes that lie on each other the one shown last is in front.
        if (control.visible() && dynamic_cast<TextWidget*>(&widget)) widget.raise();
    }
    widget.setEnabled(control.enabled());
    theme.colour(widget, control.back_color());
}

// How a window would stand in a part of the screen.
struct Fit {
    QRect region;
    QSize size;
    double zoom;
    double shown; // which part of the window
};

Fit fit(const QRect& region, int frame, const SideWindow& window, double zoom)
{
    const QSizeF room(std::max(region.width(), 1), std::max(region.height() - frame, 1));
    const double fits = std::min(room.width() / window.least_size.width(), room.height() / window.least_size.height());
    const double taken = std::clamp(fits, least * zoom, zoom);
    const QSizeF wanted = window.least_size * taken;
    const QSizeF size = wanted.boundedTo(room);
    const double shown = std::round(100 * size.width() * size.height() / (wanted.width() * wanted.height())) / 100;
    const QSizeF bars(size.height() < wanted.height() ? window.bar : 0, size.width() < wanted.width() ? window.bar : 0);
    return {region, (window.full_size * taken + bars).boundedTo(room).toSize(), taken, shown};
}

} // namespace

void FormWindow::stand_beside(const FormWindow& main_window, const SideWindow& window,
                              std::initializer_list<const char*> buttons)
{
    const double zoom = main_window.scale().zoom;
    const QRect free = main_window.screen()->availableGeometry(), main = main_window.frameGeometry();
    const int frame = std::max(main_window.geometry().top() - main.top(), 0); // of every window's upper edge
    QRect kept;
    for (const char* name : buttons)
        if (const auto* widget = main_window.findChild<QWidget*>(name))
            kept |= QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    const int left = free.left() + gap, right = free.right() - gap;
    const QRect regions[] = {
        {QPoint(main.right() + gap, free.top()), QPoint(right, free.bottom())},
        {QPoint(left, main.top() + frame), QPoint(right, kept.top() - gap)},
        {QPoint(left, free.top()), QPoint(right, kept.top() - gap)},
        {QPoint(kept.right() + gap, free.top()), QPoint(right, free.bottom())},
        {free.topLeft(), QPoint(kept.left() - gap, free.bottom())},
    };
    std::vector<Fit> fits;
    for (const QRect& each : regions)
        fits.push_back(fit(each, frame, window, fits.empty() ? zoom : zoom * window.over_main));
    const auto [at, its_size, taken, shown] = *std::ranges::max_element(fits, {}, [zoom](const Fit& each) {
        return std::pair(each.shown, each.zoom >= hardly_smaller * zoom ? zoom : each.zoom);
    });
    const int x = std::clamp(main.right() + gap, at.left(), std::max(at.left(), at.right() - its_size.width()));
    const int y = std::clamp(main.top(), at.top(), std::max(at.top(), at.bottom() - frame - its_size.height()));
    set_zoom(taken);
    resize(its_size);
    move(x, y); // of the frame, as long as there is no window of the system's
}

void FormWindow::place()
{
    std::vector<QLabel*> texts;
    for (const auto& [control, widget] : controls_) {
        const QRect place = front_.scale.rectangle(fitted(*control));
        if (widget->parentWidget()->layout()) { // which places it
            widget->setMinimumHeight(place.height());
            continue;
        }
        widget->setGeometry(place);
        if (auto* label = dynamic_cast<QLabel*>(widget); label && label->wordWrap() && !label->text().isEmpty())
            texts.push_back(label);
    }
    double points = std::numeric_limits<double>::max(); // the texts of a window are of one size
    for (const QLabel* label : texts) points = std::min(points, fitting_points(*label));
    for (QLabel* label : texts) {
        QFont font = label->font();
        font.setPointSizeF(points);
        label->setFont(font);
    }
}

void FormWindow::set_zoom(double zoom)
{
    front_.scale.zoom = zoom;
    for (const auto& [widget, role] : roles_) widget->setFont(front_.theme.font(role, front_.scale));
    place();
    for (const auto& [control, widget] : controls_)
        if (auto* text = dynamic_cast<TextWidget*>(widget)) text->lay_anew();
}

QString widget_name(const Control& control)
{
    const QString name = QString::fromStdString(script_name(control));
    return name.startsWith("Form") ? name : "Form1." + name;
}

void FormWindow::enter(Control& control, QWidget& widget, const FontRole& role, std::function<void()> show)
{
    widget.setObjectName(widget_name(control));
    controls_.emplace_back(&control, &widget);
    add_font(widget, role);
    front_.mirror.add(control, &widget, [theme = &front_.theme, &control, &widget, show = std::move(show)] {
        show();
        show_common(widget, control, *theme);
    });
}

QAbstractButton& FormWindow::add_button(Control& control, const FontRole& role, QWidget& parent,
                                        std::function<void()> clicked)
{
    auto& widget = *new ButtonWidget(front_, control, std::move(clicked), &parent);
    enter(control, widget, role, [&widget, &control] { widget.setText(to_qt(control.caption())); });
    return widget;
}

QAbstractButton& FormWindow::add_option(OptionButton& control, QWidget& parent, std::function<void()> clicked)
{
    auto& widget = *new OptionWidget(front_, control, std::move(clicked), &parent);
    enter(control, widget, font_role::option, [&widget, &control] {
        widget.setText(to_qt(control.caption()));
        widget.setChecked(control.value());
    });
    return widget;
}

QWidget& FormWindow::add_frame(Control& control, QWidget& parent)
{
    auto& widget = *new FrameWidget(&parent);
    enter(control, widget, font_role::frame, [&widget, &control] { widget.setTitle(to_qt(control.caption())); });
    return widget;
}

QLabel& FormWindow::add_label(Control& control, Qt::Alignment alignment, QWidget& parent)
{
    auto& widget = *new QLabel(&parent);
    widget.setAttribute(Qt::WA_NoMousePropagation);
    widget.setTextFormat(Qt::PlainText);
    widget.setAlignment(alignment);
    if (alignment != Qt::AlignCenter) {
        widget.setWordWrap(true);
        widget.setAutoFillBackground(true);
        widget.setMargin(2);
        widget.setContentsMargins(2, 0, 2, 0);
    }
    enter(control, widget, font_role::help, [&widget, &control] { widget.setText(lines_to_qt(control.caption())); });
    return widget;
}

LineBox& FormWindow::add_line_box(TextBox& box, const FontRole& role, QWidget& parent, bool context_menu)
{
    auto& widget = *new LineBox(front_, box, context_menu, &parent);
    enter(box, widget, role, [&widget] { widget.show_model(); });
    return widget;
}

TextWidget& FormWindow::add_text(TextControl& text, const FontSizes& fonts, const FontRole& role, QWidget& parent)
{
    auto& widget = *new TextWidget(front_, fonts, text, &parent);
    enter(text, widget, role, [&widget] { widget.show_model(); });
    return widget;
}

} // namespace tarvik
