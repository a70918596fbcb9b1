#pragma once

#include "desktop/windows/form_window.h"
#include "desktop/windows/preview_window.h"
#include "desktop/windows/window_places.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

#include <algorithm>
#include <array>
#include <vector>

namespace tarvik {

/// The report designer and its preview. The help texts take the room that the boxes leave, and are scrolled by
/// themselves; what else does not fit into the window is scrolled with it. The arrow keys walk between the boxes of the
/// design.
class Form4Window final : public FormWindow {
public:
    Form4Window(const Front& front, const FormWindow& main_window)
        : FormWindow(front, front.program.form4.window), form4_(front.program.form4), main_window_(main_window),
          preview_(this->front(), *this)
    {
        scroll_area_ = new_scroll_area(*this);
        QWidget& all = add_frame(form4_.Frame1, *scroll_area_->widget());
        make_rows(add_frame(form4_.Frame2, all), 0, Form4::first_dynamic);
        make_rows(add_frame(form4_.Frame3, all), Form4::first_dynamic, Form4::last_box + 1);
        add_line_box(form4_.Text3, FontRole::DesignQuery, all).setTextMargins(text_margin, 0, text_margin, 0);
        add_line_box(form4_.Text4, FontRole::DesignKey, all).setAlignment(Qt::AlignCenter);
        for (Control* button : {&form4_.Command1, &form4_.Command2, &form4_.Command3})
            add_button(*button, FontRole::Button, all);
        make_help(all);
        // The wheel reaches the areas.
        for (QWidget* widget : scroll_area_->widget()->findChildren<QWidget*>())
            widget->setAttribute(Qt::WA_NoMousePropagation, false);
    }

protected:
    QRectF fitted(const Control& control) const override
    {
        for (const Help& help : help_)
            if (&help.control == &control) return help.place;
        QRectF place = place_of(control);
        if (&control == &form4_.Frame1) place.setWidth(place.width() - narrower_);
        return place;
    }
    void place() override
    {
        narrower_ = 0;
        const QSize full = size_needed();
        const int bar = height() + rounding < full.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
        const double most = form4_.Label1.width() - least_help + front().scale.twips(bar + rounding);
        narrower_ = std::clamp(front().scale.twips(full.width() + bar - width()), 0.0, most);
        lay_help();
        FormWindow::place();
        scroll_area_->setGeometry(rect());
        const QSize needed = size_needed(), room = size() - QSize(bar, 0);
        const auto length = [](int wanted, int there) { return wanted > there + rounding ? wanted : there; };
        scroll_area_->widget()->resize(length(needed.width(), room.width()), length(needed.height(), room.height()));
    }
    /// Asks when a text that was typed would be lost.
    // The question is the window's own: no `answer` comes of it.
    bool may_close() override
    {
        const Program& program = front().program;
        return !program.form4.holds_typed_text() ||
               program.platform.dialogs.message({U"有填写的设计参数还没有保存，关闭后不再保留，是否关闭？",
                                                 U"Tarvik报表自动化设计", Buttons::OKCancel, Icon::None}) == Answer::OK;
    }
    void before_first_show() override
    {
        narrower_ = 0;
        const QSizeF full = QSizeF(front().scale.size(model()).expandedTo(size_needed())) / front().scale.zoom;
        const double spare = front().scale.pixels(form4_.Label1.width() - least_help) / front().scale.zoom;
        const QSizeF least(full.width() - spare, full.height());
        const SidePlace place =
            side_place({full, least, 1, style()->pixelMetric(QStyle::PM_ScrollBarExtent)}, main_window_.scale().zoom,
                       main_window_, {"Form1.Command6", "Form1.Command3"});
        set_zoom(place.zoom);
        resize(place.size);
        move(place.corner);
    }
    void resizeEvent(QResizeEvent* event) override
    {
        place();
        FormWindow::resizeEvent(event);
    }
    // Up and down always leave a box, left and right at the ends of its text.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress) return FormWindow::eventFilter(watched, event);
        const int key = dynamic_cast<QKeyEvent&>(*event).key();
        for (std::size_t row = 0; row < rows_.size(); ++row)
            for (std::size_t column = 0; column < rows_[row].size(); ++column) {
                const LineBox* const box = rows_[row][column];
                if (box != watched) continue;
                LineBox* next = nullptr;
                if (key == Qt::Key_Up && row > 0) next = rows_[row - 1][column];
                if (key == Qt::Key_Down && row + 1 < rows_.size()) next = rows_[row + 1][column];
                if (key == Qt::Key_Left && column > 0 && box->cursorPosition() == 0) next = rows_[row][column - 1];
                if (key == Qt::Key_Right && column + 1 < rows_[row].size() &&
                    box->cursorPosition() == box->text().size())
                    next = rows_[row][column + 1];
                if (!next) return false;
                next->setFocus(Qt::TabFocusReason);
                scroll_area_->ensureWidgetVisible(next);
                return true;
            }
        return FormWindow::eventFilter(watched, event);
    }

private:
    static constexpr int text_margin = 5; // between the query and its border, in pixels
    static constexpr double edge = 120;   // twips between what the window holds and its edge
    static constexpr double help_gap = 60, least_help = 3000;
    static constexpr int rounding = 2; // pixels by which the window can be smaller than the sum of its parts

