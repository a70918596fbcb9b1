#pragma once

#include "desktop/front/front.h"
#include "desktop/text_view/text_widget.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace tarvik {

/// Looks for a text in the pane that is shown: every place is marked, the one that was gone to last is selected. While
/// the bar is open it lies over the pane, whose text makes room for it.
class FindBar final : public QFrame {
public:
    FindBar(Front& front, std::function<TextWidget*()> shown_pane, std::function<void()> closed, QWidget& window)
        : QFrame(&window), front_(front), shown_pane_(std::move(shown_pane)), closed_(std::move(closed))
    {
        setObjectName("find");
        setAccessibleName("查找");
        setFrameShape(QFrame::StyledPanel);
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::AlternateBase);
        setAttribute(Qt::WA_NoMousePropagation);
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(4, 2, 4, 2);
        text_.setObjectName("findText");
        text_.setPlaceholderText("在窗格中查找，F3 下一处");
        text_.setAccessibleName("在窗格中查找");
        result_.setObjectName("findResult");
        whole_words_.setToolTip("两边不是字母、数字的才算");
        pattern_.setToolTip("例如 yq-\\w+ 或 2016/\\d\\d");
        // To the left, where no other window lies over the bar.
        for (QWidget* widget : std::initializer_list<QWidget*>{&text_, &result_, &whole_words_, &pattern_})
            row->addWidget(widget);
        row->addStretch(1);
        connect(&text_, &QLineEdit::textEdited, this, &FindBar::seek);
        for (QCheckBox* box : {&whole_words_, &pattern_}) connect(box, &QCheckBox::toggled, this, &FindBar::seek);
        connect(&counting_, &QTimer::timeout, this, &FindBar::count);
        hide();
    }

    /// Opens with what is selected in the pane, if anything.
    void open()
    {
        TextWidget* const pane = shown_pane_();
        if (!pane) return;
        const QString selected = pane->selected_line();
        if (!selected.isEmpty()) text_.setText(selected);
        show();
        follow();
        seek();
        text_.setFocus(Qt::ShortcutFocusReason);
        text_.selectAll();
    }
    /// Goes to the next or the previous place, around the end of the text.
    void find(bool forward)
    {
        if (text_.text().isEmpty()) return open();
        if (isHidden()) {
            show();
            follow();
        }
        front_.queue.submit([this, forward] {
            const QString found = pane_ ? pane_->find(forward) : QString();
            if (!found.isEmpty()) result_.setText(found);
            else if (result_.text().isEmpty() || !counting_.isActive()) result_.setText("没有找到");
        });
    }
    /// The pane that is shown, or its place, may be another.
    void follow()
    {
        if (isHidden()) return;
        TextWidget* const pane = shown_pane_();
        if (pane != pane_) {
            leave();
            pane_ = pane;
            seek();
        }
        if (!pane) return;
        const QRect over = pane->geometry();
        const int edge = pane->frameWidth();
        text_.setFixedWidth(std::min(text_.fontMetrics().averageCharWidth() * 34, over.width() / 3));
        setGeometry(over.left() + edge, over.top() + edge, over.width() - 2 * edge, sizeHint().height());
        pane->make_room(height());
        raise();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Escape:
            hide();
            leave();
            closed_();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter: find(!event->modifiers().testFlag(Qt::ShiftModifier)); break;
        default: QFrame::keyPressEvent(event);
        }
    }

private:
    void seek()
    {
        const Sought sought(text_.text(), whole_words_.isChecked(), pattern_.isChecked());
        result_.setText(sought.error());
        counting_.stop();
        if (!pane_) return;
        pane_->seek(sought);
        if (!sought.is_empty()) counting_.start(0);
    }
    void leave()
    {
        if (!pane_) return;
        pane_->make_room(0);
        pane_->seek({});
        pane_ = nullptr;
    }
    void count()
    {
        bool is_complete = true;
        if (pane_) result_.setText(pane_->count_places(is_complete));
        if (is_complete) counting_.stop();
    }
    Front& front_;
    std::function<TextWidget*()> shown_pane_;
    std::function<void()> closed_;
    QLineEdit text_;
    QCheckBox whole_words_{"整词"}, pattern_{"正则式"};
    QLabel result_;
    QTimer counting_;
    QPointer<TextWidget> pane_; // that makes room for the bar
};

} // namespace tarvik
