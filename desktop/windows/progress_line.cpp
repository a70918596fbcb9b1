#include "desktop/windows/progress_line.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

constexpr int thickness = 4;
constexpr int all = 10'000;

} // namespace

ProgressLine::ProgressLine(QWidget& window) : QProgressBar(&window)
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

void ProgressLine::show_work(double done)
{
    if (std::exchange(work_, done) != done) show_line();
}

void ProgressLine::show_batch(double done)
{
    if (std::exchange(batch_, done) != done) show_line();
}

void ProgressLine::show_line()
{
    const double part = work_ >= 0 ? work_ : batch_;
    setVisible(part >= 0);
    setValue(qRound(all * std::clamp(part, 0.0, 1.0)));
    setGeometry(0, 0, parentWidget()->width(), thickness);
    raise();
}

} // namespace tarvik
