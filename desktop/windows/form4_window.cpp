#include "desktop/windows/form4_window.h"

#include "desktop/windows/window_places.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

#include <algorithm>

namespace tarvik {

namespace {

constexpr int text_margin = 5; // between the query and its border, in pixels
constexpr double edge = 120;   // twips between what the window holds and its edge

} // namespace

Form4Window::Form4Window(Front& front, FocusTracker& focus, Backdrop& backdrop, Scale& scale,
                         const QWidget& main_window)
    : FormWindow(front, front.program.form4.window, backdrop), form4_(front.program.form4), scale_(scale),
      main_window_(main_window), preview_(front, *this)
{
    Form4& form4 = front.program.form4;
    scroll_area_ = new QScrollArea(this);
    scroll_area_->setFrameShape(QFrame::NoFrame);
    scroll_area_->setFocusPolicy(Qt::NoFocus);
    scroll_area_->setWidget(new QWidget);
    ControlMaker maker(front, focus, layout_);
    FrameWidget& all = maker.frame(form4.Frame1, *scroll_area_->widget());
    make_rows(maker, maker.frame(form4.Frame2, all), 0, 27);
    make_rows(maker, maker.frame(form4.Frame3, all), 28, 49);
    maker.line_box(form4.Text3, FontRole::DesignQuery, all).setTextMargins(text_margin, 0, text_margin, 0);
    maker.line_box(form4.Text4, FontRole::DesignKey, all).setAlignment(Qt::AlignCenter);
    maker.button(form4.Command1, FontRole::Button, all);
    maker.button(form4.Command2, FontRole::Button, all);
    maker.button(form4.Command3, FontRole::Button, all);
    for (Control* label : {&form4.Label1, &form4.Label2, &form4.Label3, &form4.Label4, &form4.Label5})
        maker.label(*label, FontRole::Help, all);
    front.mirror.on_moved(FormId::Form4, [this] { place(); });
}

// Created in the order in which the Tab key goes through them.
void Form4Window::make_rows(ControlMaker& maker, QWidget& frame, int first, int last)
{
    Form4& form4 = front().program.form4;
    for (int row = first; row < last; row += 2) {
        auto next = rows_.emplace_back().begin();
        for (auto* boxes : {&form4.Text1, &form4.Text2})
            for (const int index : {row, row + 1}) {
                LineBox& box = maker.line_box((*boxes)[index], FontRole::Design, frame);
                box.setAlignment(Qt::AlignCenter);
                box.installEventFilter(this);
                *next++ = &box;
            }
    }
}

// Up and down always leave a box, left and right at the ends of its text.
bool Form4Window::eventFilter(QObject* watched, QEvent* event)
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
            if (key == Qt::Key_Right && column + 1 < rows_[row].size() && box->cursorPosition() == box->text().size())
                next = rows_[row][column + 1];
            if (!next) return false;
            next->setFocus(Qt::TabFocusReason);
            return true;
        }
    return FormWindow::eventFilter(watched, event);
}

QSize Form4Window::size_needed() const
{
    const Place all = place_of(form4_.Frame1);
    return scale_.rectangle(0, 0, all.left + all.width + edge, all.top + all.height + edge).size();
}

void Form4Window::place()
{
    layout_.place(scale_);
    scroll_area_->setGeometry(rect());
    scroll_area_->widget()->resize(size_needed().expandedTo(size()));
}

void Form4Window::set_zoom()
{
    layout_.set_fonts(front().theme, front().scale);
    place();
}

void Form4Window::resizeEvent(QResizeEvent* event)
{
    place();
    FormWindow::resizeEvent(event);
}

// The question is the window's own: no `answer` comes of it.
bool Form4Window::may_close()
{
    const Program& program = front().program;
    return !program.form4.holds_typed_text() ||
           program.platform.dialogs.message({U"有填写的设计参数还没有保存，关闭后不再保留，是否关闭？",
                                             U"Tarvik报表自动化设计", Buttons::OKCancel, Icon::None}) == Answer::OK;
}

void Form4Window::before_first_show()
{
    const QSizeF full = QSizeF(scale_.size(model()).expandedTo(size_needed())) / scale_.zoom;
    const SidePlace place = side_place({full, full, style()->pixelMetric(QStyle::PM_ScrollBarExtent)}, scale_.zoom,
                                       main_window_, {"Form1.Command6", "Form1.Command3"});
    scale_.zoom = place.zoom;
    set_zoom();
    resize(place.size);
    move(place.corner);
}

} // namespace tarvik
