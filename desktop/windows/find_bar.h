#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>

#include <functional>

namespace tarvik {

class TextWidget;

/// Looks for a text in the pane that is shown; it lies over the pane's corner while it is open.
class FindBar final : public QFrame {
public:
    FindBar(std::function<TextWidget*()> shown_pane, std::function<void()> closed, QWidget& window);

    /// Opens with what is selected in the pane, if anything.
    void open();
    /// Goes to the next or the previous place, around the end of the text.
    void find(bool forward);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void lay(const QWidget& pane);
    std::function<TextWidget*()> shown_pane_;
    std::function<void()> closed_;
    QLineEdit text_;
    QLabel result_;
};

} // namespace tarvik
