#pragma once

#include <QWidget>

namespace tarvik {

/// A slim line along the upper edge of a window that shows how far a long piece of work has come.
class ProgressLine final : public QWidget {
public:
    explicit ProgressLine(QWidget& window);

    // Both are parts of 1; a negative number ends the display. The work in hand goes before the batch that it is part
    // of.

    void show_work(double done);
    void show_batch(double done);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void lay();
    void show_line();
    double part() const { return work_ >= 0 ? work_ : batch_; }
    double work_ = -1, batch_ = -1;
};

} // namespace tarvik
