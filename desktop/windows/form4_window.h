#pragma once

#include "desktop/windows/form_window.h"
#include "desktop/windows/preview_window.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace tarvik {

/// The report designer and its preview. The help texts take the room that the boxes leave, and are scrolled by
/// themselves; what else does not fit into the window is scrolled with it. The arrow keys walk between the boxes of the
/// design.
class Form4Window final : public FormWindow {
public:
    Form4Window(const Front& front, const FormWindow& main_window)
        : FormWindow(front, front.program.form4.window), form4_(front.program.form4), main_window_(main_window),
          preview_(front_, *this)
    {
        scroll_area_ = new_scroll_area(*this);
        QWidget& all = add_frame(form4_.Frame1, *scroll_area_->widget());
        make_rows(add_frame(form4_.Frame2, all), 0, Form4::first_dynamic);
        make_rows(add_frame(form4_.Frame3, all), Form4::first_dynamic, Form4::last_box + 1);
        add_line_box(form4_.Text3, font_role::design_query, all).setTextMargins(text_margin, 0, text_margin, 0);
        add_line_box(form4_.Text4, font_role::design_key, all).setAlignment(Qt::AlignCenter);
        for (Control* button : {&form4_.Command1, &form4_.Command2, &form4_.Command3})
            add_button(*button, font_role::button, all);
        make_help(all);
        // The wheel reaches the areas.
        for (QWidget* widget : scroll_area_->widget()->findChildren<QWidget*>())
            widget->setAttribute(Qt::WA_NoMousePropagation, false);
    }

protected:
    QRectF fitted(const Control& control) const override
    {
        QRectF place = place_of(control);
        if (&control == &form4_.Frame1) place.setWidth(place.width() - narrower_);
        return place;
    }
    void place() override
    {
        narrower_ = 0;
        const QSize full = size_needed();
        const int bar = height() + rounding < full.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
        const double most = form4_.Label1.width() - least_help + front_.scale.twips(bar + rounding);
        narrower_ = std::clamp(front_.scale.twips(full.width() + bar - width()), 0.0, most);
        FormWindow::place();
        QRectF help = place_of(form4_.Label1);
        help.setSize({help.width() - narrower_, form4_.Frame1.height() - help.top() - help_gap});
        help_area_->setGeometry(front_.scale.rectangle(help));
        help_area_->widget()->layout()->setSpacing(qRound(front_.scale.pixels(help_gap)));
        scroll_area_->setGeometry(rect());
        const QSize needed = size_needed(), room = size() - QSize(bar, 0);
        const auto length = [](int wanted, int there) { return wanted > there + rounding ? wanted : there; };
        scroll_area_->widget()->resize(length(needed.width(), room.width()), length(needed.height(), room.height()));
    }
    /// Asks when a text that was typed would be lost.
    // The question is the window's own: no `answer` comes of it.
    bool may_close() override
    {
        const Program& program = front_.program;
        return !program.form4.holds_typed_text() ||
               program.platform.dialogs.message({U"有填写的设计参数还没有保存，关闭后不再保留，是否关闭？",
                                                 U"Tarvik报表自动化设计", Buttons::OKCancel, Icon::None}) == Answer::OK;
    }
    void before_first_show() override
    {
        narrower_ = 0;
        const QSizeF full = QSizeF(front_.scale.size(model_).expandedTo(size_needed())) / front_.scale.zoom;
        const double spare = front_.scale.pixels(form4_.Label1.width() - least_help) / front_.scale.zoom;
        const QSizeF least(full.width() - spare, full.height());
        stand_beside(main_window_, {full, least, 1, style()->pixelMetric(QStyle::PM_ScrollBarExtent)},
                     {"Form1.Command6", "Form1.Command3"});
    }
    void resizeEvent(QResizeEvent* event) override
    {
        place();
        FormWindow::resizeEvent(event);
    }
    // Up and down always leave a box, left and right at the ends of its text.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto at = std::ranges::find(boxes_, watched);
        if (event->type() != QEvent::KeyPress || at == boxes_.end()) return FormWindow::eventFilter(watched, event);
        const auto index = at - boxes_.begin(), column = index % columns;
        const auto to_next = [&] {
            switch (dynamic_cast<QKeyEvent&>(*event).key()) {
            case Qt::Key_Up: return -columns;
            case Qt::Key_Down: return columns;
            case Qt::Key_Left: return column > 0 && (*at)->cursorPosition() == 0 ? -1 : 0;
            case Qt::Key_Right: return column + 1 < columns && (*at)->cursorPosition() == (*at)->text().size() ? 1 : 0;
            default: return 0;
            }
        }();
        const auto next = index + to_next;
        if (to_next == 0 || next < 0 || next >= std::ssize(boxes_)) return false;
        LineBox& box = *boxes_[static_cast<std::size_t>(next)];
        box.setFocus(Qt::TabFocusReason);
        scroll_area_->ensureWidgetVisible(&box);
        return true;
    }

private:
    static constexpr int text_margin = 5; // between the query and its border, in pixels
    static constexpr double edge = 120;   // twips between what the window holds and its edge
    static constexpr double help_gap = 60, least_help = 3000;
    static constexpr int columns = 4;  // of boxes
    static constexpr int rounding = 2; // pixels by which the window can be smaller than the sum of its parts

    static QScrollArea* new_scroll_area(QWidget& parent)
    {
        auto* area = new QScrollArea(&parent);
        area->setFrameShape(QFrame::NoFrame);
        area->setFocusPolicy(Qt::NoFocus);
        area->setWidget(new QWidget);
        return area;
    }
    // Created in the order in which the Tab key goes through them.
    void make_rows(QWidget& frame, int first, int end)
    {
        for (int row = first; row < end; row += 2)
            for (auto* boxes : {&form4_.Text1, &form4_.Text2})
                for (const int index : {row, row + 1}) {
                    boxes_.push_back(&add_line_box((*boxes)[index], font_role::design, frame));
                    boxes_.back()->setAlignment(Qt::AlignCenter);
                    boxes_.back()->installEventFilter(this);
                }
    }
    // The area of the help begins where its first text does, and its texts stand below each other in it.
    void make_help(QWidget& frame)
    {
        help_area_ = new_scroll_area(frame);
        help_area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        help_area_->setWidgetResizable(true);
        auto* column = new QVBoxLayout(help_area_->widget());
        column->setContentsMargins({});
        for (Control* label : {&form4_.Label1, &form4_.Label2, &form4_.Label3, &form4_.Label4, &form4_.Label5})
            column->addWidget(&add_label(*label, Qt::AlignLeft | Qt::AlignTop, *help_area_->widget()));
        column->addStretch();
    }
    QSize size_needed() const
    {
        const QRectF all = fitted(form4_.Frame1);
        return front_.scale.rectangle({0, 0, all.right() + edge, all.bottom() + edge}).size();
    }
    Form4& form4_;
    const FormWindow& main_window_;
    std::vector<LineBox*> boxes_; // row by row: the static ones, then the dynamic ones
    PreviewWindow preview_;
    QScrollArea *scroll_area_ = nullptr, *help_area_ = nullptr;
    double narrower_ = 0; // in twips, by which the help shows
};

} // namespace tarvik
