#pragma once

#include <QProgressBar>

#include <algorithm>
#include <utility>

namespace tarvik {

/// A slim line along the upper edge of a window that shows how far a long piece of work has come.
class ProgressLine final : public QProgressBar {
public:
    explicit ProgressLine(QWidget& window) : QProgressBar(&window)
    {
        setObjectName("progress");
        setAccessibleName("进度");
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setRange(0, all);
        setTextVisible(false);
        setStyleSheet("QProgressBar { border: 0; background: palette(midlight) }"
                      "QProgressBar::chunk { background: palette(link) }");
        hide();
    }

    // Both are parts of 1; a negative number ends the display. The work in hand goes before the batch that it is part
    // of.

    void show_work(double done)
    {
        if (std::exchange(work_, done) != done) show_line();
    }
    void show_batch(double done)
    {
        if (std::exchange(batch_, done) != done) show_line();
    }

private:
    static constexpr int thickness = 4, all = 10'000;
    void show_line()
    {
        const double part = work_ >= 0 ? work_ : batch_;
        setVisible(part >= 0);
        setValue(qRound(all * std::clamp(part, 0.0, 1.0)));
        setGeometry(0, 0, parentWidget()->width(), thickness);
        raise();
    }
    double work_ = -1, batch_ = -1;
};

} // namespace tarvik
