#pragma once

#include "desktop/front/front.h"
#include "desktop/text_view/text_widget.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

namespace tarvik {

/// Looks for a text in the pane that is shown: every place is marked, the one that was gone to last is selected. While
/// the bar is open it lies over the pane, whose text makes room for it.
class FindBar final : public QFrame {
public:
    FindBar(Front& front, std::function<TextWidget*()> shown_pane, std::function<void()> closed, QWidget& window);

    /// Opens with what is selected in the pane, if anything.
    void open();
    /// Goes to the next or the previous place, around the end of the text.
    void find(bool forward);
    /// The pane that is shown, or its place, may be another.
    void follow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void seek();
    void leave();
    void count();
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
