#pragma once

#include "desktop/controls/control_maker.h"
#include "desktop/windows/form_window.h"

#include <array>
#include <vector>

class QScrollArea;

namespace tarvik {

/// The report designer and its preview. The help texts take the room that the boxes leave, and are scrolled by
/// themselves; what else does not fit into the window is scrolled with it. The arrow keys walk between the boxes of the
/// design.
class Form4Window final : public FormWindow {
public:
    /// The window's place decides on the scale of `front`.
    Form4Window(Front& front, const QWidget& main_window);

    /// To be called when the zoom is known.
    void set_zoom();

protected:
    Place fitted(const Control& control) const override;
    void place() override;
    /// Asks when a text that was typed would be lost.
    bool may_close() override;
    bool has_picture() const override { return false; }
    void before_first_show() override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Help {
        const Control& control;
        QLabel& label;
        Place place; // in its area
    };
    void make_rows(QWidget& frame, int first, int end);
    void make_help(QWidget& frame);
    void lay_help();
    QSize size_needed() const;
    Form4& form4_;
    const QWidget& main_window_;
    std::vector<std::array<LineBox*, 4>> rows_; // the static ones, then the dynamic ones
    std::unique_ptr<QWidget> preview_;
    QScrollArea *scroll_area_ = nullptr, *help_area_ = nullptr;
    std::vector<Help> help_;
    double narrower_ = 0; // in twips, by which the help shows
};

} // namespace tarvik
