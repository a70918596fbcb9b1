#pragma once

#include "desktop/windows/column_headings.h"
#include "desktop/windows/form_window.h"

#include <QApplication>
#include <QLabel>
#include <QWindow>

#include <algorithm>
#include <map>

namespace tarvik {

/// The window of column numbers and notes. It appears without taking the focus, so that keys can be typed on.
class Form3Window final : public FormWindow {
public:
    Form3Window(const Front& front, FormWindow& main_window)
        : FormWindow(front, front.program.form3.window), main_window_(main_window)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
        Form3& form3 = front.program.form3;
        for (auto& [index, box] : form3.Text1)
            add_line_box(box, font_role::column, *this).setAlignment(Qt::AlignCenter);
        for (auto& [index, box] : form3.Text1) {
            auto* heading = new QLabel(this);
            heading->setObjectName(QString("heading(%1)").arg(index));
            heading->setTextFormat(Qt::PlainText);
            headings_[index] = heading;
            add_font(*heading, font_role::help);
        }
        for (auto& [index, label] : form3.Label1) add_label(label, Qt::AlignLeft | Qt::AlignTop, *this);
        for (auto& [index, button] : form3.Command1) add_button(button, font_role::button, *this);
        notes_ = &add_text(form3.Text2, fonts_, font_role::notes, *this);
        notes_->break_lines();
        set_tooltips(*this);
        // A window of the main window's own stays in front of it.
        setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint);
    }

    /// Shows beside each box the heading of the column that its number names.
    void show_headings()
    {
        if (isHidden()) return;
        Program& program = front_.program;
        if (std::exchange(notes_show_, program.form3.Text2.visible()) != program.form3.Text2.visible() && notes_show_)
            notes_->setFocus(Qt::OtherFocusReason);
        for (const auto& [index, heading] : headings_) {
            const TextBox& box = program.form3.Text1[index];
            const double number = leading_number(box.text());
            QString text = index == interval_box ? "天" : column_heading(program.form1, static_cast<int>(number));
            heading->setVisible(box.visible());
            heading->setToolTip(text);
            heading->setText(heading->fontMetrics().elidedText(text, Qt::ElideRight, heading->width()));
        }
    }
    /// Puts a number into the box that has, or had last, the focus.
    void put_number(int number)
    {
        const auto* const widget = dynamic_cast<LineBox*>(focusWidget());
        auto* const box = dynamic_cast<TextBox*>(front_.mirror.control_of(widget));
        if (box) front_.queue.submit([box, number] { box->set_text(number_text(number)); });
    }
    /// Brings the window and the box that matters next to the front.
    // The box of the comparison while two tables are compared, else that of sorting and statistics.
    void take_focus()
    {
        Program& program = front_.program;
        front_.queue.submit([this, &program] {
            program.form3.window.set_visible(true);
            program.form3.window.set_window_state(0);
            const int index = program.form1.comp ? comparison_box : sort_box;
            program.form3.Text1[index].request_focus();
        });
        raise();
        activateWindow();
        if (auto* box = dynamic_cast<LineBox*>(focusWidget())) box->selectAll();
    }

protected:
    void place() override
    {
        FormWindow::place();
        // To the right of each box, up to its neighbour.
        Form3& form3 = front_.program.form3;
        for (const auto& [index, heading] : headings_) {
            const TextBox& box = form3.Text1[index];
            const double left = box.left() + box.width() + heading_gap;
            double right = form3.window.width() - heading_gap;
            for (const auto& [other_index, other] : form3.Text1)
                if (other.top() == box.top() && other.left() > box.left())
                    right = std::min(right, other.left() - heading_gap);
            heading->setGeometry(front_.scale.rectangle({left, box.top(), right - left, box.height()}));
        }
    }
    void before_first_show() override
    {
        const Scale unzoomed{front_.scale.dots_per_inch};
        const QSizeF full(unzoomed.pixels(model_.width()), unzoomed.pixels(model_.height()));
        stand_beside(main_window_, {full, {full.width(), unzoomed.pixels(smallest_height)}, smaller_over_main},
                     {"Form1.Text1(1)", "Form1.Command6", "Form1.Command3"});
        setMinimumSize(qRound(scale().pixels(smallest_width)), qRound(scale().pixels(smallest_height)));
        winId(); // which must be there to belong to the other
        windowHandle()->setTransientParent(main_window_.windowHandle());
    }
    // Some systems activate whatever appears. Directly behind a box no window is active yet.
    void appear() override
    {
        QWidget* const active = QApplication::activeWindow();
        show();
        raise();
        (active ? *active : main_window_).activateWindow();
    }
    QString title_addition() const override { return " · 列次、间隔与说明"; }
    void set_aside(bool aside) override { setVisible(!aside); }

private:
    // The boxes and labels keep their places, and the buttons go with the height: below this they would meet.
    static constexpr double smallest_width = 9800, smallest_height = 7100;
    static constexpr double heading_gap = 60;
    static constexpr double smaller_over_main = 0.8;
    static constexpr int interval_box = 2, comparison_box = 4, sort_box = 5;

    FormWindow& main_window_;
    TextWidget* notes_ = nullptr;
    bool notes_show_ = false;
    std::map<int, QLabel*> headings_; // by the index of the box
};

} // namespace tarvik
