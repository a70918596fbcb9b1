#pragma once

#include <QProgressBar>

namespace tarvik {

/// A slim line along the upper edge of a window that shows how far a long piece of work has come.
class ProgressLine final : public QProgressBar {
public:
    explicit ProgressLine(QWidget& window);

    // Both are parts of 1; a negative number ends the display. The work in hand goes before the batch that it is part
    // of.

    void show_work(double done);
    void show_batch(double done);

private:
    void show_line();
    double work_ = -1, batch_ = -1;
};

} // namespace tarvik