    static QScrollArea* new_scroll_area(QWidget& parent)
    {
        auto* area = new QScrollArea(&parent);
        area->setFrameShape(QFrame::NoFrame);
        area->setFocusPolicy(Qt::NoFocus);
        area->setWidget(new QWidget);
        return area;
    }
    struct Help {
        const Control& control;
        QLabel& label;
        QRectF place; // in its area
    };
    // Created in the order in which the Tab key goes through them.
    void make_rows(QWidget& frame, int first, int end)
    {
        Form4& form4 = front().program.form4;
        for (int row = first; row < end; row += 2) {
            auto next = rows_.emplace_back().begin();
            for (auto* boxes : {&form4.Text1, &form4.Text2})
                for (const int index : {row, row + 1}) {
                    LineBox& box = add_line_box((*boxes)[index], FontRole::Design, frame);
                    box.setAlignment(Qt::AlignCenter);
                    box.installEventFilter(this);
                    *next++ = &box;
                }
        }
    }
    void make_help(QWidget& frame)
    {
        help_area_ = new_scroll_area(frame);
        help_area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        for (Control* label : {&form4_.Label1, &form4_.Label2, &form4_.Label3, &form4_.Label4, &form4_.Label5})
            help_.push_back({*label, add_label(*label, FontRole::Help, *help_area_->widget()), place_of(*label)});
    }
    // The area of the help begins where its first text does, and its texts stand below each other in it.
    void lay_help()
    {
        QRectF area = place_of(form4_.Label1);
        area.setSize({area.width() - narrower_, form4_.Frame1.height() - area.top() - help_gap});
        const QRect on_screen = front().scale.rectangle(area);
        const int bar = narrower_ > 0 ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
        double top = 0;
        for (auto& [control, label, place] : help_) {
            place = {0, top, front().scale.twips(on_screen.width() - bar), control.height()};
            label.setFont(front().theme.font(FontRole::Help, front().scale));
            const int needed = label.heightForWidth(on_screen.width() - bar);
            if (narrower_ > 0) place.setHeight(std::max(place.height(), front().scale.twips(needed + 1)));
            top += place.height() + help_gap;
        }
        help_area_->setGeometry(on_screen);
        help_area_->widget()->resize(on_screen.width() - bar,
                                     front().scale.rectangle({0, 0, 0, top - help_gap}).height());
    }
    QSize size_needed() const
    {
        const QRectF all = fitted(form4_.Frame1);
        return front().scale.rectangle({0, 0, all.right() + edge, all.bottom() + edge}).size();
    }
    Form4& form4_;
    const FormWindow& main_window_;
    std::vector<std::array<LineBox*, 4>> rows_; // the static ones, then the dynamic ones
    PreviewWindow preview_;
    QScrollArea *scroll_area_ = nullptr, *help_area_ = nullptr;
    std::vector<Help> help_;
    double narrower_ = 0; // in twips, by which the help shows
};

} // namespace tarvik
